// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "scenario/Doing.h"

namespace applist::sim {

std::string DescribeTime(Duration duration) {
    return duration.count() % 1000 == 0 ? std::to_string(duration.count() / 1000) + " s"
                                        : std::to_string(duration.count()) + " ms";
}

Outcome Executor::Doing::operator()(const SetTimeout& action) const {
    m_executor.m_timeout = action.duration;
    return Held();
}

Outcome Executor::Doing::operator()(const Note& /*action*/) const {
    return Held();
}

Outcome Executor::Doing::operator()(const UsePartner& action) const {
    m_executor.m_partner = &m_executor.PartnerNamed(action.name);
    return Held();
}

Outcome Executor::Doing::operator()(const PlanHandshake& action) const {
    HandshakePlan plan = partner().plan();
    const AnnouncementPlan step{action.times, action.delay};
    if (action.announcement) {
        plan[*action.announcement] = step;
    } else {
        plan = {step, step, step};
    }
    partner().SetPlan(plan);
    return Held();
}

Outcome Executor::Doing::operator()(const ForgetEvents& /*action*/) const {
    partner().events().clear();
    partner().announcements().clear();
    return Held();
}

Outcome Executor::Doing::operator()(const Join& /*action*/) const {
    const std::string problem = partner().Join();
    return problem.empty() ? Held() : Outcome{Verdict::NoBus, problem, std::nullopt};
}

Outcome Executor::Doing::operator()(const Vanish& /*action*/) const {
    if (!partner().joined()) {
        return Failed(partner().name() + " is not on the bus");
    }
    partner().Vanish();
    return Held();
}

Outcome Executor::Doing::operator()(const Restart& /*action*/) const {
    partner().Vanish();
    return (*this)(Join());
}

Outcome Executor::Doing::operator()(const Announce& action) const {
    Outcome joined = (*this)(Join());
    if (joined.verdict == Verdict::Held) {
        partner().Announce(action.announcement);
    }
    const std::string& problem = partner().busProblem();
    return problem.empty() ? joined : Outcome{Verdict::NoBus, problem, std::nullopt};
}

Outcome Executor::Doing::AwaitThen(const std::function<bool()>& done, Duration patience,
                                   const std::string& otherwise) const {
    switch (m_executor.Await(done, patience)) {
        case Waited::Done:
            break;
        case Waited::TooLong:
            return Failed(otherwise);
        case Waited::Interrupted:
            return {Verdict::Interrupted, "interrupted", std::nullopt};
        case Waited::BusLost:
            return {Verdict::NoBus, partner().busProblem(), std::nullopt};
    }
    return Held();
}

Outcome Executor::Doing::operator()(const WaitFor& action) const {
    const Outcome waited = AwaitThen([] { return false; }, action.duration, "");
    return waited.verdict == Verdict::Failed ? Held() : waited;
}

Outcome Executor::Doing::operator()(const WaitForConnection& action) const {
    Outcome joined = (*this)(Join());
    if (joined.verdict != Verdict::Held) {
        return joined;
    }
    const Duration patience = PatienceOf(action.within);
    return AwaitThen([&] { return partner().connected() == action.connected; }, patience,
                     (action.connected ? "no application connected within "
                                       : "the application stayed connected for ") +
                         DescribeTime(patience));
}

}  // namespace applist::sim
