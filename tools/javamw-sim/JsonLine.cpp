// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "JsonLine.h"

#include <json-glib/json-glib.h>

namespace applist::sim {
namespace {

std::string Hex(const std::string& bytes) {
    constexpr const char* DIGITS = "0123456789abcdef";
    std::string digits;
    for (const char character : bytes) {
        const auto byte = static_cast<unsigned char>(character);
        digits += {DIGITS[byte / 16], DIGITS[byte % 16]};
    }
    return digits;
}

// No byte of zero may stand in the library's texts.
std::string Valid(const std::string& bytes) {
    g_autofree char* valid = g_utf8_make_valid(bytes.data(), static_cast<gssize>(bytes.size()));
    return valid;
}

}  // namespace

void JsonLine::Unref::operator()(JsonBuilder* builder) const {
    g_object_unref(builder);
}

JsonLine::JsonLine() : m_builder(json_builder_new()) {
    json_builder_begin_object(m_builder.get());
}

JsonLine& JsonLine::Add(const std::string& name, const std::string& text) {
    json_builder_set_member_name(m_builder.get(), name.c_str());
    json_builder_add_string_value(m_builder.get(), Valid(text).c_str());
    return *this;
}

JsonLine& JsonLine::Add(const std::string& name, int64_t number) {
    json_builder_set_member_name(m_builder.get(), name.c_str());
    json_builder_add_int_value(m_builder.get(), number);
    return *this;
}

JsonLine& JsonLine::Add(const std::string& name, const std::optional<Item>& item) {
    json_builder_set_member_name(m_builder.get(), name.c_str());
    if (!item) {
        json_builder_add_null_value(m_builder.get());
        return *this;
    }
    json_builder_begin_object(m_builder.get());
    AddItem(*item);
    json_builder_end_object(m_builder.get());
    return *this;
}

JsonLine& JsonLine::AddItem(const Item& item) {
    AddBytes("id", item.id);
    AddBytes("name", item.name);
    return *this;
}

void JsonLine::AddBytes(const std::string& name, const std::string& bytes) {
    Add(name, bytes);
    if (Valid(bytes) != bytes) {
        Add(name + "_hex", Hex(bytes));
    }
}

std::string JsonLine::Text() {
    json_builder_end_object(m_builder.get());
    g_autoptr(JsonNode) root = json_builder_get_root(m_builder.get());
    g_autofree char* text = json_to_string(root, FALSE);
    return text;
}

}  // namespace applist::sim
