// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>

#include <sys/types.h>

namespace applist::test {

/// The actions of an application in its callbacks, besides reporting them.
struct Plan {
    /// The result of create.
    bool start = true;
    std::function<void()> inCreate = [] {};
    std::function<void()> inLaunch = [] {};
};

/// One ui_app_main() in a child process, because a toolkit may start only once in a process. The
/// child ends itself after 30 seconds.
class ForkedRun {
public:
    /// Starts the child. The platform is not used in the calling process.
    explicit ForkedRun(const Plan& plan);
    /// Kills the child if it still runs.
    ~ForkedRun();
    ForkedRun(const ForkedRun&) = delete;
    ForkedRun& operator=(const ForkedRun&) = delete;
    ForkedRun(ForkedRun&&) = delete;
    ForkedRun& operator=(ForkedRun&&) = delete;

    /// All events until the end, one word each, such as "create launch terminate 0". The last word
    /// is the result of ui_app_main(), "failed" if negative; it is missing if the process died.
    std::string Story();
    /// Reads events until they contain this text; true iff it arrives.
    bool Reach(const std::string& text);

private:
    bool ReadSome();

    pid_t m_process = -1;
    int m_pipe = -1;
    std::string m_story;
};

/// Adds a word to the events of the calling child process.
void Tell(const std::string& word);

}  // namespace applist::test
