// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "bus/simulator/Simulation.h"

#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <unistd.h>
#include <utility>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace applist::test {

namespace {

std::string MadeFifo(const std::string& path) {
    EXPECT_EQ(mkfifo(path.c_str(), 0600), 0);
    return path;
}

}  // namespace

HeadlessApplication::HeadlessApplication(const std::string& fifo, const Environment& environment)
    : ChildProcess({BuiltProgram("applist-headless"), MadeFifo(fifo)}, environment) {
    // For reading, too, because opening it must not wait for the child.
    m_input = open(fifo.c_str(), O_RDWR | O_CLOEXEC);
    Type("state");
    EXPECT_TRUE(WaitForText("\"running\":true"));
}

HeadlessApplication::~HeadlessApplication() {
    EndInput();
}

void HeadlessApplication::Type(const std::string& line) {
    const std::string text = line + "\n";
    EXPECT_EQ(write(m_input, text.data(), text.size()), static_cast<ssize_t>(text.size()));
}

void HeadlessApplication::EndInput() {
    if (m_input >= 0) {
        close(std::exchange(m_input, -1));
    }
}

std::unique_ptr<HeadlessApplication> Simulation::StartList() {
    return std::make_unique<HeadlessApplication>(Path("keys" + std::to_string(++m_lists)),
                                                 m_bus.Environment());
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
