// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <csignal>
#include <functional>
#include <thread>
#include <unistd.h>

#include <gio/gio.h>
#include <gtest/gtest.h>

#include "app/GlibLoop.h"

namespace applist::desktop {
namespace {

/// The toolkit's main loop without a screen.
class GlibLoopTest : public testing::Test {
protected:
    GlibLoopTest() {
        // The toolkit's system modules look for a system bus and log an error without one.
        ecore_app_no_system_modules();
        ecore_init();
    }
    ~GlibLoopTest() override { ecore_shutdown(); }

    static gboolean Quit(gpointer count) {
        ++*static_cast<int*>(count);
        ecore_main_loop_quit();
        return G_SOURCE_REMOVE;
    }
    static Eina_Bool QuitToolkit(void* count) {
        ++*static_cast<int*>(count);
        ecore_main_loop_quit();
        return ECORE_CALLBACK_CANCEL;
    }
};

/// Waits as the toolkit does, at most that long, with or without a descriptor that becomes ready.
void Wait(GlibLoop& loop, timeval patience, bool forSomething) {
    int ends[2] = {-1, -1};
    ASSERT_EQ(pipe(ends), 0);
    ASSERT_EQ(write(ends[1], "x", forSomething ? 1 : 0), forSomething ? 1 : 0);
    fd_set reads;
    FD_ZERO(&reads);
    FD_SET(ends[0], &reads);
    EXPECT_EQ(loop.Select(ends[0] + 1, &reads, nullptr, nullptr, &patience), forSomething ? 1 : 0);
    close(ends[0]);
    close(ends[1]);
}

constexpr timeval SHORT{0, 1000};
constexpr timeval LONG{0, 400'000};

TEST_F(GlibLoopTest, ReportsARestAfterAWaitWithoutEvents) {
    int rests = 0;
    GlibLoop loop([&rests] { ++rests; });
    Wait(loop, SHORT, false);
    Wait(loop, LONG, true);
    EXPECT_EQ(rests, 1);
}

TEST_F(GlibLoopTest, ReportsNoRestWhenAnEventEndsTheWait) {
    int rests = 0;
    GlibLoop loop([&rests] { ++rests; });
    Wait(loop, SHORT, true);
    Wait(loop, LONG, true);
    EXPECT_EQ(rests, 0);
}

TEST_F(GlibLoopTest, ReportsNoRestBeforeAShortWait) {
    int rests = 0;
    GlibLoop loop([&rests] { ++rests; });
    Wait(loop, SHORT, false);
    Wait(loop, SHORT, false);
    EXPECT_EQ(rests, 0);
}

TEST_F(GlibLoopTest, StillWatchesTheToolkitsDescriptors) {
    const GlibLoop loop;
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    Ecore_Fd_Handler* handler = ecore_main_fd_handler_add(
        ends[0], ECORE_FD_READ,
        [](void*, Ecore_Fd_Handler*) -> Eina_Bool {
            ecore_main_loop_quit();
            return ECORE_CALLBACK_RENEW;
        },
        nullptr, nullptr, nullptr);
    ASSERT_EQ(write(ends[1], "x", 1), 1);
    ecore_main_loop_begin();
    ecore_main_fd_handler_del(handler);
    close(ends[0]);
    close(ends[1]);
}

TEST_F(GlibLoopTest, WakesUpForASourceThatAnotherThreadAdds) {
    const GlibLoop loop;
    int calls = 0;
    std::thread other([&calls] { g_idle_add(Quit, &calls); });
    ecore_main_loop_begin();
    other.join();
    EXPECT_EQ(calls, 1);
}

TEST_F(GlibLoopTest, RunsSourcesInASingleTurnOfTheLoop) {
    const GlibLoop loop;
    int calls = 0;
    g_idle_add(Quit, &calls);
    for (int turn = 0; turn < 3; ++turn) {
        ecore_main_loop_iterate();
    }
    EXPECT_EQ(calls, 1);
}

TEST_F(GlibLoopTest, LetsACallbackRunTheLoopItself) {
    const GlibLoop loop;
    struct Calls {
        int outer = 0;
        int inner = 0;
    } calls;
    g_idle_add(
        [](gpointer data) -> gboolean {
            auto& seen = *static_cast<Calls*>(data);
            ++seen.outer;
            g_idle_add(Quit, &seen.inner);
            while (seen.inner == 0) {
                ecore_main_loop_iterate();
            }
            ecore_main_loop_quit();
            return G_SOURCE_REMOVE;
        },
        &calls);
    ecore_main_loop_begin();
    EXPECT_EQ(calls.outer, 1);
    EXPECT_EQ(calls.inner, 1);
}

TEST_F(GlibLoopTest, SleepsWhileThereIsNothingToDo) {
    const GlibLoop loop;
    int turns = 0;
    Ecore_Idle_Enterer* counter = ecore_idle_enterer_add(
        [](void* count) -> Eina_Bool {
            ++*static_cast<int*>(count);
            return ECORE_CALLBACK_RENEW;
        },
        &turns);
    int calls = 0;
    ecore_timer_add(0.5, QuitToolkit, &calls);
    ecore_main_loop_begin();
    ecore_idle_enterer_del(counter);
    // One sleep until the timer. A few turns at start and end are allowed, but not polling.
    EXPECT_LE(turns, 4);
}

TEST_F(GlibLoopTest, ReportsAnInvalidDescriptorAsSelectDoes) {
    GlibLoop loop;
    const int closed = dup(STDIN_FILENO);
    close(closed);
    fd_set reads;
    FD_ZERO(&reads);
    FD_SET(closed, &reads);
    timeval soon{0, 0};
    EXPECT_EQ(loop.Select(closed + 1, &reads, nullptr, nullptr, &soon), -1);
    EXPECT_EQ(errno, EBADF);
}

TEST_F(GlibLoopTest, ReportsWhichOfTheToolkitsDescriptorsAreReady) {
    GlibLoop loop;
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    fd_set reads;
    fd_set writes;
    FD_ZERO(&reads);
    FD_ZERO(&writes);
    FD_SET(ends[0], &reads);
    FD_SET(ends[1], &writes);
    timeval soon{0, 0};
    EXPECT_EQ(loop.Select(std::max(ends[0], ends[1]) + 1, &reads, &writes, nullptr, &soon), 1);
    EXPECT_FALSE(FD_ISSET(ends[0], &reads));
    EXPECT_TRUE(FD_ISSET(ends[1], &writes));
    close(ends[0]);
    close(ends[1]);
}

TEST_F(GlibLoopTest, GivesTheToolkitItsOwnWaitBackAtTheEnd) {
    const Ecore_Select_Function before = ecore_main_loop_select_func_get();
    {
        const GlibLoop loop;
        EXPECT_NE(ecore_main_loop_select_func_get(), before);
    }
    EXPECT_EQ(ecore_main_loop_select_func_get(), before);
    // The context can be acquired again.
    EXPECT_TRUE(g_main_context_acquire(nullptr));
    g_main_context_release(nullptr);
}

}  // namespace
}  // namespace applist::desktop
