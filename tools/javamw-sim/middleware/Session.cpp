// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "middleware/Session.h"

#include <algorithm>
#include <chrono>
#include <deque>
#include <set>
#include <utility>

#include "feed/ListUpdate.h"
#include "feed/LiveBroadcast.h"
#include "middleware/MainLoop.h"
#include "shared/Output.h"

namespace applist::sim {
namespace {

constexpr const char* HIDDEN_HINT =
    "an application that offers no data services shows a notice and does not announce itself; "
    "\"platformctl visible\" says whether that is so";

}  // namespace

Session::Session(SessionOptions options)
    : m_options(std::move(options)),
      m_report(m_options.json, tools::OutputTakesColours()),
      m_middleware("middleware", m_options.address,
                   [this](Middleware&, const Happening& happening) { Take(happening); }) {
    m_loop.OnInterrupt([this] { End(OnInterrupted()); });
}

ExitCode Session::Run() {
    // A failure before the connection is open is one of the bus. Later, only the recording file can
    // fail.
    ExitCode failure = ExitCode::NoBus;
    const std::string problem = m_middleware.Join([&](GDBusConnection* connection) {
        failure = ExitCode::WrongUsage;
        OnOpened(connection);
        return StartRecording(connection);
    });
    if (!problem.empty()) {
        return Fail(problem, failure);
    }
    Play();
    return FinishRecording(m_loop.Run());
}

void Session::Take(const Happening& happening) {
    switch (happening.kind) {
        case Happening::Kind::Connected:
            // The time limit applies to the first connection only.
            m_clock.Release();
            m_first = m_first.empty() ? happening.application : m_first;
            OnConnected(happening.application);
            break;
        case Happening::Kind::Disconnected:
            OnDisconnected(happening.application);
            break;
        case Happening::Kind::Announced:
            break;
        case Happening::Kind::Notified:
            TakeNotification(happening.application, happening.message);
            break;
        case Happening::Kind::Called:
            Complain(Describe(happening) + " answered with an empty reply");
            break;
        case Happening::Kind::Failed:
            Complain(happening.problem);
            break;
        case Happening::Kind::Denied:
            End(Fail(happening.problem + '\n' + DENIED_HINT, ExitCode::NoBus));
            break;
        case Happening::Kind::BusLost:
            End(Fail(happening.problem, ExitCode::NoBus));
            break;
    }
}

void Session::TakeNotification(const std::string& application, const Bytes& message) {
    if (const auto notification = DecodeNotification(message)) {
        OnNotified(application, *notification);
    } else {
        Complain("notification of " + std::to_string(message.size()) + " bytes from " +
                 application + " does not contain a message id");
    }
}

std::string Session::StartRecording(GDBusConnection* connection) {
    if (m_options.timeout) {
        m_clock = RunAfter(std::chrono::seconds(*m_options.timeout), [this] { OnTimeout(); });
    }
    if (m_options.recordFile.empty()) {
        return {};
    }
    auto recorder =
        SessionRecorder::Start(connection, TrafficTap::Use::Participant, m_options.recordFile);
    if (!recorder) {
        return recorder.error();
    }
    m_recorder = std::move(*recorder);
    return m_recorder->Begin();
}

ExitCode Session::FinishRecording(ExitCode code) {
    const std::string error = m_recorder ? m_recorder->Finish() : std::string();
    Complain(error);
    // A failed recording makes a successful session fail, but does not hide its own exit code.
    return error.empty() || code != ExitCode::Success ? code : ExitCode::CallFailed;
}

void Session::OnTimeout() {
    End(Fail("no application within " + std::to_string(*m_options.timeout) + " s\n" + HIDDEN_HINT,
             ExitCode::NoApplication));
}

namespace {

constexpr double MS_PER_SECOND = 1000;
// More than eleven days. The limit keeps the conversion to whole milliseconds defined.
constexpr double LONGEST_WAIT_S = 1000000;

/// Prints events, and fills lists if it has a feed.
class ServeSession : public Session {
public:
    explicit ServeSession(const SessionOptions& options) : Session(options) {}
    ServeSession(const SessionOptions& options, Feed feed)
        : Session(options),
          m_fills(true),
          m_items(std::move(feed.items)),
          m_changes(std::make_move_iterator(feed.changes.begin()),
                    std::make_move_iterator(feed.changes.end())),
          m_live(std::move(feed.live)) {
        if (m_live) {
            m_live->Start(
                {[this](const Items& items) { OnBroadcast(items); }, &Complain,
                 [this](const std::string& error) { End(Fail(error, ExitCode::WrongUsage)); }});
        }
    }

protected:
    ExitCode OnInterrupted() override {
        Complain(m_live ? m_live->Summary() : "");
        return ExitCode::Success;
    }
    void OnConnected(const std::string& application) override {
        Print(report().Connected(application));
    }
    void OnDisconnected(const std::string& application) override {
        // The application is filled again if it connects again.
        m_filled.erase(application);
        Print(report().Disconnected(application));
    }
    void OnNotified(const std::string& application, const Notification& notification) override {
        middleware().selections().Read(
            application, notification.event,
            [this, application, notification](const SelectedItem& selection) {
                Print(report().Event(application, notification, selection));
            });
        // LocalCreated may be repeated. A second filling would discard the selection of the viewer.
        if (m_fills && notification.event == Event::LocalCreated &&
            m_filled.insert(application).second) {
            Fill(application);
        }
    }

private:
    void Fill(const std::string& application) {
        // An earlier middleware may have left items. Only the result of the second call is
        // reported.
        link().Call(application, Function::RemoveAllItems, {}, [](const Result<Items>&) {});
        link().Call(application, Function::AddItems, m_items,
                    [this, application, count = m_items.size()](const Result<Items>& reply) {
                        if (reply) {
                            OnFilled(application, count);
                        } else {
                            Complain("cannot fill " + application + ": " + reply.error());
                        }
                    });
    }

