// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/Commands.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "Number.h"
#include "feed/DisplayNames.h"

namespace applist::sim {
namespace {

struct NamedCoding {
    const char* name;
    std::optional<TextCoding> coding;
};

constexpr std::array TEXT_CODINGS{
    NamedCoding{"auto", std::nullopt}, NamedCoding{"dvb", TextCoding::Dvb},
    NamedCoding{"isdb", TextCoding::Isdb}, NamedCoding{"arib", TextCoding::Arib},
    NamedCoding{"latin", TextCoding::Latin}};

}  // namespace

std::string FirstOf(std::initializer_list<std::string> errors) {
    const auto* const found =
        std::ranges::find_if(errors, [](const std::string& error) { return !error.empty(); });
    return found == errors.end() ? std::string() : *found;
}

std::string InputTakenTwice(const std::vector<std::string>& arguments) {
    const auto first = std::ranges::find(arguments, "-");
    const auto second =
        std::find(first == arguments.end() ? first : first + 1, arguments.end(), "-");
    return second == arguments.end()
               ? std::string()
               : "arguments " + std::to_string(first - arguments.begin() + 1) + " and " +
                     std::to_string(second - arguments.begin() + 1) + " are both standard input";
}

Result<unsigned> WholeNumber(const std::string& option, const std::string& what,
                             const std::string& text) {
    const auto number = ParseNumber<unsigned>(text);
    return number ? Result(*number)
                  : Result<unsigned>::Failure("--" + option + " takes " + what + ", not '" + text +
                                              "'");
}

Result<std::optional<double>> Speed(const std::string& text) {
    using Speed = Result<std::optional<double>>;
    if (text == "max") {
        return Speed(std::nullopt);
    }
    const auto number = ParseNumber<double>(text);
    // The parser accepts inf and nan, which are not usable as a divisor of times.
    return number && std::isfinite(*number) && *number > 0
               ? Speed(number)
               : Speed::Failure("--speed takes a number above 0 or max, not '" + text + "'");
}

std::vector<Option> BroadcastOptions() {
    return {
        {"service", 's', "SERVICE", "Only this service, by number or name; may be repeated"},
        {"language", 'l', "LIST", "Languages of names, the preferred one first: ita,eng"},
        {"text", '\0', "CODING", "How texts are coded: auto, dvb, isdb, arib, latin"},
    };
}

std::vector<std::string> TextCodingNames() {
    std::vector<std::string> names;
    std::ranges::transform(TEXT_CODINGS, std::back_inserter(names), &NamedCoding::name);
    return names;
}

Result<BroadcastFeedOptions> BroadcastFeedOptionsFrom(const Arguments& given) {
    BroadcastFeedOptions options;
    options.filter.services = given.Values("service");
    options.filter.languages =
        given.Has("language") ? ParseLanguages(given.Value("language")) : LocaleLanguages();
    if (given.Has("text")) {
        const std::string name = given.Value("text");
        const auto* const found = std::ranges::find(TEXT_CODINGS, name, &NamedCoding::name);
        if (found == TEXT_CODINGS.end()) {
            return Result<BroadcastFeedOptions>::Failure(
                "--text takes auto, dvb, isdb, arib or latin, not '" + name + "'");
        }
        options.coding = found->coding;
    }
    return options;
}

Option AddressOption() {
    return {"address", 'a', "ADDRESS", "Bus to use instead of the system bus"};
}

Option JsonOption() {
    return {"json", 'j', "", "Print one JSON object for each line"};
}

std::vector<Option> SessionOptionsAnd(const std::vector<Option>& own) {
    std::vector<Option> options{
        AddressOption(),
        {"timeout", 't', "SECONDS", "Time limit for an application to connect"},
    };
    options.insert(options.end(), own.begin(), own.end());
    return options;
}

Option RecordOption() {
    return {"record", 'r', "FILE", "Record all traffic, as the command record does"};
}

Result<SessionOptions> SessionOptionsFrom(const Arguments& given) {
    SessionOptions options;
    options.address = given.Value("address");
    options.json = given.Has("json");
    options.recordFile = given.Value("record");
    if (given.Has("timeout")) {
        const auto seconds = WholeNumber("timeout", "whole seconds", given.Value("timeout"));
        if (!seconds) {
            return Result<SessionOptions>::Failure(seconds.error());
        }
        options.timeout = *seconds;
    }
    return options;
}

namespace {

constexpr const char* PURPOSE =
    "Simulates the broadcast middleware on the bus: fills the list of the application,\n"
    "calls it and prints its events. Either of the two may start first.\n";

constexpr const char* EXIT_CODES =
    "Exit status:\n"
    "  0  success; an endless command was ended by SIGINT or SIGTERM\n"
    "  1  failure: a call failed, an expectation did not hold, a comparison found a\n"
    "     difference, the command was interrupted, or the output was closed\n"
    "  2  wrong usage, or an input file that cannot be used\n"
    "  3  the bus cannot be reached, closed the connection, or denies this user the\n"
    "     middleware's names\n"
    "  4  no application appeared in time\n";

std::vector<Command> AllCommands() {
    std::vector<Command> all;
    for (const auto& some :
         {SessionCommands(), StatementCommands(), {ApplicationsCommand()}, RecordingCommands()}) {
        all.insert(all.end(), some.begin(), some.end());
    }
    return all;
}

}  // namespace

}  // namespace applist::sim

namespace applist::tools {

const Program& TheProgram() {
    static const Program PROGRAM{.name = "javamw-sim",
                                 .version = APPLIST_VERSION,
                                 .purpose = sim::PURPOSE,
                                 .options = {},
                                 .commands = sim::AllCommands(),
                                 .exitCodes = sim::EXIT_CODES,
                                 .values = {{"FILE", {}},
                                            {"FIRST", {}},
                                            {"SECOND", {}},
                                            {"FUNCTION", sim::FunctionNames()},
                                            {"CODING", sim::TextCodingNames()}}};
    return PROGRAM;
}

}  // namespace applist::tools
