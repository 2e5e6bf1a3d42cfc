// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <chrono>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "middleware/MainLoop.h"
#include "middleware/Session.h"
#include "recording/Comparison.h"
#include "recording/Recording.h"
#include "recording/Traffic.h"

namespace applist::sim {
namespace {

constexpr int64_t MICROSECONDS = 1'000'000;
// Eleven days in microseconds.
constexpr int64_t LONGEST_WAIT = 1'000'000'000'000;

size_t CountEvents(const Recording& recording) {
    return static_cast<size_t>(std::ranges::count_if(recording.messages, [](const auto& message) {
        return message.kind == MessageKind::Signal && message.side == Side::Application;
    }));
}

int64_t LengthOf(const Recording& recording) {
    return recording.messages.empty()
               ? 0
               : recording.messages.back().time - recording.messages.front().time;
}

class ReplaySession : public Session {
public:
    ReplaySession(const SessionOptions& session, const ReplayOptions& options,
                  const Conversation& conversation);

protected:
    void OnOpened(GDBusConnection* connection) override;
    void OnConnected(const std::string& application) override;
    void OnDisconnected(const std::string& application) override;
    void OnNotified(const std::string& application, const Notification& notification) override;
    ExitCode OnInterrupted() override { return ExitCode::CallFailed; }

private:
    void Begin();
    void Advance();
    /// Returns the microseconds until message is due.
    int64_t Delay(const SentMessage& message) const;
    void Say(const SentMessage& message);
    void OnAnswer();
    /// Waits for messages that are still missing, or ends.
    void AwaitRest();
    void OnClock();
    void Finish();
    std::vector<Difference> Differences();
    void SetClock(int64_t microseconds);

    ReplayOptions m_options;
    Recording m_expected;
    std::vector<SentMessage> m_toSend;
    size_t m_expectedEvents = 0;
    int64_t m_length = 0;  ///< Duration of the conversation in microseconds.

    std::string m_application;  ///< Empty until an application has connected.
    bool m_created = false;     ///< The application has sent LocalCreated.
    bool m_begun = false;
    int64_t m_beginning = 0;  ///< In microseconds of the monotonic clock.
    size_t m_next = 0;        ///< Index of the next message to send.
    size_t m_answers = 0;
    size_t m_events = 0;
    Registration m_clock;

    std::mutex m_mutex;  ///< Guards m_heard, which a thread of GIO fills.
    Recording m_heard;
    std::unique_ptr<TrafficTap> m_tap;
};

ReplaySession::ReplaySession(const SessionOptions& session, const ReplayOptions& options,
                             const Conversation& conversation)
    : Session(session),
      m_options(options),
      m_expected(ApplicationSide(conversation)),
      m_toSend(SentMessagesOf(conversation)),
      m_expectedEvents(CountEvents(m_expected)),
      m_length(LengthOf(conversation.recording)) {}

void ReplaySession::OnOpened(GDBusConnection* connection) {
    m_tap = std::make_unique<TrafficTap>(connection, TrafficTap::Use::Participant,
                                         [this](const RecordedMessage& message) {
                                             const std::lock_guard lock(m_mutex);
                                             m_heard.messages.push_back(message);
                                         });
}

// The application sends LocalCreated once it has connected us. Earlier calls are answered, but
// their events are lost. If it never sends LocalCreated, the replay starts without it.
void ReplaySession::OnConnected(const std::string& application) {
    // One conversation is replayed to one application, the first that connects.
    if (m_application.empty()) {
        m_application = application;
        SetClock(m_options.patience * MICROSECONDS);
    }
}

void ReplaySession::OnDisconnected(const std::string& application) {
    // An application that ended does not send anything more, so the rest of the wait is skipped.
    if (application == m_application) {
        Finish();
    }
}

void ReplaySession::OnNotified(const std::string& application, const Notification& notification) {
    if (application != m_application) {
        return;
    }
    // How often LocalCreated is sent depends on timing, so repetitions are not counted.
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

void ReplaySession::Begin() {
    m_clock.Release();
    m_begun = true;
    m_beginning = g_get_monotonic_time();
    Advance();
}

void ReplaySession::Advance() {
    while (m_next < m_toSend.size()) {
        const SentMessage& next = m_toSend[m_next];
        // A call may depend on the effect of an earlier one. OnAnswer() continues here.
        if (m_answers < next.answersBefore) {
            return;
        }
        if (const int64_t delay = Delay(next); delay > 0) {
            SetClock(delay);
            return;
        }
        ++m_next;
        Say(next);
    }
    AwaitRest();
}

int64_t ReplaySession::Delay(const SentMessage& message) const {
    // Without a speed only the order of the recording is kept.
    if (!m_options.speed) {
        return 0;
    }
    // The minimum is taken before the conversion, which is undefined for values out of range.
    const double due = std::min(static_cast<double>(message.time) / *m_options.speed,
                                static_cast<double>(LONGEST_WAIT));
    return m_beginning + static_cast<int64_t>(due) - g_get_monotonic_time();
}

void ReplaySession::Say(const SentMessage& message) {
    if (message.kind == MessageKind::Call) {
        // The reply itself is recorded by the tap. An error counts as an answer, as in the
        // recording.
        link().Call(m_application, message.bytes, [this](const Result<Bytes>&) { OnAnswer(); });
        return;
    }
    const std::string error = link().Emit(m_application, message.bytes);
    if (!error.empty()) {
        Complain("cannot signal: " + error);
    }
}

void ReplaySession::OnAnswer() {
    ++m_answers;
    Advance();
}

void ReplaySession::AwaitRest() {
    if (m_next < m_toSend.size()) {
        return;
    }
    const auto calls =
        static_cast<size_t>(std::ranges::count(m_toSend, MessageKind::Call, &SentMessage::kind));
    if (m_answers >= calls && m_events >= m_expectedEvents) {
        Finish();
        return;
    }
    // Events that the recorded viewer caused may be as late as the end of the recording.
    const SentMessage rest{.kind = {}, .bytes = {}, .time = m_length, .answersBefore = 0};
    SetClock(std::max<int64_t>(0, Delay(rest)) + m_options.patience * MICROSECONDS);
}

void ReplaySession::SetClock(int64_t microseconds) {
    m_clock = RunAfter(
        // Rounding down would let the timer expire early, and Advance() would set it again.
        std::chrono::ceil<std::chrono::milliseconds>(std::chrono::microseconds(microseconds)),
        [this] { OnClock(); });
}

void ReplaySession::OnClock() {
    if (!m_begun) {
        Begin();
    } else if (m_next < m_toSend.size()) {
        Advance();
    } else {
        Finish();
    }
}

void ReplaySession::Finish() {
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

std::vector<Difference> ReplaySession::Differences() {
    // Without the tap, no other thread adds messages to the comparison.
    m_tap.reset();
    const std::lock_guard lock(m_mutex);
    Recording heard;
    for (const Conversation& conversation : ConversationsOf(m_heard)) {
        // Other applications may have connected during the replay.
        if (conversation.application == m_application) {
            heard = ApplicationSide(conversation);
        }
    }
    return Compare(StepsOf(m_expected, false), StepsOf(heard, false), std::nullopt);
}

}  // namespace

ExitCode Replay(const SessionOptions& session, const ReplayOptions& options,
                const Conversation& conversation) {
    return ReplaySession(session, options, conversation).Run();
}

}  // namespace applist::sim
