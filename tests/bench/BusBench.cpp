// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Compares the channel with a minimal program on the bus: both on one bus, in turns.
#include <memory>
#include <vector>

#include <benchmark/benchmark.h>

#include "bench/ScreenWatch.h"
#include "bench/Subject.h"
#include "support/ChildProcess.h"
#include "support/PrivateBus.h"
#include "support/ScriptedPeer.h"

namespace applist::bench {
namespace {

using test::BuiltProgram;
using test::ChildProcess;
using test::PrivateBus;
using test::ScriptedPeer;

/// Completes the handshake with every list on the bus. The bus keeps the order, so it is complete
/// for a list that answers a later call.
void Announce(ScriptedPeer& partner) {
    partner.Announce("_CLIENT_SYN");
    partner.Announce("_CLIENT_ACK");
}

/// A bus, a program on it that answers calls, and its partners.
class Conversation {
public:
    Conversation(const std::string& program, int partners)
        : m_program({BuiltProgram("../bench/" + program)}, m_bus.Environment()) {
        m_program.WaitForText("\n");
        m_name = m_program.Output().substr(0, m_program.Output().find('\n'));
        for (int i = 0; i < partners; ++i) {
            m_partners.push_back(std::make_unique<ScriptedPeer>(m_bus.Address()));
            Announce(*m_partners.back());
            m_partners.back()->Ask(m_name, {'P'});
        }
    }

    ScriptedPeer& first() { return *m_partners.front(); }
    const std::string& name() const { return m_name; }
    /// Makes the program notify all partners and waits until the last one has received it.
    void Tell() {
        first().Send(m_name, CHANNEL, {'E', 0, 0, 0});
        for (const auto& partner : m_partners) {
            GiveUpUnless(partner->AwaitHeard(1), "no signal");
            partner->Forget();
        }
    }

private:
    PrivateBus m_bus;
    ChildProcess m_program;
    std::string m_name;
    std::vector<std::unique_ptr<ScriptedPeer>> m_partners;
};

void Send(benchmark::State& state, const std::string& program) {
    Conversation conversation(program, 1);
    const std::vector<char> bytes(static_cast<size_t>(state.range(0)), 'x');
    for (auto _ : state) {
        benchmark::DoNotOptimize(conversation.first().Ask(conversation.name(), bytes));
        conversation.first().Forget();
    }
}

void Event(benchmark::State& state, const std::string& program) {
    Conversation conversation(program, static_cast<int>(state.range(0)));
    for (auto _ : state) {
        conversation.Tell();
    }
}

// The whole application with a list on a screen, running the toolkit's main loop.
void SendToList(benchmark::State& state) {
    Stage stage;
    ScreenWatch watch(stage.screen().Name());
    ScriptedPeer partner(stage.bus().Address());
    const auto process = stage.Start(Subjects().front());
    GiveUpUnless(partner.AwaitAnnouncement("_SERVICE_SYN"), "the list does not announce itself");
    const std::string name = partner.Announcer();
    Announce(partner);
    watch.AwaitDamage(Clock::now() + std::chrono::seconds(10));
    watch.AwaitQuiet(std::chrono::milliseconds(500));
    const auto call =
        Frame(std::vector<char>(static_cast<size_t>(state.range(0)) - 4, 0), GET_SELECTION);
    for (auto _ : state) {
        benchmark::DoNotOptimize(partner.Ask(name, call));
        partner.Forget();
    }
}

BENCHMARK_CAPTURE(Send, reference, "gdbus-echo")->Arg(16)->Arg(65536)->UseRealTime();
BENCHMARK_CAPTURE(Send, channel, "channel-echo")->Arg(16)->Arg(65536)->UseRealTime();
BENCHMARK(SendToList)->Name("Send/list")->Arg(16)->UseRealTime();
BENCHMARK_CAPTURE(Event, reference, "gdbus-echo")->Arg(1)->Arg(10)->Arg(100)->UseRealTime();
BENCHMARK_CAPTURE(Event, channel, "channel-echo")->Arg(1)->Arg(10)->Arg(100)->UseRealTime();

}  // namespace
}  // namespace applist::bench

BENCHMARK_MAIN();
