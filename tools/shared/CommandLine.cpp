// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "shared/CommandLine.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <iterator>
#include <limits>
#include <optional>
#include <sstream>

#include "shared/Completion.h"
#include "shared/Help.h"
#include "shared/Output.h"

namespace applist::tools {
namespace {

using Words = std::vector<std::string>;

constexpr size_t ANY_NUMBER = std::numeric_limits<size_t>::max();

/// Separates options and words.
class Reader {
public:
    explicit Reader(const Program& program) : m_options(program) {}

    /// Returns an empty string on success, otherwise the error.
    std::string Read(const Words& words) {
        m_next = words.begin();
        m_end = words.end();
        std::string error;
        while (error.empty() && m_next != m_end) {
            const std::string& word = *m_next++;
            // By the POSIX guidelines, "--" ends the options.
            if (word == "--") {
                std::for_each(m_next, m_end, [&](const std::string& rest) { given.AddWord(rest); });
                break;
            }
            // A lone "-" is a file name, and a digit after the sign begins a negative number.
            if (word.size() < 2 || word[0] != '-' || std::isdigit(word[1]) != 0) {
                given.AddWord(word);
            } else {
                error = word[1] == '-' ? ReadLong(word) : ReadLetters(word);
            }
        }
        return error;
    }

    Arguments given;

private:
    std::string ReadLong(const std::string& word) {
        const size_t sign = std::min(word.find('='), word.size());
        const std::string name = word.substr(0, sign);
        const Option* option = m_options.Find(name);
        if (option == nullptr) {
            return "unknown option " + name;
        }
        if (sign == word.size()) {
            return Take(*option, std::nullopt);
        }
        return option->value.empty() ? name + " takes no value"
                                     : Take(*option, word.substr(sign + 1));
    }

    std::string ReadLetters(const std::string& word) {
        for (size_t i = 1; i < word.size(); ++i) {
            const std::string letter{'-', word[i]};
            const Option* option = m_options.Find(letter);
            if (option == nullptr) {
                return "unknown option " + letter;
            }
            // The rest of the word is the value: "-abc" means "-a bc" if -a takes one.
            const bool attached = !option->value.empty() && i + 1 < word.size();
            std::string error =
                Take(*option, attached ? std::optional(word.substr(i + 1)) : std::nullopt);
            if (attached || !error.empty()) {
                return error;
            }
        }
        return {};
    }

    // The value is the next word unless it is attached to the option.
    std::string Take(const Option& option, const std::optional<std::string>& attached) {
        if (attached || option.value.empty()) {
            given.AddOption(option.name, attached.value_or(""));
        } else if (m_next == m_end) {
            return "missing argument for --" + option.name;
        } else {
            given.AddOption(option.name, *m_next++);
        }
        return {};
    }

