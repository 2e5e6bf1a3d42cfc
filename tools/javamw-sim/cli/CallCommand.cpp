// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <iterator>

#include "cli/CommonOptions.h"
#include "cli/Program.h"
#include "middleware/Tasks.h"
#include "scenario/Statement.h"
#include "shared/Help.h"

namespace applist::sim {
namespace {

// The user of a single call waits for its result.
constexpr unsigned TIMEOUT_S = 10;

constexpr const char* DETAILS =
    "The items of the reply are printed as ID<TAB>NAME, one a line. Control bytes are\n"
    "printed as \\x0a, a backslash doubled; with --json an item is an object with \"id\" and\n"
    "\"name\".\n"
    "Without --timeout the wait ends after 10 s.\n"
    "\n"
    "Examples:\n"
    "  javamw-sim call AddItems w1=Weather n1=News\n"
    "  javamw-sim call GetAllItems --json\n"
    "  javamw-sim call SetSelection n1\n";

std::string Details() {
    std::string text = "Functions:\n";
    for (const Function function : FUNCTIONS) {
        text += "  " + std::string(NameOf(function)) + ' ' + ArgumentForm(function);
        // A function without arguments would leave a space at the end of its line.
        text.erase(text.find_last_not_of(' ') + 1);
        text += '\n';
    }
    return text + '\n' + DETAILS;
}

int Run(const Arguments& given) {
    auto session = SessionOptionsFrom(given);
    if (!session) {
        return given.Refuse(session.error());
    }
    session->timeout = session->timeout.value_or(TIMEOUT_S);
    const std::string& name = given.words().front();
    const auto function = FunctionByName(name);
    if (!function) {
        return given.Refuse("unknown function '" + name + "'" +
                            tools::Suggestion(name, FunctionNames()));
    }
    const auto items =
        ParseCallArguments(*function, {given.words().begin() + 1, given.words().end()});
    if (!items) {
        return given.Refuse(items.error());
    }
    return static_cast<int>(CallOnce(*session, *function, *items));
}

}  // namespace

std::vector<std::string> FunctionNames() {
    std::vector<std::string> names;
    std::transform(FUNCTIONS.begin(), FUNCTIONS.end(), std::back_inserter(names),
                   [](Function function) { return std::string(NameOf(function)); });
    return names;
}

Command CallCommand() {
    return {"call",
            "FUNCTION [ARG...]",
            "Call one function and print the items of the reply",
            SessionOptionsAnd({JsonOption(), RecordOption()}),
            Details(),
            &Run};
}

}  // namespace applist::sim
