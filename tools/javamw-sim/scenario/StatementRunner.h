// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "middleware/Middleware.h"
#include "scenario/Statement.h"

namespace applist::sim {

/// How a statement ended.
enum class Verdict {
    Held,
    Failed,
    Interrupted,  ///< Ended by Interrupt(); the result is unknown.
    NoBus,        ///< The bus is unreachable, lost or denies the names.
};

/// The result of a statement.
struct Outcome {
    Verdict verdict = Verdict::Held;
    std::string problem{};         ///< Reason of the failure; one line.
    std::optional<Items> reply{};  ///< The items of the reply, if there is one.

    bool held() const { return verdict == Verdict::Held; }
};

inline Outcome Held() {
    return {};
}
inline Outcome Failed(const std::string& problem) {
    return {Verdict::Failed, problem};
}
/// Fails with problem unless it is empty.
inline Outcome HeldUnless(const std::string& problem) {
    return problem.empty() ? Held() : Failed(problem);
}

/// Returns the items of a reply; nothing if it is an error or not a list of items.
inline std::optional<Items> ItemsOf(const Result<Bytes>& reply) {
    return reply ? DecodeItems(*reply) : std::nullopt;
}

/// Returns "200 ms" or "5 s".
std::string DescribeTime(Duration duration);

/// A middleware of a scenario, with the events and announcements that it has received and that no
/// statement has consumed yet.
struct ScenarioMiddleware {
    /// address may be empty for the system bus.
    ScenarioMiddleware(const std::string& name, const std::string& address,
                       const Middleware::Observer& observer);

    std::deque<Bytes> events;
    std::deque<Announcement> announcements;
    /// The reply to the last call; absent before the first reply.
    std::optional<Result<Bytes>> lastReply;
    Middleware middleware;
};

/// Runs statements one after the other on the bus.
///
/// Execute() runs the default main context until the statement is done. It must not be called
/// recursively.
class StatementRunner {
public:
    /// address may be empty for the system bus. observer is called during statements and whenever
    /// else the main context runs, but not for announcements and denied names.
    StatementRunner(std::string address, Middleware::Observer observer);

    /// Runs a statement after it has joined the bus, if the statement needs it. If errorExpected, a
    /// failed call is not a failure, because the next statement checks the error.
    Outcome Execute(const Action& action, bool errorExpected = false);

    /// Ends the current statement, or the next one if none is running. May be called from a
    /// callback of the main context.
    void Interrupt() { m_interrupted = true; }

    /// Runs the main context until the choice of each received event 3 is known, or until the
    /// default timeout.
    void FinishChoices();

    /// The acting middleware.
    ScenarioMiddleware& acting() { return *m_acting; }

    // For statements.
    void Use(const std::string& name) { m_acting = &MiddlewareNamed(name); }
    void SetTimeout(Duration timeout) { m_timeout = timeout; }
    Duration timeout() const { return m_timeout; }
    bool errorExpected() const { return m_errorExpected; }
    /// Lets the acting middleware join the bus, unless it has joined.
    Outcome Join();
    /// Runs the main context until done returns true. Fails with the text otherwise after patience.
    Outcome Await(const std::function<bool()>& done, Duration patience,
                  const std::string& otherwise);

private:
    Outcome Provide(Action::Needs needs);
    ScenarioMiddleware& MiddlewareNamed(const std::string& name);

    std::string m_address;
    Middleware::Observer m_observer;
    Duration m_timeout;
    std::map<std::string, std::unique_ptr<ScenarioMiddleware>> m_middlewares;
    ScenarioMiddleware* m_acting;
    bool m_errorExpected = false;
    bool m_interrupted = false;
};

}  // namespace applist::sim
