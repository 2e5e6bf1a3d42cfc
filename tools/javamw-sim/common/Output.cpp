// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "common/Output.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <unistd.h>

namespace applist::sim {

std::string OneLine(const std::string& text) {
    std::string line;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte == '\\') {
            line += "\\\\";
        } else if (byte < 0x20 || byte == 0x7F) {
            std::array<char, sizeof "\\x00"> code{};
            static_cast<void>(std::snprintf(code.data(), code.size(), "\\x%02x", byte));
            line += code.data();
        } else {
            line += character;
        }
    }
    return line;
}

bool OutputTakesColours() {
    // By the NO_COLOR convention, an empty variable counts as unset.
    const char* refused = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    return isatty(STDOUT_FILENO) != 0 && (refused == nullptr || *refused == '\0') &&
           (terminal == nullptr || std::string(terminal) != "dumb");
}

std::string Painted(const std::string& text, const char* colour) {
    return colour + text + "\033[0m";
}

bool WriteLine(const std::string& line) {
    // Flushed after each line, because stdout into a pipe is fully buffered.
    return std::fwrite(line.data(), 1, line.size(), stdout) == line.size() &&
           std::fputc('\n', stdout) != EOF && std::fflush(stdout) == 0;
}

void Complain(const std::string& message) {
    std::istringstream lines(message);
    std::string text;
    for (std::string line; std::getline(lines, line);) {
        text += "javamw-sim: " + line + '\n';
    }
    // A failed write to stderr cannot be reported anywhere.
    static_cast<void>(std::fwrite(text.data(), 1, text.size(), stderr));
}

}  // namespace applist::sim
