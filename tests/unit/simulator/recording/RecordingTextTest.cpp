// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "link/Protocol.h"
#include "recording/RecordingFile.h"
#include "unit/simulator/recording/Messages.h"

namespace applist::sim {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string HEADER = R"({"javamw-recording":1,"started":"2026-11-21T06:40:00Z"})"
                           "\n";

std::string ErrorOf(const std::string& text) {
    return ParseRecording(text).error();
}

// Returns message with its line number in the file.
RecordedMessage AtLine(size_t line, RecordedMessage message) {
    message.line = line;
    return message;
}

TEST(RecordingText, BeginsWithItsVersion) {
    EXPECT_EQ(RecordingHeader("2026-11-21T06:40:00Z") + '\n', HEADER);
}

TEST(RecordingText, HoldsAMessageOnEachLine) {
    EXPECT_EQ(RecordingLine(Called(3, Function::AddItems, {{"w1", "Weather"}}, 51)),
              R"({"us":51,"kind":"call","side":"middleware","from":":1.1","to":":1.2","call":3,)"
              R"("bytes":"0700000057656174686572020000007731d4070000",)"
              R"("note":"AddItems w1=Weather"})");
    EXPECT_EQ(RecordingLine(Signalled(Event::ItemSelected, 7)),
              R"({"us":7,"kind":"signal","side":"application","from":":1.2","to":":1.1",)"
              R"("bytes":"02000000","note":"event 2 ItemSelected"})");
    EXPECT_EQ(RecordingLine(Announced(Side::Application, ":1.2", "a.b_SERVICE_SYN")),
              R"({"us":0,"kind":"released","side":"application","from":":1.2",)"
              R"("name":"a.b_SERVICE_SYN"})");
    EXPECT_EQ(RecordingLine(Failed(4, "no \"reply\"")),
              R"({"us":0,"kind":"error","side":"application","from":":1.2","to":":1.1","call":4,)"
              R"("name":"org.freedesktop.DBus.Error.NoReply","text":"no \"reply\""})");
}

TEST(RecordingText, IsReadAsItWasWritten) {
    const std::vector<RecordedMessage> messages{
        AtLine(2, Announced(Side::Middleware, ":1.1", "a.b_CLIENT_SYN")),
        AtLine(3, Called(1, Function::AddItems, {{"w1", "Citt\u00e0"}, {"\xFF", "\n"}}, 1)),
        AtLine(4, Signalled(Event::ItemChanged, 2)),
        AtLine(5, Replied(1, {}, 3)),
        AtLine(6, Failed(2, "gone \u00e8")),
    };
    std::string text = HEADER;
    for (const RecordedMessage& message : messages) {
        text += RecordingLine(message) + '\n';
    }
    const auto read = ParseRecording(text);
    ASSERT_TRUE(read) << read.error();
    EXPECT_EQ(read->messages, messages);
}

TEST(RecordingText, MayLackTheLastLineEnd) {
    const auto read = ParseRecording(HEADER + RecordingLine(Replied(1)));
    ASSERT_TRUE(read) << read.error();
    EXPECT_THAT(read->messages, ElementsAre(AtLine(2, Replied(1))));
}

TEST(RecordingText, SkipsBlankLinesAndUnknownMembers) {
    const auto read = ParseRecording(
        "\n" + HEADER + "\r\n" +
        R"({"us":1,"kind":"left","side":"application","from":":1.2","why":["a",{"b":null}]})");
    ASSERT_TRUE(read) << read.error();
    ASSERT_EQ(read->messages.size(), 1U);
    EXPECT_EQ(read->messages[0].line, 4U);
    EXPECT_EQ(read->messages[0].kind, MessageKind::Left);
}

