// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// A program with a channel "Applist" on the system bus. Prints "ready" when it has one and then
// stays until it is killed.
#include <chrono>
#include <iostream>

#include "ipc/javamw-dbus-local.h"
#include "support/GlibWait.h"

int main() {
    const JavaMWDbusLocal channel("Applist");
    std::cout << "ready" << std::endl;
    return applist::test::RunUntil([] { return false; }, std::chrono::hours(1)) ? 0 : 1;
}
