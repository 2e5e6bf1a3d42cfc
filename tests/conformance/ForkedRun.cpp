// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "conformance/ForkedRun.h"

#include <array>
#include <csignal>
#include <string_view>
#include <unistd.h>

#include <gtest/gtest.h>
#include <sys/wait.h>

#include "app.h"

namespace applist::test {
namespace {

constexpr unsigned int PATIENCE_SECONDS = 30;

// Used only in the child.
int g_story = -1;
pthread_t g_thread;

const Plan& PlanOf(void* data) {
    // Every callback must run on the thread of ui_app_main().
    if (pthread_equal(g_thread, pthread_self()) == 0) {
        Tell("(on another thread)");
    }
    return *static_cast<const Plan*>(data);
}

bool OnCreate(void* data) {
    const Plan& plan = PlanOf(data);
    Tell("create");
    plan.inCreate();
    return plan.start;
}

void OnTerminate(void* data) {
    PlanOf(data);
    Tell("terminate");
}

void OnPause(void* data) {
    PlanOf(data);
    Tell("pause");
}

void OnResume(void* data) {
    PlanOf(data);
    Tell("resume");
}

void OnLaunch(app_control_s* request, void* data) {
    const Plan& plan = PlanOf(data);
    Tell(request != nullptr ? "launch" : "launch without a request");
    plan.inLaunch();
}

int Run(const Plan& plan) {
    std::string name = "conformance-test";
    std::array<char*, 2> arguments{name.data(), nullptr};
    ui_app_callbacks callbacks{OnCreate, OnTerminate, OnPause, OnResume, OnLaunch};
    return ui_app_main(1, arguments.data(), &callbacks, const_cast<Plan*>(&plan));
}

[[noreturn]] void BecomeApplication(const Plan& plan, int story) {
    g_story = story;
    g_thread = pthread_self();
    alarm(PATIENCE_SECONDS);
    const int result = Run(plan);
    Tell(result < 0 ? "failed" : std::to_string(result));
    // Not exit(), which would run the parent's cleanup.
    _exit(::testing::Test::HasFailure() ? 1 : 0);
}

}  // namespace

void Tell(const std::string& word) {
    const std::string text = word + " ";
    static_cast<void>(!write(g_story, text.data(), text.size()));
}

ForkedRun::ForkedRun(const Plan& plan) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        ADD_FAILURE() << "no pipe";
        return;
    }
    m_process = fork();
    if (m_process == 0) {
        close(ends[0]);
        BecomeApplication(plan, ends[1]);
    }
    close(ends[1]);
    m_pipe = ends[0];
}

ForkedRun::~ForkedRun() {
    if (m_process > 0) {
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
    }
    close(m_pipe);
}

std::string ForkedRun::Story() {
    while (ReadSome()) {
    }
    return m_story.substr(0, m_story.empty() ? 0 : m_story.size() - 1);
}

bool ForkedRun::Reach(const std::string& text) {
    while (m_story.find(text) == std::string::npos) {
        if (!ReadSome()) {
            return false;
        }
    }
    return true;
}

bool ForkedRun::ReadSome() {
    std::array<char, 256> bytes{};
    const ssize_t got = read(m_pipe, bytes.data(), bytes.size());
    if (got > 0) {
        m_story.append(bytes.data(), static_cast<size_t>(got));
    }
    return got > 0;
}

}  // namespace applist::test
