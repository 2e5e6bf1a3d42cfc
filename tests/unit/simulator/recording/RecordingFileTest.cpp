// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <fstream>
#include <sstream>

#include <gmock/gmock.h>

#include "recording/RecordingFile.h"
#include "support/CaptureGenerator.h"
#include "support/TemporaryDir.h"
#include "unit/simulator/recording/Messages.h"

namespace applist::sim {
namespace {

using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

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
    EXPECT_THAT(ContentOf(Path("new")), StartsWith("{\"javamw-recording\":1,\"started\":\"2"));
    file->Write(Replied(7));
    EXPECT_THAT(ContentOf(Path("new")), HasSubstr("\"call\":7"));
    EXPECT_EQ(file->count(), 1U);
    EXPECT_EQ(file->error(), "");
    const auto read = LoadRecording(Path("new"));
    ASSERT_TRUE(read) << read.error();
    EXPECT_THAT(read->messages, SizeIs(1));
}

TEST_F(RecordingFiles, AreNamedWhenTheyCannotBeCreated) {
    EXPECT_EQ(RecordingFile::Create(Path("none/file")).error(),
              Path("none/file") + ": No such file or directory");
    EXPECT_EQ(RecordingFile::Create("/dev/full").error(), "/dev/full: No space left on device");
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

}  // namespace
}  // namespace applist::sim
