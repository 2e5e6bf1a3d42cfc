// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "common/JsonWriter.h"

#include <json-glib/json-glib.h>

namespace applist::sim {

void JsonWriter::Unref::operator()(JsonBuilder* builder) const {
    g_object_unref(builder);
}

JsonWriter::JsonWriter() : m_builder(json_builder_new()) {}

JsonWriter& JsonWriter::Object(const char* member) {
    Name(member);
    json_builder_begin_object(m_builder.get());
    return *this;
}

JsonWriter& JsonWriter::Array(const char* member) {
    Name(member);
    json_builder_begin_array(m_builder.get());
    return *this;
}

JsonWriter& JsonWriter::EndObject() {
    json_builder_end_object(m_builder.get());
    return *this;
}

JsonWriter& JsonWriter::EndArray() {
    json_builder_end_array(m_builder.get());
    return *this;
}

JsonWriter& JsonWriter::Number(const char* member, int64_t value) {
    Name(member);
    json_builder_add_int_value(m_builder.get(), value);
    return *this;
}

JsonWriter& JsonWriter::Null(const char* member) {
    Name(member);
    json_builder_add_null_value(m_builder.get());
    return *this;
}

JsonWriter& JsonWriter::NumberOrNull(const char* member, std::optional<int64_t> value) {
    return value ? Number(member, *value) : Null(member);
}

JsonWriter& JsonWriter::Text(const char* member, std::string_view value) {
    Name(member);
    g_autofree char* valid = g_utf8_make_valid(value.data(), static_cast<gssize>(value.size()));
    json_builder_add_string_value(m_builder.get(), valid);
    return *this;
}

JsonWriter& JsonWriter::TextUnlessEmpty(const char* member, std::string_view value) {
    return value.empty() ? *this : Text(member, value);
}

std::string JsonWriter::Finish() {
    return Generate(false);
}

std::string JsonWriter::FinishIndented() {
    return Generate(true);
}

std::string JsonWriter::Generate(bool indented) {
    g_autoptr(JsonNode) root = json_builder_get_root(m_builder.get());
    g_autofree char* text = json_to_string(root, indented ? TRUE : FALSE);
    return text;
}

void JsonWriter::Name(const char* member) {
    if (member != nullptr) {
        json_builder_set_member_name(m_builder.get(), member);
    }
}

}  // namespace applist::sim
