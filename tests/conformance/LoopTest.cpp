// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// app.h: sources that the main loop must run, and ways to end it. Not for the fakes, which do not
// have a loop.
#include <Elementary.h>
#include <csignal>
#include <unistd.h>

#include <gio/gio.h>
#include <gtest/gtest.h>

#include "app.h"
#include "conformance/Contract.h"
#include "conformance/ForkedRun.h"
#include "conformance/SetUnderTest.h"

namespace applist::test {
namespace {

class Loop : public testing::Test {
protected:
    static std::string Of(const Plan& plan) { return ForkedRun(plan).Story(); }

    std::unique_ptr<SetUnderTest> m_set = MakeSet();
};

gboolean EndFromGlib(gpointer /*data*/) {
    Tell("glib");
    ui_app_exit();
    return G_SOURCE_REMOVE;
}

Eina_Bool EndFromToolkit(void* /*data*/) {
    Tell("toolkit");
    ui_app_exit();
    return ECORE_CALLBACK_CANCEL;
}

// Without this the application cannot answer calls of the middleware.
TEST_F(Loop, DispatchesGlibsDefaultMainContext) {
    CONTRACT("app.h", "ui_app_main()");
    EXPECT_EQ(Of({.inLaunch = [] { g_idle_add(EndFromGlib, nullptr); }}),
              "create launch glib terminate 0");
    EXPECT_EQ(Of({.inCreate = [] { g_timeout_add(20, EndFromGlib, nullptr); }}),
              "create launch glib terminate 0");
}

TEST_F(Loop, RunsTheToolkitsTimers) {
    CONTRACT("app.h", "ui_app_main()");
    EXPECT_EQ(Of({.inCreate = [] { ecore_timer_add(0.02, EndFromToolkit, nullptr); }}),
              "create launch toolkit terminate 0");
}

// The bus library raises SIGTERM when the system bus disappears.
TEST_F(Loop, EndsWellAtASignal) {
    CONTRACT("app.h", "ui_app_main()");
    EXPECT_EQ(Of({.inLaunch = [] { kill(getpid(), SIGTERM); }}), "create launch terminate 0");
    EXPECT_EQ(Of({.inLaunch = [] { kill(getpid(), SIGINT); }}), "create launch terminate 0");
}

TEST_F(Loop, BringsTheLaunchOfASecondStartToTheFirst) {
    CONTRACT("app.h", "ui_app_main()");
    const auto exitInSecond = [launches = 0]() mutable {
        if (++launches == 2) {
            ui_app_exit();
        }
    };
    ForkedRun first({.inLaunch = exitInSecond});
    ASSERT_TRUE(first.Reach("launch"));
    ForkedRun second({.inLaunch = [] { Tell("started twice"); }});
    EXPECT_EQ(second.Story(), "0");
    EXPECT_EQ(first.Story(), "create launch launch terminate 0");
}

// The style names that the program uses. The toolkit replaces a missing style without an error.
TEST_F(Loop, HasTheStylesOfTheListInItsTheme) {
    CONTRACT("app.h", "ui_app_main()");
    const auto lookUp = [] {
        for (const char* group : {"elm/genlist/item/1text_left_styleA/default",
                                  "elm/popup/base/default", "elm/focus_highlight/top/invisible"}) {
            const char* path = elm_theme_group_path_find(nullptr, group);
            Tell(path != nullptr ? "found" : std::string("without ") + group);
        }
        ui_app_exit();
    };
    EXPECT_EQ(Of({.inCreate = lookUp}), "create found found found launch terminate 0");
}

}  // namespace
}  // namespace applist::test
