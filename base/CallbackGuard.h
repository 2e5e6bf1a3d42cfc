// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <exception>
#include <utility>

#include "Log.h"

namespace applist {

/// Runs the body of a callback that C code calls. Exceptions must not cross C stack frames, so
/// every callback goes through here. In practice only standard-library exceptions occur, mostly
/// std::bad_alloc.
///
/// Returns the body's result. If the body throws, logs an error and returns fallback.
template <typename Result, typename Body>
Result GuardCallback(Result fallback, Body&& body) noexcept {
    try {
        return std::forward<Body>(body)();
    } catch (const std::exception& error) {
        LOG_ERROR("Callback aborted: %s", error.what());
    } catch (...) {
        LOG_ERROR("Callback aborted: unknown exception");
    }
    return fallback;
}

/// Overload for a body that returns void.
template <typename Body>
void GuardCallback(Body&& body) noexcept {
    GuardCallback(false, [&body] {
        std::forward<Body>(body)();
        return true;
    });
}

}  // namespace applist
