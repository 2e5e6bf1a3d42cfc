// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "recording/Comparison.h"

#include <algorithm>
#include <map>
#include <utility>

#include <nlohmann/json.hpp>

#include "link/Protocol.h"
#include "shared/Output.h"

namespace applist::sim {
namespace {

// Number of steps to search for a common one; the cost grows with its square.
constexpr size_t NEAR = 4000;

// Returns a number for each step. Two steps get the same number iff their keys are equal.
std::vector<size_t> Number(const std::vector<Step>& steps, std::map<std::string, size_t>& numbers) {
    std::vector<size_t> result;
    result.reserve(steps.size());
    for (const Step& step : steps) {
        result.push_back(numbers.try_emplace(step.key, numbers.size()).first->second);
    }
    return result;
}

class Comparer {
public:
    Comparer(const std::vector<Step>& first, const std::vector<Step>& second,
             std::optional<int64_t> tolerance)
        : m_first(first), m_second(second), m_tolerance(tolerance) {
        // Numbers are compared in the search for common steps, because it compares a step many
        // times.
        std::map<std::string, size_t> numbers;
        m_firstKeys = Number(first, numbers);
        m_secondKeys = Number(second, numbers);
    }

    std::vector<Difference> Run() {
        while (m_i < m_first.size() || m_j < m_second.size()) {
            if (m_i < m_first.size() && m_j < m_second.size() && Same(m_i, m_j)) {
                TakeCommon();
                continue;
            }
            const auto [i, j] = NextCommon();
            for (; m_i < i; ++m_i) {
                m_differences.push_back({m_first[m_i], std::nullopt});
            }
            for (; m_j < j; ++m_j) {
                m_differences.push_back({std::nullopt, m_second[m_j]});
            }
        }
        return std::move(m_differences);
    }

private:
    bool Same(size_t i, size_t j) const { return m_firstKeys[i] == m_secondKeys[j]; }

    void TakeCommon() {
        const int64_t apart = m_first[m_i].time - m_second[m_j].time;
        // Both steps exist, so the difference of their times is one difference with two sides.
        if (m_tolerance && std::max(apart, -apart) > *m_tolerance) {
            m_differences.push_back({m_first[m_i], m_second[m_j]});
        }
        ++m_i;
        ++m_j;
    }

    std::pair<size_t, size_t> NextCommon() const {
        const size_t lefts = m_first.size() - m_i;
        const size_t rights = m_second.size() - m_j;
        // The nearest common step is searched, so that one missing message is one difference.
        for (size_t distance = 1; distance < std::min(lefts + rights, NEAR); ++distance) {
            for (size_t ahead = 0; ahead <= distance; ++ahead) {
                const size_t other = distance - ahead;
                if (ahead < lefts && other < rights && Same(m_i + ahead, m_j + other)) {
                    return {m_i + ahead, m_j + other};
                }
            }
        }
        return {m_first.size(), m_second.size()};
    }

    const std::vector<Step>& m_first;
    const std::vector<Step>& m_second;
    std::optional<int64_t> m_tolerance;
    std::vector<size_t> m_firstKeys;
    std::vector<size_t> m_secondKeys;
    size_t m_i = 0;
    size_t m_j = 0;
    std::vector<Difference> m_differences;
};

}  // namespace

std::vector<Difference> Compare(const std::vector<Step>& first, const std::vector<Step>& second,
                                std::optional<int64_t> tolerance) {
    return Comparer(first, second, tolerance).Run();
}

namespace {

/// Converts a recording to steps.
class StepMaker {
public:
    explicit StepMaker(bool names) : m_names(names) {}

    void Take(const RecordedMessage& message) {
        const std::string key = Key(message);
        const std::string text = Text(message.kind, message.side) + ' ' + Describe(message);
        // A call is kept until its reply, because replies may arrive in another order than their
        // calls.
        if (message.kind == MessageKind::Call) {
            m_calls[message.call] = {message.line, message.time, key, text};
        } else {
            AddAnswered(message, key, text);
        }
    }

