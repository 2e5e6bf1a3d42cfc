// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/CommandLine.h"
#include "cli/Subcommand.h"
#include "common/Output.h"

namespace applist::sim {
namespace {

ExitCode Run(const std::vector<std::string>& arguments) {
    const auto job = ParseCommandLine(Subcommands(), arguments);
    if (!job) {
        Complain(job.error());
        return ExitCode::WrongUsage;
    }
    return (*job)();
}

}  // namespace
}  // namespace applist::sim

int main(int argc, char** argv) {
    return static_cast<int>(applist::sim::Run({argv, argv + argc}));
}
