// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "Commands.h"

int main(int argc, char** argv) {
    return applist::tools::RunProgram(applist::desktop::PlatformctlProgram(),
                                      {argv + std::min(argc, 1), argv + argc});
}
