// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/Television.h"

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

namespace applist::test {
namespace {

constexpr const char* THREE_ITEMS = "a\tAlpha\nb\tBravo\nc\tCharlie\n";

std::vector<std::string> Joined(std::vector<std::string> first,
                                const std::vector<std::string>& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

}  // namespace

Middleware::Middleware(const std::vector<std::string>& arguments,
                       const ChildProcess::Environment& environment)
    : m_process(Joined({BuiltProgram("javamw-sim")}, arguments), environment) {}

bool Middleware::Sees(const std::string& text) {
    size_t found = std::string::npos;
    const bool seen = m_process.WaitUntil([&] {
        found = m_process.Output().find(text, m_read);
        return found != std::string::npos &&
               m_process.Output().find('\n', found) != std::string::npos;
    });
    if (seen) {
        m_read = m_process.Output().find('\n', found) + 1;
    }
    return seen;
}

bool Middleware::SeesSelected(const std::string& id, const std::string& name) {
    return Sees("event 2 ItemSelected selection " + id + "\t" + name + "\n");
}

Television::Television(const ChildProcess::Environment& changes, const Desktop& desktop)
    : m_changes(changes), m_screen(desktop) {
    std::filesystem::create_directories(m_folder.path() / "run");
    std::filesystem::permissions(m_folder.path() / "run", std::filesystem::perms::owner_all);
    m_sessionBus = std::make_unique<SessionBus>(Environment());
    EXPECT_EQ(Configure({"region", "italy"}), 0);
    EXPECT_EQ(Configure({"set", "memory/tv-viewer/data_service", "int", "2"}), 0);
    EXPECT_EQ(Configure({"set", "db/menu/broadcasting/autorun-dataservice", "bool", "0"}), 0);
    EXPECT_EQ(Configure({"set", "memory/javamw/autostart-app", "int", "0"}), 0);
}

ChildProcess::Environment Television::Environment() const {
    ChildProcess::Environment environment = m_screen.Environment();
    environment.merge(m_systemBus.Environment());
    if (m_sessionBus) {
        environment.merge(m_sessionBus->Environment());
    }
    environment.emplace("DBUS_SESSION_BUS_ADDRESS", std::nullopt);
    environment["HOME"] = m_folder.path();
    environment["TMPDIR"] = m_folder.path();
    environment["XDG_RUNTIME_DIR"] = m_folder.path() / "run";
    environment["XDG_CONFIG_HOME"] = std::nullopt;
    environment["XDG_DATA_HOME"] = std::nullopt;
    environment["XDG_DATA_DIRS"] = BuiltProgram("../share");
    environment["APPLIST_PLATFORM_ROOT"] = m_folder.path() / "set";
    environment["LC_ALL"] = "C.UTF-8";
    environment["LANGUAGE"] = "en";
    for (const auto& [name, value] : m_changes) {
        environment[name] = value;
    }
    return environment;
}

std::unique_ptr<ChildProcess> Television::StartApplication(
    const std::vector<std::string>& wrapper) {
    return std::make_unique<ChildProcess>(Joined(wrapper, {BuiltProgram("applist")}),
                                          Environment());
}

std::unique_ptr<Middleware> Television::StartMiddleware(const std::vector<std::string>& arguments) {
    return std::make_unique<Middleware>(arguments, Environment());
}

std::unique_ptr<Middleware> Television::StartMiddlewareWithThreeItems() {
    return StartMiddleware({"serve", "--items", WriteFile("items", THREE_ITEMS)});
}

void Television::Show(const std::string& items, const std::vector<std::string>& wrapper) {
    m_middleware = StartMiddleware({"serve", "--items", WriteFile("items", items)});
    m_application = StartApplication(wrapper);
}

void Television::ShowThreeItems() {
    Show(THREE_ITEMS);
    ASSERT_TRUE(m_middleware->SeesSelected("a", "Alpha")) << m_middleware->Transcript();
    ASSERT_TRUE(WaitForFocusedRow());
}

bool Television::WaitForWindow(const std::string& title) {
    return m_screen.WaitUntil([&] { return m_screen.HasKeyboard(title); });
}

bool Television::WaitForNoWindow(const std::string& title) {
    return m_screen.WaitUntil([&] { return m_screen.WindowTitled(title) == 0; });
}

bool Television::WaitForFocusedRow() {
    return WaitForWindow() && WaitForFocusMark();
}

bool Television::WaitForFocusMark() {
    return m_screen.WaitForColour(FOCUS_COLOUR);
}

bool Television::WaitForNoFocusedRow() {
    return m_screen.WaitUntil([this] { return !m_screen.Shows(FOCUS_COLOUR); });
}

int Television::Configure(const std::vector<std::string>& arguments) {
    ChildProcess tool(Joined({BuiltProgram("platformctl")}, arguments), Environment());
    return tool.WaitForExit().value_or(-1);
}

std::string Television::WriteFile(const std::string& name, const std::string& content) {
    const std::filesystem::path path = m_folder.path() / name;
    std::ofstream(path) << content;
    return path;
}

}  // namespace applist::test
