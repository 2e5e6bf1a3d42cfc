// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "middleware/Session.h"
#include "recording/Comparison.h"
#include "recording/Conversation.h"
#include "recording/TrafficTap.h"

namespace applist::sim {

struct ReplayOptions {
    std::string file;  ///< File name for messages.
    /// Factor relative to the recording; absent: as fast as possible.
    std::optional<double> speed = 1;
    unsigned patience = 2;  ///< Seconds to wait for messages that are still missing.
    bool json = false;
};

/// Sends the messages of the recorded middleware to the first application that connects, and
/// reports where the application behaves differently from the recorded one.
///
/// A message is sent only after as many calls are answered as in the recording, so the order of the
/// messages of the application does not depend on the speed.
class Replay : public Session {
public:
    Replay(SessionOptions session, ReplayOptions options, const Conversation& conversation);

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
    static int cb_Clock(void* replay) noexcept;

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

}  // namespace applist::sim
