// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

/// Shared by the tools: the table of a program's commands and options. The command line is parsed
/// with this table; help, completion and the options in the manual are written from it.
namespace applist::tools {

/// Exit status of both tools for a command line that cannot be used.
constexpr int WRONG_USAGE_STATUS = 2;

/// An option. Options with the same name have the same meaning in every command of a program, and
/// either all or none of them take a value.
struct Option {
    std::string name;    ///< Without the dashes.
    char letter = '\0';  ///< The short form; none if 0.
    std::string value;   ///< Name of its value in the help; empty if it takes none.
    std::string help;    ///< Description on one line.
};

/// The options and words that were given to a command.
class Arguments {
public:
    void AddOption(const std::string& name, const std::string& value) {
        m_options[name].push_back(value);
    }
    void AddWord(const std::string& word) { m_words.push_back(word); }
    /// Removes the name of the command, its first words. usage is the words that run the command.
    void TakeName(const std::string& usage, size_t words);

    bool Has(const std::string& name) const { return m_options.count(name) > 0; }
    /// Returns the last value of an option, or otherwise if the option was not given.
    std::string Value(const std::string& name, const std::string& otherwise = {}) const {
        return Has(name) ? m_options.at(name).back() : otherwise;
    }
    /// Returns all values of an option that may be repeated, in order.
    std::vector<std::string> Values(const std::string& name) const {
        return Has(name) ? m_options.at(name) : std::vector<std::string>();
    }
    const std::map<std::string, std::vector<std::string>>& options() const { return m_options; }
    const std::vector<std::string>& words() const { return m_words; }

    /// Prints error and where to read more on standard error. Returns WRONG_USAGE_STATUS.
    int Refuse(const std::string& error) const;

private:
    std::map<std::string, std::vector<std::string>> m_options;
    std::vector<std::string> m_words;
    std::string m_usage;
};

/// A command. Its name has one or two words: "serve", "factory get". The only command of a program
/// without commands has an empty name.
struct Command {
    std::string name;
    /// Arguments for the help: "FUNCTION [ARG...]"; empty if none. Their number is checked before
    /// the command runs.
    std::string words;
    std::string summary;          ///< Description on one line.
    std::vector<Option> options;  ///< In addition to those of the program.
    std::string details;          ///< Further paragraphs of the help, examples last.
    /// Checks the options, does the work and returns the exit status.
    int (*run)(const Arguments& given) = nullptr;
};

/// The table of a program: what its command line accepts, and the texts of its help.
struct Program {
    std::string name;
    std::string version;
    std::string purpose;            ///< A paragraph of the help.
    std::vector<Option> options;    ///< Options of every command, in addition to --help.
    std::vector<Command> commands;  ///< In the order of the help.
    std::string exitCodes;          ///< The last paragraph of the help.
    /// What completion offers for the name of a value or an argument; files if the list is empty.
    /// A name with "|" lists its words itself: "bool|int".
    std::map<std::string, std::vector<std::string>> values;
};

/// Defined by each program.
const Program& TheProgram();

/// Returns the words of text, which blanks separate.
std::vector<std::string> WordsOf(const std::string& text);

/// Options of the program itself and, except for --version, of every command.
Option HelpOption();
Option VersionOption();

/// Returns the output of --help: all commands and the exit codes.
std::string ProgramHelp(const Program& program);

/// Returns the output of "COMMAND --help".
std::string CommandHelp(const Program& program, const Command& command);

/// Returns " (did you mean WORD?)" with the known word that is most similar to word, or an empty
/// string if none is similar.
std::string Suggestion(const std::string& word, const std::vector<std::string>& known);

/// A line that stands for the names of files in the output of Candidates().
constexpr const char* FILES = "*";

/// Returns what can stand for the last of words, one line each: the candidate, a tab and its
/// description, if it has one; or FILES. words are those after the program's name, up to the one
/// that is being typed. They may be split at "=", as bash does. For "--text=d" the candidates are
/// only values.
std::vector<std::string> Candidates(const Program& program, const std::vector<std::string>& words);

/// Runs the program: a command, or printing the help or the version. Options may appear anywhere;
/// after "--" all words are arguments. A word like "-5" is an argument. words do not include the
/// name of the program. Returns the exit status. If the first word is "--complete", prints the
/// Candidates() for the other words; the completion scripts use this.
int RunProgram(const Program& program, std::vector<std::string> words);

}  // namespace applist::tools
