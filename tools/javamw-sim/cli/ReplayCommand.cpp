// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <utility>

#include "cli/CommonOptions.h"
#include "cli/Program.h"
#include "common/Output.h"
#include "middleware/Tasks.h"
#include "recording/RecordingFile.h"

namespace applist::sim {
namespace {

constexpr const char* DETAILS =
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

ExitCode Refuse(const std::string& why) {
    Complain(why);
    return ExitCode::WrongUsage;
}

ExitCode RunReplay(const SessionOptions& session, const ReplayOptions& options, unsigned number) {
    const auto recording = LoadRecording(options.file);
    if (!recording) {
        return Refuse(recording.error());
    }
    // A remark names skipped packets. The remaining messages can still be replayed.
    if (!recording->remark.empty()) {
        Complain(recording->remark);
    }
    const auto conversations = ConversationsOf(*recording);
    // Users count conversations from 1.
    if (number == 0 || number > conversations.size()) {
        return Refuse(options.file + ": has " + std::to_string(conversations.size()) +
                      " conversations; number " + std::to_string(number) + " does not exist");
    }
    return Replay(session, options, conversations[number - 1]);
}

int Run(const Arguments& given) {
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

}  // namespace

Command ReplayCommand() {
    return {"replay",
            "FILE",
            "Replay a recording to an application and print the differences",
            SessionOptionsAnd({
                {"speed", '\0', "N|max", "Multiple of the recorded speed (1)"},
                {"wait", 'w', "SECONDS", "Limit the wait for missing messages (2)"},
                {"conversation", '\0', "N", "Number of the conversation to replay (1)"},
                JsonOption(),
            }),
            DETAILS,
            &Run};
}

}  // namespace applist::sim
