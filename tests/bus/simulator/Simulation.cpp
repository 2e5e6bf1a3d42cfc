// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "bus/simulator/Simulation.h"

#include <csignal>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

namespace applist::test {

Simulation::Process Simulation::StartList() const {
    auto list = std::make_unique<ChildProcess>(std::vector<std::string>{LIST_WITHOUT_SCREEN},
                                               m_bus.Environment());
    EXPECT_TRUE(list->WaitForText("ready"));
    return list;
}

Simulation::Process Simulation::Start(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), BuiltProgram("javamw-sim"));
    return std::make_unique<ChildProcess>(arguments, m_bus.Environment());
}

int Simulation::Run(const std::vector<std::string>& arguments) {
    const Outcome outcome = RunSimulator(arguments, m_bus.Environment());
    m_output = outcome.output;
    m_errors = outcome.errors;
    return outcome.status;
}

int Simulation::Interrupt(ChildProcess& process) {
    process.Signal(SIGINT);
    return process.WaitForExit().value_or(-1);
}

std::string Simulation::File(const std::string& name, const std::string& content) const {
    std::ofstream(Path(name), std::ios::binary) << content;
    return Path(name);
}

std::string Simulation::ContentOf(const std::string& file) {
    std::ostringstream content;
    content << std::ifstream(file, std::ios::binary).rdbuf();
    return content.str();
}

}  // namespace applist::test
