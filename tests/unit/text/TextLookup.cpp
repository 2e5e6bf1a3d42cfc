// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0

// Prints one line for each message id that it is given: the text. Then what was logged. Tests copy
// it beside catalogues of their own, since it finds them by its place.

#include <cstdio>
#include <string>

#include "fakes/FakePlatformLog.h"
#include "i18n_text.h"
#include "text/Text.h"

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string id = argv[i];
        std::printf("%s\n", id == "--direction"
                                ? (applist::desktop::TextRunsRightToLeft() ? "rtl" : "ltr")
                                : i18n_get_text(std::string(id).c_str()));
    }
    for (const std::string& message : applist::test::LogMessages()) {
        std::printf("log: %s\n", message.c_str());
    }
    return 0;
}
