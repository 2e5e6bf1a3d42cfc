// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "commands/Watch.h"

namespace applist::sim {

void Watch::OnConnected(const std::string& application) {
    Print(report().Connected(application));
}

void Watch::OnDisconnected(const std::string& application) {
    Log().Lost(application);
    Print(report().Disconnected(application));
}

void Watch::OnNotified(const std::string& application, const Notification& notification) {
    Log().Add(application, notification);
}

EventLog& Watch::Log() {
    if (!m_log) {
        m_log = std::make_unique<EventLog>(client(), report(),
                                           [this](const std::string& line) { Print(line); });
    }
    return *m_log;
}

}  // namespace applist::sim
