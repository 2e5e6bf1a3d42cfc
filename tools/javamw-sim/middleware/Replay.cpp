// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "middleware/Replay.h"

#include <algorithm>
#include <utility>

#include "common/Output.h"
#include "recording/Comparison.h"

namespace applist::sim {
namespace {

constexpr int64_t MICROSECONDS = 1'000'000;
// Eleven days in microseconds; a timer can count this in milliseconds.
constexpr int64_t LONGEST_WAIT = 1'000'000'000'000;

size_t CountEvents(const Recording& recording) {
    return static_cast<size_t>(std::count_if(
        recording.messages.begin(), recording.messages.end(), [](const auto& message) {
            return message.kind == MessageKind::Signal && message.side == Side::Application;
        }));
}

int64_t LengthOf(const Recording& recording) {
    return recording.messages.empty()
               ? 0
               : recording.messages.back().time - recording.messages.front().time;
}

}  // namespace

Replay::Replay(SessionOptions session, ReplayOptions options, const Conversation& conversation)
    : Session(std::move(session)),
      m_options(std::move(options)),
      m_expected(ApplicationSide(conversation)),
      m_toSend(SentMessagesOf(conversation)),
      m_expectedEvents(CountEvents(m_expected)),
      m_length(LengthOf(conversation.recording)) {}

void Replay::OnOpened(GDBusConnection* connection) {
    m_tap = std::make_unique<TrafficTap>(connection, TrafficTap::Use::Participant,
                                         [this](const RecordedMessage& message) {
                                             const std::lock_guard lock(m_mutex);
                                             m_heard.messages.push_back(message);
                                         });
}

// The application sends LocalCreated once it has connected us. Earlier calls are answered, but
// their events are lost. If it never sends LocalCreated, the replay starts without it.
void Replay::OnConnected(const std::string& application) {
    if (m_application.empty()) {
        m_application = application;
        m_clock = OwnSource(g_timeout_add_seconds(m_options.patience, &cb_Clock, this));
    }
}

void Replay::OnDisconnected(const std::string& application) {
    if (application == m_application) {
        Finish();
    }
}

void Replay::OnNotified(const std::string& application, const Notification& notification) {
    if (application != m_application) {
        return;
    }
    if (notification.event == Event::LocalCreated && std::exchange(m_created, true)) {
        return;
    }
    ++m_events;
    if (m_begun) {
        AwaitRest();
    } else if (notification.event == Event::LocalCreated) {
        Begin();
    }
}

void Replay::Begin() {
    m_clock.Release();
    m_begun = true;
    m_beginning = g_get_monotonic_time();
    Advance();
}

void Replay::Advance() {
    while (m_next < m_toSend.size()) {
        const SentMessage& next = m_toSend[m_next];
        if (m_answers < next.answersBefore) {
            return;
        }
        if (const int64_t delay = Delay(next); delay > 0) {
            const auto milliseconds = static_cast<unsigned>((delay + 999) / 1000);
            m_clock = OwnSource(g_timeout_add(milliseconds, &cb_Clock, this));
            return;
        }
        ++m_next;
        Say(next);
    }
    AwaitRest();
}

int64_t Replay::Delay(const SentMessage& message) const {
    if (!m_options.speed) {
        return 0;
    }
    const double due = std::min(static_cast<double>(message.time) / *m_options.speed,
                                static_cast<double>(LONGEST_WAIT));
    return m_beginning + static_cast<int64_t>(due) - g_get_monotonic_time();
}

void Replay::Say(const SentMessage& message) {
    if (message.kind == MessageKind::Call) {
        link().Call(m_application, message.bytes, [this](const Result<Bytes>&) { OnAnswer(); });
        return;
    }
    const std::string error = link().Emit(m_application, message.bytes);
    if (!error.empty()) {
        Complain("cannot signal: " + error);
    }
}

void Replay::OnAnswer() {
    ++m_answers;
    Advance();
}

void Replay::AwaitRest() {
    if (m_next < m_toSend.size()) {
        return;
    }
    const auto calls = static_cast<size_t>(std::count_if(
        m_toSend.begin(), m_toSend.end(),
        [](const SentMessage& message) { return message.kind == MessageKind::Call; }));
    if (m_answers >= calls && m_events >= m_expectedEvents) {
        Finish();
        return;
    }
    const SentMessage rest{.kind = {}, .bytes = {}, .time = m_length, .answersBefore = 0};
    const int64_t wait = std::max<int64_t>(0, Delay(rest)) + m_options.patience * MICROSECONDS;
    m_clock = OwnSource(
        g_timeout_add(static_cast<unsigned>(std::min(wait, LONGEST_WAIT) / 1000), &cb_Clock, this));
}

void Replay::OnClock() {
    m_clock.Forget();
    if (!m_begun) {
        Begin();
    } else if (m_next < m_toSend.size()) {
        Advance();
    } else {
        Finish();
    }
}

void Replay::Finish() {
    m_clock.Release();
    const auto differences = Differences();
    const bool written =
        PrintReport({.differences = differences,
                     .firstFile = m_options.file,
                     .secondFile = "this time",
                     .same = "no difference after " + std::to_string(m_next) + " messages",
                     .json = m_options.json});
    End(differences.empty() && written ? ExitCode::Success : ExitCode::CallFailed);
}

std::vector<Difference> Replay::Differences() {
    m_tap.reset();
    const std::lock_guard lock(m_mutex);
    Recording heard;
    for (const Conversation& conversation : ConversationsOf(m_heard)) {
        if (conversation.application == m_application) {
            heard = ApplicationSide(conversation);
        }
    }
    return Compare(StepsOf(m_expected, false), StepsOf(heard, false), std::nullopt);
}

int Replay::cb_Clock(void* replay) noexcept {
    static_cast<Replay*>(replay)->OnClock();
    return G_SOURCE_REMOVE;
}

}  // namespace applist::sim
