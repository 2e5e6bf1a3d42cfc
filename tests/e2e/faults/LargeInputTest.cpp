// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Names of the largest size that the bus allows, and more rows than any real broadcast offers.
//   APPLIST_ROWS   number of rows; default 1000 or 4000
//   APPLIST_SAME   number of items without name and id; default 1000, 16 MiB hold 2097152
#include <chrono>
#include <fstream>
#include <iostream>

#include <gmock/gmock.h>

#include "e2e/faults/FaultTest.h"

namespace applist::test {
namespace {

using sim::Function;
using testing::Optional;
using Clock = std::chrono::steady_clock;

class LargeInput : public FaultTest {
protected:
    void SetUp() override {
        StartApplication();
        m_middleware = NewMiddleware();
        ASSERT_TRUE(m_middleware->AwaitApplication());
        ASSERT_TRUE(m_set.WaitForWindow());
    }

    std::unique_ptr<DrivenMiddleware> m_middleware;
};

constexpr size_t MIB = 1 << 20;

/// text, repeated up to size bytes.
std::string Repeated(const std::string& text, size_t size) {
    std::string repeated;
    repeated.reserve(size);
    while (repeated.size() + text.size() <= size) {
        repeated += text;
    }
    return repeated;
}

struct Kind {
    const char* name;
    std::string text;
    size_t size;
};

void PrintTo(const Kind& kind, std::ostream* out) {
    *out << kind.name;
}

class AHugeName : public LargeInput, public testing::WithParamInterface<Kind> {};

TEST_P(AHugeName, IsShownAndReadBackAsItCame) {
    const sim::Items items{{"huge", Repeated(GetParam().text, GetParam().size)}, {"next", "Next"}};
    ASSERT_TRUE(m_middleware->Ask(Function::AddItems, items));
    EXPECT_TRUE(m_set.WaitForFocusedRow());
    EXPECT_THAT(m_middleware->Ask(Function::GetSelection), Optional(sim::Items{items.front()}));
    // Not EXPECT_EQ, which would print the whole text on failure.
    EXPECT_TRUE(m_middleware->Ask(Function::GetAllItems) == items);
    m_set.screen().TypeKey("Down");
    EXPECT_TRUE(m_middleware->AwaitEvents(sim::Event::ItemSelected, 2));
    ExpectCleanEnd();
}

INSTANTIATE_TEST_SUITE_P(Of, AHugeName,
                         testing::Values(Kind{"Letters", "a", 12 * MIB},
                                         Kind{"CombiningMarks", "\u0301", 4 * MIB},
                                         Kind{"Overrides", "\u202E", 4 * MIB},
                                         Kind{"CutCharacters", "\xE4\xB8", 4 * MIB}),
                         [](const auto& kind) { return kind.param.name; });

class ALongList : public LargeInput {
protected:
    static long Milliseconds(Clock::time_point since) {
        return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - since).count();
    }

    /// The peak of the program's resident memory.
    size_t PeakKiB() {
        std::ifstream status("/proc/" + std::to_string(application().pid()) + "/status");
        std::string word;
        size_t peak = 0;
        while (status >> word) {
            if (word == "VmHWM:") {
                status >> peak;
            }
        }
        return peak;
    }

    static sim::Items ManyItems(size_t usual) {
        sim::Items items;
        for (size_t row = 0; row < Setting("APPLIST_ROWS", usual); ++row) {
            items.push_back({"id" + std::to_string(row), "Row " + std::to_string(row)});
        }
        return items;
    }

    void AddAndReport(const sim::Items& items) {
        const size_t before = PeakKiB();
        const auto start = Clock::now();
        EXPECT_TRUE(m_middleware->Ask(Function::AddItems, items));
        std::cout << items.size() << " items: answered after " << Milliseconds(start) << " ms, ";
        EXPECT_TRUE(m_set.WaitForFocusedRow());
        std::cout << "on the screen after " << Milliseconds(start) << " ms, " << PeakKiB() - before
                  << " KiB more than " << before << '\n';
    }
};

TEST_F(ALongList, IsTakenAsAWhole) {
    const sim::Items items = ManyItems(1000);
    AddAndReport(items);
    EXPECT_THAT(m_middleware->Ask(Function::GetAllItems), Optional(items));
    EXPECT_THAT(m_middleware->Ask(Function::GetSelection), Optional(sim::Items{items.front()}));
    ExpectCleanEnd();
}

TEST_F(ALongList, GivesItsMemoryBackWhenItIsEmptied) {
    const Gauge gauge = GaugeOf(*m_middleware);
    const Footprint before = AtRest(gauge);
    AddAndReport(ManyItems(4000));
    const Footprint full = AtRest(gauge);
    EXPECT_TRUE(m_middleware->Ask(Function::RemoveAllItems));
    EXPECT_TRUE(m_set.WaitForNoFocusedRow());
    const Footprint emptied = AtRest(gauge);
    std::cout << before << "; full " << full << "; emptied " << emptied << '\n';
    // The first rows' caches, and memory that the application need not return.
    EXPECT_LT(emptied.residentKiB, before.residentKiB + 4096 * MEMORY_FACTOR);
    ExpectCleanEnd();
}

TEST_F(ALongList, OfItemsThatAreTheSameIsOneRow) {
    AddAndReport(sim::Items(Setting("APPLIST_SAME", 1000)));
    EXPECT_THAT(m_middleware->Ask(Function::GetAllItems), Optional(sim::Items{{}}));
    ExpectCleanEnd();
}

}  // namespace
}  // namespace applist::test
