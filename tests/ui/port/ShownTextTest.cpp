// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The part of a name that is passed to the toolkit.
#include <Edje.h>

#include <gmock/gmock.h>

#include "fakes/FakePlatformLog.h"
#include "support/AllocationWatch.h"
#include "toolkit-internals/ShownText.h"

namespace applist::desktop {
namespace {

std::string Repeated(const std::string& text, size_t count) {
    std::string repeated;
    while (count-- > 0) {
        repeated += text;
    }
    return repeated;
}

std::string Shown(const std::string& text) {
    return ShownText(text.c_str());
}

TEST(ShownText, IsTheWholeOfAnUsualName) {
    for (const std::string text : {"", "Città e Comuni", "中文", "\xFF\xFE", "cut \xE4\xB8"}) {
        EXPECT_EQ(Shown(text), text);
    }
}

TEST(ShownText, HasASpaceForEachTabAndLineEnd) {
    EXPECT_EQ(Shown("\tFive\twords\r\n(two)\vor\ffewer\n"), " Five words  (two) or fewer ");
}

TEST(ShownText, HasAThousandCharactersAtMost) {
    for (const std::string character : {"a", "é", "中", "😀"}) {
        const std::string longest = Repeated(character, SHOWN_CHARACTERS);
        EXPECT_EQ(Shown(longest), longest);
        EXPECT_EQ(Shown(longest + character), longest);
        EXPECT_EQ(Shown(longest + "b"), longest);
    }
}

TEST(ShownText, KeepsTheLastCharacterWhole) {
    const std::string malformed = Repeated("\x80", SHOWN_BYTES - 1);
    EXPECT_EQ(Shown(malformed + "é"), malformed);
    EXPECT_EQ(Shown(malformed.substr(1) + "é" + "x"), malformed.substr(1) + "é");
    EXPECT_EQ(Shown(malformed.substr(1) + "😀"), malformed.substr(1));
}

TEST(ShownText, OfMalformedTextHasFourThousandBytesAtMost) {
    EXPECT_EQ(Shown(Repeated("\x80", 1U << 20U)), Repeated("\x80", SHOWN_BYTES));
    EXPECT_EQ(Shown(Repeated("\xE4\xB8", 1U << 20U)), Repeated("\xE4\xB8", SHOWN_CHARACTERS));
}

TEST(ShownText, IsNotSetIfMemoryRunsOut) {
    const std::string name = Repeated("a", 100);
    test::ClearLog();
    {
        const test::AllocationFailure failure;
        edje_object_part_text_escaped_set(nullptr, "elm.text", name.c_str());
    }
    EXPECT_THAT(test::Log(), testing::ElementsAre(test::Error("Callback aborted: std::bad_alloc")));
}

}  // namespace
}  // namespace applist::desktop
