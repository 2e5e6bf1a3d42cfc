// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <utility>

#include "cli/CommonOptions.h"
#include "cli/Subcommand.h"
#include "common/Output.h"
#include "middleware/Commands.h"
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

ExitCode Run(const SessionOptions& session, const ReplayOptions& options, unsigned number) {
    const auto recording = LoadRecording(options.file);
    if (!recording) {
        return Refuse(recording.error());
    }
    if (!recording->remark.empty()) {
        Complain(recording->remark);
    }
    const auto conversations = ConversationsOf(*recording);
    if (number == 0 || number > conversations.size()) {
        return Refuse(options.file + ": has " + std::to_string(conversations.size()) +
                      " conversations; number " + std::to_string(number) + " does not exist");
    }
    return Replay(session, options, conversations[number - 1]);
}

/// Returns an empty string on success.
std::string Take(const Arguments& given, ReplayOptions& options, unsigned& number) {
    if (given.words().size() != 1) {
        return "replay takes FILE";
    }
    options.file = given.words().front();
    options.json = given.Has("json");
    const auto speed = Speed(given.Has("speed") ? given.Value("speed") : "1");
    const auto patience =
        WholeNumber("wait", "whole seconds", given.Has("wait") ? given.Value("wait") : "2");
    const auto conversation =
        WholeNumber("conversation", "a whole number",
                    given.Has("conversation") ? given.Value("conversation") : "1");
    if (!speed || !patience || !conversation) {
        return speed.error() + patience.error() + conversation.error();
    }
    options.speed = *speed;
    options.patience = *patience;
    number = *conversation;
    return {};
}

Result<Job> Prepare(const Arguments& given) {
    const auto session = SessionOptionsFrom(given);
    ReplayOptions options;
    unsigned number = 0;
    const std::string error = session ? Take(given, options, number) : session.error();
    if (!error.empty()) {
        return Result<Job>::Failure(error);
    }
    return Job([session = *session, options, number] { return Run(session, options, number); });
}

}  // namespace

Subcommand ReplaySubcommand() {
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
            &Prepare};
}

}  // namespace applist::sim
