// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <dlfcn.h>
#include <memory>
#include <set>
#include <sstream>

#include <gmock/gmock.h>

#include "e2e/visibility/Platformctl.h"

namespace applist::test {
namespace {

using testing::ElementsAre;
using testing::IsSupersetOf;
using Question = int(const char*);

constexpr const char* MENU_KEY = "menu/system/application-list";

std::string ModulePath() {
    return BuiltProgram("../lib/applist/visibility-checker.so");
}

/// The names that a program or module defines for others.
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

TEST_F(Menu, IsToldThatTheOtherFormsAreShown) {
    ASSERT_TRUE(m_module) << dlerror();
    for (const char* name :
         {"check_visibility_bool", "check_visibility_double", "check_visibility_string"}) {
        Question* const ask = Find(name);
        ASSERT_TRUE(ask) << name;
        EXPECT_EQ(ask(MENU_KEY), 1);
        EXPECT_EQ(ask(nullptr), 1);
    }
}

TEST(MenuModule, ExportsItsFourEntryPointsAndNothingElse) {
    EXPECT_THAT(ExportsOf(ModulePath()),
                ElementsAre("check_visibility_bool", "check_visibility_double",
                            "check_visibility_int", "check_visibility_string"));
}

TEST(TheProgram, ExportsTheEntryPointsOfTheMenu) {
    EXPECT_THAT(ExportsOf(BuiltProgram("applist")),
                IsSupersetOf({"check_visibility_bool", "check_visibility_double",
                              "check_visibility_int", "check_visibility_string"}));
}

}  // namespace
}  // namespace applist::test
