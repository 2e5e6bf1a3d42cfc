// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "GlibHandles.h"
#include "Life.h"
#include "Statement.h"

namespace applist::headless {

/// The exit statuses of the program.
enum Exit { DONE = 0, NOT_REACHED = 1, WRONG_INPUT = 2, NO_BUS = 3 };

/// Runs statements one after the other on an application. Main thread only; the default main
/// context must run.
class Session {
public:
    struct Options {
        /// The time limit of "await".
        double awaitSeconds = 0;
        /// End with the application instead of the input.
        bool once = false;
    };

    /// Calls onEnd once, with the exit status.
    Session(const Options& options, std::function<void(Exit)> onEnd);

    /// Starts the application. Ends the session if that fails.
    void Start();
    /// Takes one line of the input; place is where it is, such as "keys.txt:3". It runs when the
    /// statements before it are done.
    void Take(const std::string& line, const std::string& place);
    /// Ends the session when the statements are done.
    void EndInput();

private:
    struct Step {
        Statement statement;
        std::string line;
        std::string place;
    };

    void RunSteps();
    void Run(const Step& step);
    /// Runs a statement that needs a running application.
    void Drive(const Step& step);
    void Press(const Statement& statement);
    void Wait(double seconds);
    void Await(const Step& step);
    bool Holds(const Statement& awaited) const;
    void PrintState();
    void Changed();
    /// Deletes the application; reason is for the state.
    void EndLife();
    void Complain(const Step& step, const std::string& problem);
    void Finish(Exit status);

    Options m_options;
    std::function<void(Exit)> m_onEnd;
    std::unique_ptr<Life> m_life;
    std::deque<Step> m_steps;
    /// The statement that is being awaited.
    std::optional<Step> m_awaited;
    Registration m_awaitTimer;
    /// Runs while the application answers calls after its end was asked for.
    Registration m_leaveTimer;
    double m_leaveSecondsLeft = 0;
    bool m_inputEnded = false;
    bool m_running = false;
    bool m_finished = false;
    /// Why the application ends or has ended: the words of the statement, or "time limit".
    std::string m_reason;
    std::string m_clicked;
    double m_time = 0;
    Exit m_status = DONE;
};

}  // namespace applist::headless
