// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "scenario/Words.h"

namespace applist::sim {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> Texts(const std::string& line) {
    const SplitLine split = SplitWords(line);
    EXPECT_FALSE(split.error) << split.error->message;
    std::vector<std::string> texts;
    for (const Word& word : split.words) {
        texts.push_back(word.text);
    }
    return texts;
}

std::string Error(const std::string& line) {
    const SplitLine split = SplitWords(line);
    return split.error ? std::to_string(split.error->column) + ": " + split.error->message : "";
}

TEST(Words, AreSeparatedByBlanksAndTabs) {
    EXPECT_THAT(Texts("  add\ta=b   c=d\t"), ElementsAre("add", "a=b", "c=d"));
    EXPECT_THAT(Texts(""), IsEmpty());
    EXPECT_THAT(Texts(" \t "), IsEmpty());
}

TEST(Words, EndWhereACommentBegins) {
    EXPECT_THAT(Texts("# nothing"), IsEmpty());
    EXPECT_THAT(Texts("clear # the list"), ElementsAre("clear"));
    EXPECT_THAT(Texts("add a=#1 \"#\""), ElementsAre("add", "a=#1", "#"));
    EXPECT_EQ(SplitWords("clear  # x").endByte, 5U);
}

TEST(Words, MayHoldBlanksInQuotes) {
    EXPECT_THAT(Texts("\"a b\"=\"c  d\"e"), ElementsAre("a b=c  de"));
    EXPECT_THAT(Texts("\"\" x\"\""), ElementsAre("", "x"));
}

TEST(Words, ResolveEscapesInQuotes) {
    EXPECT_THAT(Texts(R"("\"\\\n\t")"), ElementsAre("\"\\\n\t"));
    EXPECT_THAT(Texts(R"("\xE8\x00z")"), ElementsAre(std::string("\xE8\0z", 3)));
    EXPECT_THAT(Texts(R"("\u{41}\u{e0}\u{20ac}\u{1F4FA}")"),
                ElementsAre("A\u00e0\u20ac\U0001F4FA"));
}

TEST(Words, KeepBytesThatAreNotUtf8) {
    EXPECT_THAT(Texts("a\xFF\xC3"), ElementsAre("a\xFF\xC3"));
}

TEST(Words, HaveTheirColumnInCharacters) {
    const SplitLine split = SplitWords("  \u00e0\u00e8 \"b c\" d");
    EXPECT_EQ(split.words.at(0).column, 3U);
    EXPECT_EQ(split.words.at(1).column, 6U);
    EXPECT_EQ(split.words.at(2).column, 12U);
    EXPECT_EQ(split.endColumn, 13U);
}

TEST(Words, HaveThePositionOfTheFirstUnquotedEqualsSign) {
    EXPECT_EQ(SplitWords("a=b=c").words.at(0).equals, 1U);
    EXPECT_EQ(SplitWords("\"a=b\"=c").words.at(0).equals, 3U);
    EXPECT_EQ(SplitWords("\"a=b\"").words.at(0).equals, std::nullopt);
    EXPECT_EQ(SplitWords("=").words.at(0).equals, 0U);
}

TEST(Words, ArePlainWithoutQuotes) {
    EXPECT_TRUE(SplitWords("none").words.at(0).plain);
    EXPECT_FALSE(SplitWords("\"none\"").words.at(0).plain);
    EXPECT_FALSE(SplitWords("no\"n\"e").words.at(0).plain);
}

TEST(Words, ReportTheColumnOfAQuoteThatIsNotClosed) {
    EXPECT_EQ(Error("add \"a\" b=\"c"), "11: this quote is not closed");
    EXPECT_EQ(Error("\"\\\""), "1: this quote is not closed");
}

TEST(Words, RefuseInvalidEscapes) {
    const std::string unknown = ": unknown escape; valid are \\\" \\\\ \\n \\t \\xHH \\u{H...}";
    EXPECT_EQ(Error(R"(x "a\q")"), "5" + unknown);
    EXPECT_EQ(Error("\"\\"), "2" + unknown);
    for (const char* line : {R"("\x")", R"("\x4")", R"("\x4g")", R"("\x)"}) {
        EXPECT_EQ(Error(line), "2: \\x needs two hexadecimal digits");
    }
    for (const char* line : {R"("\u41")", R"("\u{}")", R"("\u{zz}")", R"("\u{110000}")",
                             R"("\u{d800}")", R"("\u{0000041}")", R"("\u{41")", R"("\u)"}) {
        EXPECT_EQ(Error(line), "2: \\u needs a Unicode code point, such as \\u{1f4fa}");
    }
}

TEST(Words, RefuseControlBytesAndBareBackslashes) {
    EXPECT_EQ(Error("a\x01"), "2: control byte; write it as \\xHH in quotes");
    EXPECT_EQ(Error(std::string("\"a\0\"", 4)), "3: control byte; write it as \\xHH");
    EXPECT_EQ(Error("a\\n"), "2: a backslash is allowed only in quotes");
}

TEST(Cursor, TakesTimesInThreeUnits) {
    const SplitLine line = SplitWords("200ms 5s 2min within 3s");
    Cursor cursor(line);
    EXPECT_EQ(cursor.Time(), Duration(200));
    EXPECT_EQ(cursor.Time(), Duration(5000));
    EXPECT_EQ(cursor.Time(), Duration(120000));
    EXPECT_EQ(cursor.Within(), Duration(3000));
    EXPECT_EQ(cursor.Within(), std::nullopt);
    EXPECT_TRUE(cursor.AtEnd());
}

}  // namespace
}  // namespace applist::sim
