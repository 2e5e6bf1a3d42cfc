// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "File.h"

#include <cerrno>
#include <fcntl.h>
#include <glib.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include <sys/inotify.h>
#include <sys/stat.h>

namespace applist {
namespace {

constexpr size_t CHUNK = 65536;
// By default the system allows no more to a process without privileges.
constexpr int PIPE_SIZE = 1024 * 1024;

// Call directly after the failure, because the reason is in errno.
std::string Failure(const std::string& name) {
    return (name.empty() ? "''" : name) + ": " +
           (errno == ENOENT ? "no such file" : g_strerror(errno));
}

bool IsFifo(const std::string& name) {
    struct stat status {};
    return stat(name.c_str(), &status) == 0 && S_ISFIFO(status.st_mode);
}

}  // namespace

InputFile::InputFile(std::string name, int descriptor)
    : m_name(std::move(name)), m_descriptor(descriptor) {}

InputFile::~InputFile() {
    if (m_descriptor >= 0) {
        close(m_descriptor);
    }
}

InputFile::InputFile(InputFile&& other) noexcept
    : m_name(std::move(other.m_name)), m_descriptor(std::exchange(other.m_descriptor, -1)) {}

InputFile& InputFile::operator=(InputFile&& other) noexcept {
    // other closes the former descriptor of this object.
    std::swap(m_name, other.m_name);
    std::swap(m_descriptor, other.m_descriptor);
    return *this;
}

Result<InputFile> InputFile::Open(const std::string& name, Use use) {
    // A FIFO that this process can write to does not end when its last writer closes it.
    const int mode = (use == Use::Follow && IsFifo(name) ? O_RDWR : O_RDONLY) |
                     (use == Use::ToTheEnd ? 0 : O_NONBLOCK) | O_CLOEXEC;
    // Standard input is duplicated, because this object closes its descriptor.
    const int descriptor =
        name == "-" ? fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0) : open(name.c_str(), mode);
    if (descriptor < 0) {
        return Result<InputFile>::Failure(Failure(name));
    }
    InputFile file(name, descriptor);
    // Only opening must not wait. Standard input keeps its flags, which other processes share.
    if (name != "-") {
        fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) & ~O_NONBLOCK);
    }
    // A tuner drops bytes while a pipe is full. The size is not changed if the system refuses it.
    if (use != Use::ToTheEnd) {
        fcntl(descriptor, F_SETPIPE_SZ, PIPE_SIZE);
    }
    return file;
}

Result<size_t> InputFile::Read(std::span<uint8_t> room) {
    ssize_t count = -1;
    do {
        count = read(m_descriptor, room.data(), room.size());
        // A signal that is handled interrupts the wait, but is not an error of the file.
    } while (count < 0 && errno == EINTR);
    return count >= 0 ? Result(static_cast<size_t>(count))
                      : Result<size_t>::Failure(Failure(m_name));
}

bool InputFile::IsRegular() const {
    struct stat status {};
    return fstat(m_descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

Result<InputFile> InputFile::Watch() const {
    InputFile changes(m_name, inotify_init1(IN_CLOEXEC));
    // By descriptor, because standard input does not have a name.
    const std::string path = "/proc/self/fd/" + std::to_string(m_descriptor);
    if (changes.m_descriptor < 0 ||
        inotify_add_watch(changes.m_descriptor, path.c_str(), IN_MODIFY) < 0) {
        return Result<InputFile>::Failure(Failure(m_name));
    }
    return changes;
}

bool InputFile::RewindIfTruncated() {
    struct stat status {};
    // The writer has truncated the file, so the new content is at its start.
    const bool truncated =
        fstat(m_descriptor, &status) == 0 && status.st_size < lseek(m_descriptor, 0, SEEK_CUR);
    return truncated && lseek(m_descriptor, 0, SEEK_SET) == 0;
}

Result<std::string> ReadFile(const std::string& name) {
    auto file = InputFile::Open(name);
    if (!file) {
        return Result<std::string>::Failure(file.error());
    }
    std::string content;
    std::vector<uint8_t> chunk(CHUNK);
    for (auto count = file->Read(chunk);; count = file->Read(chunk)) {
        if (!count) {
            return Result<std::string>::Failure(count.error());
        }
        if (*count == 0) {
            return content;
        }
        content.append(chunk.begin(), chunk.begin() + static_cast<std::ptrdiff_t>(*count));
    }
}

}  // namespace applist
