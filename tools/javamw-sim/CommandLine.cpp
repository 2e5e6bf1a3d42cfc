// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "CommandLine.h"

#include <array>
#include <glib.h>
#include <limits>
#include <memory>
#include <utility>

#include "protocol/CallArguments.h"

namespace applist::sim {
namespace {

// A single call is made by someone who waits for its end.
constexpr unsigned CALL_TIMEOUT_S = 10;
// Told from any number that makes sense, so that a negative one given can be refused.
constexpr int NO_TIMEOUT = std::numeric_limits<int>::min();

constexpr const char* SUMMARY =
    "Plays the broadcast middleware on the bus: fills the application's list, calls it\n"
    "and shows what it reports. Works whichever of the two starts first.\n"
    "\n"
    "Commands:\n"
    "  serve                    Fill the list of each application that comes, from\n"
    "                           --items, --broadcast or a built-in sample, then watch\n"
    "  watch                    Print every event and the selection read after it\n"
    "  call FUNCTION [ARG...]   Call one function and print the items of the reply";

constexpr const char* RESULTS =
    "Lines on standard output, complete as soon as they are true:\n"
    "  connected APPLICATION\n"
    "  filled APPLICATION with COUNT items\n"
    "  event NUMBER NAME selection ID<TAB>NAME | none | unreadable: REASON\n"
    "  disconnected APPLICATION\n"
    "  ID<TAB>NAME              an item of a reply\n"
    "Control bytes in ids and names are printed as \\x0a, a backslash twice.\n"
    "\n"
    "Exit status:\n"
    "  0  the call was answered; serve or watch was ended by SIGINT or SIGTERM\n"
    "  1  the call failed, the application ended first, or the output was closed\n"
    "  2  wrong usage, or an input file that cannot be used\n"
    "  3  the bus cannot be reached or closed the connection\n"
    "  4  no application was there in time";

struct FreeContext {
    void operator()(GOptionContext* context) const { g_option_context_free(context); }
};
using OptionContext = std::unique_ptr<GOptionContext, FreeContext>;

/// Where GLib leaves what it parsed.
struct RawOptions {
    RawOptions() = default;
    ~RawOptions() {
        g_free(address);
        g_free(items);
        g_free(broadcast);
        g_strfreev(rest);
    }
    RawOptions(const RawOptions&) = delete;
    RawOptions& operator=(const RawOptions&) = delete;
    RawOptions(RawOptions&&) = delete;
    RawOptions& operator=(RawOptions&&) = delete;

