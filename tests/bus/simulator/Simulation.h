// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/PrivateBus.h"
#include "support/ScriptedPeer.h"
#include "support/Simulator.h"
#include "support/TemporaryDir.h"

namespace applist::test {

/// A private bus on which tests run list_without_screen and javamw-sim.
class Simulation {
public:
    using Process = std::unique_ptr<ChildProcess>;

    /// Starts list_without_screen and waits until it is ready. ListWithoutScreen.cpp describes the
    /// signals that control it.
    Process StartList() const;
    /// Starts javamw-sim with these arguments on this bus.
    Process Start(std::vector<std::string> arguments) const;
    /// Runs javamw-sim until it ends by itself. Returns its exit status.
    int Run(const std::vector<std::string>& arguments);
    /// Standard output and standard error of the last Run().
    const std::string& output() const { return m_output; }
    const std::string& errors() const { return m_errors; }

    /// Sends SIGINT and waits. Returns the exit status.
    static int Interrupt(ChildProcess& process);

    std::string Path(const std::string& name) const { return (m_folder.path() / name).string(); }
    /// Writes content to the file called name and returns its path.
    std::string File(const std::string& name, const std::string& content) const;
    static std::string ContentOf(const std::string& file);

    PrivateBus& bus() { return m_bus; }

    /// Connects an application without a list; the test announces it.
    ScriptedPeer ConnectApplication() const {
        return ScriptedPeer(m_bus.Address(), "Applist", ScriptedPeer::APPLICATION);
    }

private:
    PrivateBus m_bus;
    TemporaryDir m_folder;
    std::string m_output;
    std::string m_errors;
};

}  // namespace applist::test
