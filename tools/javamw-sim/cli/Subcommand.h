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

/// An option for the command line and the help. Options with the same name have the same meaning in
/// every subcommand, and either all or none of them take a value.
struct Option {
    std::string name;    ///< Without the dashes.
    char letter = '\0';  ///< The short form; none if 0.
    std::string value;   ///< Name of its value in the help; empty if it takes none.
    std::string help;    ///< Description on one line.
};

/// The options and words given to a subcommand.
class Arguments {
public:
    void AddOption(const std::string& name, const std::string& value) {
        m_options[name].push_back(value);
    }
    void AddWord(const std::string& word) { m_words.push_back(word); }

    bool Has(const std::string& name) const { return m_options.count(name) > 0; }
    /// Returns the last value of an option; empty if the option was not given.
    std::string Value(const std::string& name) const {
        return Has(name) ? m_options.at(name).back() : std::string();
    }
    /// Returns all values of an option that may be repeated, in order.
    std::vector<std::string> Values(const std::string& name) const {
        return Has(name) ? m_options.at(name) : std::vector<std::string>();
    }
    const std::map<std::string, std::vector<std::string>>& options() const { return m_options; }
    const std::vector<std::string>& words() const { return m_words; }

private:
    std::map<std::string, std::vector<std::string>> m_options;
    std::vector<std::string> m_words;
};

/// The work of one run of the program. Returns the exit status.
using Job = std::function<ExitCode()>;

/// A subcommand. The command line is parsed and the help is written from the table of all
/// subcommands.
struct Subcommand {
    std::string name;
    std::string words;            ///< Arguments for the help, "FUNCTION [ARG...]"; empty if none.
    std::string summary;          ///< Description on one line.
    std::vector<Option> options;  ///< In addition to --help.
    std::string details;          ///< Further paragraphs of the help, examples last.
    /// Checks the arguments and returns the work. A failure is wrong usage. Errors of files or of
    /// the bus are reported by the work itself.
    Result<Job> (*prepare)(const Arguments&) = nullptr;
};

/// All subcommands in the order of the help.
const std::vector<Subcommand>& Subcommands();

// Each subcommand is defined in a file of its own.
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
