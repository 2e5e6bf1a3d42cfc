// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/ChildProcess.h"
#include "support/TemporaryDir.h"

namespace applist::test {

/// The sample application as a child process with a temporary home. It has only the buses and
/// screens in the environment that the test passes. SampleApp.cpp describes its output.
class SampleProcess {
public:
    explicit SampleProcess(const std::vector<std::string>& options,
                           const ChildProcess::Environment& environment = {})
        : m_process(Command(options), Surroundings(environment)) {}

    ChildProcess& Process() { return m_process; }
    const std::string& Output() const { return m_process.Output(); }
    const std::string& Errors() const { return m_process.Errors(); }
    bool WaitForText(const std::string& text) { return m_process.WaitForText(text); }
    std::optional<int> WaitForExit() { return m_process.WaitForExit(); }
    /// The folder for home, run-time files and temporary files.
    const std::filesystem::path& Home() const { return m_home.path(); }
    /// True iff the line has been written at least count times.
    bool WaitForLines(const std::string& line, int count) {
        return m_process.WaitUntil([&] { return Count(line) >= count; });
    }
    int Count(const std::string& line) const { return CountText("\n" + line + "\n"); }
    /// The lines that start with this text.
    int CountStarting(const std::string& start) const { return CountText("\n" + start); }

private:
    int CountText(const std::string& text) const {
        int count = 0;
        const std::string lines = "\n" + Output();
        for (size_t at = lines.find(text); at != std::string::npos; at = lines.find(text, at + 1)) {
            ++count;
        }
        return count;
    }
    static std::vector<std::string> Command(const std::vector<std::string>& options) {
        std::vector<std::string> command{TestProgram("port-sample")};
        command.insert(command.end(), options.begin(), options.end());
        return command;
    }
    ChildProcess::Environment Surroundings(const ChildProcess::Environment& environment) const {
        const std::string home = m_home.path();
        ChildProcess::Environment all{
            {"HOME", home},
            {"TMPDIR", home},
            {"XDG_RUNTIME_DIR", home},
            {"XDG_CACHE_HOME", std::nullopt},
            {"XDG_CONFIG_HOME", std::nullopt},
            {"XDG_DATA_HOME", std::nullopt},
            {"APPLIST_LOG", std::nullopt},
            {"DISPLAY", std::nullopt},
            {"WAYLAND_DISPLAY", std::nullopt},
            {"DBUS_SESSION_BUS_ADDRESS", std::nullopt},
            {"DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + home + "/none"},
        };
        for (const auto& [name, value] : environment) {
            all[name] = value;
        }
        if (!environment.contains("DISPLAY")) {
            // Windows are drawn in memory.
            all.emplace("ELM_ENGINE", "buffer");
        }
        return all;
    }

    TemporaryDir m_home;
    ChildProcess m_process;
};

}  // namespace applist::test
