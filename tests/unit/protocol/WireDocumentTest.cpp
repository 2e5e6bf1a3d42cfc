// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Parsing the examples in a document.
#include <gmock/gmock.h>

#include "support/WireDocument.h"

namespace applist::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

std::vector<WireStep> StepsOf(const std::string& lines) {
    const WireDocument document = ParseWireDocument("```wire\n" + lines + "```\n");
    EXPECT_THAT(document.errors, IsEmpty());
    return document.examples.at(0).steps;
}

std::vector<std::string> ErrorsOf(const std::string& lines) {
    return ParseWireDocument("```wire\n" + lines + "```\n").errors;
}

TEST(WireDocument, TakesOnlyTheBlocksThatAreMarked) {
    const WireDocument document = ParseWireDocument(
        "# First\n```\n# no heading\n-> call 01\n```\n-> call 02\n```wire\n-> call 03\n```\n"
        "## Second\ntext\n```wire\n-> call 04\n```\n");
    ASSERT_THAT(document.examples, SizeIs(2));
    EXPECT_EQ(document.examples[0].heading, "First");
    EXPECT_EQ(document.examples[0].line, 7);
    EXPECT_EQ(document.examples[0].steps.at(0).bytes, "\x03");
    EXPECT_EQ(document.examples[0].steps.at(0).line, 8);
    EXPECT_EQ(document.examples[1].heading, "Second");
}

TEST(WireDocument, KnowsEveryStep) {
    const auto steps = StepsOf(
        "-> call 01\n-> signal 02\n-> announce a.b\n<- announce c.d\n<- event 03\n<- reply\n"
        "<- error e.f\n-- key Down\n-- application starts\n-- middleware ends\n");
    std::vector<WireStep::Kind> kinds;
    kinds.reserve(steps.size());
    for (const WireStep& step : steps) {
        kinds.push_back(step.kind);
    }
    EXPECT_THAT(kinds, ElementsAre(WireStep::CALL, WireStep::SIGNAL, WireStep::ANNOUNCE,
                                   WireStep::HEAR_ANNOUNCE, WireStep::HEAR_EVENT,
                                   WireStep::HEAR_REPLY, WireStep::HEAR_ERROR, WireStep::KEY,
                                   WireStep::APPLICATION, WireStep::MIDDLEWARE));
    EXPECT_EQ(steps[2].text, "a.b");
    EXPECT_EQ(steps[5].bytes, "");
    EXPECT_EQ(steps[9].text, "ends");
}

TEST(WireDocument, ReadsBytesAndTextOverSeveralLines) {
    const auto steps = StepsOf("-> call 05 \"Al ;x\" fF   ; a remark\n\n; another\n   00 \"y\"\n");
    ASSERT_THAT(steps, SizeIs(1));
    EXPECT_EQ(steps[0].bytes, std::string("\x05"
                                          "Al ;x\xFF\0y",
                                          9));
}

TEST(WireDocument, ReadsOptions) {
    const auto steps = StepsOf(
        "-> call [path /a/b] [member M] 01\n-> call [arguments ([1], 's')]\n-> signal [x]\n");
    ASSERT_THAT(steps, SizeIs(3));
    EXPECT_THAT(steps[0].options, ElementsAre(Pair("member", "M"), Pair("path", "/a/b")));
    EXPECT_EQ(steps[0].bytes, "\x01");
    EXPECT_THAT(steps[1].options, ElementsAre(Pair("arguments", "([1], 's')")));
    EXPECT_THAT(steps[2].options, ElementsAre(Pair("x", "")));
}

TEST(WireDocument, ReportsLinesThatCannotBeParsed) {
    EXPECT_THAT(ErrorsOf("-> cal 01\n"), ElementsAre("line 2: no such step"));
    EXPECT_THAT(ErrorsOf("\n-> call 0\n"), ElementsAre("line 3: neither bytes nor quoted text"));
    EXPECT_THAT(ErrorsOf("-> call 012\n"), ElementsAre("line 2: neither bytes nor quoted text"));
    EXPECT_THAT(ErrorsOf("-> call \"A\n"), ElementsAre("line 2: neither bytes nor quoted text"));
    EXPECT_THAT(ErrorsOf("-> call 0g\n"), ElementsAre("line 2: neither bytes nor quoted text"));
    EXPECT_THAT(ErrorsOf("-> announce\n"), ElementsAre("line 2: a word is missing"));
    EXPECT_THAT(ErrorsOf("  01\n"), ElementsAre("line 2: nothing to continue"));
    EXPECT_THAT(ErrorsOf("-> call [path /a 01\n"), ElementsAre("line 2: an option has no end"));
    EXPECT_THAT(ParseWireDocument("```wire\n").errors, ElementsAre("line 1: the block has no end"));
}

TEST(WireDocument, FindsAFramesIdAtItsEnd) {
    EXPECT_EQ(MessageIdOf(std::string("\x01\xD0\x07\0\0", 5)), 2000);
    EXPECT_EQ(MessageIdOf(std::string("\x01\0\0\0", 4)), 1);
    EXPECT_EQ(MessageIdOf("abc"), -1);
}

}  // namespace
}  // namespace applist::test
