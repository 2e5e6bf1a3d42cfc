// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "link/BusLink.h"
#include "link/ListClient.h"
#include "link/SelectionReader.h"

namespace applist::sim {

/// Something that happens to a middleware.
struct Happening {
    enum class Kind {
        Connected,     ///< The handshake with the application is complete.
        Disconnected,  ///< The application left the bus.
        Announced,     ///< The application made an announcement of the handshake.
        Notified,      ///< The application sent a signal.
        Called,        ///< The application called and got an empty reply.
        Failed,        ///< An operation on the bus failed.
        Denied,        ///< The policy of the bus denies the names of the middleware.
        BusLost,       ///< The bus closed the connection.
    };
    Kind kind{};
    std::string application{};    ///< Unique bus name; empty for the last three.
    Bytes message{};              ///< Of a signal or a call.
    Announcement announcement{};  ///< Only if announced.
    std::string problem{};        ///< Text of the last three.
};

/// Describes happening on one line: "connected :1.2", "event 1 ItemChanged".
std::string Describe(const Happening& happening);

/// Returns "event 1 ItemChanged", or a description of an invalid notification.
std::string DescribeMessage(const Bytes& message);

/// One session of a middleware on the bus, with its own connection. All methods and callbacks run
/// on the thread of the default main context.
class Middleware : public BusLinkListener {
public:
    /// Called for everything that happens to the middleware, also during Join().
    using Observer = std::function<void(Middleware& middleware, const Happening& happening)>;
    /// Called with a new connection before any traffic. Returns an empty string, or the reason not
    /// to use it.
    using Prepare = std::function<std::string(GDBusConnection* connection)>;

    /// address may be empty for the system bus.
    Middleware(std::string name, std::string address, Observer observer);

    const std::string& name() const { return m_name; }
    const HandshakePlan& plan() const { return m_plan; }
    /// Sets the plan for the following announcements.
    void SetPlan(const HandshakePlan& plan);

    /// Connects to the bus and begins the handshake, unless already joined. Returns an empty string
    /// on success, otherwise the reason. Blocks while it connects.
    std::string Join(const Prepare& prepare = nullptr);
    /// Cancels pending calls and reads, flushes and closes the connection.
    void Vanish();
    bool joined() const { return m_link != nullptr; }
    /// Why the bus is unusable: it closed the connection, or its policy denies the names of the
    /// middleware. Empty while it is usable.
    const std::string& busProblem() const { return m_busProblem; }

    /// The application that connected last and is still connected, otherwise the one whose
    /// announcement was received last. Empty if there is none.
    const std::string& application() const { return m_application; }
    bool connected() const { return m_connected; }

    // REQUIRES: joined().
    BusLink& link() { return *m_link; }
    ListClient& client() { return *m_client; }
    SelectionReader& selections() { return *m_selections; }
    const SelectionReader& selections() const { return *m_selections; }

private:
    void Connected(const std::string& application) override;
    void Disconnected(const std::string& application) override;
    void Announced(const std::string& application, Announcement announcement) override;
    void Notified(const std::string& application, const Bytes& message) override;
    Bytes Called(const std::string& application, const Bytes& message) override;
    void LinkFailed(const std::string& error) override;
    void LinkDenied(const std::string& error) override;
    void BusLost() override;
    void Tell(const Happening& happening) { m_observer(*this, happening); }

    std::string m_name;
    std::string m_address;
    Observer m_observer;
    HandshakePlan m_plan;
    std::string m_busProblem;
    bool m_connected = false;
    std::string m_application;
    std::unique_ptr<BusLink> m_link;
    std::unique_ptr<ListClient> m_client;
    std::unique_ptr<SelectionReader> m_selections;
};

}  // namespace applist::sim
