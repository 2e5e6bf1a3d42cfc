// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <optional>
#include <utility>

#include "cli/Commands.h"
#include "middleware/Session.h"
#include "recording/Comparison.h"
#include "recording/RecordingFile.h"

namespace applist::sim {
namespace {

constexpr const char* RECORD_DETAILS =
    "Only observes: any middleware and the application may start and end at any time. A\n"
    "bus allows this only to its owner and to root. To record the traffic of this\n"
    "program itself, use --record of serve, watch or call.\n"
    "\n"
    "FILE contains a JSON object per line; \"-\" is standard output. The first line names\n"
    "the version of the format, every other line is a message:\n"
    "  us     microseconds since the recording began\n"
    "  kind   acquired, released (a name of the handshake), call, reply, error,\n"
    "         signal, or left (the bus)\n"
    "  side   application or middleware, which caused it\n"
    "  from   its unique bus name; to: the receiver, if there is one\n"
    "  call   the number of the call; a reply has that of its call\n"
    "  name   the bus name or the name of the error; text: the text of the error\n"
    "  bytes  the payload, hexadecimal\n"
    "  note   a description for people; ignored when read\n"
    "Empty members are omitted. Runs until SIGINT or SIGTERM.\n"
    "\n"
    "Examples:\n"
    "  sudo javamw-sim record session.jsonl\n"
    "  javamw-sim serve --record=session.jsonl\n"
    "  javamw-sim record - | jq -r .note\n";

int RunRecordCommand(const Arguments& given) {
    return static_cast<int>(RecordBus(given.Value("address"), given.words().front()));
}

constexpr const char* REPLAY_DETAILS =
    "Makes the handshake, then sends the messages of the recorded middleware at the\n"
    "recorded times divided by --speed. A message is never sent before the replies that\n"
    "precede it in the recording. Then prints where the application behaved differently:\n"
    "\"-\" is missing this time, \"+\" is new. Key presses of the viewer are not replayed;\n"
    "press the same keys.\n"
    "\n"
    "FILE is a recording of this program or a capture of \"busctl capture\". One\n"
    "conversation in it is replayed, that of one middleware with one application.\n"
    "\n"
    "Exit status 0: no difference, 1: differences, or the application ended early.\n"
    "\n"
    "Examples:\n"
    "  javamw-sim replay session.jsonl\n"
    "  javamw-sim replay --speed=max real.pcapng\n";

/// Returns nothing if the file cannot be used. Prints errors and remarks.
std::optional<Recording> Load(const std::string& file) {
    auto recording = LoadRecording(file);
    // A remark names skipped packets. The remaining messages can still be used.
    Complain(recording ? recording->remark : recording.error());
    return recording ? std::optional(std::move(*recording)) : std::nullopt;
}

ExitCode RunReplay(const SessionOptions& session, const ReplayOptions& options, unsigned number) {
    const auto recording = Load(options.file);
    if (!recording) {
        return ExitCode::WrongUsage;
    }
    const auto conversations = ConversationsOf(*recording);
    // Users count conversations from 1.
    if (number == 0 || number > conversations.size()) {
        return Fail(options.file + ": has " + std::to_string(conversations.size()) +
                        " conversations; number " + std::to_string(number) + " does not exist",
                    ExitCode::WrongUsage);
    }
    return Replay(session, options, conversations[number - 1]);
}

int RunReplayCommand(const Arguments& given) {
    const auto session = SessionOptionsFrom(given);
    const auto speed = Speed(given.Value("speed", "1"));
    const auto patience = WholeNumber("wait", "whole seconds", given.Value("wait", "2"));
    const auto number =
        WholeNumber("conversation", "a whole number", given.Value("conversation", "1"));
    if (!session || !speed || !patience || !number) {
        return given.Refuse(
            FirstOf({session.error(), speed.error(), patience.error(), number.error()}));
    }
    const ReplayOptions options{.file = given.words().front(),
                                .speed = *speed,
                                .patience = *patience,
                                .json = given.Has("json")};
    return static_cast<int>(RunReplay(*session, options, *number));
}

constexpr const char* COMPARE_DETAILS =
    "Prints each message that only FIRST has with \"-\", and each that only SECOND has with\n"
    "\"+\", with file and line (of a capture: the packet). A call is placed at its reply.\n"
    "Times and unique bus names are not compared, because they differ from run to run;\n"
    "connections are matched by their order of appearance.\n"
    "\n"
    "Both may be recordings of this program or captures of \"busctl capture\".\n"
    "\n"
    "Exit status 0: the same, 1: different, 2: a file cannot be read.\n"
    "\n"
    "Examples:\n"
    "  javamw-sim compare monday.jsonl tuesday.jsonl\n"
    "  busctl capture > real.pcapng; javamw-sim compare real.pcapng session.jsonl\n";

// Per millisecond. The option is in milliseconds, recorded times are in microseconds.
constexpr int64_t MICROSECONDS = 1000;

ExitCode Print(const std::string& firstFile, const std::string& secondFile,
               const CompareOptions& options, bool json) {
    // Both files are loaded before the check, so that the errors of both are reported.
    const auto first = Load(firstFile);
    const auto second = Load(secondFile);
    if (!first || !second) {
        return ExitCode::WrongUsage;
    }
    const auto steps = StepsOf(*first, options.names);
    const auto differences = Compare(steps, StepsOf(*second, options.names), options.tolerance);
    const bool written =
        PrintReport({.differences = differences,
                     .firstFile = firstFile,
                     .secondFile = secondFile,
                     .same = "no difference in " + std::to_string(steps.size()) + " steps",
                     .json = json});
    return differences.empty() && written ? ExitCode::Success : ExitCode::CallFailed;
}

int RunCompareCommand(const Arguments& given) {
    if (const std::string twice = InputTakenTwice(given.words()); !twice.empty()) {
        return given.Refuse(twice);
    }
    CompareOptions options{.names = given.Has("names"), .tolerance = std::nullopt};
    if (given.Has("tolerance")) {
        const auto milliseconds =
            WholeNumber("tolerance", "whole milliseconds", given.Value("tolerance"));
        if (!milliseconds) {
            return given.Refuse(milliseconds.error());
        }
        options.tolerance = *milliseconds * MICROSECONDS;
    }
    return static_cast<int>(Print(given.words()[0], given.words()[1], options, given.Has("json")));
}

}  // namespace

std::vector<Command> RecordingCommands() {
    return {{"record",
             "FILE",
             "Record the traffic between a middleware and the application",
             {AddressOption()},
             RECORD_DETAILS,
             &RunRecordCommand},
            {"replay", "FILE", "Replay a recording to an application and print the differences",
             SessionOptionsAnd({
                 {"speed", '\0', "N|max", "Multiple of the recorded speed (1)"},
                 {"wait", 'w', "SECONDS", "Limit the wait for missing messages (2)"},
                 {"conversation", '\0', "N", "Number of the conversation to replay (1)"},
                 JsonOption(),
             }),
             REPLAY_DETAILS, &RunReplayCommand},
            {"compare",
             "FIRST SECOND",
             "Print the differences between two recordings",
             {{"names", '\0', "", "Compare unique bus names, too"},
              {"tolerance", '\0', "MS", "Compare times, too, with this tolerance"},
              JsonOption()},
             COMPARE_DETAILS,
             &RunCompareCommand}};
}

}  // namespace applist::sim
