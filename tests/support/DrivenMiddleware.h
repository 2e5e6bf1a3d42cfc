// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "link/BusLink.h"
#include "support/ChildProcess.h"

namespace applist::test {

/// A middleware in the test's process: the test makes its calls and reads what it received. Works
/// only while the default main context runs, that is, during the waiting functions. Main thread
/// only.
class DrivenMiddleware {
public:
    /// Announces itself on the bus at address; a bus that cannot be reached fails the test.
    explicit DrivenMiddleware(const std::string& address);

    /// Waits until an application has announced its list; true iff one does in time.
    [[nodiscard]] bool AwaitApplication();
    /// Waits until that application has left the bus.
    [[nodiscard]] bool AwaitDisconnection();
    /// Waits until it has sent count events of this kind in all.
    [[nodiscard]] bool AwaitEvents(sim::Event event, size_t count);
    /// The application that connected last, by its unique bus name.
    const std::string& application() const { return m_application; }
    size_t Events(sim::Event event) const;

    /// Calls without waiting for the reply, unless the bus would refuse one more pending call.
    void Call(sim::Function function, const sim::Items& items = {});
    /// Waits until every call has ended, with or without a reply.
    [[nodiscard]] bool AwaitReplies();
    /// Calls and returns the items of the reply. Without a reply it fails the test and returns
    /// nothing.
    std::optional<sim::Items> Ask(sim::Function function, const sim::Items& items = {});

    size_t Answered() const { return m_answered; }
    /// Calls that ended without a reply.
    size_t Failed() const { return m_failed; }

private:
    void Hear(const sim::Happening& happening);
    void Take(const Result<sim::Items>& reply);

    std::string m_application;
    bool m_connected = false;
    std::map<sim::Event, size_t> m_events;
    size_t m_pending = 0;
    size_t m_answered = 0;
    size_t m_failed = 0;
    std::unique_ptr<sim::BusLink> m_link;
};

}  // namespace applist::test
