// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "Json.h"

#include <cstdio>

#include <json-glib/json-glib.h>

namespace applist::desktop {

void Json::Unref::operator()(JsonBuilder* builder) const {
    g_object_unref(builder);
}

Json::Json() : m_builder(json_builder_new()) {}

Json& Json::Object() {
    json_builder_begin_object(m_builder.get());
    return *this;
}

Json& Json::Array(const char* name) {
    json_builder_set_member_name(m_builder.get(), name);
    json_builder_begin_array(m_builder.get());
    return *this;
}

Json& Json::EndObject() {
    json_builder_end_object(m_builder.get());
    return *this;
}

Json& Json::EndArray() {
    json_builder_end_array(m_builder.get());
    return *this;
}

Json& Json::Member(const char* name, const std::string& text) {
    return Member(name, text.c_str());
}

Json& Json::Member(const char* name, const char* text) {
    json_builder_set_member_name(m_builder.get(), name);
    json_builder_add_string_value(m_builder.get(), text);
    return *this;
}

Json& Json::Member(const char* name, const std::optional<Setting>& value) {
    json_builder_set_member_name(m_builder.get(), name);
    if (!value) {
        json_builder_add_null_value(m_builder.get());
    } else if (const bool* truth = std::get_if<bool>(&*value)) {
        json_builder_add_boolean_value(m_builder.get(), *truth ? TRUE : FALSE);
    } else {
        json_builder_add_int_value(m_builder.get(), std::get<int32_t>(*value));
    }
    return *this;
}

void Json::Print() const {
    g_autoptr(JsonNode) root = json_builder_get_root(m_builder.get());
    g_autofree char* text = json_to_string(root, TRUE);
    std::printf("%s\n", text);
}

}  // namespace applist::desktop
