// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "Result.h"
#include "middleware/MainLoop.h"
#include "scenario/Statement.h"

namespace applist::sim {

/// Writes results in the Test Anything Protocol, version 13, line by line.
class Tap {
public:
    /// Called with each line as soon as it is known.
    using Write = std::function<void(const std::string& line)>;

    Tap(Write write, bool colours) : m_write(std::move(write)), m_colours(colours) {}

    /// Must be called first, with the number of following points.
    void Plan(size_t points);
    void Pass(const std::string& description);
    void Skip(const std::string& description, const std::string& reason);
    /// where is "file:line". seen lists the events since the previous point.
    void Fail(const std::string& description, const std::string& where, const std::string& problem,
              const std::vector<std::string>& seen);
    void Comment(const std::string& text);
    /// The last line, if some points could not be run.
    void BailOut(const std::string& reason);

private:
    std::string Point(const char* result, const char* colour, const std::string& description);

    Write m_write;
    bool m_colours;
    size_t m_number = 0;
};

/// A scenario and its source.
struct Scenario {
    std::string file;  ///< Name as given; "-" is standard input.
    std::vector<Statement> statements;
};

/// Reads and parses a file. A failure has one line for each error: "FILE:LINE:COLUMN: message".
Result<Scenario> LoadScenario(const std::string& file);

/// Runs scenarios one after the other, each with its own middlewares, and prints the results.
/// SIGINT and SIGTERM end it early. address may be empty for the system bus. keepGoing continues
/// after a failure. Returns the exit code of the program.
ExitCode RunScenarios(const std::string& address, bool keepGoing, std::vector<Scenario> scenarios);

}  // namespace applist::sim
