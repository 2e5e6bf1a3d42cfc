// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "scenario/ScriptedMiddleware.h"
#include "scenario/Statement.h"

namespace applist::sim {

enum class Verdict {
    Held,
    Failed,
    Interrupted,  ///< By Interrupt(); whether it would have held is not known.
    NoBus,        ///< The bus cannot be reached or closed the connection.
};

/// What became of a statement.
struct Outcome {
    Verdict verdict = Verdict::Held;
    std::string problem;         ///< Why it did not hold; one line.
    std::optional<Items> reply;  ///< The items with which a call was answered, if it was.
};

inline Outcome Held() {
    return {};
}
inline Outcome Failed(const std::string& problem) {
    return {Verdict::Failed, problem, std::nullopt};
}

/// Does what statements say, one after the other, on the bus.
///
/// Execute() runs the default main context until the statement is done, so that what else lives
/// there goes on; it must not be called from within itself.
class StatementRunner {
public:
    /// address is the bus'; empty for the system bus. observer is told of what happens while a
    /// statement runs and at any other time that the main context runs.
    StatementRunner(std::string address, ScriptedMiddleware::Observer observer,
                    ScriptedMiddleware::ChoiceObserver choiceObserver = nullptr);
    ~StatementRunner();
    StatementRunner(const StatementRunner&) = delete;
    StatementRunner& operator=(const StatementRunner&) = delete;
    StatementRunner(StatementRunner&&) = delete;
    StatementRunner& operator=(StatementRunner&&) = delete;

    /// The acting middleware joins the bus by itself when a statement needs that. A call that fails
    /// is no failure iff errorExpected: the next statement is to look at it.
    Outcome Execute(const Action& action, bool errorExpected = false);

    /// Ends the statement that is under way, or else the next one. May be called from a callback
    /// of the main context.
    void Interrupt();

    /// Runs the main context until the choice observer has been called for each event 3 that has
    /// arrived; no longer than the timeout of statements.
    void FinishChoices();

    /// Who acts.
    ScriptedMiddleware& middleware() { return *m_middleware; }

private:
    class Execution;
    enum class Waited { Done, TooLong, Interrupted, BusLost };

    ScriptedMiddleware& MiddlewareNamed(const std::string& name);
    /// Runs the main context until done returns true; it is asked after whatever happens.
    Waited Await(const std::function<bool()>& done, Duration patience);
    static int cb_TooLong(void* tooLong) noexcept;

    std::string m_address;
    ScriptedMiddleware::Observer m_observer;
    ScriptedMiddleware::ChoiceObserver m_choiceObserver;
    Duration m_timeout;
    std::map<std::string, std::unique_ptr<ScriptedMiddleware>> m_middlewares;
    ScriptedMiddleware* m_middleware;
    bool m_interrupted = false;
};

}  // namespace applist::sim
