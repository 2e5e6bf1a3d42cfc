// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <string>
#include <utility>

#include "link/Connection.h"
#include "link/Protocol.h"
#include "middleware/MainLoop.h"
#include "middleware/Session.h"
#include "recording/RecordingFile.h"
#include "shared/Output.h"

namespace applist::sim {
namespace {

// Returns an empty string on success.
std::string BecomeMonitor(GDBusConnection* connection) {
    const std::string traffic = std::string("interface='") + names::INTERFACE + "'";
    GVariantBuilder rules;
    g_variant_builder_init(&rules, G_VARIANT_TYPE("as"));
    // Replies contain no interface; the reader selects the replies to calls that it has seen.
    for (const char* rule :
         {traffic.c_str(), "type='signal',sender='org.freedesktop.DBus',member='NameOwnerChanged'",
          "type='method_return'", "type='error'"}) {
        g_variant_builder_add(&rules, "s", rule);
    }
    GError* error = nullptr;
    const auto reply = CallDaemon(connection, "org.freedesktop.DBus.Monitoring", "BecomeMonitor",
                                  g_variant_new("(asu)", &rules, 0U), nullptr, &error);
    return reply ? std::string() : TakeMessage(error);
}

// Prints nothing if standard output is the recording.
void Say(const std::string& file, const std::string& line) {
    if (file != "-") {
        static_cast<void>(tools::WriteLine(line));
    }
}

ExitCode RecordUntilEnd(GDBusConnection* connection, MainLoop& loop, const std::string& file,
                        SessionRecorder& recorder) {
    Registration closed = WhenClosed(
        connection, [&loop] { loop.End(Fail("the bus closed the connection", ExitCode::NoBus)); });
    Say(file, "recording " + file);
    const ExitCode code = loop.Run();
    // The end of the recording must not report a closed connection.
    closed.Release();
    const std::string error = recorder.Finish();
    if (!error.empty()) {
        return Fail(error, ExitCode::CallFailed);
    }
    Say(file, "recorded " + std::to_string(recorder.count()) + " messages");
    return code;
}

}  // namespace

ExitCode RecordBus(const std::string& address, const std::string& file) {
    MainLoop loop;
    loop.OnInterrupt([&loop] { loop.End(ExitCode::Success); });
    const auto connection = OpenBus(address);
    if (!connection) {
        return Fail("cannot reach the bus: " + connection.error(), ExitCode::NoBus);
    }
    // The filter is installed before the connection becomes a monitor, so that no message is
    // missed.
    const auto recorder = SessionRecorder::Start(connection->get(), TrafficTap::Use::Monitor, file);
    if (!recorder) {
        return Fail(recorder.error(), ExitCode::WrongUsage);
    }
    const std::string refusal = BecomeMonitor(connection->get());
    if (!refusal.empty()) {
        return Fail(
            "the bus allows only its owner and root to monitor it; \"serve --record\" records "
            "its own traffic: " +
                refusal,
            ExitCode::NoBus);
    }
    const std::string error = (*recorder)->Begin();
    if (!error.empty()) {
        return Fail(error, ExitCode::WrongUsage);
    }
    return RecordUntilEnd(connection->get(), loop, file, **recorder);
}

}  // namespace applist::sim
