// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "recording/RecordingFile.h"
#include "recording/Traffic.h"
#include "support/CaptureGenerator.h"

namespace applist::sim {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using namespace std::string_view_literals;

using test::CaptureGenerator;
using Form = CaptureGenerator::Form;
namespace busmessage = test::busmessage;

constexpr const char* SERVICE_SYN = "org.vantu.JavaMW.Applist_SERVICE_SYN";
constexpr auto GET_SELECTION = "\xD1\x07\x00\x00"sv;
constexpr auto SELECTED = "\x02\x00\x00\x00"sv;

std::string Text(const RecordedMessage& message) {
    return std::to_string(message.line) + " us" + std::to_string(message.time) + ' ' +
           std::string(NameOf(message.side)) + ' ' + message.from + ' ' +
           std::string(NameOf(message.kind)) +
           (message.call > 0 ? ' ' + std::to_string(message.call) : "") + ' ' + Describe(message);
}

std::vector<std::string> Texts(const Result<Recording>& recording) {
    EXPECT_TRUE(recording) << recording.error();
    std::vector<std::string> texts;
    for (const RecordedMessage& message : recording->messages) {
        texts.push_back(Text(message));
    }
    return texts;
}

// An incomplete handshake, a call with its reply and the application's end, among unrelated
// messages.
std::string Session(Form form) {
    CaptureGenerator capture(form);
    const uint64_t start = 1'700'000'000'000'000;
    capture.Add(busmessage::OwnerChanged("org.other", "", ":1.7"), start);
    capture.Add(busmessage::OwnerChanged(SERVICE_SYN, "", ":1.2"), start + 1);
    capture.Add(busmessage::OwnerChanged(SERVICE_SYN, ":1.2", ""), start + 2);
    capture.Add(busmessage::Call(":1.1", ":1.2", 9, GET_SELECTION), start + 3);
    capture.Add(busmessage::Reply(":1.2", ":1.1", 8, ""), start + 4);
    capture.Add(busmessage::Signal(":1.2", ":1.1", SELECTED), start + 5);
    capture.Add(busmessage::Reply(":1.2", ":1.1", 9, ""), start + 6);
    capture.Add(busmessage::OwnerChanged(":1.7", ":1.7", ""), start + 7);
    capture.Add(busmessage::OwnerChanged(":1.2", ":1.2", ""), start + 1'000'008);
    return capture.bytes();
}

const std::vector<std::string> TRAFFIC{
    std::string("2 us1 application :1.2 acquired ") + SERVICE_SYN,
    std::string("3 us2 application :1.2 released ") + SERVICE_SYN,
    "4 us3 middleware :1.1 call 1 GetSelection",
    "6 us5 application :1.2 signal event 2 ItemSelected",
    "7 us6 application :1.2 reply 1 nothing",
    "9 us1000008 application :1.2 left the bus",
};

TEST(CaptureFile, GivesTheTrafficOfTheProtocolInEveryForm) {
    for (const Form form : {Form::Pcap, Form::PcapNanoseconds, Form::PcapBigEndian, Form::PcapNg}) {
        EXPECT_TRUE(IsCapture(Session(form)));
        const auto recording = ReadCapture(Session(form));
        EXPECT_EQ(Texts(recording), TRAFFIC) << static_cast<int>(form);
        EXPECT_EQ(recording->remark, "");
    }
}

TEST(CaptureFile, IsRecognisedByItsFirstBytes) {
    EXPECT_FALSE(IsCapture(""));
    EXPECT_FALSE(IsCapture("\x0a\x0d\x0d"));
    EXPECT_FALSE(IsCapture("{\"javamw-recording\":1}"));
}

TEST(CaptureFile, OfOtherTrafficIsRefused) {
    EXPECT_EQ(ReadCapture(CaptureGenerator(Form::PcapNg, 1).bytes()).error(),
              "a capture, but not of D-Bus traffic");
    EXPECT_EQ(ReadCapture("").error(), "empty");
    EXPECT_FALSE(ReadCapture("\x0a\x0d\x0d\x0a").error().empty());
}

TEST(CaptureFile, CountsTruncatedPacketsAndPacketsWithoutAMessage) {
    CaptureGenerator capture(Form::PcapNg);
    const std::string call = busmessage::Call(":1.1", ":1.2", 1, GET_SELECTION);
    capture.Add(call.substr(0, 40), 1, call.size());
    capture.Add("no message", 2);
    capture.Add("", 3);
    capture.Add(call, 4);
    const auto recording = ReadCapture(capture.bytes());
    EXPECT_THAT(Texts(recording), ElementsAre("4 us0 middleware :1.1 call 1 GetSelection"));
    EXPECT_EQ(recording->remark,
              "skipped 1 packets: truncated; capture with a larger busctl --size; "
              "skipped 2 packets: not D-Bus messages");
}

TEST(CaptureFile, KeepsMessagesBeforeADamagedEnd) {
    const std::string whole = Session(Form::PcapNg);
    const auto recording = ReadCapture(std::string_view(whole).substr(0, whole.size() - 3));
    EXPECT_EQ(Texts(recording).size(), TRAFFIC.size() - 1);
    EXPECT_THAT(recording->remark, HasSubstr("the end is damaged: "));
}

TEST(CaptureFile, ClampsTimesOutOfRange) {
    CaptureGenerator capture(Form::PcapNg);
    capture.Add(busmessage::OwnerChanged(SERVICE_SYN, "", ":1.2"), 5);
    capture.Add(busmessage::OwnerChanged(SERVICE_SYN, ":1.2", ""), 9'223'372'036'854'775'812U);
    const auto recording = ReadCapture(capture.bytes());
    ASSERT_TRUE(recording) << recording.error();
    ASSERT_EQ(recording->messages.size(), 2U);
    EXPECT_EQ(recording->messages.back().time, 253'402'300'799'775'807);
}

TEST(CaptureFile, MayEndAnywhere) {
    for (const Form form : {Form::Pcap, Form::PcapNg}) {
        const std::string whole = Session(form);
        for (size_t size = 0; size < whole.size(); ++size) {
            const auto recording = ReadCapture(std::string_view(whole).substr(0, size));
            EXPECT_TRUE(!recording || recording->messages.size() < TRAFFIC.size()) << size;
        }
    }
}

/// Passes the messages of a bus to a reader one by one and describes each result as text.
class Traffic : public testing::Test {
protected:
    std::string Read(const std::string& bytes) {
        std::string copy = bytes;
        const GObjectPtr<GDBusMessage> message(
            g_dbus_message_new_from_blob(reinterpret_cast<unsigned char*>(copy.data()), copy.size(),
                                         G_DBUS_CAPABILITY_FLAGS_NONE, nullptr));
        EXPECT_TRUE(message);
        const auto taken = m_reader.Read(message.get(), 0);
        return taken ? std::string(NameOf(taken->side)) + ' ' + taken->from + ' ' +
                           std::string(NameOf(taken->kind)) + ' ' + std::to_string(taken->call) +
                           ' ' + Describe(*taken)
                     : "";
    }

    TrafficReader m_reader;
};

TEST_F(Traffic, HasSidesTakenFromTheHandshake) {
    Read(busmessage::OwnerChanged(SERVICE_SYN, ":1.5", ""));
    Read(busmessage::OwnerChanged("org.vantu.JavaMW.Applist_CLIENT_ACK", ":1.6", ""));
    EXPECT_EQ(Read(busmessage::Signal(":1.6", ":1.5", SELECTED)),
              "middleware :1.6 signal 0 event 2 ItemSelected");
    EXPECT_EQ(Read(busmessage::Call(":1.5", ":1.6", 3, GET_SELECTION)),
              "application :1.5 call 1 GetSelection");
    EXPECT_EQ(Read(busmessage::Reply(":1.6", ":1.5", 3, "")), "middleware :1.6 reply 1 nothing");
}

TEST_F(Traffic, TakesTheCallerForAMiddlewareWithoutAHandshake) {
    EXPECT_EQ(Read(busmessage::Call(":1.6", ":1.5", 3, GET_SELECTION)),
              "middleware :1.6 call 1 GetSelection");
    EXPECT_EQ(Read(busmessage::Signal(":1.5", ":1.6", SELECTED)),
              "application :1.5 signal 0 event 2 ItemSelected");
}

TEST_F(Traffic, NumbersCallsAndFindsTheirAnswers) {
    Read(busmessage::Call(":1.6", ":1.5", 3, GET_SELECTION));
    Read(busmessage::Call(":1.7", ":1.5", 3, GET_SELECTION));
    EXPECT_EQ(Read(busmessage::Reply(":1.5", ":1.7", 3, "")), "application :1.5 reply 2 nothing");
    EXPECT_EQ(Read(busmessage::Reply(":1.5", ":1.7", 3, "")), "");
    EXPECT_EQ(Read(busmessage::Reply(":1.5", ":1.6", 3, "")), "application :1.5 reply 1 nothing");
}

TEST_F(Traffic, AttributesAnAnswerOfTheBusToTheCalledSide) {
    Read(busmessage::Call(":1.6", ":1.5", 3, GET_SELECTION));
    EXPECT_EQ(Read(busmessage::Error("org.freedesktop.DBus", ":1.6", 3, "a.b.NoReply", "gone")),
              "application :1.5 error 1 a.b.NoReply: gone");
}

TEST_F(Traffic, ForgetsConnectionsThatLeft) {
    Read(busmessage::Call(":1.6", ":1.5", 3, GET_SELECTION));
    EXPECT_EQ(Read(busmessage::OwnerChanged(":1.6", ":1.6", "")), "middleware :1.6 left 0 the bus");
    EXPECT_EQ(Read(busmessage::OwnerChanged(":1.6", ":1.6", "")), "");
    EXPECT_EQ(Read(busmessage::Reply(":1.5", ":1.6", 3, "")), "");
}

}  // namespace
}  // namespace applist::sim
