// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "shared/CommandLine.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <iterator>
#include <limits>
#include <numeric>
#include <optional>
#include <sstream>

#include "shared/Output.h"

namespace applist::tools {
namespace {

using Words = std::vector<std::string>;

/// The options of all commands of a program, because options may precede the name of the command.
/// Check() refuses those of other commands.
class Options {
public:
    explicit Options(const Program& program) : m_options{HelpOption(), VersionOption()} {
        m_options.insert(m_options.end(), program.options.begin(), program.options.end());
        for (const Command& command : program.commands) {
            m_options.insert(m_options.end(), command.options.begin(), command.options.end());
        }
    }

    /// word is "--name" or "-n". Returns nullptr if there is no such option.
    const Option* Find(const std::string& word) const {
        const auto found = std::ranges::find_if(m_options, [&](const Option& option) {
            return word == "--" + option.name || word == std::string{'-', option.letter};
        });
        return found == m_options.end() ? nullptr : &*found;
    }

private:
    std::vector<Option> m_options;
};

// Returns the words that run a command: "platformctl factory get".
std::string CallOf(const Program& program, const Command& command) {
    return command.name.empty() ? program.name : program.name + ' ' + command.name;
}

// Returns the command whose name begins words, or nullptr.
const Command* FindCommand(const Program& program, const Words& words) {
    const auto found = std::ranges::find_if(program.commands, [&](const Command& command) {
        const Words name = WordsOf(command.name);
        return std::ranges::mismatch(name, words).in1 == name.end();
    });
    return found == program.commands.end() ? nullptr : &*found;
}

}  // namespace

Words WordsOf(const std::string& text) {
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

Option HelpOption() {
    return {"help", 'h', "", "Print the help"};
}

Option VersionOption() {
    return {"version", '\0', "", "Print the version"};
}

namespace {

constexpr size_t WIDEST_LEFT = 24;

struct Row {
    std::string left;
    std::string right;
};

// Formats two columns. If the left part is too wide, the right part starts on the next line.
std::string Columns(const std::vector<Row>& rows) {
    size_t width = 0;
    for (const Row& row : rows) {
        width = std::max(width, std::min(row.left.size(), WIDEST_LEFT));
    }
    std::string text;
    for (const Row& row : rows) {
        const bool fits = row.left.size() <= width;
        text += "  " + row.left;
        text += fits ? std::string(width - row.left.size() + 2, ' ')
                     : "\n" + std::string(width + 4, ' ');
        text += row.right + '\n';
    }
    return text;
}

Row OptionRow(const Option& option) {
    const std::string letter =
        option.letter == '\0' ? "    " : std::string("-") + option.letter + ", ";
    return {letter + "--" + option.name + (option.value.empty() ? "" : "=" + option.value),
            option.help};
}

std::string OptionColumns(const std::vector<Option>& options) {
    std::vector<Row> rows;
    std::ranges::transform(options, std::back_inserter(rows), OptionRow);
    return Columns(rows);
}

std::string WithWords(const std::string& name, const std::string& words) {
    return words.empty() ? name : name + ' ' + words;
}

std::string LowerCase(std::string text) {
    std::ranges::transform(text, text.begin(), [](unsigned char letter) {
        return static_cast<char>(std::tolower(letter));
    });
    return text;
}

/// Returns how many letters must be inserted, removed or replaced to turn one word into the other.
size_t EditDistance(const std::string& from, const std::string& to) {
    std::vector<size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (size_t i = 1; i <= from.size(); ++i) {
        size_t diagonal = std::exchange(row[0], i);
        for (size_t j = 1; j <= to.size(); ++j) {
            const size_t replaced = diagonal + (from[i - 1] == to[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row.back();
}

}  // namespace

std::string ProgramHelp(const Program& program) {
    std::vector<Row> rows;
    rows.reserve(program.commands.size());
    for (const Command& command : program.commands) {
        rows.push_back({WithWords(command.name, command.words), command.summary});
    }
    std::vector<Option> options = program.options;
    options.insert(options.end(), {HelpOption(), VersionOption()});
    return "Usage: " + program.name + " COMMAND [OPTION...] [ARGUMENT...]\n\n" + program.purpose +
           "\nCommands:\n" + Columns(rows) + "\n\"" + program.name +
           " help COMMAND\" explains a command's arguments, options and output.\n\nOptions:\n" +
           OptionColumns(options) + "\n" + program.exitCodes;
}

std::string CommandHelp(const Program& program, const Command& command) {
    std::vector<Option> options = command.options;
    options.insert(options.end(), program.options.begin(), program.options.end());
    options.push_back(HelpOption());
    if (command.name.empty()) {
        options.push_back(VersionOption());
    }
    return "Usage: " + WithWords(CallOf(program, command) + " [OPTION...]", command.words) +
           "\n\n" + command.summary + ".\n\nOptions:\n" + OptionColumns(options) + "\n" +
           command.details + (command.details.empty() ? "" : "\n") + program.exitCodes;
}

std::string Suggestion(const std::string& word, const std::vector<std::string>& known) {
    constexpr size_t MOST_EDITS = 2;
    std::string best;
    size_t fewest = MOST_EDITS + 1;
    for (const std::string& candidate : known) {
        const size_t edits = EditDistance(LowerCase(word), LowerCase(candidate));
        if (edits < fewest) {
            fewest = edits;
            best = candidate;
        }
    }
    return best.empty() ? "" : " (did you mean " + best + "?)";
}

namespace {

/// The candidates that begin with the typed text, without duplicates.
class Lines {
public:
    explicit Lines(std::string typed) : m_typed(std::move(typed)) {}

    void Add(const std::string& word, const std::string& description = {}) {
        const std::string line = description.empty() ? word : word + '\t' + description;
        const bool known = std::ranges::find(lines, line) != lines.end();
        if (word.starts_with(m_typed) && !known) {
            lines.push_back(line);
        }
    }

    Words lines;

private:
    std::string m_typed;
};

// form is the name of a value or an argument: "FILE", "[KEY]", "ID...", "bool|int". In the last
// form, lower-case words are candidates; words in capitals are names of values and are skipped.
Words ValuesFor(const Program& program, std::string form, const std::string& typed) {
    std::erase_if(form,
                  [](char letter) { return letter == '[' || letter == ']' || letter == '.'; });
    Lines lines(typed);
    const auto listed = program.values.find(form);
    if (listed != program.values.end() && listed->second.empty()) {
        return {FILES};
    }
    if (listed != program.values.end()) {
        std::ranges::for_each(listed->second, [&](const std::string& word) { lines.Add(word); });
    } else if (form.find('|') != std::string::npos) {
        std::istringstream words(form);
        for (std::string word; std::getline(words, word, '|');) {
            if (std::islower(static_cast<unsigned char>(word[0])) != 0) {
                lines.Add(word);
            }
        }
    }
    return lines.lines;
}

/// The words before the one that is typed.
struct Before {
    Words arguments;                ///< Without options; the name of the command first.
    const Option* waits = nullptr;  ///< The last option, if its value follows.
};

// "=" separates an option from the value that follows.
Before Understand(const Options& options, const Words& words) {
    Before before;
    for (const std::string& word : words) {
        if (before.waits != nullptr) {
            before.waits = word == "=" ? before.waits : nullptr;
        } else if (word.starts_with('-')) {
            const Option* option = options.Find(word);
            before.waits = option != nullptr && !option->value.empty() ? option : nullptr;
        } else {
            before.arguments.push_back(word);
        }
    }
    return before;
}

Words OptionNames(const Program& program, const Command* command, const std::string& typed) {
    Lines lines(typed);
    const auto add = [&](const Option& option) { lines.Add("--" + option.name, option.help); };
    if (command != nullptr) {
        std::ranges::for_each(command->options, add);
    }
    if (command == nullptr || command->name.empty()) {
        add(VersionOption());
    }
    std::ranges::for_each(program.options, add);
    add(HelpOption());
    return lines.lines;
}

// Returns the words that can follow the first words of a command's name.
Words NextWords(const Program& program, const Words& before, const std::string& typed) {
    Lines lines(typed);
    for (const Command& command : program.commands) {
        const Words name = WordsOf(command.name);
        if (name.size() > before.size() &&
            std::ranges::mismatch(before, name).in1 == before.end()) {
            const bool complete = name.size() == before.size() + 1;
            lines.Add(name[before.size()], complete ? command.summary : "");
        }
    }
    return lines.lines;
}

Words ArgumentsFor(const Program& program, const Command& command, size_t position,
                   const std::string& typed) {
    const Words forms = WordsOf(command.words);
    if (forms.empty() || (position >= forms.size() && !forms.back().ends_with("...") &&
                          !forms.back().ends_with("...]"))) {
        return {};
    }
    return ValuesFor(program, forms[std::min(position, forms.size() - 1)], typed);
}

}  // namespace

Words Candidates(const Program& program, const Words& words) {
    const Options options(program);
    const std::string last = words.empty() ? std::string() : words.back();
    const std::string typed = last == "=" ? std::string() : last;
    const Before before =
        Understand(options, {words.begin(), words.end() - (words.empty() ? 0 : 1)});
    if (before.waits != nullptr) {
        return ValuesFor(program, before.waits->value, typed);
    }
    const Command* command = FindCommand(program, before.arguments);
    const size_t sign = typed.find('=');
    if (typed.starts_with("--") && sign != std::string::npos) {
        const Option* option = options.Find(typed.substr(0, sign));
        return option == nullptr ? Words()
                                 : ValuesFor(program, option->value, typed.substr(sign + 1));
    }
    if (typed.starts_with('-')) {
        return OptionNames(program, command, typed);
    }
    return command == nullptr
               ? NextWords(program, before.arguments, typed)
               : ArgumentsFor(program, *command,
                              before.arguments.size() - WordsOf(command->name).size(), typed);
}

namespace {

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
        return std::ranges::find(options, name, &Option::name) != options.end();
    };
    const std::string& subject = command.name.empty() ? program.name : command.name;
    const auto stray = std::ranges::find_if(given.options(), [&](const auto& option) {
        return !isAmong(command.options, option.first) && !isAmong(program.options, option.first);
    });
    if (stray != given.options().end()) {
        return subject + " takes no option --" + stray->first;
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
    const std::string next = Joined(
        NextWords(program, {name}, ""), ", ",
        [](const std::string& candidate) { return candidate.substr(0, candidate.find('\t')); });
    if (!next.empty()) {
        return "'" + name + "' must be followed by one of: " + next;
    }
    Words names{"help"};
    std::ranges::transform(program.commands, std::back_inserter(names), &Command::name);
    return "unknown command '" + name + "'" + Suggestion(name, names);
}

}  // namespace

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
