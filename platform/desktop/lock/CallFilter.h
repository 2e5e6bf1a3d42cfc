// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include <linux/filter.h>

namespace applist::desktop {

/// What the filter must not refuse, because the set needs it.
struct CallNeeds {
    /// A screen reader or speech may start later, which connects to a Unix socket.
    bool connections = false;
    /// Wayland: the toolkit creates a file for each buffer of a window, and removes it at once.
    bool newFiles = false;
};

/// Returns the seccomp filter of the calls in lock/refused-calls.txt. A refused call returns EPERM,
/// or ENOSYS if the caller then uses another call. Any thread.
std::vector<sock_filter> CallFilter(const CallNeeds& needs);

/// Installs the filter in all threads of the process, permanently. Returns 0, or the error code if
/// the kernel does not offer this. REQUIRES: the process cannot gain privileges
/// (PR_SET_NO_NEW_PRIVS).
int RefuseCalls(const CallNeeds& needs);

}  // namespace applist::desktop
