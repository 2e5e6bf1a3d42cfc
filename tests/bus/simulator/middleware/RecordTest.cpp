// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <csignal>

#include <gmock/gmock.h>

#include "bus/simulator/Simulation.h"
#include "recording/RecordingFile.h"

namespace applist::test {
namespace {

using sim::MessageKind;
using sim::RecordedMessage;
using sim::Side;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::StartsWith;

std::string Text(const RecordedMessage& message) {
    return std::string(NameOf(message.side)) + ' ' + std::string(NameOf(message.kind)) + ' ' +
           Describe(message);
}

/// Returns the messages of a recording as text, without the handshake and LocalCreated.
std::vector<std::string> CallsOf(const std::string& file) {
    const auto recording = sim::LoadRecording(file);
    EXPECT_TRUE(recording) << recording.error();
    std::vector<std::string> texts;
    for (const RecordedMessage& message : recording->messages) {
        const bool handshake = message.kind == MessageKind::Acquired ||
                               message.kind == MessageKind::Released ||
                               message.kind == MessageKind::Left;
        if (!handshake && Text(message) != "application signal event 4 LocalCreated") {
            texts.push_back(Text(message));
        }
    }
    return texts;
}

size_t SizeOf(const std::string& file) {
    const auto recording = sim::LoadRecording(file);
    return recording ? recording->messages.size() : 0;
}

class Record : public testing::Test {
protected:
    /// Records to file, with a separate simulator, the calls and events of one added item.
    void RecordAnAddedItem(const std::string& file) {
        const auto recorder = m_set.Start({"record", file});
        ASSERT_TRUE(recorder->WaitForText("recording " + file));
        ChildProcess reader({"tail", "-n", "+1", "-f", file});
        const auto list = m_set.StartList();
        EXPECT_EQ(m_set.Run({"call", "AddItems", "w1=Weather"}), SUCCESS) << m_set.errors();
        list->Signal(SIGTERM);
        list->WaitForExit();
        EXPECT_TRUE(reader.WaitForText("\"kind\":\"left\",\"side\":\"application\""));
        EXPECT_EQ(Simulation::Interrupt(*recorder), SUCCESS) << recorder->Errors();
        EXPECT_THAT(recorder->Output(), HasSubstr("messages\n"));
    }