    Options m_options;
    Words::const_iterator m_next;
    Words::const_iterator m_end;
};

// Returns the least and the greatest number of arguments: one each for "KEY", none to one for
// "[KEY]", one and more for "KEY...".
std::pair<size_t, size_t> Numbers(const std::string& forms) {
    size_t least = 0;
    size_t most = 0;
    for (const std::string& form : WordsOf(forms)) {
        const bool repeated = form.find("...") != std::string::npos;
        least += form.front() == '[' ? 0 : 1;
        most = repeated || most == ANY_NUMBER ? ANY_NUMBER : most + 1;
    }
    return {least, most};
}

// Returns an empty string on success.
std::string Check(const Program& program, const Command& command, const Arguments& given) {
    const auto isAmong = [](const std::vector<Option>& options, const std::string& name) {
        return std::any_of(options.begin(), options.end(),
                           [&](const Option& option) { return option.name == name; });
    };
    const std::string& subject = command.name.empty() ? program.name : command.name;
    for (const auto& [name, values] : given.options()) {
        if (!isAmong(command.options, name) && !isAmong(program.options, name)) {
            return subject + " takes no option --" + name;
        }
    }
    const auto [least, most] = Numbers(command.words);
    const size_t count = given.words().size();
    if (count < least || count > most) {
        return subject + " takes " + (most == 0 ? "no arguments" : command.words);
    }
    return {};
}

int Print(const std::string& text) {
    return Write(text) ? 0 : 1;
}

int RunCommand(const Program& program, const Command& command, Arguments& given) {
    given.TakeName(CallOf(program, command), WordsOf(command.name).size());
    // Ahead of the check, because help is asked for without the arguments.
    if (given.Has("help")) {
        return Print(CommandHelp(program, command));
    }
    const std::string error = Check(program, command, given);
    return error.empty() ? command.run(given) : given.Refuse(error);
}

// An invalid option is most likely one of the command, so the error names the help of the command.
int RefuseUnread(const Program& program, const Words& words, const std::string& error) {
    Arguments given;
    given.TakeName(program.name, 0);
    for (auto word = words.begin(); word != words.end(); ++word) {
        if (const Command* command = FindCommand(program, {word, words.end()})) {
            given.TakeName(CallOf(program, *command), 0);
            break;
        }
    }
    return given.Refuse(error);
}

std::string UnknownCommand(const Program& program, const std::string& name) {
    Words names{"help"};
    std::transform(program.commands.begin(), program.commands.end(), std::back_inserter(names),
                   [](const Command& command) { return command.name; });
    return "unknown command '" + name + "'" + Suggestion(name, names);
}

}  // namespace

Options::Options(const Program& program) : m_options{HelpOption(), VersionOption()} {
    // The options of all commands are read, because an option may precede its command. Check()
    // refuses those of other commands.
    m_options.insert(m_options.end(), program.options.begin(), program.options.end());
    for (const Command& command : program.commands) {
        m_options.insert(m_options.end(), command.options.begin(), command.options.end());
    }
}

const Option* Options::Find(const std::string& word) const {
    const auto found = std::find_if(m_options.begin(), m_options.end(), [&](const Option& option) {
        return word == "--" + option.name || word == std::string{'-', option.letter};
    });
    return found == m_options.end() ? nullptr : &*found;
}

Words WordsOf(const std::string& text) {
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

std::string CallOf(const Program& program, const Command& command) {
    return command.name.empty() ? program.name : program.name + ' ' + command.name;
}

const Command* FindCommand(const Program& program, const Words& words) {
    const auto found =
        std::find_if(program.commands.begin(), program.commands.end(), [&](const Command& command) {
            const Words name = WordsOf(command.name);
            return name.size() <= words.size() &&
                   std::equal(name.begin(), name.end(), words.begin());
        });
    return found == program.commands.end() ? nullptr : &*found;
}

void Arguments::TakeName(const std::string& usage, size_t words) {
    m_usage = usage;
    m_words.erase(m_words.begin(), m_words.begin() + static_cast<std::ptrdiff_t>(words));
}

int Arguments::Refuse(const std::string& error) const {
    const std::string program = m_usage.substr(0, m_usage.find(' '));
    static_cast<void>(std::fprintf(stderr, "%s: %s; see %s --help\n", program.c_str(),
                                   error.c_str(), m_usage.c_str()));
    return WRONG_USAGE_STATUS;
}

Option HelpOption() {
    return {"help", 'h', "", "Print the help"};
}

Option VersionOption() {
    return {"version", '\0', "", "Print the version"};
}

int RunProgram(const Program& program, std::vector<std::string> words) {
    // Ahead of all parsing, because an unfinished command line is not valid yet.
    if (!words.empty() && words.front() == "--complete") {
        std::string text;
        for (const std::string& line : Candidates(program, {words.begin() + 1, words.end()})) {
            text += line + '\n';
        }
        return Print(text);
    }
    // "help" and "help COMMAND" mean "--help" and "COMMAND --help".
    const bool hasCommands = FindCommand(program, {}) == nullptr;
    if (hasCommands && !words.empty() && words.front() == "help") {
        words.front() = "--help";
    }
    Reader reader(program);
    const std::string error = reader.Read(words);
    Arguments& given = reader.given;
    if (!error.empty()) {
        return RefuseUnread(program, words, error);
    }
    if (given.Has("version")) {
        return Print(program.name + ' ' + program.version + '\n');
    }
    if (hasCommands && given.words().empty() && given.Has("help")) {
        return Print(ProgramHelp(program));
    }
    if (Command const* command = FindCommand(program, given.words())) {
        return RunCommand(program, *command, given);
    }
    return RefuseUnread(
        program, {},
        given.words().empty() ? "no command" : UnknownCommand(program, given.words().front()));
}

}  // namespace applist::tools
