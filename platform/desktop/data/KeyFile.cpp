// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "data/KeyFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <glib.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include <sys/file.h>

namespace applist::desktop {
namespace {

// Holds an exclusive file lock, between processes and between threads, from construction to
// destruction. The system releases it if the holder is killed.
class FileLock {
public:
    // Waits for the lock on the file at path and creates the file if necessary. The file is never
    // removed: if it were, one process could hold a lock on the removed file while another locks
    // the new one.
    explicit FileLock(const std::string& path)
        : m_fd(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
        while (m_fd >= 0 && flock(m_fd, LOCK_EX) != 0) {
            // A signal handler may interrupt the wait; only other errors end it.
            if (errno != EINTR) {
                // close() may overwrite errno, which IsHeld() promises to leave for the caller.
                const int reason = errno;
                close(std::exchange(m_fd, -1));
                errno = reason;
            }
        }
    }
    ~FileLock() {
        if (m_fd >= 0) {
            close(m_fd);
        }
    }
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    FileLock(FileLock&&) = delete;
    FileLock& operator=(FileLock&&) = delete;

    // False if the file could not be opened or locked. errno then gives the reason, until the next
    // system call.
    bool IsHeld() const { return m_fd >= 0; }

private:
    int m_fd;
};

// Returns "PATH: WHAT: " and the system's text for the error code.
std::string SystemProblem(const std::string& path, const char* what, int code) {
    return path + ": " + what + ": " + std::strerror(code);
}

Failure MakeFolderOf(const std::string& path) {
    const auto folder = std::filesystem::path(path).parent_path();
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) {
        return folder.string() + ": cannot be created: " + error.message();
    }
    return {};
}

Failure Replace(const std::string& path, const std::string& text) {
    g_autoptr(GError) error = nullptr;
    // CONSISTENT writes a new file and renames it; DURABLE syncs it first, so that a power loss
    // cannot leave an empty file.
    const auto flags = static_cast<GFileSetContentsFlags>(G_FILE_SET_CONTENTS_CONSISTENT |
                                                          G_FILE_SET_CONTENTS_DURABLE);
    if (g_file_set_contents_full(path.c_str(), text.data(), static_cast<gssize>(text.size()), flags,
                                 0600, &error) == FALSE) {
        return path + ": cannot be written: " + error->message;
    }
    return {};
}

}  // namespace

void KeyFile::Free::operator()(GKeyFile* file) const {
    g_key_file_free(file);
}

KeyFile::KeyFile() : m_file(g_key_file_new()) {}

Result<KeyFile> KeyFile::Parse(std::string_view content) {
    // A file system may leave zero bytes after a power loss. The parser would take the first one
    // for the end of the file and drop the rest without an error.
    if (content.find('\0') != std::string_view::npos) {
        return Result<KeyFile>::Failure("damaged: contains zero bytes");
    }
    KeyFile file;
    g_autoptr(GError) error = nullptr;
    if (g_key_file_load_from_data(file.m_file.get(), content.data(), content.size(),
                                  G_KEY_FILE_KEEP_COMMENTS, &error) == FALSE) {
        return Result<KeyFile>::Failure(std::string("damaged: ") + error->message);
    }
    return file;
}

Result<KeyFile> KeyFile::Load(const std::string& path) {
    g_autofree char* content = nullptr;
    gsize length = 0;
    g_autoptr(GError) error = nullptr;
    if (g_file_get_contents(path.c_str(), &content, &length, &error) == FALSE) {
        // A missing file counts as empty, because the first write creates it.
        if (g_error_matches(error, G_FILE_ERROR, G_FILE_ERROR_NOENT)) {
            return KeyFile();
        }
        return Result<KeyFile>::Failure(path + ": cannot be read: " + error->message);
    }
    auto parsed = Parse({content, length});
    return parsed ? std::move(parsed) : Result<KeyFile>::Failure(path + ": " + parsed.error());
}

std::optional<std::string> KeyFile::Get(const char* group, const std::string& key) const {
    g_autofree char* value = g_key_file_get_value(m_file.get(), group, key.c_str(), nullptr);
    if (value == nullptr) {
        return {};
    }
    // GKeyFile keeps a trailing '\r' or blank in some places of a file and strips it in others.
    return g_strchomp(value);
}

void KeyFile::Set(const char* group, const std::string& key, const std::string& value) {
    g_key_file_set_value(m_file.get(), group, key.c_str(), value.c_str());
}

void KeyFile::Remove(const char* group, const std::string& key) {
    g_key_file_remove_key(m_file.get(), group, key.c_str(), nullptr);
}

std::string KeyFile::Text() const {
    gsize length = 0;
    g_autofree char* text = g_key_file_to_data(m_file.get(), &length, nullptr);
    return {text, length};
}

Failure UpdateKeyFile(const std::string& path, const std::function<void(KeyFile&)>& change) {
    if (Failure failure = MakeFolderOf(path)) {
        return failure;
    }
    const std::string lockPath = path + ".lock";
    const FileLock lock(lockPath);
    if (!lock.IsHeld()) {
        return SystemProblem(lockPath, "cannot be locked", errno);
    }
    // Read only after locking, so that changes of other writers are included.
    auto file = KeyFile::Load(path);
    // Writing would discard what a damaged file still contains.
    if (!file) {
        return file.error() + "; not changed, repair or remove it first";
    }
    change(*file);
    return Replace(path, file->Text());
}

}  // namespace applist::desktop
