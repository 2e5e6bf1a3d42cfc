// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "scenario/StatementRunner.h"

#include <algorithm>
#include <span>
#include <utility>

#include "link/Protocol.h"
#include "middleware/MainLoop.h"

namespace applist::sim {
namespace {

constexpr Duration DEFAULT_TIMEOUT{5000};
constexpr const char* FIRST_MIDDLEWARE = "middleware";

/// Returns "200 ms" or "5 s".
std::string DescribeTime(Duration duration) {
    return duration.count() % 1000 == 0 ? std::to_string(duration.count() / 1000) + " s"
                                        : std::to_string(duration.count()) + " ms";
}

}  // namespace

/// Runs one statement: one operator for each kind of action.
class StatementRunner::Execution {
public:
    /// runner must outlive this object.
    Execution(StatementRunner& runner, bool errorExpected)
        : m_runner(runner), m_errorExpected(errorExpected) {}

    Outcome operator()(const SetTimeout& action) const;
    Outcome operator()(const Note& action) const;
    Outcome operator()(const UseMiddleware& action) const;
    Outcome operator()(const PlanHandshake& action) const;
    Outcome operator()(const ForgetEvents& action) const;

    Outcome operator()(const Join& action) const;
    Outcome operator()(const Vanish& action) const;
    Outcome operator()(const Restart& action) const;
    Outcome operator()(const Announce& action) const;
    Outcome operator()(const Send& action) const;

    Outcome operator()(const WaitFor& action) const;
    Outcome operator()(const WaitForConnection& action) const;
    Outcome operator()(const ExpectEvent& action) const;
    Outcome operator()(const ExpectNoEvent& action) const;
    Outcome operator()(const ExpectAnnouncement& action) const;
    Outcome operator()(const ExpectList& action) const;
    Outcome operator()(const ExpectCount& action) const;
    Outcome operator()(const ExpectSelection& action) const;
    Outcome operator()(const ExpectReply& action) const;
    Outcome operator()(const ExpectError& action) const;

private:
    struct PendingCalls;
    using Judge = std::function<std::string(const Items& items)>;

    ScenarioMiddleware& acting() const { return *m_runner.m_acting; }
    Middleware& middleware() const { return acting().middleware; }
    Duration PatienceOf(const std::optional<Duration>& within) const {
        return within.value_or(m_runner.m_timeout);
    }
    Outcome WithApplication(const std::function<Outcome()>& then) const;
    Outcome AwaitThen(const std::function<bool()>& done, Duration patience,
                      const std::string& otherwise) const {
        return m_runner.Await(done, patience, otherwise);
    }
    Outcome Signal(const Send& action) const;
    Outcome Call(const Send& action) const;
    Outcome CollectReplies(PendingCalls& calls, const Send& action) const;
    void SendOne(const std::shared_ptr<PendingCalls>& calls, const Send& action) const;
    Outcome Ask(Function function, const Judge& judge) const;

