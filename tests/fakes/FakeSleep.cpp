// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "fakes/FakeSleep.h"

#include <unistd.h>

namespace applist::test {

FakeSleep& TheSleep() {
    static FakeSleep sleep;
    return sleep;
}

}  // namespace applist::test

extern "C" int usleep(useconds_t microseconds) {
    auto& sleep = applist::test::TheSleep();
    sleep.pauses.push_back(microseconds);
    if (sleep.meanwhile) {
        sleep.meanwhile();
    }
    return 0;
}
