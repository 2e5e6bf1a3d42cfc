// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "protocol/Item.h"

using JsonBuilder = struct _JsonBuilder;

namespace applist::sim {

/// One JSON object on one line, for machines that read along.
class JsonLine {
public:
    JsonLine();

    /// Texts are what is written here, UTF-8.
    JsonLine& Add(const std::string& name, const std::string& text);
    JsonLine& Add(const std::string& name, int64_t number);
    /// {"id": ..., "name": ...}, or null.
    JsonLine& Add(const std::string& name, const std::optional<Item>& item);
    /// The members of item itself: id and name. What is not UTF-8 in them is replaced by U+FFFD;
    /// then the bytes follow in hexadecimal as id_hex or name_hex.
    JsonLine& AddItem(const Item& item);

    /// The finished line, without its end. Once only.
    std::string Text();

private:
    struct Unref {
        void operator()(JsonBuilder* builder) const;
    };
    void AddBytes(const std::string& name, const std::string& bytes);

    std::unique_ptr<JsonBuilder, Unref> m_builder;
};

}  // namespace applist::sim
