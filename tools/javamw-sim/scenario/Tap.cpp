// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "scenario/Tap.h"

#include "common/Output.h"

namespace applist::sim {
namespace {

// Escapes "#", which begins a directive.
std::string Description(const std::string& text) {
    std::string escaped;
    for (const char character : OneLine(text)) {
        escaped += character == '#' ? "\\#" : std::string(1, character);
    }
    return escaped;
}

// OneLine() has already escaped the backslashes, so only the quotation mark is left for YAML.
std::string Quoted(const std::string& text) {
    std::string quoted = "\"";
    for (const char character : OneLine(text)) {
        quoted += character == '"' ? "\\\"" : std::string(1, character);
    }
    return quoted + '"';
}

}  // namespace

void Tap::Plan(size_t points) {
    m_write("TAP version 13");
    m_write("1.." + std::to_string(points));
}

void Tap::Pass(const std::string& description) {
    m_write(Point("ok", colour::GOOD, description));
}

void Tap::Skip(const std::string& description, const std::string& reason) {
    // TAP marks a skipped point as "ok" with a SKIP directive, so that it does not count as failed.
    m_write(Point("ok", colour::QUIET, description) + " # SKIP " + OneLine(reason));
}

void Tap::Fail(const std::string& description, const std::string& where, const std::string& problem,
               const std::vector<std::string>& seen) {
    m_write(Point("not ok", colour::BAD, description));
    // TAP 13 puts the details of a point into an indented YAML block between "---" and "...".
    m_write("  ---");
    m_write("  at: " + Quoted(where));
    m_write("  problem: " + Quoted(problem));
    if (!seen.empty()) {
        m_write("  seen:");
    }
    for (const std::string& happening : seen) {
        m_write("    - " + Quoted(happening));
    }
    m_write("  ...");
}

void Tap::Comment(const std::string& text) {
    m_write("# " + OneLine(text));
}

void Tap::BailOut(const std::string& reason) {
    m_write("Bail out! " + OneLine(reason));
}

std::string Tap::Point(const char* result, const char* colour, const std::string& description) {
    return (m_colours ? Painted(result, colour) : result) + ' ' + std::to_string(++m_number) +
           " - " + Description(description);
}

}  // namespace applist::sim
