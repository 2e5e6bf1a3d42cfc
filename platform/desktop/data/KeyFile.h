// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Reading.h"

using GKeyFile = struct _GKeyFile;

namespace applist::desktop {

/// The text of one of the port's files, taken apart: groups of keys with values. What a person
/// wrote beside the values (comments, other groups) is kept. One thread at a time.
class KeyFile {
public:
    /// Takes content apart; a problem when it is no key file.
    static Reading<KeyFile> Parse(std::string_view content);
    /// Reads the file at path; one that does not exist is an empty key file. Takes no lock: files
    /// are replaced as a whole, so a reader sees one state or the next.
    static Reading<KeyFile> Load(const std::string& path);

    /// The value as it stands in the file, without blanks around it.
    std::optional<std::string> Get(const char* group, const std::string& key) const;
    /// REQUIRES: key and value are plain words, without brackets, '=', line ends or outer blanks.
    void Set(const char* group, const std::string& key, const std::string& value);
    /// Removes a value; nothing happens when there is none.
    void Remove(const char* group, const std::string& key);
    std::string Text() const;

private:
    struct Free {
        void operator()(GKeyFile* file) const;
    };
    KeyFile();

    std::unique_ptr<GKeyFile, Free> m_file;
};

/// Changes the file at path so that a killed process leaves the old state or the new one, and
/// writers at the same time lose none of their changes: read, change and replacement stand under
/// a lock (path + ".lock"), and the replacement is one step. Folders are made as needed.
///
/// A file that cannot be read is left alone, and that is the failure.
Failure UpdateKeyFile(const std::string& path, const std::function<void(KeyFile&)>& change);

}  // namespace applist::desktop
