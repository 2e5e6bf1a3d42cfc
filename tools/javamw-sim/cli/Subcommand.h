// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "common/Output.h"
#include "common/Result.h"

namespace applist::sim {

/// An option as the command line and the help know it. An option of one name means the same and
/// takes a value, or none, with every subcommand that has it.
struct Option {
    std::string name;    ///< Without the dashes.
    char letter = '\0';  ///< The short form; none if 0.
    std::string value;   ///< What the help calls its value; empty for an option that takes none.
    std::string help;    ///< What it does, on one line.
};

/// What was given to a subcommand: options that it has, and words.
class Arguments {
public:
    void AddOption(const std::string& name, const std::string& value) {
        m_options[name].push_back(value);
    }
    void AddWord(const std::string& word) { m_words.push_back(word); }

    bool Has(const std::string& name) const { return m_options.count(name) > 0; }
    /// The value that was given last; empty if the option was not given.
    std::string Value(const std::string& name) const {
        return Has(name) ? m_options.at(name).back() : std::string();
    }
    /// All values of an option that may be repeated, in their order.
    std::vector<std::string> Values(const std::string& name) const {
        return Has(name) ? m_options.at(name) : std::vector<std::string>();
    }
    const std::map<std::string, std::vector<std::string>>& options() const { return m_options; }
    const std::vector<std::string>& words() const { return m_words; }

private:
    std::map<std::string, std::vector<std::string>> m_options;
    std::vector<std::string> m_words;
};

/// The work of one run of the program; the result is the exit status.
using Job = std::function<ExitCode()>;

/// One thing that the program can do: a row of the table in subcommands/Subcommands.cpp, from which
/// the command line is read and the help is written.
struct Subcommand {
    std::string name;
    std::string words;    ///< What follows the name; empty for nothing: "FUNCTION [ARG...]".
    std::string summary;  ///< What it does, on one line.
    std::vector<Option> options;  ///< Besides --help.
    std::string details;          ///< Paragraphs for its own help, examples last.
    /// Checks what was given and returns the work. A failure is wrong usage; it says what is wrong.
    /// What goes wrong with files or the bus is for the work itself to say.
    Result<Job> (*prepare)(const Arguments&) = nullptr;
};

/// All that the program can do, in the order of the help.
const std::vector<Subcommand>& Subcommands();

// The rows, each in a file of its own.
Subcommand ApplicationsSubcommand();
Subcommand CallSubcommand();
Subcommand CompareSubcommand();
Subcommand RecordSubcommand();
Subcommand ReplaySubcommand();
Subcommand RunSubcommand();
Subcommand ServeSubcommand();
Subcommand ShellSubcommand();
Subcommand WatchSubcommand();

}  // namespace applist::sim
