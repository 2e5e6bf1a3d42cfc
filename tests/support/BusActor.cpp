// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/BusActor.h"

#include <csignal>
#include <sstream>

#include <gtest/gtest.h>

namespace applist::test {
namespace {

std::vector<std::string> CommandLine(const std::vector<std::string>& commands) {
    std::vector<std::string> argv{"bus_actor"};
    argv.insert(argv.end(), commands.begin(), commands.end());
    return argv;
}

void Replace(std::string& text, const std::string& what, const std::string& by) {
    // Unique names are matched with the blanks around them, so that :1.1 is not found in :1.10.
    const size_t found = (text + " ").find(" " + what + " ");
    if (found != std::string::npos) {
        text.replace(found + 1, what.size(), by);
    }
}

}  // namespace

Actor::Actor(const PolicyBus& bus, const User& user, const std::vector<std::string>& commands)
    : m_process(bus.Start(user, CommandLine(commands))) {
    const std::string& output = m_process->Output();
    EXPECT_TRUE(m_process->WaitUntil([&] { return output.find('\n') != std::string::npos; }))
        << user.name << ": " << m_process->Errors();
    std::istringstream(output) >> m_uniqueName >> m_uniqueName;
}

void Actor::AwaitReceiving() {
    EXPECT_TRUE(m_process->WaitForText("receiving\n")) << m_process->Errors();
}

void Actor::End() {
    m_process->Signal(SIGTERM);
}

std::vector<std::string> Actor::Lines(
    const std::vector<std::pair<std::string, std::string>>& names) {
    EXPECT_EQ(m_process->WaitForExit(), 0) << m_process->Errors();
    std::istringstream output(m_process->Output());
    std::vector<std::string> lines;
    std::string line;
    std::getline(output, line);
    while (std::getline(output, line)) {
        for (const auto& [uniqueName, name] : names) {
            Replace(line, uniqueName, name);
        }
        lines.push_back(line);
    }
    return lines;
}

}  // namespace applist::test
