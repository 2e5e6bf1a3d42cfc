// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "scenario/StatementRunner.h"

#include <algorithm>
#include <utility>

#include "middleware/MainLoop.h"

namespace applist::sim {
namespace {

constexpr Duration DEFAULT_TIMEOUT{5000};
constexpr const char* FIRST_MIDDLEWARE = "middleware";

}  // namespace

std::string DescribeTime(Duration duration) {
    return duration.count() % 1000 == 0 ? std::to_string(duration.count() / 1000) + " s"
                                        : std::to_string(duration.count()) + " ms";
}

ScenarioMiddleware::ScenarioMiddleware(const std::string& name, const std::string& address,
                                       const Middleware::Observer& observer)
    : middleware(name, address, [this, observer](Middleware& self, const Happening& happening) {
          if (happening.kind == Happening::Kind::Announced) {
              announcements.push_back(happening.announcement);
              return;
          }
          if (happening.kind == Happening::Kind::Notified) {
              events.push_back(happening.message);
          }
          if (happening.kind != Happening::Kind::Denied) {
              observer(self, happening);
          }
      }) {}

StatementRunner::StatementRunner(std::string address, Middleware::Observer observer)
    : m_address(std::move(address)),
      m_observer(std::move(observer)),
      m_timeout(DEFAULT_TIMEOUT),
      m_acting(&MiddlewareNamed(FIRST_MIDDLEWARE)) {}

Outcome StatementRunner::Execute(const Action& action, bool errorExpected) {
    m_errorExpected = errorExpected;
    Outcome outcome =
        m_interrupted ? Outcome{Verdict::Interrupted, "interrupted"} : Provide(action.needs);
    if (outcome.held()) {
        outcome = action.run(*this);
    }
    // One interrupt ends one statement, so that the shell can run the next one.
    if (outcome.verdict == Verdict::Interrupted) {
        m_interrupted = false;
    }
    return outcome;
}

Outcome StatementRunner::Provide(Action::Needs needs) {
    const Outcome joined = needs == Action::Needs::Nothing ? Held() : Join();
    const bool missing =
        needs == Action::Needs::Application && m_acting->middleware.application().empty();
    return joined.held() && missing
               ? Failed("no application has announced itself; \"wait connected\" waits for one")
               : joined;
}

void StatementRunner::FinishChoices() {
    // The outcome is ignored on purpose: a choice that stays unanswered must not prevent the end.
    Await(
        [this] {
            return std::ranges::none_of(m_middlewares, [](const auto& entry) {
                const Middleware& middleware = entry.second->middleware;
                return middleware.joined() && middleware.selections().IsPending(Event::ItemClicked);
            });
        },
        m_timeout, "");
}

ScenarioMiddleware& StatementRunner::MiddlewareNamed(const std::string& name) {
    auto& middleware = m_middlewares[name];
    if (!middleware) {
        middleware = std::make_unique<ScenarioMiddleware>(name, m_address, m_observer);
    }
    return *middleware;
}

Outcome StatementRunner::Join() {
    Middleware& middleware = m_acting->middleware;
    std::string problem = middleware.Join();
    // Joining can succeed although the bus has reported a problem since.
    if (problem.empty()) {
        problem = middleware.busProblem();
    }
    return problem.empty() ? Held() : Outcome{Verdict::NoBus, problem};
}

Outcome StatementRunner::Await(const std::function<bool()>& done, Duration patience,
                               const std::string& otherwise) {
    const std::string& busProblem = m_acting->middleware.busProblem();
    // The loop also ends for an interrupt and a lost bus, so the result of the condition is kept.
    bool held = false;
    RunUntil(
        [&] {
            held = done();
            return held || m_interrupted || !busProblem.empty();
        },
        patience);
    if (held) {
        return Held();
    }
    if (m_interrupted) {
        return {Verdict::Interrupted, "interrupted"};
    }
    return busProblem.empty() ? Failed(otherwise) : Outcome{Verdict::NoBus, busProblem};
}

}  // namespace applist::sim
