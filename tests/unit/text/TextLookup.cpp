// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0

// Prints the text of each message id in its arguments, one per line, and then the log lines. It
// looks for catalogues relative to its own path, so tests copy it beside their catalogues.

#include <cstdio>
#include <string>

#include "data/Text.h"
#include "fakes/FakePlatformLog.h"
#include "i18n_text.h"

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
