// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/Subcommand.h"

namespace applist::sim {

const std::vector<Subcommand>& Subcommands() {
    static const std::vector<Subcommand> TABLE{
        ServeSubcommand(),  WatchSubcommand(),  CallSubcommand(),
        RunSubcommand(),    ShellSubcommand(),  ApplicationsSubcommand(),
        RecordSubcommand(), ReplaySubcommand(), CompareSubcommand(),
    };
    return TABLE;
}

}  // namespace applist::sim
