// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Compares the channel with a minimal program on the bus: both on one bus, in turns.
#include <memory>
#include <vector>

#include <benchmark/benchmark.h>

#include "bench/Partner.h"
#include "bench/ScreenWatch.h"
#include "bench/Subject.h"
#include "support/ChildProcess.h"
#include "support/PrivateBus.h"

namespace applist::bench {
namespace {

using test::BuiltProgram;
using test::ChildProcess;
using test::PrivateBus;

/// A bus, a program on it that answers calls, and its partners.
class Conversation {
public:
    Conversation(const std::string& program, int partners)
        : m_program({BuiltProgram("../bench/" + program)}, m_bus.Environment()) {
        m_program.WaitForText("\n");
        m_name = m_program.Output().substr(0, m_program.Output().find('\n'));
        for (int i = 0; i < partners; ++i) {
            m_partners.push_back(std::make_unique<Partner>(m_bus.Address()));
            m_partners.back()->Announce();
            m_partners.back()->Send(m_name, {'P'});
        }
    }

    Partner& first() { return *m_partners.front(); }
    const std::string& name() const { return m_name; }
    /// Makes the program notify all partners and waits until the last one has received it.
    void Tell() {
        first().SendWithoutWaiting(m_name, {'E', 0, 0, 0});
        for (const auto& partner : m_partners) {
            partner->AwaitSignals(1);
        }
    }

private:
    PrivateBus m_bus;
    ChildProcess m_program;
    std::string m_name;
    std::vector<std::unique_ptr<Partner>> m_partners;
};

void Send(benchmark::State& state, const std::string& program) {
    Conversation conversation(program, 1);
    const std::vector<char> bytes(static_cast<size_t>(state.range(0)), 'x');
    for (auto _ : state) {
        benchmark::DoNotOptimize(conversation.first().Send(conversation.name(), bytes));
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
    Partner partner(stage.bus().Address());
    const auto process = stage.Start(Subjects().front());
    const std::string name = partner.AwaitList();
    partner.Announce();
    watch.AwaitDamage(Clock::now() + std::chrono::seconds(10));
    watch.AwaitQuiet(std::chrono::milliseconds(500));
    const auto call =
        Frame(std::vector<char>(static_cast<size_t>(state.range(0)) - 4, 0), GET_SELECTION);
    for (auto _ : state) {
        benchmark::DoNotOptimize(partner.Send(name, call));
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
