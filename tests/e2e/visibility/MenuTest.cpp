// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <dlfcn.h>
#include <glib.h>
#include <memory>
#include <set>
#include <sstream>
#include <unistd.h>

#include <gmock/gmock.h>

#include "e2e/visibility/Platformctl.h"

namespace applist::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsSupersetOf;
using Question = int(const char*);

constexpr const char* MENU_KEY = "menu/system/application-list";

std::string ModulePath() {
    return BuiltProgram("../lib/applist/visibility-checker.so");
}

/// The symbols that a program or module exports.
std::set<std::string> ExportsOf(const std::string& path) {
    ChildProcess nm({"nm", "-D", "--defined-only", path});
    EXPECT_EQ(nm.WaitForExit(), 0) << nm.Errors();
    std::istringstream lines(nm.Output());
    std::set<std::string> names;
    for (std::string address, kind, name; lines >> address >> kind >> name;) {
        names.insert(name);
    }
    return names;
}

class Menu : public Platformctl {
protected:
    Question* Find(const char* name) {
        return reinterpret_cast<Question*>(dlsym(m_module.get(), name));
    }

    struct Close {
        void operator()(void* module) const { dlclose(module); }
    };
    std::unique_ptr<void, Close> m_module{dlopen(ModulePath().c_str(), RTLD_NOW | RTLD_LOCAL)};
};

TEST_F(Menu, LoadsTheModuleAndAsks) {
    ASSERT_TRUE(m_module) << dlerror();
    Question* const ask = Find("check_visibility_int");
    ASSERT_TRUE(ask);
    Do({"region", "italy"});
    Do({"set", DATA_SERVICE, "int", "2"});
    EXPECT_EQ(ask(MENU_KEY), 1);
    EXPECT_EQ(ask("menu/system/application-list/"), 0);
    Do({"set", DATA_SERVICE, "int", "4"});
    EXPECT_EQ(ask(MENU_KEY), 0);
    Do({"region", "brazil"});
    EXPECT_EQ(ask(MENU_KEY), 1);
}

/// A menu that logs with GLib, and that loads the module, calls check_visibility_int() once and
/// unloads the module. Each case runs in a child process, because a process can set GLib's log
/// writer only once.
class LoggingMenu : public Menu {
protected:
    LoggingMenu() {
        m_module.reset();
        // The module then logs errors about the settings that are not set.
        Do({"region", "italy"});
    }

    static void AskAndUnload() {
        void* const module = dlopen(ModulePath().c_str(), RTLD_NOW | RTLD_LOCAL);
        auto* const ask = reinterpret_cast<Question*>(dlsym(module, "check_visibility_int"));
        if (ask(MENU_KEY) != 0 || dlclose(module) != 0) {
            _exit(2);
        }
        if (dlopen(ModulePath().c_str(), RTLD_NOW | RTLD_NOLOAD) != nullptr) {
            _exit(3);
        }
    }
    static GLogWriterOutput WriteOwn(GLogLevelFlags, const GLogField*, gsize, void*) {
        static_cast<void>(std::fputs("the menu's own writer\n", stderr));
        return G_LOG_WRITER_HANDLED;
    }
    [[noreturn]] static void LogAndExit() {
        g_log("Menu", G_LOG_LEVEL_MESSAGE, "still logging");
        _exit(0);
    }

    static constexpr const char* MODULE_ERROR = "Can not get data service value from VCONF\n";
    const testing::ExitedWithCode m_exitsWell{0};
};

TEST_F(LoggingMenu, KeepsTheWriterThatItSetBefore) {
    EXPECT_EXIT(
        {
            g_log_set_writer_func(WriteOwn, nullptr, nullptr);
            AskAndUnload();
            LogAndExit();
        },
        m_exitsWell, AllOf(HasSubstr(MODULE_ERROR), HasSubstr("the menu's own writer\n")));
}

TEST_F(LoggingMenu, MaySetAWriterAfterwards) {
    EXPECT_EXIT(
        {
            AskAndUnload();
            g_log_set_writer_func(WriteOwn, nullptr, nullptr);
            LogAndExit();
        },
        m_exitsWell, AllOf(HasSubstr(MODULE_ERROR), HasSubstr("the menu's own writer\n")));
}

TEST_F(LoggingMenu, KeepsGlibsDefaultWriter) {
    EXPECT_EXIT(
        {
            AskAndUnload();
            LogAndExit();
        },
        m_exitsWell,
        AllOf(HasSubstr(MODULE_ERROR), HasSubstr("Menu-Message"), HasSubstr("still logging")));
}

TEST(MenuModule, ExportsItsFourEntryPointsAndNothingElse) {
    EXPECT_THAT(ExportsOf(ModulePath()),
                ElementsAre("check_visibility_bool", "check_visibility_double",
                            "check_visibility_int", "check_visibility_string"));
}

using ProgramOfASet = Platformctl;

// The set does not have a region, so a program that starts waits for it and logs errors.
TEST_F(ProgramOfASet, AnswersOptionsBeforeItReadsTheSettings) {
    for (const auto& [option, answer] : {std::pair{"--version", "applist " APPLIST_VERSION "\n"},
                                         std::pair{"--help", "Usage: applist "}}) {
        ChildProcess program({BuiltProgram("applist"), option},
                             {{"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}});
        EXPECT_EQ(program.WaitForExit(), 0);
        EXPECT_THAT(program.Output(), testing::StartsWith(answer));
        EXPECT_EQ(program.Errors(), "");
    }
}

TEST(TheProgram, ExportsTheEntryPointsOfTheMenu) {
    EXPECT_THAT(ExportsOf(BuiltProgram("applist")),
                IsSupersetOf({"check_visibility_bool", "check_visibility_double",
                              "check_visibility_int", "check_visibility_string"}));
}

}  // namespace
}  // namespace applist::test
