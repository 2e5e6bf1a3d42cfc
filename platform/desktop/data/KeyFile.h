// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Result.h"

using GKeyFile = struct _GKeyFile;

namespace applist::desktop {

/// The result of a change: nothing on success, else the reason for the failure. A failed change
/// leaves everything as it was.
using Failure = std::optional<std::string>;

/// The parsed content of one of the port's files: groups of keys with values. Comments and unknown
/// groups are kept. One thread at a time.
class KeyFile {
public:
    /// Parses content; fails if it is not a key file.
    static Result<KeyFile> Parse(std::string_view content);
    /// Reads the file at path; a missing file gives an empty key file. Takes no lock: files are
    /// replaced as a whole, so a reader sees either the old state or the new one.
    static Result<KeyFile> Load(const std::string& path);

    /// Returns the value as written in the file, without surrounding blanks, or nothing if the key
    /// is missing.
    std::optional<std::string> Get(const char* group, const std::string& key) const;
    /// Sets a value. REQUIRES: key and value do not contain brackets, '=' or line ends, and do not
    /// start or end with a blank.
    void Set(const char* group, const std::string& key, const std::string& value);
    /// Removes a value; does nothing if it does not exist.
    void Remove(const char* group, const std::string& key);
    std::string Text() const;

private:
    struct Free {
        void operator()(GKeyFile* file) const;
    };
    KeyFile();

    std::unique_ptr<GKeyFile, Free> m_file;
};

/// Applies change to the file at path. The whole read, change and replacement happens under a lock
/// (path + ".lock"), so concurrent writers do not lose changes. The file is replaced in one step,
/// so a killed process leaves either the old state or the new one. Missing folders are created.
///
/// Fails without a change if the file exists but cannot be read.
Failure UpdateKeyFile(const std::string& path, const std::function<void(KeyFile&)>& change);

}  // namespace applist::desktop
