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

/// applist-headless as a child process, driven by the lines that the test types.
class HeadlessApplication : public ChildProcess {
public:
    /// Starts it with fifo, a path that does not exist, as its input, and waits until it runs.
    HeadlessApplication(const std::string& fifo, const Environment& environment);
    ~HeadlessApplication();
    HeadlessApplication(const HeadlessApplication&) = delete;
    HeadlessApplication& operator=(const HeadlessApplication&) = delete;

    void Type(const std::string& line);
    /// Ends the input: the process ends when the lines are done.
    void EndInput();

private:
    int m_input = -1;
};

/// A private bus on which tests run applist-headless and javamw-sim.
class Simulation {
public:
    using Process = std::unique_ptr<ChildProcess>;

    /// Starts applist-headless and waits until it is ready.
    std::unique_ptr<HeadlessApplication> StartList();
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
    int m_lists = 0;
};

}  // namespace applist::test
