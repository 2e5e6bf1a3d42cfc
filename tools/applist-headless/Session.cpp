// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "Session.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <glib.h>
#include <memory>
#include <sstream>
#include <utility>

#include <nlohmann/json.hpp>

#include "VirtualEcore.h"
#include "shared/Output.h"

namespace applist::headless {
namespace {

using tools::Json;

// The time for which the program answers calls after its window is gone.
constexpr double LEAVE_SECONDS = 0.5;

std::chrono::milliseconds Milliseconds(double seconds) {
    return std::chrono::milliseconds(static_cast<int64_t>(seconds * 1000));
}

Json OrNull(const std::string& text) {
    return text.empty() ? Json(nullptr) : Json(text);
}

std::string ReasonOf(const Statement& statement) {
    switch (statement.action) {
        case Action::Ok:
            return "ok";
        case Action::SecondStart:
            return "second start";
        case Action::Die:
            return "die";
        case Action::Key:
            return statement.text == "XF86Exit" ? "exit" : "back";
        default:
            return "time limit";
    }
}

}  // namespace

Session::Session(const Options& options, std::function<void(Exit)> onEnd)
    : m_options(options), m_onEnd(std::move(onEnd)) {}

void Session::Start() {
    std::string problem;
    m_life = Life::Start([this] { Changed(); }, problem);
    if (!m_life) {
        static_cast<void>(std::fprintf(stderr, "applist-headless: %s\n", problem.c_str()));
        Finish(NO_BUS);
    }
}

void Session::Take(const std::string& line, const std::string& place) {
    const auto parsed = ParseStatement(line);
    if (const auto* problem = std::get_if<Problem>(&parsed)) {
        Complain({{}, line, place}, problem->text);
    } else if (const auto* statement = std::get_if<Statement>(&parsed)) {
        m_steps.push_back({*statement, line, place});
        RunSteps();
    }
}

void Session::EndInput() {
    m_inputEnded = true;
    RunSteps();
}

void Session::RunSteps() {
    // A statement may change the list, which calls Changed().
    if (std::exchange(m_running, true)) {
        return;
    }
    while (!m_steps.empty() && !m_awaited && !m_finished) {
        const Step step = std::move(m_steps.front());
        m_steps.pop_front();
        Run(step);
    }
    m_running = false;
    // A middleware still reads the viewer's choice while the application ends.
    const bool ending = m_life && m_life->EndAsked();
    if (m_inputEnded && m_steps.empty() && !m_awaited && !ending) {
        Finish(m_status);
    }
}

void Session::Run(const Step& step) {
    switch (step.statement.action) {
        case Action::State:
            return PrintState();
        case Action::Await:
            return Await(step);
        default:
            if (!m_life) {
                return Complain(step, "the application has ended");
            }
            Drive(step);
    }
}

void Session::Drive(const Step& step) {
    const Statement& statement = step.statement;
    // Read before the statement runs, because the statement itself may ask for the end.
    const bool wasLeaving = m_life->EndAsked();
    switch (statement.action) {
        case Action::Wait:
            Wait(statement.seconds);
            break;
        case Action::Hang:
            // Blocks the main loop on purpose, so that the application does not answer meanwhile.
            g_usleep(static_cast<gulong>(statement.seconds * G_USEC_PER_SEC));
            break;
        case Action::Die:
            // Set first, because Changed() reports a closed connection as an error otherwise.
            m_reason = ReasonOf(statement);
            m_life->Disconnect();
            return EndLife();
        case Action::SecondStart:
            if (wasLeaving) {
                return Complain(step, "the application is ending");
            }
            m_life->AskForEnd();
            break;
        default:
            // The window is gone, so it does not receive keys.
            if (!wasLeaving) {
                Press(statement);
            }
    }
    if (m_life && m_life->EndAsked() && !wasLeaving) {
        m_reason = ReasonOf(statement);
        m_leaveSecondsLeft = LEAVE_SECONDS;
        m_leaveTimer = RunAfter(Milliseconds(LEAVE_SECONDS), [this] { EndLife(); });
    }
}

void Session::Press(const Statement& statement) {
    switch (statement.action) {
        case Action::MoveUp:
            m_life->list().MoveUp();
            break;
        case Action::MoveDown:
            m_life->list().MoveDown();
            break;
        case Action::Ok:
            m_clicked = m_life->list().Activate();
            return;
        default:
            break;
    }
    TheEcore().Release(statement.text.c_str());
}

void Session::Wait(double seconds) {
    m_time += seconds;
    if (m_life->EndAsked()) {
        // The timers of an ending application do not run. Only the time until its end passes.
        m_leaveSecondsLeft -= seconds;
        if (m_leaveSecondsLeft <= 0) {
            EndLife();
        }
        return;
    }
    TheEcore().Advance(seconds);
}

void Session::Await(const Step& step) {
    if (Holds(step.statement)) {
        return;
    }
    m_awaited = step;
    // Real time, unlike Wait(): the condition depends on traffic of other processes.
    m_awaitTimer = RunAfter(Milliseconds(m_options.awaitSeconds), [this] {
        std::ostringstream problem;
        problem << "'" << m_awaited->line << "' was not reached within " << m_options.awaitSeconds
                << " s";
        Complain(*m_awaited, problem.str());
        Finish(NOT_REACHED);
    });
}

bool Session::Holds(const Statement& awaited) const {
    if (!m_life || awaited.condition == Condition::Ended) {
        return !m_life && (awaited.condition == Condition::Ended ||
                           awaited.condition == Condition::Disconnected);
    }
    const auto items = m_life->model().GetAllItems();
    switch (awaited.condition) {
        case Condition::Connected:
            return !m_life->Counts().partners.empty();
        case Condition::Disconnected:
            return m_life->Counts().partners.empty();
        case Condition::Items:
            return std::to_string(items.size()) == awaited.text;
        case Condition::Item:
            return std::any_of(items.begin(), items.end(), [&](AppListItem* item) {
                return item->GetUnigueId() == awaited.text;
            });
        default:
            return m_life->model().GetSelection()->GetUnigueId() == awaited.text;
    }
}

void Session::PrintState() {
    Json state{{"running", m_life != nullptr}, {"ending", m_life && m_life->EndAsked()}};
    if (m_life) {
        m_life->Flush();
    }
    const auto counts = m_life ? m_life->Counts() : Traffic::Counts{};
    state["ended_by"] = OrNull(m_reason);
    state["name"] = m_life ? Json(m_life->Name()) : Json(nullptr);
    state["partners"] = counts.partners;
    state["items"] = Json::array();
    if (m_life) {
        for (AppListItem* item : m_life->model().GetAllItems()) {
            state["items"].push_back(
                {{"id", item->GetUnigueId()}, {"name", item->GetVisibleName()}});
        }
    }
    state["selected"] =
        m_life ? OrNull(m_life->model().GetSelection()->GetUnigueId()) : Json(nullptr);
    state["clicked"] = OrNull(m_clicked);
    state["calls"] = counts.calls;
    state["events"] = counts.events;
    state["time"] = m_time;
    if (!tools::WriteLine(tools::JsonLine(state))) {
        Finish(NOT_REACHED);
    }
}

void Session::Changed() {
    if (m_finished) {
        return;
    }
    if (m_life && m_life->LostBus() && m_reason != "die") {
        static_cast<void>(std::fputs("applist-headless: the system bus has closed\n", stderr));
        return Finish(NO_BUS);
    }
    if (m_awaited && Holds(m_awaited->statement)) {
        m_awaited.reset();
        m_awaitTimer.Release();
    }
    RunSteps();
}

void Session::EndLife() {
    m_leaveTimer.Release();
    m_life.reset();
    if (m_options.once) {
        return Finish(m_status);
    }
    Changed();
}

void Session::Complain(const Step& step, const std::string& problem) {
    // The problem quotes the line, which may have any bytes, such as commands for a terminal.
    const std::unique_ptr<char, decltype(&g_free)> text(
        g_utf8_make_valid(problem.data(), static_cast<gssize>(problem.size())), g_free);
    static_cast<void>(std::fprintf(stderr, "applist-headless: %s: %s\n", step.place.c_str(),
                                   tools::OneLine(text.get()).c_str()));
    m_status = WRONG_INPUT;
}

void Session::Finish(Exit status) {
    if (!std::exchange(m_finished, true)) {
        m_onEnd(status);
    }
}

}  // namespace applist::headless
