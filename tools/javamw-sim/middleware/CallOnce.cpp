// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "middleware/CallOnce.h"

#include <utility>

#include "common/Output.h"

namespace applist::sim {

CallOnce::CallOnce(SessionOptions options, Function function, Items arguments)
    : Session(std::move(options)), m_function(function), m_arguments(std::move(arguments)) {}

void CallOnce::OnConnected(const std::string& application) {
    if (m_application.empty()) {
        m_application = application;
        client().Call(application, m_function, m_arguments,
                      [this](const Result<Items>& reply) { OnReply(reply); });
    }
}

// The bus replies with an error to a call of an application that has left.
void CallOnce::OnDisconnected(const std::string& /*application*/) {}

void CallOnce::OnNotified(const std::string& /*application*/,
                          const Notification& /*notification*/) {}

void CallOnce::OnReply(const Result<Items>& reply) {
    if (!reply) {
        Complain(std::string(NameOf(m_function)) + " failed: " + reply.error());
        End(ExitCode::CallFailed);
        return;
    }
    for (const Item& item : *reply) {
        Print(report().ItemOfReply(item));
    }
    End(ExitCode::Success);
}

}  // namespace applist::sim