TEST(RecordingText, IsRefusedWithTheLineAndTheReason) {
    EXPECT_EQ(ErrorOf(""), "1: empty");
    EXPECT_EQ(ErrorOf("w1\tWeather\n"), "1: not JSON at byte 1");
    EXPECT_EQ(ErrorOf("[1]\n"), "1: not a JSON object");
    EXPECT_EQ(ErrorOf("{\"us\":1}\n"), "1: not the header of a recording");
    EXPECT_EQ(ErrorOf("{\"javamw-recording\":\"1\"}\n"), "1: not the header of a recording");
    EXPECT_EQ(ErrorOf("{\"javamw-recording\":2}\n"), "1: unsupported version 2 of recordings");
    EXPECT_EQ(ErrorOf(HEADER + "{}\n"), "2: \"kind\" is unknown: ''");
    EXPECT_EQ(ErrorOf(HEADER + R"({"kind":"shout"})"), "2: \"kind\" is unknown: 'shout'");
    EXPECT_EQ(ErrorOf(HEADER + R"({"kind":"call","side":"viewer"})"),
              "2: \"side\" is unknown: 'viewer'");
    EXPECT_EQ(ErrorOf(HEADER + R"({"us":-1,"kind":"call","side":"middleware"})"),
              "2: \"us\" is not a non-negative integer");
    EXPECT_EQ(ErrorOf(HEADER + R"({"us":"1","kind":"call","side":"middleware"})"),
              "2: \"us\" is not a non-negative integer");
    EXPECT_EQ(ErrorOf(HEADER + R"({"kind":"call","side":"middleware","from":7})"),
              "2: \"from\" is not a string");
    EXPECT_EQ(ErrorOf(HEADER + R"({"kind":"call","side":"middleware","bytes":"0"})"),
              "2: \"bytes\" is not hexadecimal");
    EXPECT_EQ(ErrorOf(HEADER + "\n\n" + R"({"kind":"call","side")"), "4: not JSON at byte 22");
}

TEST(RecordingText, IsReadWithoutRecursion) {
    const std::string open(1'000'000, '[');
    const std::string close(1'000'000, ']');
    EXPECT_EQ(ErrorOf(HEADER + open), "2: not JSON at byte 1000001");
    EXPECT_EQ(ErrorOf(HEADER + R"({"a":)" + open + '}'), "2: not JSON at byte 1000006");
    EXPECT_EQ(ErrorOf(HEADER + open + close), "2: not a JSON object");
    EXPECT_EQ(ErrorOf(HEADER + R"({"a":)" + open + close + '}'), "2: \"kind\" is unknown: ''");
}

TEST(RecordingText, IsRefusedWithoutAnExceptionWhateverItsNumbersAndBytes) {
    const std::string rest = R"(,"kind":"left","side":"application"})";
    for (const char* number : {"9223372036854775808", "18446744073709551616", "1.5", "-0.1"}) {
        EXPECT_EQ(ErrorOf(HEADER + R"({"us":)" + number + rest),
                  "2: \"us\" is not a non-negative integer");
    }
    EXPECT_EQ(ErrorOf(HEADER + R"({"us":1e999)" + rest), "2: not JSON: a number is out of range");
    EXPECT_EQ(ErrorOf(HEADER + "{\"from\":\"\xFF\"}"), "2: not JSON at byte 10");
    EXPECT_EQ(ErrorOf(HEADER + R"({"us":9223372036854775807)" + rest), "");
}

TEST(RecordingText, MayHoldAnyNumberOfBracketsInItsTexts) {
    const auto read =
        ParseRecording(HEADER + RecordingLine(Failed(1, std::string(99, '[') + "\"")));
    ASSERT_TRUE(read) << read.error();
    EXPECT_EQ(read->messages[0].text, std::string(99, '[') + "\"");
}

TEST(RecordingText, DescribesBytesThatAreNotTextInANote) {
    EXPECT_THAT(RecordingLine(Called(1, Function::AddItems, {{"x", "\xE8"}})),
                HasSubstr("\"note\":\"AddItems x=\uFFFD\""));
}

TEST(Hex, WritesTwoDigitsForEachByte) {
    EXPECT_EQ(ToHex(Bytes()), "");
    EXPECT_EQ(ToHex(Bytes{'\x00', '\x0F', '\xF0', '\x7F', '\xFF'}), "000ff07fff");
}

TEST(Hex, ReadsDigitsOfEitherCase) {
    EXPECT_THAT(FromHex("000fF0fF"),
                testing::Optional(ElementsAre('\x00', '\x0F', '\xF0', '\xFF')));
    EXPECT_THAT(FromHex(""), testing::Optional(IsEmpty()));
}

TEST(Hex, RefusesTextOtherThanPairsOfDigits) {
    for (const char* text : {"0", "0g", "g0", " 0", "0 ", "+1", "-1", "0x", "000"}) {
        EXPECT_EQ(FromHex(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace applist::sim
