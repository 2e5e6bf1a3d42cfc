// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Calls of all kinds in a random order, compared with a reference list in the test.
//   APPLIST_CALLS   number of calls; default 9000
//   APPLIST_SEED    seed of the random order
#include <iostream>

#include <gmock/gmock.h>

#include "e2e/faults/FaultTest.h"
#include "e2e/faults/RandomCalls.h"

namespace applist::test {
namespace {

using sim::Function;
using sim::Items;
using testing::Optional;

constexpr size_t BATCH = 250;
/// The most that caches may grow after the first third, plus memory that the application need not
/// return at rest.
constexpr size_t SPARE_KIB = 1024;

class MixedCalls : public FaultTest {
protected:
    /// Sends a batch of calls, each without waiting for the previous reply.
    void CallBatch(size_t size) {
        for (size_t i = 0; i < size; ++i) {
            const Function function = m_calls.NextFunction();
            const Items items = m_calls.ItemsFor(function);
            m_middleware->Call(function, items);
            m_reference.Apply(function, items);
        }
        ASSERT_TRUE(m_middleware->AwaitReplies());
        ASSERT_EQ(m_middleware->Failed(), 0U);
    }

    void Compare() {
        ASSERT_THAT(m_middleware->Ask(Function::GetAllItems), Optional(m_reference.items()));
        ASSERT_THAT(m_middleware->Ask(Function::GetSelection),
                    Optional(Items{m_reference.selection()}));
    }

    void CallBatches(size_t count) {
        for (size_t made = 0; made < count; made += BATCH) {
            SCOPED_TRACE("seed " + std::to_string(m_seed) + ", in the batch after " +
                         std::to_string(made) + " calls");
            ASSERT_NO_FATAL_FAILURE(CallBatch(BATCH));
            ASSERT_NO_FATAL_FAILURE(Compare());
        }
    }

    /// The application's footprint at rest with an empty list.
    Footprint Emptied(const Gauge& gauge) {
        m_middleware->Call(Function::RemoveAllItems);
        m_reference.Apply(Function::RemoveAllItems, {});
        EXPECT_TRUE(m_middleware->AwaitReplies());
        EXPECT_TRUE(m_set.WaitForNoFocusedRow());
        const Footprint footprint = AtRest(gauge);
        std::cout << footprint << '\n';
        return footprint;
    }

    const size_t m_seed = Setting("APPLIST_SEED", 20261121);
    RandomCalls m_calls{m_seed};
    ReferenceList m_reference;
    std::unique_ptr<DrivenMiddleware> m_middleware;
};

TEST_F(MixedCalls, KeepListAndScreenEqualToAReference) {
    const size_t calls = Setting("APPLIST_CALLS", 9000);
    StartApplication();
    m_middleware = NewMiddleware();
    ASSERT_TRUE(m_middleware->AwaitApplication());
    const Gauge gauge = GaugeOf(*m_middleware);
    ASSERT_NO_FATAL_FAILURE(CallBatches(calls / 3));
    const Footprint warm = Emptied(gauge);
    ASSERT_NO_FATAL_FAILURE(CallBatches(calls - calls / 3));
    ExpectList(*m_middleware, m_reference.items());
    const Footprint end = Emptied(gauge);
    EXPECT_LT(end.residentKiB, warm.residentKiB + SPARE_KIB * MEMORY_FACTOR);
    EXPECT_EQ(end.descriptors, warm.descriptors);
    EXPECT_EQ(end.matchRules, warm.matchRules);
    ExpectCleanEnd();
}

}  // namespace
}  // namespace applist::test
