// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "data/SettingsStore.h"

using JsonBuilder = struct _JsonBuilder;

namespace applist::desktop {

/// Writes one JSON document sequentially. REQUIRES: every opened object and array is closed before
/// Print().
class Json {
public:
    Json();

    /// Object() opens an object; Array() opens the array called name in the current object.
    Json& Object();
    Json& Array(const char* name);
    /// EndObject() and EndArray() close the innermost object or array.
    Json& EndObject();
    Json& EndArray();

    /// Adds a member to the current object.
    Json& Member(const char* name, const std::string& text);
    Json& Member(const char* name, const char* text);
    /// Adds a member; a missing value is written as null.
    Json& Member(const char* name, const std::optional<Setting>& value);

    /// Writes the document and a line end to standard output.
    void Print() const;

private:
    struct Unref {
        void operator()(JsonBuilder* builder) const;
    };
    std::unique_ptr<JsonBuilder, Unref> m_builder;
};

}  // namespace applist::desktop
