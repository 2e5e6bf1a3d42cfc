// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <gio/gio.h>

#include "AppControlRequest.h"

namespace applist::desktop {

/// The program's place on the session bus, under its application id: the first instance owns the id
/// and takes launch requests, every later one can only hand its own request over.
///
/// Requests arrive as launch/LaunchProtocol.h says. Main thread only.
class SingleInstance {
public:
    enum class Role {
        /// Owns the id; later launches arrive here.
        First,
        /// Another instance owns the id.
        Later,
        /// There is no usable session bus: nobody can tell whether there are others.
        Alone,
    };
    using Receiver = std::function<void(app_control_s&)>;

    /// Finds the role; waits a few seconds at most for a bus or an instance that does not answer,
    /// and stands alone then. receiver is called from the main context, never from here.
    SingleInstance(std::string applicationId, Receiver receiver);
    /// Gives the id up, if Release() has not, and waits a few seconds at most until the bus knows.
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;
    SingleInstance(SingleInstance&&) = delete;
    SingleInstance& operator=(SingleInstance&&) = delete;

    Role role() const { return m_role; }
    /// Sends a launch request to the first instance; true iff the bus has taken it.
    /// REQUIRES: role() == Role::Later.
    bool HandOver(const app_control_s& request);

    /// Gives the id up without waiting, so that a launch from now on starts a new instance. A
    /// request that is on its way here already still arrives.
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
    std::unique_ptr<GApplication, Unref> m_application;
    Role m_role = Role::Alone;
};

}  // namespace applist::desktop
