// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "e2e/faults/FaultTest.h"

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace applist::test {
namespace {

using sim::Event;
using sim::Function;
using testing::Optional;

// The address sanitizer keeps freed memory for a while, which looks like growth.
ChildProcess::Environment Frugal(ChildProcess::Environment changes) {
    changes.emplace("ASAN_OPTIONS", "quarantine_size_mb=0:thread_local_quarantine_size_kb=0");
    return changes;
}

size_t Number(const std::string& text) {
    return std::strtoull(text.c_str(), nullptr, 10);
}

}  // namespace

size_t Setting(const char* variable, size_t usual) {
    const char* text = std::getenv(variable);
    return text != nullptr ? std::strtoul(text, nullptr, 10) : usual;
}

const sim::Items FaultTest::THREE{{"a", "Alpha"}, {"b", "Bravo"}, {"c", "Charlie"}};

// Without a compositor, because on a busy machine picom sometimes misses a change and shows an old
// frame until the next one.
FaultTest::FaultTest(const ChildProcess::Environment& changes)
    : m_set(Frugal(changes), {"openbox", ""}) {}

void FaultTest::StartApplication(const std::vector<std::string>& wrapper) {
    // To a file, because the test does not read a pipe while it waits, and a full pipe would block
    // the application.
    m_log = m_set.WriteFile("log", "");
    std::vector<std::string> command{"sh", "-c", "exec \"$@\" 2>>\"$0\"", m_log};
    command.insert(command.end(), wrapper.begin(), wrapper.end());
    m_application = m_set.StartApplication(command);
}

void FaultTest::ShowThree() {
    StartApplication();
    const auto middleware = NewMiddleware();
    ASSERT_TRUE(middleware->AwaitApplication());
    ASSERT_TRUE(middleware->Ask(Function::AddItems, THREE));
    ASSERT_TRUE(m_set.WaitForFocusedRow());
}

std::string FaultTest::Log() const {
    std::ifstream file(m_log);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::unique_ptr<DrivenMiddleware> FaultTest::NewMiddleware() {
    return std::make_unique<DrivenMiddleware>(m_set.systemBus().Address());
}

Gauge FaultTest::GaugeOf(const DrivenMiddleware& driver) {
    return {application().pid(), m_set.systemBus().Address(), driver.application()};
}

Footprint FaultTest::AtRest(const Gauge& gauge) {
    using Clock = std::chrono::steady_clock;
    auto since = Clock::now();
    auto sleeps = gauge.Sleeps();
    EXPECT_TRUE(m_set.screen().WaitUntil([&] {
        const auto before = std::exchange(sleeps, gauge.Sleeps());
        if (!sleeps || sleeps != before) {
            since = Clock::now();
        }
        return Clock::now() - since > std::chrono::seconds(1);
    })) << "the application does not come to rest";
    return gauge.Read();
}

void FaultTest::ExpectList(DrivenMiddleware& driver, const sim::Items& items) {
    ASSERT_THAT(driver.Ask(Function::GetAllItems), Optional(items));
    if (items.empty()) {
        ASSERT_TRUE(m_set.WaitForNoFocusedRow());
        return;
    }
    ASSERT_TRUE(driver.Ask(Function::SetSelection, {items.front()}));
    ASSERT_TRUE(m_set.WaitForFocusedRow());
    for (size_t row = 1; row <= items.size() && items.size() > 1; ++row) {
        ASSERT_NO_FATAL_FAILURE(Step(driver, items[row % items.size()]));
    }
}

void FaultTest::Step(DrivenMiddleware& driver, const sim::Item& next) {
    const size_t before = driver.Events(Event::ItemSelected);
    m_set.screen().TypeKey("Down");
    ASSERT_TRUE(driver.AwaitEvents(Event::ItemSelected, before + 1)) << "no row " << next.id;
    ASSERT_THAT(driver.Ask(Function::GetSelection), Optional(sim::Items{next}));
}

void FaultTest::ExpectCleanEnd() {
    m_set.screen().TypeKey("F10");
    EXPECT_EQ(application().WaitForExit(), 0) << Log();
}

std::ostream& operator<<(std::ostream& out, const Footprint& footprint) {
    return out << footprint.residentKiB << " KiB, " << footprint.descriptors << " descriptors, "
               << footprint.matchRules << " match rules";
}

Gauge::Gauge(pid_t program, const std::string& address, std::string uniqueName)
    : m_proc("/proc/" + std::to_string(program)), m_uniqueName(std::move(uniqueName)) {
    auto connection = sim::OpenBus(address);
    if (connection) {
        m_connection = std::move(*connection);
    } else {
        ADD_FAILURE() << connection.error();
    }
}

Footprint Gauge::Read() const {
    std::error_code error;
    const std::filesystem::directory_iterator descriptors(m_proc + "/fd", error);
    return {Number(Status("RssAnon:")),
            static_cast<size_t>(std::distance(begin(descriptors), end(descriptors))), MatchRules()};
}

std::optional<size_t> Gauge::Sleeps() const {
    const size_t sleeps = Number(Status("voluntary_ctxt_switches:"));
    return Status("State:") == "S" ? std::optional(sleeps) : std::nullopt;
}

std::string Gauge::Status(const std::string& field) const {
    std::ifstream status(m_proc + "/status");
    std::string word;
    while (status >> word && word != field) {
    }
    std::string value;
    EXPECT_TRUE(status >> value) << m_proc << " is gone";
    return value;
}

size_t Gauge::MatchRules() const {
    GError* error = nullptr;
    const GVariantPtr reply(
        m_connection ? g_dbus_connection_call_sync(
                           m_connection.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                           "org.freedesktop.DBus.Debug.Stats", "GetConnectionStats",
                           g_variant_new("(s)", m_uniqueName.c_str()), G_VARIANT_TYPE("(a{sv})"),
                           G_DBUS_CALL_FLAGS_NONE, -1, nullptr, &error)
                     : nullptr);
    if (!reply) {
        ADD_FAILURE() << (error != nullptr ? TakeMessage(error) : "no bus");
        return 0;
    }
    const GVariantPtr values(g_variant_get_child_value(reply.get(), 0));
    uint32_t rules = 0;
    EXPECT_TRUE(g_variant_lookup(values.get(), "MatchRules", "u", &rules));
    return rules;
}

}  // namespace applist::test
