// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>

#include "scenario/Executor.h"

namespace applist::sim {

/// "200 ms", "5 s".
std::string DescribeTime(Duration duration);

/// The execution of one statement: what each kind of action does.
class Executor::Doing {
public:
    /// executor must outlive it.
    Doing(Executor& executor, bool errorExpected)
        : m_executor(executor), m_errorExpected(errorExpected) {}

    Outcome operator()(const SetTimeout& action) const;
    Outcome operator()(const Note& action) const;
    Outcome operator()(const UsePartner& action) const;
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
    struct Flight;
    using Judge = std::function<std::string(const Items& items)>;

    Partner& partner() const { return *m_executor.m_partner; }
    Duration PatienceOf(const std::optional<Duration>& within) const {
        return within.value_or(m_executor.m_timeout);
    }
    Outcome WithApplication(const std::function<Outcome()>& then) const;
    Outcome AwaitThen(const std::function<bool()>& done, Duration patience,
                      const std::string& otherwise) const;
    Outcome Signal(const Send& action) const;
    Outcome Call(const Send& action) const;
    Outcome CollectReplies(Flight& flight, const Send& action) const;
    void SendOne(const std::shared_ptr<Flight>& flight, const Send& action) const;
    Outcome Ask(Function function, const Judge& judge) const;

    Executor& m_executor;
    bool m_errorExpected;
};

}  // namespace applist::sim
