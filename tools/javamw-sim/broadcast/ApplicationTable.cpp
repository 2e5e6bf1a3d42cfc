// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/ApplicationTable.h"

#include <array>
#include <cstdio>
#include <utility>

#include "broadcast/DvbText.h"
#include "broadcast/ProgramTables.h"

namespace applist::sim {
namespace {

constexpr uint16_t TEST_FLAG = 0x8000;
constexpr uint8_t APPLICATION_DESCRIPTOR = 0x00;
constexpr uint8_t NAME_DESCRIPTOR = 0x01;
constexpr size_t LANGUAGE_SIZE = 3;

void ReadApplicationDescriptor(ByteReader reader, Application& application) {
    reader.Take(reader.U8());  // profiles
    const uint8_t flags = reader.U8();
    const uint8_t priority = reader.U8();
    if (!reader.failed()) {
        application.visibility = flags >> 5U & 3U;
        application.priority = priority;
    }
}

void ReadNames(ByteReader reader, Application& application) {
    while (reader.left() > 0) {
        const ByteSpan language = reader.Take(LANGUAGE_SIZE);
        const ByteSpan text = reader.Take(reader.U8());
        if (auto name = DecodeDvbText(text); name && !reader.failed()) {
            application.names.push_back({{language.begin(), language.end()}, std::move(*name)});
        }
    }
}

void ReadDescriptors(ByteReader reader, Application& application) {
    while (reader.left() > 0) {
        const uint8_t tag = reader.U8();
        const ByteReader content(reader.Take(reader.U8()));
        if (reader.failed()) {
            return;
        }
        if (tag == APPLICATION_DESCRIPTOR) {
            ReadApplicationDescriptor(content, application);
        } else if (tag == NAME_DESCRIPTOR) {
            ReadNames(content, application);
        }
    }
}

}  // namespace

std::optional<ApplicationTable> ParseApplicationTable(ByteSpan section) {
    const auto header = ParseTableSection(section);
    if (!header || header->tableId != APPLICATION_TABLE) {
        return std::nullopt;
    }
    ApplicationTable table;
    table.type = static_cast<uint16_t>(header->extension & ~TEST_FLAG);
    table.test = (header->extension & TEST_FLAG) != 0;
    ByteReader body(header->body);
    body.TakeLoop();  // descriptors common to all
    ByteReader loop(body.TakeLoop());
    while (loop.left() > 0) {
        Application application;
        application.organisation = loop.U32();
        application.id = loop.U16();
        application.controlCode = loop.U8();
        ReadDescriptors(ByteReader(loop.TakeLoop()), application);
        table.applications.push_back(std::move(application));
    }
    return body.failed() || loop.failed() ? std::nullopt : std::optional(std::move(table));
}

std::string UniqueId(const Application& application) {
    std::array<char, sizeof "0000000b.1ab7"> text{};
    static_cast<void>(std::snprintf(text.data(), text.size(), "%08x.%04x", application.organisation,
                                    application.id));
    return text.data();
}

bool IsOffered(const ApplicationTable& table, const Application& application) {
    const bool wanted =
        application.controlCode == CONTROL_AUTOSTART || application.controlCode == CONTROL_PRESENT;
    return wanted && application.visibility == VISIBLE_ALL && !table.test;
}

}  // namespace applist::sim
