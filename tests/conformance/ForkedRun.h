// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>

#include <sys/types.h>

namespace applist::test {

/// What an application does in its callbacks, besides telling that they came.
struct Plan {
    /// What create answers.
    bool start = true;
    std::function<void()> inCreate = [] {};
    std::function<void()> inLaunch = [] {};
};

/// One ui_app_main() in a process of its own, since a toolkit may start once in a process. It ends
/// after half a minute by itself.
class ForkedRun {
public:
    /// Starts. The platform is not touched in the calling process.
    explicit ForkedRun(const Plan& plan);
    /// Kills what still runs.
    ~ForkedRun();
    ForkedRun(const ForkedRun&) = delete;
    ForkedRun& operator=(const ForkedRun&) = delete;
    ForkedRun(ForkedRun&&) = delete;
    ForkedRun& operator=(ForkedRun&&) = delete;

    /// Everything that happens until the end, a word each, as in "create launch terminate 0" with
    /// the result of ui_app_main() last; "failed" stands for a negative one. Without it: the
    /// process died.
    std::string Story();
    /// Reads the story up to the first text of this kind; true iff it comes.
    bool Reach(const std::string& text);

private:
    bool ReadSome();

    pid_t m_process = -1;
    int m_pipe = -1;
    std::string m_story;
};

/// Adds a word to the story of the process that this is called in.
void Tell(const std::string& word);

}  // namespace applist::test
