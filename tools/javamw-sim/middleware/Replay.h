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
    std::string file;                 ///< What is replayed, for messages.
    std::optional<double> speed = 1;  ///< Times as fast as recorded; none: as fast as it goes.
    unsigned patience = 2;            ///< Seconds to wait for what is still expected.
    bool json = false;
};

/// Says to the first application that connects what the middleware of a conversation said, and
/// reports where the application says something else than the one of the conversation did.
///
/// Nothing is sent before as many calls are answered as were in the conversation; so the order of
/// what the application says does not depend on the speed.
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
    /// Microseconds until message is due.
    int64_t Delay(const SentMessage& message) const;
    void Say(const SentMessage& message);
    void OnAnswer();
    /// Waits for what is still expected, or ends.
    void AwaitRest();
    void OnClock();
    void Finish();
    std::vector<Difference> Differences();
    static int cb_Clock(void* replay) noexcept;

    ReplayOptions m_options;
    Recording m_expected;
    std::vector<SentMessage> m_toSend;
    size_t m_expectedEvents = 0;
    int64_t m_length = 0;  ///< Of the conversation, in microseconds.

    std::string m_application;  ///< Empty until there is one.
    bool m_created = false;     ///< It said that its list is there.
    bool m_begun = false;
    int64_t m_beginning = 0;  ///< In microseconds of the monotonic clock.
    size_t m_next = 0;        ///< The next message.
    size_t m_answers = 0;
    size_t m_events = 0;
    Registration m_clock;

    std::mutex m_mutex;  ///< Guards m_heard, which grows on a thread of GIO's.
    Recording m_heard;
    std::unique_ptr<TrafficTap> m_tap;
};

}  // namespace applist::sim
