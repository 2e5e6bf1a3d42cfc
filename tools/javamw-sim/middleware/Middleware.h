// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "link/BusLink.h"
#include "link/SelectionReader.h"

namespace applist::sim {

/// One session of a middleware on the bus, with its own connection. All methods and callbacks run
/// on the thread of the default main context.
class Middleware {
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
    SelectionReader& selections() { return *m_selections; }
    const SelectionReader& selections() const { return *m_selections; }

private:
    void Take(const Happening& happening);

    std::string m_name;
    std::string m_address;
    Observer m_observer;
    HandshakePlan m_plan;
    std::string m_busProblem;
    bool m_connected = false;
    std::string m_application;
    std::unique_ptr<BusLink> m_link;
    std::unique_ptr<SelectionReader> m_selections;
};

}  // namespace applist::sim
