// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "SettingsStore.h"

using JsonBuilder = struct _JsonBuilder;

namespace applist::desktop {

/// One JSON document, written from front to back. REQUIRES: what is opened is closed.
class Json {
public:
    Json();

    /// Opens an object, or the array called name in the object around it.
    Json& Object();
    Json& Array(const char* name);
    /// Closes the innermost of either kind.
    Json& EndObject();
    Json& EndArray();

    /// Members of an object.
    Json& Member(const char* name, const std::string& text);
    Json& Member(const char* name, const char* text);
    /// No value is null.
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
