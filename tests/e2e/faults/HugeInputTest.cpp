// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Names and lists of the largest size that the bus allows.
#include <gmock/gmock.h>

#include "e2e/faults/FaultTest.h"

namespace applist::test {
namespace {

using sim::Function;
using testing::Optional;

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

class HugeInput : public FaultTest {
protected:
    void SetUp() override {
        StartApplication();
        m_middleware = NewMiddleware();
        ASSERT_TRUE(m_middleware->AwaitApplication());
        ASSERT_TRUE(m_set.WaitForWindow());
    }

    std::unique_ptr<DrivenMiddleware> m_middleware;
};

class AHugeName : public HugeInput, public testing::WithParamInterface<Kind> {};

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

// The bus disconnects a sender of more than 32 MiB, which would end the program.
TEST_F(HugeInput, OfThreeCallsIsTooMuchForOneReplyButStaysOnTheList) {
    sim::Items items;
    for (const char* id : {"1", "2", "3"}) {
        items.push_back({id, std::string(12 * MIB, 'x')});
        ASSERT_TRUE(m_middleware->Ask(Function::AddItems, {items.back()}));
    }
    m_middleware->Call(Function::GetAllItems);
    ASSERT_TRUE(m_middleware->AwaitReplies());
    EXPECT_EQ(m_middleware->Failed(), 1U);
    EXPECT_TRUE(m_middleware->Ask(Function::GetSelection) == sim::Items{items.front()});
    ASSERT_TRUE(m_middleware->Ask(Function::RemoveItem, {items.front()}));
    EXPECT_TRUE(m_middleware->Ask(Function::GetAllItems) == (sim::Items{items[1], items[2]}));
    ExpectCleanEnd();
}

}  // namespace
}  // namespace applist::test
