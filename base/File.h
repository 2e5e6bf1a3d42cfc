// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "Result.h"

namespace applist {

/// An open input: a file, a pipe, a FIFO or a device. Move-only. All failures name it.
class InputFile {
public:
    enum class Wait { ForWriter, No };

    /// "-" is standard input. Opening a FIFO waits until another process writes to it, unless wait
    /// is No.
    static Result<InputFile> Open(const std::string& name, Wait wait = Wait::ForWriter);
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    InputFile(InputFile&& other) noexcept;
    InputFile& operator=(InputFile&& other) noexcept;

    /// Waits for bytes and returns their number; 0 at the end.
    Result<size_t> Read(std::span<uint8_t> room);

    int descriptor() const { return m_descriptor; }
    /// True for a file on a disk, which can grow and be read again.
    bool IsRegular() const;

private:
    InputFile(std::string name, int descriptor);

    std::string m_name;
    int m_descriptor;
};

/// Returns the content of a file to its end. "-" is standard input.
Result<std::string> ReadFile(const std::string& name);

}  // namespace applist