    void OnFilled(const std::string& application, size_t count) {
        Print(report().Filled(application, count));
        // The changes start with the first list that is filled, and run once for all applications.
        if (!m_playing && !m_live) {
            m_playing = true;
            ScheduleChange();
        }
    }

    void OnBroadcast(const Items& items) {
        m_changes.push_back({m_live->interval(), items});
        // An earlier change schedules the next one.
        if (m_changes.size() == 1) {
            ScheduleChange();
        }
    }

    void ScheduleChange() {
        if (!m_changes.empty()) {
            const double wait = std::clamp(m_changes.front().seconds, 0.0, LONGEST_WAIT_S);
            m_clock =
                RunAfter(std::chrono::milliseconds(static_cast<int64_t>(wait * MS_PER_SECOND)),
                         [this] { OnChange(); });
        }
    }

    void OnChange() {
        // The list is updated even if no application is connected, so that a later one is filled
        // with it. A list that is not filled yet is not seen, so its items get the order of the
        // broadcast.
        const ListUpdate update =
            UpdateList(m_filled.empty() ? Items() : m_items, m_changes.front().items);
        m_changes.pop_front();
        m_items = update.items;
        // An application that was not filled yet receives the whole list later.
        for (const std::string& application : m_filled) {
            Update(application, update);
        }
        ScheduleChange();
    }

    void Update(const std::string& application, const ListUpdate& update) {
        for (const FunctionCall& call : update.calls) {
            // One line reports the whole update, when its last call succeeds.
            const bool last = &call == &update.calls.back();
            link().Call(
                application, call.function, call.items,
                [this, application, last, counts = UpdateCounts(update)](const auto& reply) {
                    if (!reply) {
                        Complain("cannot update " + application + ": " + reply.error());
                    } else if (last) {
                        Print(report().Updated(application, counts));
                    }
                });
        }
    }

    bool m_fills = false;
    Items m_items;
    std::deque<FeedStep> m_changes;  ///< Changes that are still to be made.
    std::shared_ptr<LiveBroadcast> m_live;
    Registration m_clock;
    bool m_playing = false;
    std::set<std::string> m_filled;  ///< Connected applications whose list was filled.
};

class CallSession : public Session {
public:
    CallSession(const SessionOptions& options, FunctionCall call)
        : Session(options), m_call(std::move(call)) {}

protected:
    void Play() override {
        // Several applications may connect, but the user asked for one call.
        AwaitFirst();
        if (!ended()) {
            link().Call(first(), m_call.function, m_call.items,
                        [this](const Result<Items>& reply) { OnReply(reply); });
        }
    }
    ExitCode OnInterrupted() override { return ExitCode::CallFailed; }

private:
    // The bus answers with an error if the application leaves before it replies.
    void OnReply(const Result<Items>& reply) {
        for (const Item& item : reply ? *reply : Items()) {
            Print(report().ItemOfReply(item));
        }
        End(reply ? ExitCode::Success
                  : Fail(std::string(NameOf(m_call.function)) + " failed: " + reply.error(),
                         ExitCode::CallFailed));
    }

    FunctionCall m_call;
};

}  // namespace

ExitCode Watch(const SessionOptions& options) {
    return ServeSession(options).Run();
}

ExitCode Serve(const SessionOptions& options, Feed feed) {
    return ServeSession(options, std::move(feed)).Run();
}

ExitCode CallOnce(const SessionOptions& options, const FunctionCall& call) {
    return CallSession(options, call).Run();
}

}  // namespace applist::sim
