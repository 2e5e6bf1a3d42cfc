// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/Gauge.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include <gtest/gtest.h>

namespace applist::test {
namespace {

size_t Number(const std::string& text) {
    return std::strtoull(text.c_str(), nullptr, 10);
}

}  // namespace

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
