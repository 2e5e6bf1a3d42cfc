// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/WireDocument.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <sstream>
#include <string_view>
#include <utility>

namespace applist::test {
namespace {

struct Verb {
    std::string_view text;
    WireStep::Kind kind;
    enum Content { BYTES, WORD, BYTES_WITH_OPTIONS } content;
};

constexpr Verb VERBS[] = {
    {"-> call", WireStep::CALL, Verb::BYTES_WITH_OPTIONS},
    {"-> signal", WireStep::SIGNAL, Verb::BYTES_WITH_OPTIONS},
    {"-> announce", WireStep::ANNOUNCE, Verb::WORD},
    {"<- announce", WireStep::HEAR_ANNOUNCE, Verb::WORD},
    {"<- event", WireStep::HEAR_EVENT, Verb::BYTES},
    {"<- reply", WireStep::HEAR_REPLY, Verb::BYTES},
    {"<- error", WireStep::HEAR_ERROR, Verb::WORD},
    {"-- key", WireStep::KEY, Verb::WORD},
    {"-- application", WireStep::APPLICATION, Verb::WORD},
    {"-- middleware", WireStep::MIDDLEWARE, Verb::WORD},
};

bool IsBlank(char c) {
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && IsBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

/// Removes the comment that a semicolon outside quotes begins.
std::string_view WithoutRemark(std::string_view line) {
    bool quoted = false;
    for (size_t i = 0; i < line.size(); ++i) {
        quoted = quoted != (line[i] == '"');
        if (line[i] == ';' && !quoted) {
            return line.substr(0, i);
        }
    }
    return line;
}

std::optional<char> HexByte(std::string_view text) {
    if (text.size() < 2 || std::isxdigit(static_cast<unsigned char>(text[0])) == 0 ||
        std::isxdigit(static_cast<unsigned char>(text[1])) == 0 ||
        (text.size() > 2 && !IsBlank(text[2]))) {
        return std::nullopt;
    }
    return static_cast<char>(std::stoi(std::string(text.substr(0, 2)), nullptr, 16));
}

/// Parses pairs of hexadecimal digits and quoted texts; returns nothing for other input.
std::optional<std::string> BytesOf(std::string_view text) {
    std::string bytes;
    for (text = Trimmed(text); !text.empty(); text = Trimmed(text)) {
        if (text.front() == '"') {
            const size_t end = text.find('"', 1);
            if (end == std::string_view::npos) {
                return std::nullopt;
            }
            bytes += text.substr(1, end - 1);
            text.remove_prefix(end + 1);
        } else if (const auto byte = HexByte(text)) {
            bytes += *byte;
            text.remove_prefix(2);
        } else {
            return std::nullopt;
        }
    }
    return bytes;
}

/// The position of the bracket that closes the one at the start of text; nothing if it is missing.
std::optional<size_t> ClosingBracket(std::string_view text) {
    int depth = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        depth += text[i] == '[' ? 1 : 0;
        depth -= text[i] == ']' ? 1 : 0;
        if (depth == 0) {
            return i;
        }
    }
    return std::nullopt;
}

/// Removes "[name value]" groups from the start of text. False if a closing bracket is missing.
bool TakeOptions(std::string_view& text, std::map<std::string, std::string>& options) {
    for (text = Trimmed(text); text.starts_with('['); text = Trimmed(text)) {
        const auto end = ClosingBracket(text);
        if (!end) {
            return false;
        }
        const std::string_view option = text.substr(1, *end - 1);
        const size_t blank = std::min(option.find(' '), option.size());
        options.emplace(option.substr(0, blank), Trimmed(option.substr(blank)));
        text.remove_prefix(*end + 1);
    }
    return true;
}

class Parser {
public:
    WireDocument Parse(const std::string& text) {
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            ++m_line;
            TakeLine(line);
        }
        if (m_fence == WIRE) {
            Complain("the block has no end");
        }
        return std::move(m_document);
    }

private:
    enum Fence { NONE, WIRE, OTHER };

    void TakeLine(const std::string& line) {
        if (line.starts_with("```")) {
            ToggleFence(line);
        } else if (m_fence == WIRE) {
            TakeStep(line);
        } else if (m_fence == NONE && line.starts_with("#")) {
            m_heading = Trimmed(std::string_view(line).substr(line.find_first_not_of('#')));
        }
    }

    void ToggleFence(const std::string& line) {
        if (m_fence != NONE) {
            m_fence = NONE;
        } else if (Trimmed(line) == "```wire") {
            m_fence = WIRE;
            m_document.examples.push_back({m_heading, m_line, {}});
        } else {
            m_fence = OTHER;
        }
    }

    void TakeStep(std::string_view line) {
        line = WithoutRemark(line);
        if (Trimmed(line).empty()) {
            return;
        }
        if (IsBlank(line.front())) {
            ContinueStep(line);
            return;
        }
        for (const Verb& verb : VERBS) {
            if (line.starts_with(verb.text)) {
                BeginStep(verb, line.substr(verb.text.size()));
                return;
            }
        }
        Complain("no such step");
    }

    void BeginStep(const Verb& verb, std::string_view rest) {
        WireStep step{verb.kind, m_line, "", "", {}};
        if (verb.content == Verb::WORD) {
            step.text = Trimmed(rest);
            if (step.text.empty()) {
                Complain("a word is missing");
            }
        } else if (verb.content == Verb::BYTES_WITH_OPTIONS && !TakeOptions(rest, step.options)) {
            Complain("an option has no end");
        } else {
            AppendBytes(step, rest);
        }
        m_document.examples.back().steps.push_back(step);
    }

    void ContinueStep(std::string_view line) {
        if (m_document.examples.back().steps.empty()) {
            Complain("nothing to continue");
        } else {
            AppendBytes(m_document.examples.back().steps.back(), line);
        }
    }

    void AppendBytes(WireStep& step, std::string_view text) {
        if (const auto bytes = BytesOf(text)) {
            step.bytes += *bytes;
        } else {
            Complain("neither bytes nor quoted text");
        }
    }

    void Complain(const std::string& what) {
        m_document.errors.push_back("line " + std::to_string(m_line) + ": " + what);
    }

    WireDocument m_document;
    std::string m_heading;
    Fence m_fence = NONE;
    int m_line = 0;
};

}  // namespace

WireDocument ParseWireDocument(const std::string& text) {
    return Parser().Parse(text);
}

long long MessageIdOf(const std::string& frame) {
    if (frame.size() < 4) {
        return -1;
    }
    long long id = 0;
    for (size_t i = 0; i < 4; ++i) {
        id = id * 256 + static_cast<unsigned char>(frame[frame.size() - 1 - i]);
    }
    return id;
}

}  // namespace applist::test
