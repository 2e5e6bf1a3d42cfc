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

enum class Verdict {
    Held,
    Failed,
    Interrupted,  ///< Ended by Interrupt(); the result is unknown.
    NoBus,        ///< The bus is unreachable, lost or denies the names.
};

/// The result of a statement.
struct Outcome {
    Verdict verdict = Verdict::Held;
    std::string problem;         ///< Reason of the failure; one line.
    std::optional<Items> reply;  ///< The items of the reply, if there is one.
};

inline Outcome Held() {
    return {};
}
inline Outcome Failed(const std::string& problem) {
    return {Verdict::Failed, problem, std::nullopt};
}

/// A middleware of a scenario, with what it has received and no statement has consumed.
struct ScenarioMiddleware {
    /// address may be empty for the system bus.
    ScenarioMiddleware(const std::string& name, const std::string& address,
                       const Middleware::Observer& observer);

    /// Returns an empty string on success, otherwise why the bus cannot be used.
    std::string Join();

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
    ~StatementRunner();
    StatementRunner(const StatementRunner&) = delete;
    StatementRunner& operator=(const StatementRunner&) = delete;
    StatementRunner(StatementRunner&&) = delete;
    StatementRunner& operator=(StatementRunner&&) = delete;

    /// Joins the bus if the statement needs it. If errorExpected, a failed call is not a failure,
    /// because the next statement checks the error.
    Outcome Execute(const Action& action, bool errorExpected = false);

    /// Ends the current statement, or the next one if none is running. May be called from a
    /// callback of the main context.
    void Interrupt();

    /// Runs the main context until the choice of each received event 3 is known, or until the
    /// default timeout.
    void FinishChoices();

    /// The acting middleware.
    ScenarioMiddleware& acting() { return *m_acting; }

private:
    class Execution;

    ScenarioMiddleware& MiddlewareNamed(const std::string& name);
    /// Runs the main context until done returns true. Fails with this text after patience.
    Outcome Await(const std::function<bool()>& done, Duration patience,
                  const std::string& otherwise);

    std::string m_address;
    Middleware::Observer m_observer;
    Duration m_timeout;
    std::map<std::string, std::unique_ptr<ScenarioMiddleware>> m_middlewares;
    ScenarioMiddleware* m_acting;
    bool m_interrupted = false;
};

}  // namespace applist::sim
