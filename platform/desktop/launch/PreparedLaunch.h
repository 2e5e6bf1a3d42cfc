// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <unistd.h>

#include <sys/socket.h>
#include <sys/un.h>

/// The conversation of a launcher with a prepared process, over a SOCK_SEQPACKET socket:
///
/// 1. The launcher sends one message: the number of arguments (uint32_t), the arguments and the
///    variables of the environment, each with its terminating null, and PREPARED_DESCRIPTORS.
/// 2. The prepared process answers with one byte, and is the application from then on. It closes
///    the connection instead if it does not fit the request; the launcher then starts the program.
/// 3. The launcher sends each signal that it receives as one byte.
/// 4. The application sends its exit status (int). It ends if the launcher closes the connection,
///    and the launcher ends if the application does.
///
/// Uses the C library only, because loading other libraries would delay the launcher.
namespace applist::desktop {

/// Standard input, output and error, and the working directory.
constexpr size_t PREPARED_DESCRIPTORS = 4;

/// Requests that are larger start the program without a prepared process. A socket's buffer, 208
/// KiB by default, must hold one.
constexpr size_t PREPARED_REQUEST_BYTES = 192 << 10;

/// Returns the address of the prepared process of an application, in the user's runtime folder.
/// Nothing if there is no such folder or its name is too long.
inline std::optional<sockaddr_un> PreparedAddress(const std::string& applicationId) {
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = folder != nullptr ? folder + ("/" + applicationId + ".prepared") : "";
    if (path.empty() || path.size() >= sizeof address.sun_path) {
        return std::nullopt;
    }
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    return address;
}

/// Returns true if the process at the other end of the connection belongs to the same user.
inline bool PeerIsSameUser(int connection) {
    ucred peer{};
    socklen_t size = sizeof peer;
    return getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
           peer.uid == getuid();
}

}  // namespace applist::desktop
