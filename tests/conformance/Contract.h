// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <csignal>
#include <cstring>
#include <unistd.h>

#include <gtest/gtest.h>

namespace applist::test {

/// The contract that NameOnCrash() was last called with.
inline const char* g_contract = "";

/// If the port crashes from now on, writes contract to standard error before the process ends.
/// contract must have static storage.
inline void NameOnCrash(const char* contract) {
    g_contract = contract;
    struct sigaction action {};
    // Back to the default action after this, so that the process ends by the signal.
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    action.sa_handler = [](int signal) {
        static_cast<void>(!write(STDERR_FILENO, g_contract, std::strlen(g_contract)));
        static_cast<void>(std::raise(signal));
    };
    for (const int signal : {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL}) {
        sigaction(signal, &action, nullptr);
    }
}

}  // namespace applist::test

/// Until the end of the scope, each failure names the header of platform/include and the function
/// whose contract the port breaks. So does a crash.
#define CONTRACT(header, function)                                             \
    SCOPED_TRACE("the contract is in platform/include/" header ", " function); \
    applist::test::NameOnCrash("the contract is in platform/include/" header ", " function "\n")
