// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <exception>
#include <utility>

#include "Log.h"

namespace applist {

/// Runs the body of a callback that C code called, so that no exception crosses into C. The only
/// ones that can arise are the standard library's own, out of memory above all.
///
/// Returns what the body returns, or fallback after an exception, which is logged.
template <typename Result, typename Body>
Result GuardCallback(Result fallback, Body&& body) noexcept {
    try {
        return std::forward<Body>(body)();
    } catch (const std::exception& error) {
        LOG_ERROR("Callback given up: %s", error.what());
    } catch (...) {
        LOG_ERROR("Callback given up: unknown exception");
    }
    return fallback;
}

/// The same for a body without a result.
template <typename Body>
void GuardCallback(Body&& body) noexcept {
    GuardCallback(false, [&body] {
        std::forward<Body>(body)();
        return true;
    });
}

}  // namespace applist
