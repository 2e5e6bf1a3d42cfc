// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "app/Toolkit.h"

namespace applist::desktop {

/// A process that has started the toolkit and waits to become the application: any program of this
/// port with the option --prepare. It waits before the program's main(), so nothing of the program
/// has happened. launch/PreparedLaunch.h defines how a launcher requests the application. The
/// process ends when it does not fit its surroundings any more.
///
/// Main thread only, at most one.
class PreparedProcess {
public:
    explicit PreparedProcess(std::string applicationId);
    ~PreparedProcess();
    PreparedProcess(const PreparedProcess&) = delete;
    PreparedProcess& operator=(const PreparedProcess&) = delete;
    PreparedProcess(PreparedProcess&&) = delete;
    PreparedProcess& operator=(PreparedProcess&&) = delete;

    /// Starts the toolkit with these arguments, creates the window and accepts requests. Returns
    /// false after logging the reason.
    bool Prepare(int argc, char** argv);
    /// Waits for a request. Returns true if this process is the application from now on, with the
    /// environment, the streams and the folder of the request; false if it must end.
    bool AwaitRequest();
    /// The arguments of the request, with a null at the end. They stay valid.
    std::vector<char*>& arguments() { return m_arguments; }

    /// Returns the toolkit that this process has prepared; null later, and in other processes.
    static std::unique_ptr<Toolkit> TakeToolkit();

    /// For the loop: a launcher has connected; something woke the process.
    void Connected();
    void CheckSurroundings();

private:
    bool FitsSurroundings() const;
    bool Listen();
    void StopListening();
    bool Receive(int connection);
    void Adopt(const std::string& request);
    void Become(int connection, const std::vector<int>& descriptors);

    std::string m_applicationId;
    std::unique_ptr<Toolkit> m_toolkit;
    /// What this process has been prepared for, as sorted lines.
    std::vector<std::string> m_surroundings;
    std::string m_socket;
    int m_listener = -1;
    int m_connection = -1;
    std::vector<char*> m_arguments;
};

}  // namespace applist::desktop
