// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <vector>

namespace applist::test {

/// One line of an example: what one side does, or what the middleware then hears.
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
    /// What a CALL or SIGNAL has other than the usual: "path", "interface", "member", "arguments"
    /// (a GVariant in text form).
    std::map<std::string, std::string> options;
};

/// One block of examples and the heading that it stands under.
struct WireExample {
    std::string heading;
    int line = 0;
    std::vector<WireStep> steps;
};

/// The examples of docs/protocol.md, which says how they are written.
struct WireDocument {
    std::vector<WireExample> examples;
    /// Lines that no reader could follow, each with its number and what is wrong.
    std::vector<std::string> errors;
};

/// Takes the blocks marked "wire" out of a Markdown text. Pure; never fails.
WireDocument ParseWireDocument(const std::string& text);

/// The number at the end of a frame; -1 for a frame too short to have one.
long long MessageIdOf(const std::string& frame);

}  // namespace applist::test
