// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "shared/CommandLine.h"

int main(int argc, char** argv) {
    return applist::tools::RunProgram(applist::tools::TheProgram(),
                                      {argv + std::min(argc, 1), argv + argc});
}
