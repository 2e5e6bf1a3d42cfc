// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include "commands/EventLog.h"
#include "commands/Session.h"

namespace applist::sim {

/// Prints every event of every application until a signal ends it.
class Watch : public Session {
public:
    using Session::Session;

protected:
    void OnConnected(const std::string& application) override;
    void OnDisconnected(const std::string& application) override;
    void OnNotified(const std::string& application, const Notification& notification) override;

private:
    EventLog& Log();

    std::unique_ptr<EventLog> m_log;
};

}  // namespace applist::sim
