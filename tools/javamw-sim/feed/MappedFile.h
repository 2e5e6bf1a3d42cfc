// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <glib.h>
#include <memory>
#include <string>
#include <string_view>

#include "Result.h"

namespace applist::sim {

struct UnmapFile {
    void operator()(GMappedFile* file) const { g_mapped_file_unref(file); }
};

/// A file's bytes, mapped since recordings are large and read several times over.
using MappedFile = std::unique_ptr<GMappedFile, UnmapFile>;

/// A failure names the file.
Result<MappedFile> MapFile(const std::string& file);

/// Valid as long as file is.
std::string_view ContentOf(const MappedFile& file);

}  // namespace applist::sim
