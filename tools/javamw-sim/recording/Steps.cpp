// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <map>
#include <utility>

#include "protocol/Hex.h"
#include "recording/Comparison.h"

namespace applist::sim {
namespace {

/// Turns a recording into steps.
class StepMaker {
public:
    explicit StepMaker(bool names) : m_names(names) {}

    void Take(const RecordedMessage& message) {
        const std::string key = Key(message);
        const std::string text = Text(message.kind, message.side) + ' ' + Describe(message);
        if (message.kind == MessageKind::Call) {
            m_calls[message.call] = {message.line, message.time, key, text};
        } else {
            AddAnswered(message, key, text);
        }
    }

    std::vector<Step> Finish() {
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
        if (message.call == 0 || call == m_calls.end()) {
            m_steps.push_back({message.line, message.time, key, text});
            return;
        }
        m_steps.push_back({call->second.line, message.time, call->second.key + '|' + key,
                           call->second.text + " -> " + std::string(NameOf(message.kind)) + ' ' +
                               Describe(message)});
        m_calls.erase(call);
    }

    // The bus daemon's own name stays.
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

    // An error's text names connections.
    std::string Key(const RecordedMessage& message) {
        const bool byName = m_names || message.kind != MessageKind::Error;
        const std::string from = Rename(message.from, message.side);
        const std::string to = Rename(message.to, Other(message.side));
        return Text(message.kind, message.side) + '|' + from + '|' + to + '|' + message.name + '|' +
               (byName ? message.text : std::string()) + '|' + ToHex(message.bytes);
    }

    static Side Other(Side side) {
        return side == Side::Application ? Side::Middleware : Side::Application;
    }

    static std::string Text(MessageKind kind, Side side) {
        return std::string(NameOf(side)) + ' ' + std::string(NameOf(kind));
    }

    bool m_names;
    std::map<std::string, std::string> m_renamed;
    std::map<Side, int> m_count;
    std::map<uint64_t, Step> m_calls;  ///< Not answered yet.
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

}  // namespace applist::sim