    std::vector<Step> Finish() {
        // Calls that were never answered would otherwise be missing from the comparison.
        for (auto& [number, call] : m_calls) {
            call.text += ", not answered";
            m_steps.push_back(std::move(call));
        }
        return std::move(m_steps);
    }

private:
    void AddAnswered(const RecordedMessage& message, const std::string& key,
                     const std::string& text) {
        const auto call = m_calls.find(message.call);
        // Signals and names do not belong to a call. A file may also lack the call of a reply.
        if (message.call == 0 || call == m_calls.end()) {
            m_steps.push_back({message.line, message.time, key, text});
            return;
        }
        m_steps.push_back({call->second.line, message.time, call->second.key + '|' + key,
                           call->second.text + " -> " + std::string(NameOf(message.kind)) + ' ' +
                               Describe(message)});
        m_calls.erase(call);
    }

    // Keeps the name of the bus daemon.
    std::string Rename(const std::string& name, Side side) {
        if (m_names || !name.starts_with(':')) {
            return name;
        }
        const auto [known, isNew] = m_renamed.try_emplace(name);
        if (isNew) {
            known->second = std::string(NameOf(side)) + ' ' + std::to_string(++m_count[side]);
        }
        return known->second;
    }

    // The text of an error contains names of connections.
    std::string Key(const RecordedMessage& message) {
        const bool byName = m_names || message.kind != MessageKind::Error;
        const std::string from = Rename(message.from, message.side);
        const std::string to = Rename(message.to, Other(message.side));
        return Text(message.kind, message.side) + '|' + from + '|' + to + '|' + message.name + '|' +
               (byName ? message.text : std::string()) + '|' + ToHex(message.bytes);
    }

    static std::string Text(MessageKind kind, Side side) {
        return std::string(NameOf(side)) + ' ' + std::string(NameOf(kind));
    }

    bool m_names;
    std::map<std::string, std::string> m_renamed;
    std::map<Side, int> m_count;
    std::map<uint64_t, Step> m_calls;  ///< Calls without a reply so far.
    std::vector<Step> m_steps;
};

}  // namespace

std::vector<Step> StepsOf(const Recording& recording, bool names) {
    StepMaker maker(names);
    for (const RecordedMessage& message : recording.messages) {
        maker.Take(message);
    }
    return maker.Finish();
}

namespace {

std::string StepLine(char sign, const std::string& file, const Step& step) {
    const std::string line = step.line > 0 ? ':' + std::to_string(step.line) : std::string();
    return std::string(1, sign) + ' ' + file + line + ": " + step.text;
}

std::string After(const Step& step) {
    return ", after " + std::to_string(step.time / 1000) + " ms";
}

std::string StepObject(size_t number, const char* recording, const std::string& file,
                       const Step& step) {
    return tools::JsonLine({{"type", "difference"},
                            {"number", number},
                            {"recording", recording},
                            {"file", file},
                            {"line", step.line},
                            {"us", step.time},
                            {"note", step.text}});
}

// Writes one object for each side that has the step.
bool PrintObjects(const DifferenceReport& report) {
    size_t number = 0;
    for (const auto& [first, second] : report.differences) {
        ++number;
        if ((first && !tools::WriteLine(StepObject(number, "first", report.firstFile, *first))) ||
            (second &&
             !tools::WriteLine(StepObject(number, "second", report.secondFile, *second)))) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::string DifferenceLines(const Difference& difference, const std::string& firstFile,
                            const std::string& secondFile) {
    if (!difference.second) {
        return StepLine('-', firstFile, *difference.first);
    }
    if (!difference.first) {
        return StepLine('+', secondFile, *difference.second);
    }
    return StepLine('-', firstFile, *difference.first) + After(*difference.first) + '\n' +
           StepLine('+', secondFile, *difference.second) + After(*difference.second);
}

bool PrintReport(const DifferenceReport& report) {
    if (report.json) {
        return PrintObjects(report);
    }
    for (const Difference& difference : report.differences) {
        if (!tools::WriteLine(DifferenceLines(difference, report.firstFile, report.secondFile))) {
            return false;
        }
    }
    const size_t count = report.differences.size();
    return tools::WriteLine(count == 0 ? report.same
                                       : std::to_string(count) +
                                             (count == 1 ? " difference" : " differences"));
}

}  // namespace applist::sim
