// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <bit>
#include <cstdint>
#include <string>

#include <gmock/gmock.h>

#include "scenario/Statement.h"

namespace applist::sim {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// Parses a line; fails the test if it is not a statement.
Action Parsed(const std::string& line) {
    const ParsedLine parsed = ParseStatement(line);
    EXPECT_FALSE(parsed.error) << line << ": " << parsed.error->message;
    return parsed.statement ? parsed.statement->action : Action();
}

Message Sent(const std::string& line) {
    const Action action = Parsed(line);
    EXPECT_TRUE(action.message) << line;
    return action.message.value_or(Message());
}

std::string Error(const std::string& line) {
    const ParsedLine parsed = ParseStatement(line);
    EXPECT_FALSE(parsed.statement) << line;
    return parsed.error ? std::to_string(parsed.error->column) + ": " + parsed.error->message
                        : "none";
}

TEST(ScenarioParser, TellsSettingsFromStepsThatCanFail) {
    for (const char* line : {"timeout 200ms", "note text", "partner second", "handshake manual",
                             "handshake skip syn", "forget events"}) {
        EXPECT_TRUE(Parsed(line).IsSetting()) << line;
    }
    for (const char* line : {"join", "wait 1ms", "clear", "expect count 1", "expect error"}) {
        EXPECT_FALSE(Parsed(line).IsSetting()) << line;
    }
}

TEST(ScenarioParser, JoinsTheWordsOfANote) {
    EXPECT_EQ(Parsed("note all \"is  well\"").comment, "all is  well");
    EXPECT_EQ(Parsed("join").comment, std::nullopt);
}

void ExpectCall(const std::string& line, Function function, const Items& items) {
    const auto call = Sent(line).call;
    ASSERT_TRUE(call) << line;
    EXPECT_EQ(call->function, function) << line;
    EXPECT_EQ(call->items, items) << line;
}

TEST(ScenarioParser, ReadsCallsByTheirShortNames) {
    ExpectCall("add a=Alpha \"b=b\"=\"B B\"", Function::AddItems, {{"a", "Alpha"}, {"b=b", "B B"}});
    ExpectCall("add", Function::AddItems, {});
    ExpectCall("append a=", Function::AddItemAtEnd, {{"a", ""}});
    ExpectCall("remove a", Function::RemoveItem, {{"a", ""}});
    ExpectCall("modify a b=B", Function::ModifyItem, {{"a", ""}, {"b", "B"}});
    ExpectCall("select a=A", Function::SetSelection, {{"a", "A"}});
    ExpectCall("clear", Function::RemoveAllItems, {});
}

TEST(ScenarioParser, ReadsAnyFunctionByItsName) {
    ExpectCall("call SetSelection a", Function::SetSelection, {{"a", ""}});
    ExpectCall("call GetSelection", Function::GetSelection, {});
    ExpectCall("call GetAllItems", Function::GetAllItems, {});
    ExpectCall("call RemoveAllItems", Function::RemoveAllItems, {});
    ExpectCall("call AddItems a=A", Function::AddItems, {{"a", "A"}});
    ExpectCall("call AddItemAtEnd a=A", Function::AddItemAtEnd, {{"a", "A"}});
    ExpectCall("call SetClicked", Function::SetClicked, {});
    ExpectCall("call RemoveItem a", Function::RemoveItem, {{"a", ""}});
    ExpectCall("call ModifyItem a=A b=B", Function::ModifyItem, {{"a", "A"}, {"b", "B"}});
}

TEST(ScenarioParser, ReadsBytesAndDamage) {
    EXPECT_EQ(Sent("send-hex 01 02fF").bytes(1), (Bytes{'\x01', '\x02', '\xFF'}));
    EXPECT_THAT(Sent("send-hex").bytes(1), IsEmpty());
    EXPECT_THAT(Sent("send-short 3").bytes(1), SizeIs(3));
    EXPECT_THAT(Sent("send-huge 512").bytes(1), SizeIs(512));
    EXPECT_THAT(Sent("send-huge 64M").bytes(1), SizeIs(64U * 1024 * 1024));
    EXPECT_THAT(Sent("send-huge 2k RemoveItem").bytes(1), SizeIs(2048));
}

TEST(ScenarioParser, KnowsWhichMessagesMayBeInvalid) {
    for (const char* line : {"send-hex d2070000", "send-short 3", "send-huge 5", "signal-hex 00",
                             "send-flipped 1 1 GetSelection", "send-cut 9 GetSelection"}) {
        EXPECT_FALSE(Sent(line).call) << line;
    }
}

TEST(ScenarioParser, ReadsHowMessagesAreSent) {
    EXPECT_FALSE(Sent("add a=A").asSignal);
    EXPECT_TRUE(Sent("signal-hex d3070000").asSignal);
    EXPECT_TRUE(Sent("add a=A").awaitReply);
    EXPECT_FALSE(Sent("post clear").awaitReply);
    EXPECT_EQ(Sent("flood 500 append x{n}=X").copies, 500U);
    EXPECT_EQ(Sent("flood 2 send-flipped 1 1 GetSelection").copies, 2U);
}

TEST(ScenarioParser, ReportsColumnAndWordOfAnError) {
    EXPECT_EQ(Error("dance now"), "1: 'dance' is not a statement");
    EXPECT_EQ(Error("  expect joy"), "10: 'joy' is not an expectation");
    EXPECT_EQ(Error("expect event Doom"),
              "14: 'Doom' is not one of ItemChanged, ItemSelected, ItemClicked or LocalCreated");
    EXPECT_EQ(Error("announce nack"), "10: 'nack' is not one of syn, syn-ack or ack");
    EXPECT_EQ(Error("call Dance"), "6: unknown function 'Dance'");
    EXPECT_EQ(Error("add a=A b"), "9: 'b' lacks an unquoted '=' between id and name");
    EXPECT_EQ(Error("add \"a=A\""), "5: 'a=A' lacks an unquoted '=' between id and name");
    EXPECT_EQ(Error("flood 3 wait 3s"), "9: 'wait' is not a message");
    EXPECT_EQ(Error("\"a\\nb\""), "1: 'a?b' is not a statement");
    EXPECT_EQ(Error("\"clear\""), "1: 'clear' is not a statement");
}

TEST(ScenarioParser, ReportsWhatIsMissingAndWhere) {
    EXPECT_EQ(Error("timeout"), "8: a time is missing");
    EXPECT_EQ(Error("append # later"), "7: ID=NAME is missing");
    EXPECT_EQ(Error("remove"), "7: an id is missing");
    EXPECT_EQ(Error("modify a"), "9: ID=NAME is missing");
    EXPECT_EQ(Error("expect"), "7: an expectation is missing");
    EXPECT_EQ(Error("expect event"),
              "13: ItemChanged, ItemSelected, ItemClicked or LocalCreated is missing");
    EXPECT_EQ(Error("expect list"), "12: an id is missing");
    EXPECT_EQ(Error("wait connected within"), "22: a time is missing");
    EXPECT_EQ(Error("flood 3"), "8: a message is missing");
    EXPECT_EQ(Error("post"), "5: a message is missing");
    EXPECT_EQ(Error("note"), "5: a text is missing");
}

TEST(ScenarioParser, RefusesNumbersOutOfRange) {
    EXPECT_EQ(Error("send-short 4"),
              "12: the number of bytes must be a number from 0 to 3, not '4'");
    EXPECT_EQ(Error("flood 0 clear"),
              "7: the number of messages must be a number from 1 to 1000000, not '0'");
    EXPECT_EQ(Error("flood many clear"),
              "7: the number of messages must be a number from 1 to 1000000, not 'many'");
    EXPECT_EQ(Error("handshake repeat ack 1"),
              "22: the number of times must be a number from 2 to 1000, not '1'");
    const std::string size = ": a size must have the form 512, 64k or 16M, up to 64M, not ";
    EXPECT_EQ(Error("send-huge 65M"), "11" + size + "'65M'");
    EXPECT_EQ(Error("send-huge 99999999999"), "11" + size + "'99999999999'");
    EXPECT_EQ(Error("send-huge -1"), "11" + size + "'-1'");
    const std::string time = ": a time must have the form 200ms, 5s or 1min, up to a day, not ";
    EXPECT_EQ(Error("wait 5"), "6" + time + "'5'");
    EXPECT_EQ(Error("wait 25h"), "6" + time + "'25h'");
    EXPECT_EQ(Error("wait 1441min"), "6" + time + "'1441min'");
}

TEST(ScenarioParser, RefusesInvalidHexadecimalBytes) {
    const std::string why = "bytes must be pairs of hexadecimal digits, not ";
    EXPECT_EQ(Error("send-hex 01 0"), "13: " + why + "'0'");
    EXPECT_EQ(Error("send-hex 0x01"), "10: " + why + "'0x01'");
    EXPECT_EQ(Error("expect reply hex zz"), "18: " + why + "'zz'");
}

TEST(ScenarioParser, RefusesWordsAfterTheEnd) {
    EXPECT_EQ(Error("clear all"), "7: unexpected word 'all'");
    EXPECT_EQ(Error("expect list empty a"), "19: unexpected word 'a'");
    EXPECT_EQ(Error("call GetAllItems a"), "18: unexpected word 'a'");
}

TEST(ScenarioParser, KeepsStatementsAsTheyWereWritten) {
    const ParsedLine parsed = ParseStatement("\t clear  # all\r", 7);
    ASSERT_TRUE(parsed.statement);
    EXPECT_EQ(parsed.statement->text, "clear");
    EXPECT_EQ(parsed.statement->line, 7U);
}

TEST(ScenarioParser, ReadsLinesOfBothKinds) {
    const ParsedScenario scenario = ParseScenario("clear\r\n\r\n# text\n\njoin");
    EXPECT_THAT(scenario.errors, IsEmpty());
    ASSERT_THAT(scenario.statements, SizeIs(2));
    EXPECT_EQ(scenario.statements[0].line, 1U);
    EXPECT_EQ(scenario.statements[1].line, 5U);
}

TEST(ScenarioParser, ReportsTheErrorsOfAllLines) {
    const ParsedScenario scenario = ParseScenario("clear\nadd x\njoin\nwait \"\n");
    ASSERT_THAT(scenario.errors, SizeIs(2));
    EXPECT_EQ(scenario.errors[0].line, 2U);
    EXPECT_EQ(scenario.errors[0].column, 5U);
    EXPECT_EQ(scenario.errors[1].line, 4U);
    EXPECT_EQ(scenario.errors[1].message, "this quote is not closed");
}

TEST(ScenarioParser, ReadsEveryFormThatTheHelpLists) {
    for (const StatementForm& form : StatementForms()) {
        const ParsedLine parsed = ParseStatement(form.keyword);
        EXPECT_TRUE(!parsed.error || parsed.error->message.find("missing") != std::string::npos)
            << form.keyword;
        EXPECT_FALSE(form.meaning.empty()) << form.keyword;
    }
}

const std::string ADD = "AddItems a{n}=\"{n} of {n}{\"";

/// Returns the bytes of copy number copy of the message that the statement sends.
Bytes BytesOf(const std::string& statement, unsigned copy) {
    return Sent(statement).bytes(copy);
}

TEST(Frames, NumberTheirItemsCopyByCopy) {
    EXPECT_EQ(BytesOf("call " + ADD, 1), EncodeCall(Function::AddItems, {{"a1", "1 of 1{"}}));
    EXPECT_EQ(BytesOf("call " + ADD, 12), EncodeCall(Function::AddItems, {{"a12", "12 of 12{"}}));
}

TEST(Frames, AreSentUnchangedWhenRaw) {
    EXPECT_EQ(BytesOf("send-hex 787b6e7d", 3), (Bytes{'x', '{', 'n', '}'}));
}

TEST(Frames, HaveTheRequestedSizeAndId) {
    const Bytes bytes = BytesOf("send-huge 1000 RemoveItem", 1);
    EXPECT_THAT(bytes, SizeIs(1000));
    EXPECT_THAT(Bytes(bytes.begin(), bytes.end() - 4), Each('\xFF'));
    EXPECT_EQ(Bytes(bytes.end() - 4, bytes.end()), EncodeCall(Function::RemoveItem, {}));
    EXPECT_THAT(BytesOf("send-huge 0", 1), SizeIs(4));
}

unsigned DifferentBits(const Bytes& left, const Bytes& right) {
    EXPECT_EQ(left.size(), right.size());
    unsigned bits = 0;
    for (size_t i = 0; i < left.size(); ++i) {
        bits += static_cast<unsigned>(std::popcount(static_cast<uint8_t>(
            static_cast<uint8_t>(left[i]) ^ static_cast<uint8_t>(right.at(i)))));
    }
    return bits;
}

TEST(Frames, DifferByOneBitWhenOneIsFlipped) {
    for (unsigned copy = 1; copy <= 100; ++copy) {
        EXPECT_EQ(
            DifferentBits(BytesOf("send-flipped 7 1 " + ADD, copy), BytesOf("call " + ADD, copy)),
            1U);
    }
}

TEST(Frames, HaveTheSameBitsFlippedForTheSameSeed) {
    // The C++ standard defines the first number of std::mt19937 for its default seed, 5489.
    Bytes expected = EncodeCall(Function::GetSelection, {});
    const unsigned bit = 3499211612U % 32;
    expected[bit / 8] =
        static_cast<char>(static_cast<uint8_t>(expected[bit / 8]) ^ (1U << bit % 8));
    EXPECT_EQ(BytesOf("send-flipped 5489 1 GetSelection", 1), expected);
    EXPECT_EQ(BytesOf("send-flipped 5480 1 GetSelection", 10), expected);
}

TEST(Frames, LoseTheEndOfTheirPayloadButNotTheirId) {
    const Bytes whole = EncodeCall(Function::AddItems, {{"a", "A"}});
    const Bytes cut = BytesOf("send-cut 3 AddItems a=A", 1);
    ASSERT_THAT(cut, SizeIs(3 + 4));
    EXPECT_TRUE(std::equal(cut.begin(), cut.begin() + 3, whole.begin()));
    EXPECT_TRUE(std::equal(cut.begin() + 3, cut.end(), whole.end() - 4));
    EXPECT_EQ(BytesOf("send-cut 0 AddItems a=A", 1), EncodeCall(Function::AddItems, {}));
    EXPECT_EQ(BytesOf("send-cut 9999 AddItems a=A", 1), whole);
}

Items Arguments(Function function, const std::vector<std::string>& arguments) {
    const auto items = ParseCallArguments(function, arguments);
    EXPECT_TRUE(items) << items.error();
    return items ? *items : Items();
}

std::string Refused(Function function, const std::vector<std::string>& arguments) {
    const auto items = ParseCallArguments(function, arguments);
    EXPECT_FALSE(items);
    return items.error();
}

TEST(CallArguments, GiveOneItemByIdAndOptionalName) {
    EXPECT_EQ(Arguments(Function::SetSelection, {"w1"}), (Items{{"w1", ""}}));
    EXPECT_EQ(Arguments(Function::SetSelection, {"w1", "Weather"}), (Items{{"w1", "Weather"}}));
    EXPECT_EQ(Arguments(Function::SetSelection, {""}), (Items{{"", ""}}));
    EXPECT_EQ(Arguments(Function::RemoveItem, {"a=b"}), (Items{{"a=b", ""}}));
}

TEST(CallArguments, GiveAnyNumberOfPairs) {
    EXPECT_EQ(Arguments(Function::AddItems, {}), Items());
    EXPECT_EQ(Arguments(Function::AddItems, {"w1=Weather", "n=", "=x", "e=a=b"}),
              (Items{{"w1", "Weather"}, {"n", ""}, {"", "x"}, {"e", "a=b"}}));
}

TEST(CallArguments, GiveOnePair) {
    EXPECT_EQ(Arguments(Function::AddItemAtEnd, {"w1=Weather"}), (Items{{"w1", "Weather"}}));
}

TEST(CallArguments, GiveTheOldAndTheNewItem) {
    EXPECT_EQ(Arguments(Function::ModifyItem, {"w1", "w2=Wind"}),
              (Items{{"w1", ""}, {"w2", "Wind"}}));
    EXPECT_EQ(Arguments(Function::ModifyItem, {"w1=Weather", "w2=Wind"}),
              (Items{{"w1", "Weather"}, {"w2", "Wind"}}));
}

TEST(CallArguments, AreEmptyForOtherFunctions) {
    for (const Function function : {Function::GetSelection, Function::GetAllItems,
                                    Function::RemoveAllItems, Function::SetClicked}) {
        EXPECT_EQ(Arguments(function, {}), Items());
        EXPECT_EQ(Refused(function, {"x"}), std::string(NameOf(function)) + " takes no arguments");
    }
}

TEST(CallArguments, AreRefusedWithTheCorrectSyntax) {
    EXPECT_EQ(Refused(Function::SetSelection, {}), "SetSelection takes ID [NAME]");
    EXPECT_EQ(Refused(Function::SetSelection, {"a", "b", "c"}), "SetSelection takes ID [NAME]");
    EXPECT_EQ(Refused(Function::RemoveItem, {}), "RemoveItem takes ID [NAME]");
    EXPECT_EQ(Refused(Function::AddItems, {"a=b", "c"}), "AddItems takes ID=NAME...");
    EXPECT_EQ(Refused(Function::AddItemAtEnd, {}), "AddItemAtEnd takes ID=NAME");
    EXPECT_EQ(Refused(Function::AddItemAtEnd, {"a=b", "c=d"}), "AddItemAtEnd takes ID=NAME");
    EXPECT_EQ(Refused(Function::AddItemAtEnd, {"a"}), "AddItemAtEnd takes ID=NAME");
    EXPECT_EQ(Refused(Function::ModifyItem, {"a"}), "ModifyItem takes ID ID=NAME");
    EXPECT_EQ(Refused(Function::ModifyItem, {"a", "b"}), "ModifyItem takes ID ID=NAME");
}

const std::string OBJECT =
    "/org/vantu/javamw/CommunicationChannel/Applist org.vantu.javamw.DbusCommunication ";
const BusctlTarget TARGET{"", ":1.5"};

Result<std::vector<std::string>> Lines(const std::string& statement,
                                       const BusctlTarget& target = TARGET) {
    return BusctlLines(Parsed(statement), target);
}

void ExpectLine(const std::string& statement, const std::string& line) {
    const auto lines = Lines(statement);
    ASSERT_TRUE(lines) << lines.error();
    EXPECT_THAT(*lines, ElementsAre(line));
}

TEST(Busctl, CallsWithEachByte) {
    ExpectLine("call GetAllItems", "busctl --system call :1.5 " + OBJECT + "Send ay 4 210 7 0 0");
    ExpectLine("add w=\xFF", "busctl --system call :1.5 " + OBJECT +
                                 "Send ay 14 1 0 0 0 255 1 0 0 0 119 212 7 0 0");
    ExpectLine("send-hex 01ff", "busctl --system call :1.5 " + OBJECT + "Send ay 2 1 255");
    ExpectLine("send-short 0", "busctl --system call :1.5 " + OBJECT + "Send ay 0");
}

TEST(Busctl, EmitsSignalsToTheApplicationAlone) {
    ExpectLine("signal-hex 0a",
               "busctl --system --destination=:1.5 emit " + OBJECT + "SendSignal ay 1 10");
}

TEST(Busctl, NamesAnotherBus) {
    const auto lines = Lines("clear", {"unix:path=/a b", ":1.5"});
    ASSERT_TRUE(lines);
    EXPECT_THAT(*lines, ElementsAre("busctl --address='unix:path=/a b' call :1.5 " + OBJECT +
                                    "Send ay 4 211 7 0 0"));
}

TEST(Busctl, AnnouncesByAcquiringANameUntilItExits) {
    ExpectLine("announce syn-ack",
               "busctl --system call org.freedesktop.DBus /org/freedesktop/DBus "
               "org.freedesktop.DBus RequestName su org.vantu.JavaMW.Applist_CLIENT_SYN_ACK 4");
}

TEST(Busctl, ReadsTheValueThatAnExpectationChecks) {
    const std::string list = "busctl --system call :1.5 " + OBJECT + "Send ay 4 210 7 0 0";
    ExpectLine("expect list empty", list);
    ExpectLine("expect count 3", list);
    ExpectLine("expect selection none",
               "busctl --system call :1.5 " + OBJECT + "Send ay 4 209 7 0 0");
}

TEST(Busctl, WatchesForEventsAndAnnouncements) {
    const std::string signals =
        "busctl --system monitor --match='type='\\''signal'\\'',"
        "interface='\\''org.vantu.javamw.DbusCommunication'\\'''";
    ExpectLine("expect event ItemChanged", signals);
    ExpectLine("expect no event for 1s", signals);
    ExpectLine("expect announcement syn",
               "busctl --system monitor --match='type='\\''signal'\\'',"
               "sender='\\''org.freedesktop.DBus'\\'',member='\\''NameOwnerChanged'\\'',"
               "arg0namespace='\\''org.vantu.JavaMW'\\'''");
}

TEST(Busctl, RepeatsAFewCopiesAndCountsTheOthers) {
    const auto few = Lines("flood 2 add {n}=N");
    ASSERT_TRUE(few);
    EXPECT_THAT(*few, SizeIs(2));
    EXPECT_NE(few->front(), few->back());
    const auto many = Lines("flood 12 clear");
    ASSERT_TRUE(many);
    EXPECT_THAT(*many, SizeIs(11));
    EXPECT_EQ(many->back(), "# and 2 more like these");
}

TEST(Busctl, RefusesStatementsWithoutABusctlEquivalent) {
    for (const char* statement : {"join", "vanish", "wait 1s", "note text", "timeout 1s",
                                  "handshake manual", "expect reply empty"}) {
        EXPECT_EQ(Lines(statement).error(), "busctl cannot do this") << statement;
    }
    EXPECT_EQ(Lines("send-huge 1M").error(), "1048576 bytes are too many for a command line");
    EXPECT_EQ(Lines("clear", {"", ""}).error(),
              "no application has announced itself; \"wait connected\" waits for one");
}

}  // namespace
}  // namespace applist::sim
