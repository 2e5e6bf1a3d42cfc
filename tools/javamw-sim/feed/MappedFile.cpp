// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "feed/MappedFile.h"

#include <utility>

namespace applist::sim {

Result<MappedFile> MapFile(const std::string& file) {
    GError* error = nullptr;
    MappedFile mapped(g_mapped_file_new(file.c_str(), FALSE, &error));
    if (!mapped) {
        const std::string reason =
            error->code == G_FILE_ERROR_NOENT ? "no such file" : error->message;
        g_error_free(error);
        return Result<MappedFile>::Failure(file + ": " + reason);
    }
    return mapped;
}

std::string_view ContentOf(const MappedFile& file) {
    return {g_mapped_file_get_contents(file.get()), g_mapped_file_get_length(file.get())};
}

}  // namespace applist::sim
