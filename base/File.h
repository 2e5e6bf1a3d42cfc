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
    enum class Use {
        ToTheEnd,  ///< Opening a FIFO waits for a writer. Its last writer ends it.
        Live,      ///< Opening does not wait.
        Follow,    ///< As Live, but a FIFO does not end, because this process can write to it.
    };

    /// "-" is standard input.
    static Result<InputFile> Open(const std::string& name, Use use = Use::ToTheEnd);
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    InputFile(InputFile&& other) noexcept;
    InputFile& operator=(InputFile&& other) noexcept;

    /// Waits for bytes and returns their number; 0 at the end.
    Result<size_t> Read(std::span<uint8_t> room);

    int descriptor() const { return m_descriptor; }
    /// True for a file on a disk, which can grow.
    bool IsRegular() const;
    /// Returns an input that is readable when another process has changed this regular file.
    Result<InputFile> Watch() const;
    /// If the file has become shorter than what was read, goes back to its start and returns true.
    bool RewindIfTruncated();

private:
    InputFile(std::string name, int descriptor);

    std::string m_name;
    int m_descriptor;
};

/// Returns the content of a file to its end. "-" is standard input.
Result<std::string> ReadFile(const std::string& name);

}  // namespace applist
