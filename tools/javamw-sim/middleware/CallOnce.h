// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "middleware/Session.h"

namespace applist::sim {

/// Calls one function of the first application that connects and prints the items of the reply.
class CallOnce : public Session {
public:
    CallOnce(SessionOptions options, Function function, Items arguments);

protected:
    void OnConnected(const std::string& application) override;
    void OnDisconnected(const std::string& application) override;
    void OnNotified(const std::string& application, const Notification& notification) override;
    ExitCode OnInterrupted() override { return ExitCode::CallFailed; }

private:
    void OnReply(const Result<Items>& reply);

    Function m_function;
    Items m_arguments;
    std::string m_application;  ///< Empty until an application has been called.
};

}  // namespace applist::sim
