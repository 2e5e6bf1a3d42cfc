// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/ChildProcess.h"
#include "support/PrivateBus.h"
#include "support/TemporaryDir.h"

namespace applist::test {

/// A bus, on which the application's list runs without a screen and javamw-sim in front of it.
class Simulation {
public:
    using Process = std::unique_ptr<ChildProcess>;

    /// The list, ready to be found. SIGUSR1 selects the next item, SIGUSR2 activates one and ends
    /// it, SIGTERM ends it.
    Process StartList() const;
    /// javamw-sim with these arguments on this bus.
    Process Start(std::vector<std::string> arguments) const;
    /// The same for a program that ends by itself. Its exit status.
    int Run(const std::vector<std::string>& arguments);
    /// What the last Run() printed.
    const std::string& output() const { return m_output; }
    const std::string& errors() const { return m_errors; }

    /// Sends SIGINT and waits; the exit status.
    static int Interrupt(ChildProcess& process);

    std::string Path(const std::string& name) const { return (m_folder.path() / name).string(); }
    /// The path of the file that now holds content.
    std::string File(const std::string& name, const std::string& content) const;
    static std::string ContentOf(const std::string& file);

    PrivateBus& bus() { return m_bus; }

private:
    PrivateBus m_bus;
    TemporaryDir m_folder;
    std::string m_output;
    std::string m_errors;
};

}  // namespace applist::test
