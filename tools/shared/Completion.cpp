// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "shared/Completion.h"

#include <algorithm>
#include <sstream>

namespace applist::tools {
namespace {

using Words = std::vector<std::string>;

/// The candidates that begin with the typed text, without duplicates.
class Lines {
public:
    explicit Lines(std::string typed) : m_typed(std::move(typed)) {}

    void Add(const std::string& word, const std::string& description = {}) {
        const std::string line = description.empty() ? word : word + '\t' + description;
        const bool known = std::find(lines.begin(), lines.end(), line) != lines.end();
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
        std::for_each(listed->second.begin(), listed->second.end(),
                      [&](const std::string& word) { lines.Add(word); });
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
        std::for_each(command->options.begin(), command->options.end(), add);
    }
    if (command == nullptr || command->name.empty()) {
        add(VersionOption());
    }
    std::for_each(program.options.begin(), program.options.end(), add);
    add(HelpOption());
    return lines.lines;
}

// Returns the words that can follow the first words of a command's name.
Words NextWords(const Program& program, const Words& before, const std::string& typed) {
    Lines lines(typed);
    for (const Command& command : program.commands) {
        const Words name = WordsOf(command.name);
        if (name.size() > before.size() && std::equal(before.begin(), before.end(), name.begin())) {
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

std::vector<std::string> Candidates(const Program& program, const std::vector<std::string>& words) {
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

}  // namespace applist::tools
