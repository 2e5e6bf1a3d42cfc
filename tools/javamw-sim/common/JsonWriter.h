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

/// One JSON document, written from front to back. REQUIRES: what is opened is closed.
class JsonWriter {
public:
    JsonWriter();

    /// Opens an object or array: a member of the object around it when named, otherwise the next
    /// element or the whole.
    JsonWriter& Object(const char* member = nullptr);
    JsonWriter& Array(const char* member = nullptr);
    JsonWriter& EndObject();
    JsonWriter& EndArray();

    JsonWriter& Number(const char* member, int64_t value);
    JsonWriter& Null(const char* member);
    JsonWriter& NumberOrNull(const char* member, std::optional<int64_t> value);
    /// What is no UTF-8 gets replacement characters.
    JsonWriter& Text(const char* member, std::string_view value);
    /// The same, but nothing at all for an empty value.
    JsonWriter& TextUnlessEmpty(const char* member, std::string_view value);

    /// The document on one line. Once only.
    std::string Finish();
    /// The same, in lines for people.
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
