// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <gio/gio.h>

#include "launch/LaunchProtocol.h"

namespace applist::desktop {

/// Ensures that the program runs once per session. The first instance owns the application id as
/// its bus name and receives launch requests; a later instance forwards its own request to the
/// first one.
///
/// launch/LaunchProtocol.h defines the form of the requests. Main thread only.
class SingleInstance {
public:
    enum class Role {
        /// Owns the id; later launch requests arrive here.
        First,
        /// Another instance owns the id.
        Later,
        /// The session bus is not usable, so other instances cannot be detected.
        Alone,
    };
    using Receiver = std::function<void(app_control_s&)>;

    /// Determines the role; waits up to a few seconds. If the bus does not reply, the role is
    /// Alone. If another instance owns the id, the role is Later, even if that instance does not
    /// reply. receiver is called from the main context, not from the constructor.
    SingleInstance(std::string applicationId, Receiver receiver);
    /// Releases the id unless Release() has done so. Waits up to a few seconds until the bus has
    /// received the release.
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;
    SingleInstance(SingleInstance&&) = delete;
    SingleInstance& operator=(SingleInstance&&) = delete;

    Role role() const { return m_role; }
    /// Sends a launch request to the first instance, without waiting for that one to handle it;
    /// true iff the bus has taken it within a few seconds. REQUIRES: role() == Role::Later.
    bool HandOver(const app_control_s& request);

    /// Releases the id without waiting, so that later launches start a new instance. A request that
    /// is already on its way still arrives here.
    void Release();

    void Activated();
    void LaunchAction(GVariant* values);

private:
    struct Unref {
        void operator()(void* object) const { g_object_unref(object); }
    };
    void Register();
    void AcceptRequests();

    std::string m_applicationId;
    Receiver m_receiver;
    std::unique_ptr<GDBusConnection, Unref> m_bus;
    std::unique_ptr<GApplication, Unref> m_application;
    Role m_role = Role::Alone;
};

}  // namespace applist::desktop
