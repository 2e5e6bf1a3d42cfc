// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Result.h"
#include "broadcast/Broadcast.h"
#include "broadcast/ByteReader.h"
#include "broadcast/Text.h"

namespace applist::sim {

/// Called with the services after each new table. replaces is true if the table replaces an earlier
/// version that a list may depend on.
using SnapshotHandler = std::function<void(Snapshot snapshot, bool replaces)>;

/// Parses one kind of broadcast piece by piece. The result does not depend on the pieces.
class BroadcastParser {
public:
    BroadcastParser() = default;
    virtual ~BroadcastParser() = default;
    BroadcastParser(const BroadcastParser&) = delete;
    BroadcastParser& operator=(const BroadcastParser&) = delete;

    /// Parses the bytes that follow those parsed so far, and returns how many it has used. The
    /// caller passes the others again, followed by more. With last, bytes are the end of the
    /// broadcast, and all of them are used.
    virtual size_t Parse(ByteSpan bytes, bool last) = 0;
    /// Why the broadcast cannot be used; empty if it can.
    virtual std::string error() const { return {}; }
};

// The parsers skip and count damaged parts. damage must outlive the parser, which adds to it.

/// Parses a transport stream with packets of any size (PacketReader.h): the Program Association
/// Table, the Program Map Tables that it names, and the Application Information Tables that those
/// name. Without a coding, texts are decoded as DVB text, unless a map describes its data services
/// as ISDB does.
std::unique_ptr<BroadcastParser> MakeStreamParser(std::optional<TextCoding> coding,
                                                  SnapshotHandler handler, Damage& damage);

/// Whether a section was found; Unknown if more bytes are needed to decide.
enum class Found { No, Yes, Unknown };

/// Says whether bytes begin with a whole section whose CRC is correct. With last, nothing follows
/// them, and the answer is never Unknown.
Found BeginsWithSection(ByteSpan bytes, bool last);

/// Parses consecutive sections, as section filters write them to files. All Application Information
/// Tables belong to one service without a number.
std::unique_ptr<BroadcastParser> MakeSectionParser(TextCoding coding, SnapshotHandler handler,
                                                   Damage& damage);

/// Larger XML files are rejected; files in use have a few kilobytes.
constexpr size_t MAX_XML_SIZE = size_t{4} * 1024 * 1024;

/// Reads applications in their XML encoding (TS 102 809, 5.4): every Application of a document
/// whose namespace belongs to DVB. All of them belong to one service without a number.
///
/// An application without a valid identifier is malformed: it is skipped and counted. A document is
/// rejected if it is not well-formed or has a document type, because a document type can define
/// entities.
Result<Broadcast> ReadApplicationXml(ByteSpan document);

/// Parses such a document once it is complete.
std::unique_ptr<BroadcastParser> MakeXmlParser(SnapshotHandler handler, Damage& damage);

}  // namespace applist::sim
