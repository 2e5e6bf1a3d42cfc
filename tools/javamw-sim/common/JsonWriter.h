// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

using JsonBuilder = struct _JsonBuilder;

namespace applist::sim {

/// Writes one JSON document from front to back. REQUIRES: every opened object and array is closed.
class JsonWriter {
public:
    JsonWriter();

    /// Opens an object or array: as a member of the enclosing object if member is given, otherwise
    /// as the next element or the root.
    JsonWriter& Object(const char* member = nullptr);
    JsonWriter& Array(const char* member = nullptr);
    JsonWriter& EndObject();
    JsonWriter& EndArray();

    JsonWriter& Number(const char* member, int64_t value);
    JsonWriter& Null(const char* member);
    JsonWriter& NumberOrNull(const char* member, std::optional<int64_t> value);
    /// Replaces invalid UTF-8 with replacement characters.
    JsonWriter& Text(const char* member, std::string_view value);
    /// Does the same, but writes nothing for an empty value.
    JsonWriter& TextUnlessEmpty(const char* member, std::string_view value);

    /// Returns the document on one line. Call only once.
    std::string Finish();
    /// Returns the document with indentation. Call only once.
    std::string FinishIndented();

private:
    struct Unref {
        void operator()(JsonBuilder* builder) const;
    };
    void Name(const char* member);
    std::string Generate(bool indented);

    std::unique_ptr<JsonBuilder, Unref> m_builder;
};

}  // namespace applist::sim