    StatementRunner& m_runner;
    bool m_errorExpected;
};

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

std::string ScenarioMiddleware::Join() {
    const std::string problem = middleware.Join();
    return problem.empty() ? middleware.busProblem() : problem;
}

StatementRunner::StatementRunner(std::string address, Middleware::Observer observer)
    : m_address(std::move(address)),
      m_observer(std::move(observer)),
      m_timeout(DEFAULT_TIMEOUT),
      m_acting(&MiddlewareNamed(FIRST_MIDDLEWARE)) {}

StatementRunner::~StatementRunner() = default;

Outcome StatementRunner::Execute(const Action& action, bool errorExpected) {
    Execution doing(*this, errorExpected);
    Outcome outcome = m_interrupted ? Outcome{Verdict::Interrupted, "interrupted", {}}
                                    : std::visit(doing, action);
    if (outcome.verdict == Verdict::Interrupted) {
        m_interrupted = false;
    }
    return outcome;
}

void StatementRunner::Interrupt() {
    m_interrupted = true;
}

void StatementRunner::FinishChoices() {
    Await(
        [this] {
            return std::none_of(m_middlewares.begin(), m_middlewares.end(), [](const auto& entry) {
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

Outcome StatementRunner::Await(const std::function<bool()>& done, Duration patience,
                               const std::string& otherwise) {
    const std::string& busProblem = m_acting->middleware.busProblem();
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
        return {Verdict::Interrupted, "interrupted", std::nullopt};
    }
    return busProblem.empty() ? Failed(otherwise)
                              : Outcome{Verdict::NoBus, busProblem, std::nullopt};
}

Outcome StatementRunner::Execution::operator()(const SetTimeout& action) const {
    m_runner.m_timeout = action.duration;
    return Held();
}

Outcome StatementRunner::Execution::operator()(const Note& /*action*/) const {
    return Held();
}

Outcome StatementRunner::Execution::operator()(const UseMiddleware& action) const {
    m_runner.m_acting = &m_runner.MiddlewareNamed(action.name);
    return Held();
}

Outcome StatementRunner::Execution::operator()(const PlanHandshake& action) const {
    HandshakePlan plan = middleware().plan();
    const AnnouncementPlan step{action.times, action.delay};
    if (action.announcement) {
        plan[*action.announcement] = step;
    } else {
        plan = {step, step, step};
    }
    middleware().SetPlan(plan);
    return Held();
}

Outcome StatementRunner::Execution::operator()(const ForgetEvents& /*action*/) const {
    acting().events.clear();
    acting().announcements.clear();
    return Held();
}

Outcome StatementRunner::Execution::operator()(const Join& /*action*/) const {
    const std::string problem = acting().Join();
    return problem.empty() ? Held() : Outcome{Verdict::NoBus, problem, std::nullopt};
}

Outcome StatementRunner::Execution::operator()(const Vanish& /*action*/) const {
    if (!middleware().joined()) {
        return Failed(middleware().name() + " is not on the bus");
    }
    middleware().Vanish();
    return Held();
}

Outcome StatementRunner::Execution::operator()(const Restart& /*action*/) const {
    middleware().Vanish();
    return (*this)(Join());
}

Outcome StatementRunner::Execution::operator()(const Announce& action) const {
    Outcome joined = (*this)(Join());
    if (joined.verdict == Verdict::Held) {
        middleware().link().AnnounceNow(action.announcement);
    }
    const std::string& problem = middleware().busProblem();
    return problem.empty() ? joined : Outcome{Verdict::NoBus, problem, std::nullopt};
}

Outcome StatementRunner::Execution::operator()(const WaitFor& action) const {
    const Outcome waited = AwaitThen([] { return false; }, action.duration, "");
    return waited.verdict == Verdict::Failed ? Held() : waited;
}

Outcome StatementRunner::Execution::operator()(const WaitForConnection& action) const {
    Outcome joined = (*this)(Join());
    if (joined.verdict != Verdict::Held) {
        return joined;
    }
    const Duration patience = PatienceOf(action.within);
    return AwaitThen([&] { return middleware().connected() == action.connected; }, patience,
                     (action.connected ? "no application connected within "
                                       : "the application stayed connected for ") +
                         DescribeTime(patience));
}

namespace {

// The bus daemon limits each connection to 128 pending replies.
constexpr unsigned MOST_UNDER_WAY = 64;

std::optional<Items> ItemsOf(const Result<Bytes>& reply) {
    return reply ? DecodeItems(*reply) : std::nullopt;
}

std::string Subject(const Frame& frame) {
    const auto* regular = std::get_if<RegularFrame>(&frame);
    return regular != nullptr ? std::string(NameOf(regular->function)) : "the call";
}

}  // namespace

/// Shared with the reply callbacks, which may run after the statement has timed out.
struct StatementRunner::Execution::PendingCalls {
    unsigned sent = 0;
    unsigned answered = 0;
    unsigned failed = 0;
    std::string firstError;
    std::optional<Result<Bytes>> lastReply;
};

Outcome StatementRunner::Execution::WithApplication(const std::function<Outcome()>& then) const {
    Outcome joined = (*this)(Join());
    if (joined.verdict != Verdict::Held) {
        return joined;
    }
    return middleware().application().empty()
               ? Failed("no application has announced itself; \"wait connected\" waits for one")
               : then();
}

Outcome StatementRunner::Execution::operator()(const Send& action) const {
    return WithApplication([&] { return action.asSignal ? Signal(action) : Call(action); });
}

Outcome StatementRunner::Execution::Signal(const Send& action) const {
    for (unsigned copy = 1; copy <= action.copies; ++copy) {
        const std::string error =
            middleware().link().Emit(middleware().application(), BytesOf(action.frame, copy));
        if (!error.empty()) {
            return Failed("the signal could not be sent: " + error);
        }
    }
    return Held();
}

void StatementRunner::Execution::SendOne(const std::shared_ptr<PendingCalls>& calls,
                                         const Send& action) const {
    middleware().link().Call(middleware().application(), BytesOf(action.frame, ++calls->sent),
                             [calls](const Result<Bytes>& reply) {
                                 ++calls->answered;
                                 if (!reply && ++calls->failed == 1) {
                                     calls->firstError = reply.error();
                                 }
                                 calls->lastReply = reply;
                             });
}

Outcome StatementRunner::Execution::Call(const Send& action) const {
    const auto calls = std::make_shared<PendingCalls>();
    if (!action.awaitReply) {
        SendOne(calls, action);
        return Held();
    }
    while (calls->answered < action.copies) {
        while (calls->sent < action.copies && calls->sent - calls->answered < MOST_UNDER_WAY) {
            SendOne(calls, action);
        }
        const unsigned before = calls->answered;
        Outcome waited = AwaitThen([&] { return calls->answered > before; }, m_runner.m_timeout,
                                   "no reply within " + DescribeTime(m_runner.m_timeout));
        if (waited.verdict == Verdict::Failed) {
            calls->failed += action.copies - calls->answered;
            calls->firstError = calls->firstError.empty() ? waited.problem : calls->firstError;
            calls->lastReply = Result<Bytes>::Failure(waited.problem);
            break;
        }
        if (waited.verdict != Verdict::Held) {
            return waited;
        }
    }
    return CollectReplies(*calls, action);
}

Outcome StatementRunner::Execution::CollectReplies(PendingCalls& calls, const Send& action) const {
    acting().lastReply = std::move(calls.lastReply);
    const auto items = ItemsOf(*acting().lastReply);
    if (calls.failed > 0) {
        const std::string count = action.copies == 1
                                      ? ""
                                      : std::to_string(calls.failed) + " of " +
                                            std::to_string(action.copies) + " times; first error: ";
        return m_errorExpected
                   ? Held()
                   : Failed(Subject(action.frame) + " failed: " + count + calls.firstError);
    }
    if (!items && std::holds_alternative<RegularFrame>(action.frame)) {
        return Failed("the reply of " + Subject(action.frame) + " is not a list of items");
    }
    return {Verdict::Held, "", items};
}

Outcome StatementRunner::Execution::Ask(Function function, const Judge& judge) const {
    return WithApplication([&] {
        auto reply = std::make_shared<std::optional<Result<Bytes>>>();
        middleware().link().Call(middleware().application(), EncodeCall(function, {}),
                                 [reply](const Result<Bytes>& bytes) { *reply = bytes; });
        Outcome waited = AwaitThen([&] { return reply->has_value(); }, m_runner.m_timeout,
                                   "no reply within " + DescribeTime(m_runner.m_timeout));
        if (waited.verdict != Verdict::Held) {
            return waited;
        }
        const auto items = ItemsOf(**reply);
        const std::string subject(NameOf(function));
        if (!items) {
            return Failed(**reply ? "the reply of " + subject + " is not a list of items"
                                  : subject + " failed: " + (*reply)->error());
        }
        const std::string problem = judge(*items);
        return problem.empty() ? Held() : Failed(problem);
    });
}

namespace {

bool IsEvent(const Bytes& message, Event event) {
    const auto notification = DecodeNotification(message);
    return notification && notification->event == event && notification->payloadSize == 0;
}

bool Fits(const ItemPattern& pattern, const Item& item) {
    return pattern.id == item.id && (!pattern.name || *pattern.name == item.name);
}

bool Fit(const std::vector<ItemPattern>& patterns, const Items& items) {
    return std::equal(patterns.begin(), patterns.end(), items.begin(), items.end(), Fits);
}

// Truncates a long list, but includes its length.
std::string Describe(const Items& items) {
    constexpr size_t MOST_SHOWN = 20;
    std::string text;
    for (size_t i = 0; i < std::min(items.size(), MOST_SHOWN); ++i) {
        text += (i == 0 ? "" : ", ") + items[i].id + '=' + items[i].name;
    }
    return items.empty() ? "nothing"
                         : text + (items.size() > MOST_SHOWN ? ", ..." : "") + " (" +
                               std::to_string(items.size()) + ')';
}

std::string Describe(const Bytes& bytes) {
    constexpr size_t MOST_SHOWN = 64;
    std::string text = std::to_string(bytes.size()) + " bytes";
    for (const char& byte : std::span(bytes).first(std::min(bytes.size(), MOST_SHOWN))) {
        text += ' ' + ToHex(std::string_view(&byte, 1));
    }
    return text + (bytes.size() > MOST_SHOWN ? " ..." : "");
}

std::string ProblemOfReply(const ExpectReply& expected, const Bytes& reply) {
    if (const auto* bytes = std::get_if<Bytes>(&expected.content)) {
        return *bytes == reply ? "" : "the reply has " + Describe(reply);
    }
    const auto items = DecodeItems(reply);
    if (!items) {
        return "the reply is not a list of items: " + Describe(reply);
    }
    return Fit(std::get<std::vector<ItemPattern>>(expected.content), *items)
               ? ""
               : "the reply holds " + Describe(*items);
}

}  // namespace

Outcome StatementRunner::Execution::operator()(const ExpectEvent& action) const {
    unsigned seen = 0;
    std::optional<std::string> other;
    auto& events = acting().events;
    const auto done = [&] {
        while (!events.empty() && seen < action.times && !other) {
            if (IsEvent(events.front(), action.event)) {
                ++seen;
            } else {
                other = DescribeMessage(events.front());
            }
            events.pop_front();
        }
        return seen == action.times || other.has_value();
    };
    const Duration patience = PatienceOf(action.within);
    const Outcome waited = AwaitThen(done, patience, "no event within " + DescribeTime(patience));
    const std::string before = action.times == 1 ? ""
                                                 : "after " + std::to_string(seen) + " of " +
                                                       std::to_string(action.times) + ": ";
    if (waited.verdict == Verdict::Failed) {
        return Failed(before + waited.problem);
    }
    return other ? Failed(before + "received " + *other + " instead") : waited;
}

Outcome StatementRunner::Execution::operator()(const ExpectNoEvent& action) const {
    auto& events = acting().events;
    const Outcome waited =
        AwaitThen([&] { return !events.empty(); }, action.duration, "as expected");
    if (waited.verdict == Verdict::Failed) {
        return Held();
    }
    return waited.verdict == Verdict::Held ? Failed("received " + DescribeMessage(events.front()))
                                           : waited;
}

Outcome StatementRunner::Execution::operator()(const ExpectAnnouncement& action) const {
    Outcome joined = (*this)(Join());
    if (joined.verdict != Verdict::Held) {
        return joined;
    }
    auto& heard = acting().announcements;
    const Duration patience = PatienceOf(action.within);
    Outcome waited = AwaitThen([&] { return !heard.empty(); }, patience,
                               "no announcement within " + DescribeTime(patience));
    if (waited.verdict == Verdict::Held) {
        const Announcement first = heard.front();
        heard.pop_front();
        return first == action.announcement
                   ? Held()
                   : Failed("received " + std::string(NameOf(first)) + " instead");
    }
    return waited;
}

Outcome StatementRunner::Execution::operator()(const ExpectList& action) const {
    return Ask(Function::GetAllItems, [&](const Items& items) {
        return Fit(action.items, items) ? "" : "the list holds " + Describe(items);
    });
}

Outcome StatementRunner::Execution::operator()(const ExpectCount& action) const {
    return Ask(Function::GetAllItems, [&](const Items& items) {
        return action.count == items.size()
                   ? ""
                   : "the list holds " + std::to_string(items.size()) + " items";
    });
}

Outcome StatementRunner::Execution::operator()(const ExpectSelection& action) const {
    return Ask(Function::GetSelection, [&](const Items& items) {
        if (items.size() != 1) {
            return "the reply holds " + Describe(items);
        }
        const Item& item = items.front();
        const bool none = item.id.empty() && item.name.empty();
        if (action.item ? Fits(*action.item, item) : none) {
            return std::string();
        }
        return none ? "no item is selected" : "the selection is " + item.id + '=' + item.name;
    });
}

Outcome StatementRunner::Execution::operator()(const ExpectReply& action) const {
    const auto& reply = acting().lastReply;
    if (!reply) {
        return Failed("no call has been made");
    }
    if (!*reply) {
        return Failed("the call failed: " + reply->error());
    }
    const std::string problem = ProblemOfReply(action, **reply);
    return problem.empty() ? Held() : Failed(problem);
}

Outcome StatementRunner::Execution::operator()(const ExpectError& action) const {
    const auto& reply = acting().lastReply;
    if (!reply) {
        return Failed("no call has been made");
    }
    if (*reply) {
        return Failed("the call succeeded with a reply of " + Describe(**reply));
    }
    return reply->error().find(action.text) != std::string::npos
               ? Held()
               : Failed("the error is: " + reply->error());
}

}  // namespace applist::sim
