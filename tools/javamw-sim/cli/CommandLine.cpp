// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/CommandLine.h"

#include <algorithm>
#include <cstring>
#include <glib.h>
#include <memory>

#include "cli/Help.h"
#include "common/Output.h"

namespace applist::sim {
namespace {

/// Reads options and words with the parser of GLib. The parser knows the options of all
/// subcommands, because options may precede the name of the subcommand.
class Reader {
public:
    explicit Reader(const std::vector<Subcommand>& subcommands) {
        AddOptions(GeneralOptions());
        for (const Subcommand& subcommand : subcommands) {
            AddOptions(subcommand.options);
        }
    }

    /// Returns an empty string on success, otherwise the error.
    std::string Read(const std::vector<std::string>& arguments);

    const Arguments& given() const { return m_given; }

private:
    struct FreeContext {
        void operator()(GOptionContext* context) const { g_option_context_free(context); }
    };
    using Context = std::unique_ptr<GOptionContext, FreeContext>;

    void AddOptions(const std::vector<Option>& options);
    Context MakeContext();
    void Take(const std::string& dashed, const char* value);
    static gboolean cb_Option(const char* name, const char* value, void* reader, GError**) noexcept;

    std::vector<Option> m_options;
    Arguments m_given;
};

void Reader::AddOptions(const std::vector<Option>& options) {
    for (const Option& option : options) {
        if (std::none_of(m_options.begin(), m_options.end(),
                         [&](const Option& known) { return known.name == option.name; })) {
            m_options.push_back(option);
        }
    }
}

// Names and ids may be any bytes in any locale, so they are parsed like file names.
Reader::Context Reader::MakeContext() {
    const auto callback = reinterpret_cast<void*>(&Reader::cb_Option);
    std::vector<GOptionEntry> entries;
    for (const Option& option : m_options) {
        const int flags = option.value.empty() ? G_OPTION_FLAG_NO_ARG : G_OPTION_FLAG_FILENAME;
        entries.push_back({option.name.c_str(), option.letter, flags, G_OPTION_ARG_CALLBACK,
                           callback, nullptr, nullptr});
    }
    entries.push_back({G_OPTION_REMAINING, 0, G_OPTION_FLAG_FILENAME, G_OPTION_ARG_CALLBACK,
                       callback, nullptr, nullptr});
    entries.push_back({});
    GOptionGroup* group = g_option_group_new("", "", "", this, nullptr);
    g_option_group_add_entries(group, entries.data());
    Context context(g_option_context_new(nullptr));
    g_option_context_set_help_enabled(context.get(), FALSE);
    g_option_context_set_main_group(context.get(), group);
    return context;
}

// The parser reorders its input, so it gets a copy.
std::string Reader::Read(const std::vector<std::string>& arguments) {
    const Context context = MakeContext();
    char** copy = g_new0(char*, arguments.size() + 1);
    for (size_t i = 0; i < arguments.size(); ++i) {
        copy[i] = g_strdup(arguments[i].c_str());
    }
    GError* error = nullptr;
    std::string reason;
    if (g_option_context_parse_strv(context.get(), &copy, &error) == FALSE) {
        reason = error->message;
        g_error_free(error);
    }
    g_strfreev(copy);
    return reason;
}

void Reader::Take(const std::string& dashed, const char* value) {
    const auto found = std::find_if(m_options.begin(), m_options.end(), [&](const Option& option) {
        return dashed == "--" + option.name || dashed == std::string("-") + option.letter;
    });
    if (found != m_options.end()) {
        m_given.AddOption(found->name, value != nullptr ? value : "");
    } else {
        m_given.AddWord(value);
    }
}

gboolean Reader::cb_Option(const char* name, const char* value, void* reader, GError**) noexcept {
    static_cast<Reader*>(reader)->Take(name, value);
    return TRUE;
}

Job PrintText(std::string text) {
    text.erase(text.find_last_not_of('\n') + 1);
    return [text] { return WriteLine(text) ? ExitCode::Success : ExitCode::CallFailed; };
}

/// Returns given without its first word, the name of the subcommand.
Arguments BehindTheName(const Arguments& given) {
    Arguments rest;
    for (const auto& [name, values] : given.options()) {
        for (const std::string& value : values) {
            rest.AddOption(name, value);
        }
    }
    for (size_t i = 1; i < given.words().size(); ++i) {
        rest.AddWord(given.words()[i]);
    }
    return rest;
}

// Returns an empty string on success.
std::string Refuse(const Subcommand& subcommand, const Arguments& given) {
    for (const auto& entry : given.options()) {
        const std::string& name = entry.first;
        if (std::none_of(subcommand.options.begin(), subcommand.options.end(),
                         [&](const Option& option) { return option.name == name; })) {
            return subcommand.name + " takes no option --" + name;
        }
    }
    const bool tooMuch = subcommand.words.empty() && !given.words().empty();
    return tooMuch ? subcommand.name + " takes no arguments" : std::string();
}

Result<Job> Prepare(const Subcommand& subcommand, const Arguments& given) {
    if (given.Has("help")) {
        return PrintText(SubcommandHelp(subcommand));
    }
    const std::string refusal = Refuse(subcommand, given);
    auto job = refusal.empty() ? subcommand.prepare(given) : Result<Job>::Failure(refusal);
    return job ? std::move(job)
               : Result<Job>::Failure(job.error() + "; see javamw-sim " + subcommand.name +
                                      " --help");
}

const Subcommand* Find(const std::vector<Subcommand>& subcommands, const std::string& name) {
    const auto found =
        std::find_if(subcommands.begin(), subcommands.end(),
                     [&](const Subcommand& subcommand) { return subcommand.name == name; });
    return found == subcommands.end() ? nullptr : &*found;
}

// "help" and "help COMMAND" mean "--help" and "COMMAND --help".
std::vector<std::string> WithoutHelpWord(std::vector<std::string> arguments) {
    if (arguments.size() > 1 && arguments[1] == "help") {
        arguments[1] = "--help";
    }
    return arguments;
}

// An invalid option is most likely one of the subcommand.
std::string HintFor(const std::vector<Subcommand>& subcommands,
                    const std::vector<std::string>& arguments) {
    for (size_t i = 1; i < arguments.size(); ++i) {
        if (Find(subcommands, arguments[i]) != nullptr) {
            return "; see javamw-sim " + arguments[i] + " --help";
        }
    }
    return "; see javamw-sim --help";
}

Result<Job> UnknownCommand(const std::vector<Subcommand>& subcommands, const std::string& name) {
    std::vector<std::string> names{"help"};
    std::transform(subcommands.begin(), subcommands.end(), std::back_inserter(names),
                   [](const Subcommand& subcommand) { return subcommand.name; });
    return Result<Job>::Failure("unknown command '" + name + "'" + Suggestion(name, names) +
                                "; see javamw-sim --help");
}

}  // namespace

Result<Job> ParseCommandLine(const std::vector<Subcommand>& subcommands,
                             const std::vector<std::string>& arguments) {
    Reader reader(subcommands);
    std::string error = reader.Read(WithoutHelpWord(arguments));
    const Arguments& given = reader.given();
    if (!error.empty()) {
        error[0] = g_ascii_tolower(error[0]);
        return Result<Job>::Failure(error + HintFor(subcommands, arguments));
    }
    if (given.Has("version")) {
        return PrintText("javamw-sim " APPLIST_VERSION);
    }
    if (given.words().empty()) {
        return given.Has("help")
                   ? Result<Job>(PrintText(ProgramHelp(subcommands)))
                   : Result<Job>::Failure("no command" + HintFor(subcommands, arguments));
    }
    const Subcommand* found = Find(subcommands, given.words().front());
    return found != nullptr ? Prepare(*found, BehindTheName(given))
                            : UnknownCommand(subcommands, given.words().front());
}

}  // namespace applist::sim