    Simulation m_set;
};

const std::vector<std::string> ONE_CALL{
    "middleware call AddItems w1=Weather",
    "application signal event 1 ItemChanged",
    "application signal event 2 ItemSelected",
    "application reply nothing",
};

TEST_F(Record, WritesTheMessagesOfOtherPrograms) {
    const std::string file = m_set.Path("session.jsonl");
    RecordAnAddedItem(file);
    EXPECT_EQ(CallsOf(file), ONE_CALL);
    std::vector<std::string> texts;
    const auto recording = sim::LoadRecording(file);
    ASSERT_TRUE(recording) << recording.error();
    for (const RecordedMessage& message : recording->messages) {
        texts.push_back(Text(message));
    }
    EXPECT_THAT(texts,
                IsSupersetOf({"application acquired org.vantu.JavaMW.Applist_SERVICE_SYN",
                              "application released org.vantu.JavaMW.Applist_SERVICE_SYN",
                              "middleware released org.vantu.JavaMW.Applist_CLIENT_SYN",
                              "application released org.vantu.JavaMW.Applist_SERVICE_SYN_ACK",
                              "middleware released org.vantu.JavaMW.Applist_CLIENT_ACK",
                              "application signal event 4 LocalCreated", "middleware left the bus",
                              "application left the bus"}));
}

TEST_F(Record, WritesTheMessagesOfTheSimulatorItself) {
    const auto list = m_set.StartList();
    const std::string file = m_set.Path("session.jsonl");
    EXPECT_EQ(m_set.Run({"call", "--record", file, "AddItems", "w1=Weather"}), SUCCESS);
    EXPECT_EQ(CallsOf(file), ONE_CALL);
    EXPECT_THAT(Simulation::ContentOf(file), HasSubstr("Applist_CLIENT_SYN\""));
    EXPECT_THAT(Simulation::ContentOf(file), HasSubstr("Applist_SERVICE_SYN_ACK\""));
}

TEST_F(Record, WritesToStandardOutputAndNothingElseThere) {
    const auto list = m_set.StartList();
    const auto recorder = m_set.Start({"record", "-"});
    ASSERT_TRUE(recorder->WaitForText("{\"javamw-recording\":1"));
    ASSERT_EQ(m_set.Run({"call", "GetSelection"}), SUCCESS);
    ASSERT_TRUE(recorder->WaitForText("\"kind\":\"reply\"")) << recorder->Output();
    EXPECT_EQ(Simulation::Interrupt(*recorder), SUCCESS);
    EXPECT_EQ(recorder->Errors(), "");
    EXPECT_THAT(recorder->Output(), StartsWith("{"));
    const std::string file = m_set.File("copy.jsonl", recorder->Output());
    EXPECT_TRUE(sim::LoadRecording(file)) << sim::LoadRecording(file).error();
}

TEST_F(Record, StopsWhenTheBusIsGone) {
    const auto recorder = m_set.Start({"record", m_set.Path("session.jsonl")});
    ASSERT_TRUE(recorder->WaitForText("recording "));
    m_set.bus().Stop();
    EXPECT_EQ(recorder->WaitForExit(), NO_BUS);
    EXPECT_EQ(recorder->Errors(), "javamw-sim: the bus closed the connection\n");
}

TEST_F(Record, ReportsAFileThatCannotBeWritten) {
    EXPECT_EQ(m_set.Run({"record", "/dev/full"}), WRONG_USAGE);
    EXPECT_EQ(m_set.errors(), "javamw-sim: /dev/full: No space left on device\n");
    EXPECT_EQ(m_set.Run({"call", "--record=/nonexistent/file", "GetSelection"}), WRONG_USAGE);
    EXPECT_EQ(m_set.errors(), "javamw-sim: /nonexistent/file: No such file or directory\n");
}

TEST_F(Record, HasTheMessagesThatBusctlCaptures) {
    const std::string capture = m_set.Path("session.pcapng");
    const std::string recording = m_set.Path("session.jsonl");
    ChildProcess busctl(
        {"sh", "-c",
         "exec busctl --address='" + m_set.bus().Address() + "' capture >'" + capture + "'"});
    ASSERT_TRUE(busctl.WaitForText("Monitoring"));
    RecordAnAddedItem(recording);
    // busctl may be slower than the recorder.
    ChildProcess reader({"tail", "-c", "+1", "-f", capture});
    EXPECT_TRUE(reader.WaitUntil([&] { return SizeOf(capture) >= SizeOf(recording); }));
    busctl.Signal(SIGTERM);
    busctl.WaitForExit();
    EXPECT_EQ(CallsOf(capture), ONE_CALL);
    EXPECT_EQ(m_set.Run({"compare", recording, capture}), SUCCESS) << m_set.output();
    EXPECT_THAT(m_set.output(), StartsWith("no difference in "));
}

TEST_F(Record, OfTheSameSessionTwiceDoesNotDiffer) {
    for (const char* name : {"first", "second"}) {
        const auto list = m_set.StartList();
        ASSERT_EQ(m_set.Run({"call", "--record", m_set.Path(name), "AddItems", "w1=Weather"}),
                  SUCCESS);
    }
    EXPECT_EQ(m_set.Run({"compare", m_set.Path("first"), m_set.Path("second")}), SUCCESS)
        << m_set.output();
    EXPECT_EQ(m_set.errors(), "");
}

TEST_F(Record, OfAnotherCallDiffers) {
    const auto list = m_set.StartList();
    const std::string first = m_set.Path("first");
    const std::string second = m_set.Path("second");
    ASSERT_EQ(m_set.Run({"call", "--record", first, "GetSelection"}), SUCCESS);
    ASSERT_EQ(m_set.Run({"call", "--record", second, "GetAllItems"}), SUCCESS);
    EXPECT_EQ(m_set.Run({"compare", first, second}), FAILED);
    EXPECT_THAT(m_set.output(), HasSubstr(": middleware call GetSelection -> reply (no item)\n+ "));
    EXPECT_THAT(m_set.output(), HasSubstr(": middleware call GetAllItems -> reply nothing\n"));
    EXPECT_THAT(m_set.output(), testing::EndsWith("2 differences\n"));
    EXPECT_EQ(m_set.Run({"compare", "--json", first, second}), FAILED);
    EXPECT_THAT(m_set.output(),
                StartsWith("{\"type\":\"difference\",\"number\":1,\"recording\":\"first\","
                           "\"file\":\"" +
                           first + "\",\"line\":"));
}

}  // namespace
}  // namespace applist::test
