// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
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
                  const Conversation& conversation)
        : Session(session),
          m_options(options),
          m_patience(options.patience * MICROSECONDS),
          m_expected(ApplicationSide(conversation)),
          m_toSend(SentMessagesOf(conversation)),
          m_length(LengthOf(conversation.recording)) {}

protected:
    void OnOpened(GDBusConnection* connection) override {
        m_tap = std::make_unique<TrafficTap>(connection, TrafficTap::Use::Participant,
                                             [this](const RecordedMessage& message) {
                                                 const std::lock_guard lock(m_mutex);
                                                 m_heard.messages.push_back(message);
                                             });
    }

    void OnDisconnected(const std::string& application) override {
        // An application that ended does not send anything more, so the rest of the wait is
        // skipped.
        m_left = m_left || application == first();
    }

    void OnNotified(const std::string& application, const Notification& notification) override {
        if (application != first()) {
            return;
        }
        // How often LocalCreated is sent depends on timing, so repetitions are not counted.
        const bool created = notification.event == Event::LocalCreated;
        m_events += created && m_created ? 0 : 1;
        m_created = m_created || created;
    }

    void Play() override {
        // One conversation is replayed to one application.
        AwaitFirst();
        // The application sends LocalCreated once it has connected us. Earlier calls are answered,
        // but their events are lost. If it never sends LocalCreated, the replay starts without it.
        Listen([this] { return m_created; }, m_patience);
        m_beginning = g_get_monotonic_time();
        SendAll();
        AwaitRest();
        if (!ended()) {
            Finish();
        }
    }

    ExitCode OnInterrupted() override { return ExitCode::CallFailed; }

private:
    /// Waits for done, but at most for some microseconds. Returns false if the application or the
    /// session has ended.
    bool Listen(const std::function<bool()>& done, std::optional<int64_t> most = std::nullopt) {
        std::optional<std::chrono::milliseconds> patience;
        if (most) {
            // Rounding down would send a message early.
            patience =
                std::chrono::ceil<std::chrono::milliseconds>(std::chrono::microseconds(*most));
        }
        Await([&] { return m_left || done(); }, patience);
        return !m_left && !ended();
    }

    void SendAll() {
        for (const SentMessage& next : m_toSend) {
            // A call may depend on the effect of an earlier one.
            bool there = Listen([&] { return m_answers >= next.answersBefore; });
            if (const int64_t delay = Delay(next.time); there && delay > 0) {
                there = Listen([] { return false; }, delay);
            }
            if (!there) {
                return;
            }
            ++m_sent;
            Say(next);
        }
    }

    void Say(const SentMessage& message) {
        if (message.kind == MessageKind::Call) {
            // The reply itself is recorded by the tap. An error counts as an answer, as in the
            // recording.
            link().Call(first(), message.bytes, [this](const Result<Bytes>&) { ++m_answers; });
            return;
        }
        const std::string error = link().Emit(first(), message.bytes);
        if (!error.empty()) {
            Complain("cannot signal: " + error);
        }
    }

    // Waits for messages that are still missing. Each that arrives extends the wait.
    void AwaitRest() {
        const auto calls = static_cast<size_t>(
            std::ranges::count(m_toSend, MessageKind::Call, &SentMessage::kind));
        const size_t events = CountEvents(m_expected);
        bool more = true;
        while (more && (m_answers < calls || m_events < events)) {
            const size_t before = m_answers + m_events;
            // Events that the recorded viewer caused may be as late as the end of the recording.
            more = Listen([&] { return m_answers + m_events > before; },
                          std::max<int64_t>(0, Delay(m_length)) + m_patience) &&
                   m_answers + m_events > before;
        }
    }

    /// Returns the microseconds until a time of the recording, which may be negative.
    int64_t Delay(int64_t time) const {
        // Without a speed only the order of the recording is kept.
        if (!m_options.speed) {
            return 0;
        }
        // The minimum is taken before the conversion, which is undefined for values out of range.
        const double due = std::min(static_cast<double>(time) / *m_options.speed,
                                    static_cast<double>(LONGEST_WAIT));
        return m_beginning + static_cast<int64_t>(due) - g_get_monotonic_time();
    }

    void Finish() {
        const auto differences = Differences();
        const bool written =
            PrintReport({.differences = differences,
                         .firstFile = m_options.file,
                         .secondFile = "this time",
                         .same = "no difference after " + std::to_string(m_sent) + " messages",
                         .json = m_options.json});
        End(differences.empty() && written ? ExitCode::Success : ExitCode::CallFailed);
    }

    std::vector<Difference> Differences() {
        // Without the tap, no other thread adds messages to the comparison.
        m_tap.reset();
        const std::lock_guard lock(m_mutex);
        Recording heard;
        for (const Conversation& conversation : ConversationsOf(m_heard)) {
            // Other applications may have connected during the replay.
            if (conversation.application == first()) {
                heard = ApplicationSide(conversation);
            }
        }
        return Compare(StepsOf(m_expected, false), StepsOf(heard, false), std::nullopt);
    }

    ReplayOptions m_options;
    int64_t m_patience;  ///< In microseconds.
    Recording m_expected;
    std::vector<SentMessage> m_toSend;
    int64_t m_length = 0;  ///< Duration of the conversation in microseconds.

    bool m_created = false;  ///< The application has sent LocalCreated.
    bool m_left = false;
    int64_t m_beginning = 0;  ///< In microseconds of the monotonic clock.
    size_t m_sent = 0;
    size_t m_answers = 0;
    size_t m_events = 0;

    std::mutex m_mutex;  ///< Guards m_heard, which a thread of GIO fills.
    Recording m_heard;
    std::unique_ptr<TrafficTap> m_tap;
};

}  // namespace

ExitCode Replay(const SessionOptions& session, const ReplayOptions& options,
                const Conversation& conversation) {
    return ReplaySession(session, options, conversation).Run();
}

}  // namespace applist::sim
