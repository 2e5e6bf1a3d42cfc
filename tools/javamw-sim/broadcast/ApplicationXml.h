// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "broadcast/Broadcast.h"
#include "broadcast/ByteReader.h"
#include "common/Result.h"

namespace applist::sim {

/// Larger files are refused; those in use have a few kilobytes.
constexpr size_t MAX_XML_SIZE = size_t{4} * 1024 * 1024;

/// Reads applications in their XML encoding (TS 102 809, 5.4): every Application of a document
/// whose namespace is one of DVB's. They belong to one service without a number.
///
/// An application without an identifier that fits is malformed: skipped and counted. A document
/// that is not well-formed, or brings a document type and thereby entities, is refused whole.
Result<Broadcast> ReadApplicationXml(ByteSpan document);

}  // namespace applist::sim
