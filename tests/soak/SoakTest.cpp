// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Hours of a set's use in minutes: calls of all kinds, keys, and middlewares that start and die,
// without a pause. After the warm-up the application's memory and descriptors must stay flat.
//   APPLIST_SOAK_SECONDS   how long; 120 without it
#include <chrono>
#include <csignal>
#include <iostream>
#include <numeric>

#include <gmock/gmock.h>

#include "e2e/faults/FaultTest.h"
#include "e2e/faults/RandomCalls.h"

namespace applist::test {
namespace {

using sim::Event;
using sim::Function;
using sim::Items;
using testing::Optional;
using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr int SAMPLES = 20;
constexpr int WARM_UP = SAMPLES / 4;
constexpr int CALLS = 50;
constexpr int KEYS = 8;
/// The most that caches may grow after the warm-up, however long the test runs.
constexpr double CACHES_KIB = 512;

/// The growth of y over all points along the least-squares line; the points are equally spaced.
double FittedGrowth(const std::vector<double>& y) {
    const auto count = static_cast<double>(y.size());
    const double middle = (count - 1) / 2;
    double together = 0;
    double alone = 0;
    for (size_t i = 0; i < y.size(); ++i) {
        const double x = static_cast<double>(i) - middle;
        together += x * y[i];
        alone += x * x;
    }
    return together / alone * (count - 1);
}

class ASet : public FaultTest {
protected:
    void SetUp() override {
        StartApplication();
        m_middleware = NewMiddleware();
        ASSERT_TRUE(m_middleware->AwaitApplication());
    }

    void CallOften() {
        for (int call = 0; call < CALLS; ++call) {
            const Function function = m_random.NextFunction();
            Apply(function, m_random.ItemsFor(function));
        }
        ASSERT_TRUE(m_middleware->AwaitReplies());
        ASSERT_EQ(m_middleware->Failed(), 0U);
        ASSERT_THAT(m_middleware->Ask(Function::GetAllItems), Optional(m_reference.items()));
        ASSERT_THAT(m_middleware->Ask(Function::GetSelection),
                    Optional(Items{m_reference.selection()}));
    }

    /// Presses keys of all four directions. Each moves the selection, and the middleware is
    /// notified.
    void PressKeys() {
        static constexpr const char* DIRECTIONS[] = {"Down", "Right", "Up", "Left", "Down"};
        Replace({{"k1", "Kilo"}, {"k2", "Keys"}, {"k3", "Knob"}});
        ASSERT_TRUE(m_set.WaitForFocusedRow());
        for (int key = 0; key < KEYS; ++key) {
            const size_t before = m_middleware->Events(Event::ItemSelected);
            m_set.screen().TypeKey(DIRECTIONS[m_keys++ % std::size(DIRECTIONS)]);
            ASSERT_TRUE(m_middleware->AwaitEvents(Event::ItemSelected, before + 1));
        }
        // Clears the selection that the keys have left.
        Apply(Function::SetSelection, {{}});
    }

    /// Starts another middleware, which only watches, and kills it.
    void Visit() {
        const auto visitor = m_set.StartMiddleware({"watch"});
        ASSERT_TRUE(visitor->Sees("connected")) << visitor->Transcript();
        visitor->process().Signal(SIGKILL);
        visitor->process().WaitForExit();
    }

    /// Works until end and then measures the application with a short list.
    Footprint WorkUntil(Clock::time_point end) {
        Visit();
        while (Clock::now() < end && !HasFailure()) {
            CallOften();
            PressKeys();
        }
        Replace(THREE);
        return AtRest(GaugeOf(*m_middleware));
    }

    void Replace(const Items& items) {
        Apply(Function::RemoveAllItems, {});
        Apply(Function::AddItems, items);
        ASSERT_TRUE(m_middleware->AwaitReplies());
    }

    void Apply(Function function, const Items& items) {
        m_middleware->Call(function, items);
        m_reference.Apply(function, items);
    }

    void Report(double seconds, const Footprint& footprint) const {
        std::cout << static_cast<int>(seconds) << " s, " << m_middleware->Answered() << " calls, "
                  << m_keys << " keys: " << footprint << std::endl;
    }

    std::unique_ptr<DrivenMiddleware> m_middleware;
    RandomCalls m_random{1};
    ReferenceList m_reference;
    size_t m_keys = 0;
};

TEST_F(ASet, HoldsNoMoreAfterALongTimeThanAfterAShortOne) {
    const Seconds step(static_cast<double>(Setting("APPLIST_SOAK_SECONDS", 120)) / SAMPLES);
    const auto start = Clock::now();
    Footprint warm;
    std::vector<double> resident;
    for (int sample = 1; sample <= SAMPLES && !HasFailure(); ++sample) {
        const auto end = start + std::chrono::duration_cast<Clock::duration>(sample * step);
        const Footprint now = WorkUntil(end);
        Report(Seconds(Clock::now() - start).count(), now);
        if (sample < WARM_UP) {
            continue;
        }
        if (sample == WARM_UP) {
            warm = now;
        }
        resident.push_back(static_cast<double>(now.residentKiB));
        EXPECT_EQ(now.descriptors, warm.descriptors);
        EXPECT_EQ(now.matchRules, warm.matchRules);
    }
    ASSERT_FALSE(HasFailure());
    ASSERT_GT(m_keys, 10U * SAMPLES) << "too short to tell anything";
    const double growth = FittedGrowth(resident);
    std::cout << "resident memory grew by " << growth << " KiB after the warm-up; " << CACHES_KIB
              << " are allowed" << std::endl;
    EXPECT_LT(growth, CACHES_KIB);
    ExpectList(*m_middleware, THREE);
    ExpectCleanEnd();
}

}  // namespace
}  // namespace applist::test
