// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "Result.h"
#include "broadcast/Broadcast.h"
#include "broadcast/ByteReader.h"

namespace applist::sim {

/// Larger files are rejected; files in use have a few kilobytes.
constexpr size_t MAX_XML_SIZE = size_t{4} * 1024 * 1024;

/// Reads applications in their XML encoding (TS 102 809, 5.4): every Application of a document
/// whose namespace belongs to DVB. All of them belong to one service without a number.
///
/// An application without a valid identifier is malformed: it is skipped and counted. A document is
/// rejected if it is not well-formed or has a document type, because a document type can define
/// entities.
Result<Broadcast> ReadApplicationXml(ByteSpan document);

/// Parses such a document once it is complete.
class ApplicationXml : public BroadcastParser {
public:
    /// damage must outlive the parser, which adds to it.
    ApplicationXml(SnapshotHandler handler, Damage& damage);

    size_t Parse(ByteSpan bytes, bool last) override;
    std::string error() const override { return m_error; }

private:
    SnapshotHandler m_handler;
    Damage& m_damage;
    std::string m_error;
};

}  // namespace applist::sim
