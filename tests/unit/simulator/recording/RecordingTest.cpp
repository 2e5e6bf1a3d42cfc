// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <fstream>
#include <sstream>
#include <string>
#include <utility>

#include <gmock/gmock.h>

#include "link/Protocol.h"
#include "recording/Comparison.h"
#include "recording/Recording.h"
#include "recording/RecordingFile.h"
#include "support/CaptureGenerator.h"
#include "support/TemporaryDir.h"

namespace applist::sim {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

// Messages between a middleware, :1.1, and an application, :1.2.

RecordedMessage Called(uint64_t number, Function function, const Items& items = {},
                       int64_t time = 0) {
    RecordedMessage message;
    message.kind = MessageKind::Call;
    message.side = Side::Middleware;
    message.from = ":1.1";
    message.to = ":1.2";
    message.call = number;
    message.time = time;
    message.bytes = EncodeCall(function, items);
    return message;
}

RecordedMessage Replied(uint64_t number, Bytes bytes = {}, int64_t time = 0) {
    RecordedMessage message;
    message.kind = MessageKind::Reply;
    message.side = Side::Application;
    message.from = ":1.2";
    message.to = ":1.1";
    message.call = number;
    message.time = time;
    message.bytes = std::move(bytes);
    return message;
}

RecordedMessage Failed(uint64_t number, const std::string& text) {
    RecordedMessage message = Replied(number);
    message.kind = MessageKind::Error;
    message.name = "org.freedesktop.DBus.Error.NoReply";
    message.text = text;
    return message;
}

RecordedMessage Signalled(Event event, int64_t time = 0) {
    RecordedMessage message = Replied(0, {static_cast<char>(event), 0, 0, 0}, time);
    message.kind = MessageKind::Signal;
    return message;
}

RecordedMessage Announced(Side side, const std::string& from, const std::string& name) {
    RecordedMessage message;
    message.kind = MessageKind::Released;
    message.side = side;
    message.from = from;
    message.name = name;
    return message;
}

/// The items as the application sends them.
Bytes Payload(const Items& items) {
    Bytes bytes = EncodeCall(Function::AddItems, items);
    bytes.resize(bytes.size() - 4);
    return bytes;
}

std::string DescribeCall(const Bytes& bytes) {
    RecordedMessage message = Called(1, Function::AddItems);
    message.bytes = bytes;
    return Describe(message);
}

std::string DescribeSignal(const Bytes& bytes) {
    RecordedMessage message = Signalled(Event::ItemChanged);
    message.bytes = bytes;
    return Describe(message);
}

TEST(Description, NamesTheFunctionAndItsItems) {
    EXPECT_EQ(Describe(Called(1, Function::GetAllItems)), "GetAllItems");
    EXPECT_EQ(Describe(Called(1, Function::AddItems, {{"w1", "Weather"}, {"n", "a\nb"}})),
              "AddItems w1=Weather n=a\\x0ab");
}

TEST(Description, CutsLongLists) {
    EXPECT_EQ(Describe(Called(1, Function::AddItems, Items(12, {"a", "A"}))),
              "AddItems a=A a=A a=A a=A a=A a=A a=A a=A a=A a=A and 2 more");
}

TEST(Description, DescribesMalformedCalls) {
    EXPECT_EQ(DescribeCall({}), "0 bytes without a message id");
    EXPECT_EQ(DescribeCall({'\x01', '\x02', '\x03'}), "3 bytes without a message id");
    EXPECT_EQ(DescribeCall({'\x09', '\xD4', '\x07', '\x00', '\x00'}),
              "AddItems with 1 byte, not a list of items");
    EXPECT_EQ(DescribeCall({'\xD9', '\x07', '\x00', '\x00'}), "function 2009");
    EXPECT_EQ(DescribeCall({'\xFF', '\xFF', '\xFF', '\xFF'}), "function -1");
}

TEST(Description, ListsTheItemsOfAReply) {
    EXPECT_EQ(Describe(Replied(1)), "nothing");
    EXPECT_EQ(Describe(Replied(1, Payload({{"w1", "Weather"}}))), "w1=Weather");
    EXPECT_EQ(Describe(Replied(1, Payload({{}}))), "(no item)");
    EXPECT_EQ(Describe(Replied(1, {'\x05'})), "with 1 byte, not a list of items");
}

TEST(Description, NamesEvents) {
    EXPECT_EQ(Describe(Signalled(Event::ItemClicked)), "event 3 ItemClicked");
    EXPECT_EQ(DescribeSignal({'\x07', '\x00', '\x00', '\x00'}), "event 7 Unknown");
    EXPECT_EQ(DescribeSignal({'\x0A', '\x0B', '\x01', '\x00', '\x00', '\x00'}),
              "event 1 ItemChanged with 2 unexpected bytes");
    EXPECT_EQ(DescribeSignal({'\x01'}), "1 byte without a message id");
}

TEST(Description, NamesTheTypeOfContentOtherThanBytes) {
    RecordedMessage message = Signalled(Event::ItemChanged);
    message.text = "(sa{sv})";
    EXPECT_EQ(Describe(message), "content of type (sa{sv})");
}

TEST(Description, NamesAnnouncementsErrorsAndLeavers) {
    EXPECT_EQ(Describe(Announced(Side::Application, ":1.2", "a.b_SERVICE_SYN")), "a.b_SERVICE_SYN");
    EXPECT_EQ(Describe(Failed(1, "no\nreply")), "org.freedesktop.DBus.Error.NoReply: no\\x0areply");
    RecordedMessage left;
    left.kind = MessageKind::Left;
    EXPECT_EQ(Describe(left), "the bus");
}

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

class RecordingFiles : public testing::Test {
protected:
    std::string Path(const std::string& name) const { return (m_folder.path() / name).string(); }
    std::string Write(const std::string& content) const {
        std::ofstream(Path("file"), std::ios::binary) << content;
        return Path("file");
    }
    static std::string ContentOf(const std::string& file) {
        std::ostringstream content;
        content << std::ifstream(file, std::ios::binary).rdbuf();
        return content.str();
    }

private:
    test::TemporaryDir m_folder;
};

TEST_F(RecordingFiles, HoldEachMessageAsSoonAsItIsWritten) {
    auto file = RecordingFile::Create(Path("new"));
    ASSERT_TRUE(file) << file.error();
    EXPECT_EQ(ContentOf(Path("new")), "");
    file->Begin();
    EXPECT_THAT(ContentOf(Path("new")), StartsWith("{\"javamw-recording\":1,\"started\":\"2"));
    file->Write(Replied(7));
    EXPECT_THAT(ContentOf(Path("new")), HasSubstr("\"call\":7"));
    EXPECT_EQ(file->count(), 1U);
    EXPECT_EQ(file->error(), "");
    const auto read = LoadRecording(Path("new"));
    ASSERT_TRUE(read) << read.error();
    EXPECT_THAT(read->messages, SizeIs(1));
}

TEST_F(RecordingFiles, HaveOneHeaderIfAMessageIsWrittenFirst) {
    auto file = RecordingFile::Create(Path("new"));
    ASSERT_TRUE(file) << file.error();
    file->Write(Replied(7));
    file->Begin();
    const auto read = LoadRecording(Path("new"));
    ASSERT_TRUE(read) << read.error();
    EXPECT_THAT(read->messages, SizeIs(1));
}

TEST_F(RecordingFiles, AreNamedWhenTheyCannotBeWritten) {
    EXPECT_EQ(RecordingFile::Create(Path("none/file")).error(),
              Path("none/file") + ": No such file or directory");
    auto full = RecordingFile::Create("/dev/full");
    full->Begin();
    EXPECT_EQ(full->error(), "/dev/full: No space left on device");
}

TEST_F(RecordingFiles, AreNamedWhenTheyCannotBeRead) {
    EXPECT_EQ(LoadRecording(Path("none")).error(), Path("none") + ": no such file");
    EXPECT_THAT(LoadRecording(Path("")).error(), StartsWith(Path("") + ": "));
    const std::string file = Write("{\"javamw-recording\":1}\nnonsense");
    EXPECT_EQ(LoadRecording(file).error(), file + ":2: not JSON at byte 2");
    EXPECT_EQ(LoadRecording(Write("")).error(), file + ":1: empty");
}

TEST_F(RecordingFiles, MayBeCapturesOfABus) {
    test::CaptureGenerator capture(test::CaptureGenerator::Form::PcapNg);
    capture.Add(test::busmessage::Signal(":1.2", ":1.1", "abcd"), 1);
    capture.Add("nonsense", 1);
    const std::string file = Write(capture.bytes());
    const auto read = LoadRecording(file);
    ASSERT_TRUE(read) << read.error();
    EXPECT_THAT(read->messages, SizeIs(1));
    EXPECT_EQ(read->remark, file + ": skipped 1 packets: not D-Bus messages");
    const std::string other =
        Write(test::CaptureGenerator(test::CaptureGenerator::Form::Pcap, 1).bytes());
    EXPECT_EQ(LoadRecording(other).error(), other + ": a capture, but not of D-Bus traffic");
}

std::vector<Conversation> Converse(const std::vector<RecordedMessage>& messages) {
    return ConversationsOf({messages, {}});
}

TEST(Conversations, AreBetweenOneMiddlewareAndOneApplicationEach) {
    RecordedMessage other = Signalled(Event::LocalCreated);
    other.to = ":1.9";
    const auto conversations = Converse({Announced(Side::Middleware, ":1.1", "x_CLIENT_SYN"),
                                         Signalled(Event::LocalCreated), other,
                                         Called(1, Function::GetSelection), Replied(1)});
    ASSERT_EQ(conversations.size(), 2U);
    EXPECT_EQ(conversations[0].middleware, ":1.1");
    EXPECT_EQ(conversations[0].application, ":1.2");
    EXPECT_THAT(
        conversations[0].recording.messages,
        ElementsAre(Signalled(Event::LocalCreated), Called(1, Function::GetSelection), Replied(1)));
    EXPECT_EQ(conversations[1].middleware, ":1.9");
    EXPECT_THAT(conversations[1].recording.messages, ElementsAre(other));
}

TEST(Conversations, ExcludeTheHandshakeAndBroadcastSignals) {
    RecordedMessage toAll = Signalled(Event::ItemChanged);
    toAll.to.clear();
    EXPECT_THAT(Converse({Announced(Side::Middleware, ":1.1", "x_CLIENT_SYN"), toAll}), IsEmpty());
}

TEST(Conversations, HaveTheMessagesOfTheMiddlewareWithTimesAndPriorAnswers) {
    RecordedMessage signal = Called(0, Function::SetClicked, {}, 900);
    signal.kind = MessageKind::Signal;
    const auto utterances = SentMessagesOf(
        Converse({Signalled(Event::LocalCreated, 100),
                  Called(1, Function::AddItems, {{"a", "A"}}, 250),
                  Called(2, Function::GetSelection, {}, 300), Replied(1), Failed(2, "no"), signal})
            .at(0));
    ASSERT_EQ(utterances.size(), 3U);
    EXPECT_EQ(utterances[0].bytes, EncodeCall(Function::AddItems, {{"a", "A"}}));
    EXPECT_EQ(utterances[0].time, 150);
    EXPECT_EQ(utterances[0].answersBefore, 0U);
    EXPECT_EQ(utterances[1].answersBefore, 0U);
    EXPECT_EQ(utterances[2].kind, MessageKind::Signal);
    EXPECT_EQ(utterances[2].answersBefore, 2U);
    EXPECT_EQ(utterances[2].time, 800);
}

TEST(Conversations, HaveTheSignalsAndAnswersOfTheApplication) {
    RecordedMessage signal = Called(0, Function::SetClicked);
    signal.kind = MessageKind::Signal;
    const auto conversation =
        Converse({Signalled(Event::LocalCreated), Signalled(Event::LocalCreated), signal,
                  Called(1, Function::GetSelection), Replied(1), Signalled(Event::ItemChanged)})
            .at(0);
    EXPECT_THAT(ApplicationSide(conversation).messages,
                ElementsAre(Signalled(Event::LocalCreated), Called(1, Function::GetSelection),
                            Replied(1), Signalled(Event::ItemChanged)));
}

using Messages = std::vector<RecordedMessage>;

// Numbers the messages from line 2, as in a file.
Recording Record(Messages messages) {
    for (size_t i = 0; i < messages.size(); ++i) {
        messages[i].line = i + 2;
    }
    return {std::move(messages), {}};
}

std::vector<std::string> Lines(const Messages& first, const Messages& second,
                               const CompareOptions& options = {}) {
    std::vector<std::string> lines;
    for (const Difference& difference :
         Compare(StepsOf(Record(first), options.names), StepsOf(Record(second), options.names),
                 options.tolerance)) {
        lines.push_back(DifferenceLines(difference, "a", "b"));
    }
    return lines;
}

// Returns the same traffic as in another run, with different unique names.
Messages Renamed(Messages messages) {
    for (RecordedMessage& message : messages) {
        for (std::string* name : {&message.from, &message.to}) {
            *name = *name == ":1.1" ? ":1.27" : *name == ":1.2" ? ":1.31" : *name;
        }
    }
    return messages;
}

const Messages SESSION{
    Announced(Side::Application, ":1.2", "x_SERVICE_SYN"),
    Announced(Side::Middleware, ":1.1", "x_CLIENT_SYN_ACK"),
    Signalled(Event::LocalCreated, 10),
    Called(1, Function::AddItems, {{"w1", "Weather"}}, 20),
    Signalled(Event::ItemChanged, 30),
    Replied(1, {}, 40),
};

TEST(Comparison, FindsNothingBetweenARecordingAndItself) {
    EXPECT_THAT(Lines(SESSION, SESSION), IsEmpty());
    EXPECT_THAT(Lines({}, {}), IsEmpty());
}

TEST(Comparison, IgnoresUniqueNamesByDefault) {
    EXPECT_THAT(Lines(SESSION, Renamed(SESSION)), IsEmpty());
    EXPECT_EQ(Lines(SESSION, Renamed(SESSION), {.names = true, .tolerance = {}}).size(), 10U);
}

TEST(Comparison, DistinguishesSeveralPartners) {
    Messages two = SESSION;
    two.push_back(Signalled(Event::ItemSelected));
    Messages other = two;
    other.back().to = ":1.9";
    EXPECT_THAT(Lines(two, other), ElementsAre("- a:8: application signal event 2 ItemSelected",
                                               "+ b:8: application signal event 2 ItemSelected"));
}

TEST(Comparison, ReportsTheLinesOfMissingAndNewMessages) {
    Messages missing = SESSION;
    missing.erase(missing.begin() + 4);
    EXPECT_THAT(Lines(SESSION, missing),
                ElementsAre("- a:6: application signal event 1 ItemChanged"));
    EXPECT_THAT(Lines(missing, SESSION),
                ElementsAre("+ b:6: application signal event 1 ItemChanged"));
}

TEST(Comparison, ContinuesAfterADifference) {
    Messages other = SESSION;
    other[4] = Signalled(Event::ItemSelected);
    other.push_back(Signalled(Event::ItemClicked));
    EXPECT_THAT(Lines(SESSION, other),
                ElementsAre("- a:6: application signal event 1 ItemChanged",
                            "+ b:6: application signal event 2 ItemSelected",
                            "+ b:8: application signal event 3 ItemClicked"));
}

TEST(Comparison, NamesACallWhoseAnswerDiffers) {
    Messages other = SESSION;
    other[5] = Replied(1, Payload({{"w1", "Weather"}}));
    EXPECT_THAT(Lines(SESSION, other),
                ElementsAre("- a:5: middleware call AddItems w1=Weather -> reply nothing",
                            "+ b:5: middleware call AddItems w1=Weather -> reply w1=Weather"));
}

TEST(Comparison, NamesACallThatWasNotAnswered) {
    Messages other = SESSION;
    other.pop_back();
    EXPECT_THAT(Lines(SESSION, other),
                ElementsAre("- a:5: middleware call AddItems w1=Weather -> reply nothing",
                            "+ b:5: middleware call AddItems w1=Weather, not answered"));
}

// A middleware may send the next call before the reply to the last one.
TEST(Comparison, IgnoresWhenACallWasMadeAmongTheAnswers) {
    const Messages waiting{Called(1, Function::GetSelection), Replied(1),
                           Called(2, Function::GetAllItems), Replied(2)};
    const Messages hurrying{Called(1, Function::GetSelection), Called(2, Function::GetAllItems),
                            Replied(1), Replied(2)};
    EXPECT_THAT(Lines(waiting, hurrying), IsEmpty());
}

TEST(Comparison, IgnoresTheTextOfAnError) {
    const Messages first{Called(1, Function::GetSelection), Failed(1, ":1.2 is gone")};
    const Messages second{Called(1, Function::GetSelection), Failed(1, ":1.31 is gone")};
    EXPECT_THAT(Lines(first, second), IsEmpty());
    EXPECT_EQ(Lines(first, second, {.names = true, .tolerance = {}}).size(), 2U);
}

TEST(Comparison, IgnoresTimesByDefault) {
    Messages later = SESSION;
    later[4].time += 2500;
    EXPECT_THAT(Lines(SESSION, later), IsEmpty());
    EXPECT_THAT(Lines(SESSION, later, {.names = false, .tolerance = 2500}), IsEmpty());
    EXPECT_THAT(Lines(SESSION, later, {.names = false, .tolerance = 2499}),
                ElementsAre("- a:6: application signal event 1 ItemChanged, after 0 ms\n"
                            "+ b:6: application signal event 1 ItemChanged, after 2 ms"));
}

TEST(Comparison, ReportsAllFollowingStepsWithoutACommonStep) {
    EXPECT_EQ(Lines(Messages(3000, Signalled(Event::ItemChanged)),
                    Messages(2000, Signalled(Event::ItemSelected)))
                  .size(),
              5000U);
}

}  // namespace
}  // namespace applist::sim
