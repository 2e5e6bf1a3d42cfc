// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Each case runs in a separate process that sets its environment before the first line is logged.
#include <Eina.h>
#include <cstdlib>
#include <glib.h>
#include <string>
#include <unistd.h>

#include <gtest/gtest.h>

#include "Log.h"
#include "app/ToolkitMessages.h"
#include "log/LogWriter.h"

namespace applist::desktop {
namespace {

std::string ErrorsOf(void (*body)()) {
    testing::internal::CaptureStderr();
    body();
    return testing::internal::GetCapturedStderr();
}

TEST(PlatformLog, WritesOnlyErrorsByDefault) {
    unsetenv("APPLIST_LOG");
    EXPECT_EQ(ErrorsOf([] {
                  __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_DEBUG, "applist", "debug %d", 1);
                  __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_INFO, "applist", "info %d", 2);
                  __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_ERROR, "applist", "error %d", 3);
              }),
              "applist error: error 3\n");
}

TEST(PlatformLog, WritesInfoAndErrorsAtInfo) {
    setenv("APPLIST_LOG", "info", 1);
    EXPECT_EQ(ErrorsOf([] {
                  __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_DEBUG, "applist", "debug %d", 1);
                  __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_INFO, "applist", "info %d", 2);
                  __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_ERROR, "applist", "error %d", 3);
              }),
              "applist info: info 2\napplist error: error 3\n");
}

TEST(PlatformLog, WritesEverythingAtDebug) {
    setenv("APPLIST_LOG", "debug", 1);
    EXPECT_EQ(ErrorsOf([] {
                  __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_DEBUG, "applist", "text\n\n");
              }),
              "applist debug: text\n");
}

TEST(PlatformLog, DoesNotLookAtTheArgumentsOfALineThatIsOff) {
    unsetenv("APPLIST_LOG");
    // Formatting this would read unmapped memory.
    const char* volatile nowhere = reinterpret_cast<const char*>(uintptr_t{8});
    EXPECT_EQ(__dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_DEBUG, "applist", "%s", nowhere), 0);
}

TEST(PlatformLog, ReportsAWrongLevelOnceAndWritesErrors) {
    setenv("APPLIST_LOG", "loud", 1);
    EXPECT_EQ(
        ErrorsOf([] {
            LOG_INFO("not written");
            __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_ERROR, "applist", "first");
            __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_ERROR, "applist", "second");
        }),
        "applist error: APPLIST_LOG: unknown level \"loud\"; it is one of error, info, debug. "
        "Using error\napplist error: first\napplist error: second\n");
}

TEST(PlatformLog, WritesALongMessageWhole) {
    const std::string text(5000, 'x');
    testing::internal::CaptureStderr();
    __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_ERROR, "applist", "%s", text.c_str());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "applist error: " + text + "\n");
}

TEST(PlatformLog, SaysWhenALineCannotBeWritten) {
    const int saved = dup(STDERR_FILENO);
    close(STDERR_FILENO);
    const int result = __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_ERROR, "applist", "lost");
    dup2(saved, STDERR_FILENO);
    close(saved);
    EXPECT_LT(result, 0);
}

TEST(PlatformLog, TakesGlibsMessages) {
    setenv("APPLIST_LOG", "info", 1);
    EXPECT_EQ(ErrorsOf([] {
                  TakeGlibMessages();
                  g_log("Dom", G_LOG_LEVEL_CRITICAL, "critical");
                  g_log("Dom", G_LOG_LEVEL_WARNING, "warning");
                  g_log("Dom", G_LOG_LEVEL_MESSAGE, "message");
                  g_log("Dom", G_LOG_LEVEL_DEBUG, "debug");
                  g_log(nullptr, G_LOG_LEVEL_WARNING, "nobody's");
              }),
              "Dom error: critical\nDom error: warning\nDom info: message\nGLib error: nobody's\n");
}

TEST(PlatformLog, HidesGlibsComplaintAboutUnknownWatchesAndNoOther) {
    unsetenv("APPLIST_LOG");
    EXPECT_EQ(
        ErrorsOf([] {
            TakeGlibMessages();
            g_log("GLib-GIO", G_LOG_LEVEL_WARNING, "Invalid id 17 passed to g_bus_unwatch_name()");
            g_log("GLib-GIO", G_LOG_LEVEL_WARNING, "Invalid id 17 passed to g_bus_unown_name()");
        }),
        "GLib-GIO error: Invalid id 17 passed to g_bus_unown_name()\n");
}

TEST(PlatformLog, TakesTheToolkitsMessages) {
    unsetenv("APPLIST_LOG");
    testing::internal::CaptureStderr();
    {
        const ToolkitMessages messages;
        const int domain = eina_log_domain_register("sample", nullptr);
        eina_log_print(domain, EINA_LOG_LEVEL_ERR, "/x/file.c", "function", 12, "bad %d", 5);
        eina_log_print(domain, EINA_LOG_LEVEL_WARN, "file.c", "function", 13, "less bad");
        eina_log_domain_unregister(domain);
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "sample error: /x/file.c:12 function() bad 5\n");
}

}  // namespace
}  // namespace applist::desktop
