// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <utility>

#include "scenario/Doing.h"

namespace applist::sim {
namespace {

// The bus daemon lets one connection wait for no more than 128 replies at a time.
constexpr unsigned MOST_UNDER_WAY = 64;

std::optional<Items> ItemsOf(const Result<Bytes>& reply) {
    return reply ? DecodeItems(*reply) : std::nullopt;
}

std::string Subject(const Frame& frame) {
    const auto* regular = std::get_if<RegularFrame>(&frame);
    return regular != nullptr ? std::string(NameOf(regular->function)) : "the call";
}

}  // namespace

/// Calls under way. Replies may come when their statement has been given up, so that they share it.
struct Executor::Doing::Flight {
    unsigned sent = 0;
    unsigned answered = 0;
    unsigned failed = 0;
    std::string firstError;
    std::optional<Result<Bytes>> lastReply;
};

Outcome Executor::Doing::WithApplication(const std::function<Outcome()>& then) const {
    Outcome joined = (*this)(Join());
    if (joined.verdict != Verdict::Held) {
        return joined;
    }
    return partner().application().empty()
               ? Failed("no application has been heard; \"wait connected\" waits for one")
               : then();
}

Outcome Executor::Doing::operator()(const Send& action) const {
    return WithApplication([&] { return action.asSignal ? Signal(action) : Call(action); });
}

Outcome Executor::Doing::Signal(const Send& action) const {
    for (unsigned copy = 1; copy <= action.copies; ++copy) {
        const std::string error = partner().Signal(BytesOf(action.frame, copy));
        if (!error.empty()) {
            return Failed("the signal could not be sent: " + error);
        }
    }
    return Held();
}

void Executor::Doing::SendOne(const std::shared_ptr<Flight>& flight, const Send& action) const {
    partner().Call(BytesOf(action.frame, ++flight->sent), [flight](const Result<Bytes>& reply) {
        ++flight->answered;
        if (!reply && ++flight->failed == 1) {
            flight->firstError = reply.error();
        }
        flight->lastReply = reply;
    });
}

Outcome Executor::Doing::Call(const Send& action) const {
    const auto flight = std::make_shared<Flight>();
    if (!action.awaitReply) {
        SendOne(flight, action);
        return Held();
    }
    while (flight->answered < action.copies) {
        while (flight->sent < action.copies && flight->sent - flight->answered < MOST_UNDER_WAY) {
            SendOne(flight, action);
        }
        const unsigned before = flight->answered;
        Outcome waited = AwaitThen([&] { return flight->answered > before; }, m_executor.m_timeout,
                                   "no reply within " + DescribeTime(m_executor.m_timeout));
        if (waited.verdict == Verdict::Failed) {
            flight->failed += action.copies - flight->answered;
            flight->firstError = flight->firstError.empty() ? waited.problem : flight->firstError;
            flight->lastReply = Result<Bytes>::Failure(waited.problem);
            break;
        }
        if (waited.verdict != Verdict::Held) {
            return waited;
        }
    }
    return CollectReplies(*flight, action);
}

Outcome Executor::Doing::CollectReplies(Flight& flight, const Send& action) const {
    partner().lastReply() = std::move(flight.lastReply);
    const auto items = ItemsOf(*partner().lastReply());
    if (flight.failed > 0) {
        const std::string count = action.copies == 1
                                      ? ""
                                      : std::to_string(flight.failed) + " of " +
                                            std::to_string(action.copies) + " times; first ";
        return m_errorExpected
                   ? Held()
                   : Failed(Subject(action.frame) + " failed: " + count + flight.firstError);
    }
    if (!items && std::holds_alternative<RegularFrame>(action.frame)) {
        return Failed("the reply of " + Subject(action.frame) + " is no list of items");
    }
    return {Verdict::Held, "", items};
}

Outcome Executor::Doing::Ask(Function function, const Judge& judge) const {
    return WithApplication([&] {
        auto reply = std::make_shared<std::optional<Result<Bytes>>>();
        partner().Call(BytesOf(RegularFrame{function, {}}, 1),
                       [reply](const Result<Bytes>& bytes) { *reply = bytes; });
        Outcome waited = AwaitThen([&] { return reply->has_value(); }, m_executor.m_timeout,
                                   "no reply within " + DescribeTime(m_executor.m_timeout));
        if (waited.verdict != Verdict::Held) {
            return waited;
        }
        const auto items = ItemsOf(**reply);
        const std::string subject(NameOf(function));
        if (!items) {
            return Failed(**reply ? "the reply of " + subject + " is no list of items"
                                  : subject + " failed: " + (*reply)->error());
        }
        const std::string problem = judge(*items);
        return problem.empty() ? Held() : Failed(problem);
    });
}

}  // namespace applist::sim
