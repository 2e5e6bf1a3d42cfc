// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "common/File.h"

namespace applist::sim {

Result<File> File::Read(const std::string& name) {
    const std::string path = name == "-" ? "/dev/stdin" : name;
    File file;
    file.m_mapped.reset(g_mapped_file_new(path.c_str(), FALSE, nullptr));
    if (file.m_mapped) {
        return file;
    }
    // A pipe or a terminal cannot be mapped, so it is read.
    GError* error = nullptr;
    char* content = nullptr;
    size_t size = 0;
    if (g_file_get_contents(path.c_str(), &content, &size, &error) == FALSE) {
        const std::string reason =
            error->code == G_FILE_ERROR_NOENT ? "no such file" : error->message;
        g_error_free(error);
        return Result<File>::Failure(name + ": " + reason);
    }
    file.m_read.assign(content, size);
    g_free(content);
    return file;
}

std::string_view File::content() const {
    if (m_mapped) {
        return {g_mapped_file_get_contents(m_mapped.get()),
                g_mapped_file_get_length(m_mapped.get())};
    }
    return m_read;
}

}  // namespace applist::sim
