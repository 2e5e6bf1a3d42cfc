// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <glib.h>
#include <memory>
#include <string>
#include <string_view>

#include "common/Result.h"

namespace applist::sim {

/// The bytes of an input file. A regular file is mapped, because broadcasts are large; a pipe or a
/// device is read to its end.
class File {
public:
    /// "-" is standard input. A failure names the file.
    static Result<File> Read(const std::string& name);

    /// Valid as long as this object.
    std::string_view content() const;

private:
    struct Unmap {
        void operator()(GMappedFile* file) const { g_mapped_file_unref(file); }
    };
    std::unique_ptr<GMappedFile, Unmap> m_mapped;  ///< Null if the file was read.
    std::string m_read;
};

}  // namespace applist::sim
