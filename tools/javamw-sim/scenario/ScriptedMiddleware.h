// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "link/BusLink.h"
#include "link/Handshake.h"
#include "link/SelectionReader.h"

namespace applist::sim {

/// A middleware with its own connection to the bus. Keeps received events until they are consumed.
class ScriptedMiddleware : public BusLinkListener {
public:
    /// Called for everything that happens to a middleware, with one line: "connected :1.2".
    using Observer =
        std::function<void(const ScriptedMiddleware& middleware, const std::string& happening)>;

    /// Called for each event 3 with the item that the viewer chose, instead of the observer.
    using ChoiceObserver =
        std::function<void(const ScriptedMiddleware& middleware, const Notification& event,
                           const SelectedItem& choice)>;

    /// address may be empty for the system bus. Without a choice observer the middleware makes no
    /// calls of its own.
    ScriptedMiddleware(std::string name, std::string address, Observer observer,
                       ChoiceObserver choiceObserver);
    ~ScriptedMiddleware() override;
    ScriptedMiddleware(const ScriptedMiddleware&) = delete;
    ScriptedMiddleware& operator=(const ScriptedMiddleware&) = delete;
    ScriptedMiddleware(ScriptedMiddleware&&) = delete;
    ScriptedMiddleware& operator=(ScriptedMiddleware&&) = delete;

    const std::string& name() const { return m_name; }
    const HandshakePlan& plan() const { return m_plan; }
    /// Sets the plan for the following announcements.
    void SetPlan(const HandshakePlan& plan);

    /// Connects to the bus and begins the handshake, unless already joined. Returns an empty string
    /// on success, otherwise the reason. Blocks while it connects.
    std::string Join();
    /// Flushes and closes the connection. Received events are kept.
    void Vanish();
    bool joined() const { return m_link != nullptr; }
    /// Why the bus is unusable: it closed the connection, or its policy denies the names of the
    /// middleware. Empty while it is usable.
    const std::string& busProblem() const { return m_busProblem; }
    /// True if an event 3 has arrived whose choice is not known yet.
    bool IsChoicePending() const {
        return m_selections && m_selections->IsPending(Event::ItemClicked);
    }

    /// The application that receives calls: the one that connected last and is still connected,
    /// otherwise the one whose announcement was received last. Empty if there is none.
    const std::string& application() const { return m_application; }
    bool connected() const { return m_connected; }

    // REQUIRES: joined().
    void Announce(Announcement announcement) { m_link->AnnounceNow(announcement); }
    /// Returns an empty string on success, otherwise the reason.
    std::string Signal(const Bytes& bytes) { return m_link->Emit(m_application, bytes); }
    void Call(const Bytes& bytes, MessageCaller::Done done) {
        m_link->Call(m_application, bytes, std::move(done));
    }

    std::deque<Bytes>& events() { return m_events; }
    std::deque<Announcement>& announcements() { return m_announcements; }
    /// The reply to the last call; absent before the first reply.
    std::optional<Result<Bytes>>& lastReply() { return m_lastReply; }

private:
    void Connected(const std::string& application) override;
    void Disconnected(const std::string& application) override;
    void Announced(const std::string& application, Announcement announcement) override;
    void Notified(const std::string& application, const Bytes& message) override;
    Bytes Called(const std::string& application, const Bytes& message) override;
    void LinkFailed(const std::string& error) override;
    void LinkDenied(const std::string& error) override;
    void BusLost() override;
    /// True if the choice observer handles the event.
    bool TakeChoice(const std::string& application, const Notification& event);

    std::string m_name;
    std::string m_address;
    HandshakePlan m_plan;
    Observer m_observer;
    ChoiceObserver m_choiceObserver;
    std::unique_ptr<ListClient> m_client;
    std::unique_ptr<SelectionReader> m_selections;  ///< Null without a choice observer.
    std::unique_ptr<BusLink> m_link;  ///< Destroyed first: its callbacks use the members above.
    std::string m_busProblem;
    bool m_connected = false;
    std::string m_application;
    std::deque<Bytes> m_events;
    std::deque<Announcement> m_announcements;
    std::optional<Result<Bytes>> m_lastReply;
};

/// Returns "event 1 ItemChanged", or a description of an invalid notification.
std::string DescribeMessage(const Bytes& message);

}  // namespace applist::sim
