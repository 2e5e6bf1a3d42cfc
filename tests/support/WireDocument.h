// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <vector>

namespace applist::test {

/// One line of an example: an action of one side, or a message that the middleware then receives.
struct WireStep {
    enum Kind {
        CALL,           ///< bytes: the whole frame; or the option "arguments" in their place
        SIGNAL,         ///< likewise
        ANNOUNCE,       ///< text: the bus name
        HEAR_ANNOUNCE,  ///< text: the bus name
        HEAR_EVENT,     ///< bytes
        HEAR_REPLY,     ///< bytes
        HEAR_ERROR,     ///< text: the D-Bus error name
        KEY,            ///< text: the key's name
        APPLICATION,    ///< text: "starts" or "ends"
        MIDDLEWARE      ///< likewise
    };
    Kind kind = CALL;
    int line = 0;
    std::string text;
    std::string bytes;
    /// Deviations of a CALL or SIGNAL from the default: "path", "interface", "member", "arguments"
    /// (a GVariant in text form).
    std::map<std::string, std::string> options;
};

/// One block of examples and its heading.
struct WireExample {
    std::string heading;
    int line = 0;
    std::vector<WireStep> steps;
};

/// The examples of docs/protocol.md, which describes their syntax.
struct WireDocument {
    std::vector<WireExample> examples;
    /// One message for each line that cannot be parsed, with its number and the reason.
    std::vector<std::string> errors;
};

/// Extracts the blocks marked "wire" from a Markdown text. Pure; never fails.
WireDocument ParseWireDocument(const std::string& text);

/// The message id at the end of a frame; -1 for a frame that is too short.
long long MessageIdOf(const std::string& frame);

}  // namespace applist::test
