// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <array>
#include <csignal>
#include <memory>
#include <string>
#include <utility>

#include "link/Connection.h"
#include "link/Protocol.h"
#include "middleware/MainLoop.h"
#include "middleware/Session.h"
#include "recording/Traffic.h"
#include "shared/Output.h"

namespace applist::sim {
namespace {

// Replies contain no interface; the reader selects the replies to calls that it has seen.
std::array<std::string, 4> MatchRules() {
    return {std::string("interface='") + names::INTERFACE + "'",
            "type='signal',sender='org.freedesktop.DBus',member='NameOwnerChanged'",
            "type='method_return'", "type='error'"};
}

class BusRecording {
public:
    BusRecording(std::string address, std::string file);

    ExitCode Run();

private:
    ExitCode Record();
    /// Returns an empty string on success.
    std::string BecomeMonitor();
    void Say(const std::string& line) const;

    std::string m_address;
    std::string m_file;
    MainLoop m_loop;
    ConnectionPtr m_connection;
    std::unique_ptr<SessionRecorder> m_recorder;
};

BusRecording::BusRecording(std::string address, std::string file)
    : m_address(std::move(address)), m_file(std::move(file)) {
    for (const int number : {SIGINT, SIGTERM}) {
        m_loop.OnSignal(number, [this] { m_loop.End(ExitCode::Success); });
    }
}

ExitCode BusRecording::Run() {
    auto connection = OpenBus(m_address);
    if (!connection) {
        Complain("cannot reach the bus: " + connection.error());
        return ExitCode::NoBus;
    }
    m_connection = std::move(*connection);
    auto recorder = SessionRecorder::Start(m_connection.get(), TrafficTap::Use::Monitor, m_file);
    if (!recorder) {
        Complain(recorder.error());
        return ExitCode::WrongUsage;
    }
    // The filter is installed before the connection becomes a monitor, so that no message is
    // missed.
    m_recorder = std::move(*recorder);
    const std::string refusal = BecomeMonitor();
    if (!refusal.empty()) {
        Complain(
            "the bus allows only its owner and root to monitor it; \"serve --record\" records "
            "its own traffic: " +
            refusal);
        return ExitCode::NoBus;
    }
    return Record();
}

ExitCode BusRecording::Record() {
    Registration closed = WhenClosed(m_connection.get(), [this] {
        Complain("the bus closed the connection");
        m_loop.End(ExitCode::NoBus);
    });
    Say("recording " + m_file);
    const ExitCode code = m_loop.Run();
    // The end of the recording must not report a closed connection.
    closed.Release();
    const std::string error = m_recorder->Finish();
    if (!error.empty()) {
        Complain(error);
        return ExitCode::CallFailed;
    }
    Say("recorded " + std::to_string(m_recorder->count()) + " messages");
    return code;
}

std::string BusRecording::BecomeMonitor() {
    GVariantBuilder rules;
    g_variant_builder_init(&rules, G_VARIANT_TYPE("as"));
    for (const std::string& rule : MatchRules()) {
        g_variant_builder_add(&rules, "s", rule.c_str());
    }
    GError* error = nullptr;
    const GVariantPtr reply(g_dbus_connection_call_sync(
        m_connection.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
        "org.freedesktop.DBus.Monitoring", "BecomeMonitor", g_variant_new("(asu)", &rules, 0U),
        nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, &error));
    return reply ? std::string() : TakeMessage(error);
}

// Prints nothing if standard output is the recording.
void BusRecording::Say(const std::string& line) const {
    if (m_file == "-") {
        return;
    }
    static_cast<void>(tools::WriteLine(line));
}

}  // namespace

ExitCode RecordBus(const std::string& address, const std::string& file) {
    return BusRecording(address, file).Run();
}

}  // namespace applist::sim