    char* address = nullptr;
    char* items = nullptr;
    char* broadcast = nullptr;
    int timeout = NO_TIMEOUT;
    gboolean help = FALSE;
    gboolean version = FALSE;
    char** rest = nullptr;
};

std::string FunctionList() {
    std::string text = "Functions of call:\n";
    for (const Function function : FUNCTIONS) {
        text += "  " + std::string(NameOf(function)) + ' ' + ArgumentForm(function);
        text.erase(text.find_last_not_of(' ') + 1);
        text += '\n';
    }
    return text + '\n';
}

// Names and ids are bytes to us, whatever the locale: they are taken as file names are.
OptionContext MakeContext(RawOptions& raw) {
    const std::array<GOptionEntry, 8> entries{{
        {"address", 'a', 0, G_OPTION_ARG_FILENAME, &raw.address,
         "Bus to use instead of the system bus", "ADDRESS"},
        {"timeout", 't', 0, G_OPTION_ARG_INT, &raw.timeout,
         "Wait so long for an application (call: 10; others: for ever)", "SECONDS"},
        {"items", 'i', 0, G_OPTION_ARG_FILENAME, &raw.items,
         "serve: lines id<TAB>name, # begins a comment", "FILE"},
        {"broadcast", 'b', 0, G_OPTION_ARG_FILENAME, &raw.broadcast,
         "serve: what a recorded transport stream offers", "FILE"},
        {"help", 'h', 0, G_OPTION_ARG_NONE, &raw.help, "Print this text", nullptr},
        {"version", 0, 0, G_OPTION_ARG_NONE, &raw.version, "Print the version", nullptr},
        {G_OPTION_REMAINING, 0, 0, G_OPTION_ARG_FILENAME_ARRAY, &raw.rest, nullptr,
         "serve | watch | call FUNCTION [ARG...]"},
        {nullptr, 0, 0, G_OPTION_ARG_NONE, nullptr, nullptr, nullptr},
    }};
    OptionContext context(g_option_context_new(nullptr));
    g_option_context_set_help_enabled(context.get(), FALSE);
    g_option_context_set_summary(context.get(), SUMMARY);
    g_option_context_set_description(context.get(), (FunctionList() + RESULTS).c_str());
    g_option_context_add_main_entries(context.get(), entries.data(), nullptr);
    return context;
}

// GLib's parser rearranges the arguments that it is given; it works on a copy.
std::string ParseOptions(GOptionContext* context, const std::vector<std::string>& arguments) {
    char** copy = g_new0(char*, arguments.size() + 1);
    for (size_t i = 0; i < arguments.size(); ++i) {
        copy[i] = g_strdup(arguments[i].c_str());
    }
    GError* error = nullptr;
    std::string reason;
    if (g_option_context_parse_strv(context, &copy, &error) == FALSE) {
        reason = error->message;
        g_error_free(error);
    }
    g_strfreev(copy);
    return reason;
}

std::string TakeText(const char* text) {
    return text != nullptr ? text : std::string();
}

std::vector<std::string> Words(char** rest) {
    std::vector<std::string> words;
    for (char** word = rest; word != nullptr && *word != nullptr; ++word) {
        words.emplace_back(*word);
    }
    return words;
}

// Empty on success.
std::string TakeFunction(CommandLine& line, const std::vector<std::string>& words) {
    if (words.empty()) {
        return "call needs a function";
    }
    const auto function = FunctionByName(words[0]);
    if (!function) {
        return "unknown function '" + words[0] + "'";
    }
    auto items = ParseCallArguments(*function, {words.begin() + 1, words.end()});
    if (!items) {
        return items.error();
    }
    line.function = *function;
    line.arguments = std::move(*items);
    return {};
}

// Empty on success.
std::string TakeCommand(CommandLine& line, std::vector<std::string> words) {
    if (words.empty()) {
        return "no command";
    }
    const std::string name = words.front();
    words.erase(words.begin());
    if (name == "call") {
        line.command = Command::Call;
        line.session.timeout = line.session.timeout.value_or(CALL_TIMEOUT_S);
        return TakeFunction(line, words);
    }
    if (name != "serve" && name != "watch") {
        return "unknown command '" + name + "'";
    }
    line.command = name == "serve" ? Command::Serve : Command::Watch;
    return words.empty() ? std::string() : name + " takes no arguments";
}

// Empty on success.
std::string TakeSources(CommandLine& line) {
    if (!line.itemsFile.empty() && !line.broadcastFile.empty()) {
        return "--items and --broadcast exclude each other";
    }
    const bool given = !line.itemsFile.empty() || !line.broadcastFile.empty();
    if (given && line.command != Command::Serve) {
        return "--items and --broadcast belong to serve";
    }
    return {};
}

std::string Take(CommandLine& line, const RawOptions& raw) {
    line.session.address = TakeText(raw.address);
    line.itemsFile = TakeText(raw.items);
    line.broadcastFile = TakeText(raw.broadcast);
    if (raw.timeout != NO_TIMEOUT) {
        if (raw.timeout < 0) {
            return "--timeout must not be negative";
        }
        line.session.timeout = static_cast<unsigned>(raw.timeout);
    }
    std::string error = TakeCommand(line, Words(raw.rest));
    return error.empty() ? TakeSources(line) : error;
}

}  // namespace

Result<CommandLine> ParseCommandLine(const std::vector<std::string>& arguments) {
    RawOptions raw;
    const OptionContext context = MakeContext(raw);
    std::string error = ParseOptions(context.get(), arguments);
    CommandLine line;
    if (error.empty() && (raw.help != FALSE || raw.version != FALSE)) {
        line.command = raw.help != FALSE ? Command::Help : Command::Version;
        char* help = g_option_context_get_help(context.get(), TRUE, nullptr);
        line.help = help;
        g_free(help);
        line.help.erase(line.help.find_last_not_of('\n') + 1);
        return line;
    }
    if (error.empty()) {
        error = Take(line, raw);
    }
    return error.empty() ? Result(line)
                         : Result<CommandLine>::Failure(error + "; see javamw-sim --help");
}

}  // namespace applist::sim
