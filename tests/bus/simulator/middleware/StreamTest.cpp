// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Broadcasts that arrive while they are served.
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "bus/simulator/Simulation.h"
#include "support/TsGenerator.h"

namespace applist::test {
namespace {

using testing::HasSubstr;

const TsApplication NEWS{11, 1, 2, 3, {{"ita", "Notizie"}}};
const TsApplication WEATHER{11, 2, 1, 3, {{"ita", "Meteo"}}};
const std::string NEWS_LINE = "0000000b.0001\tNotizie\n";
const std::string WEATHER_LINE = "0000000b.0002\tMeteo\n";

/// Sends a broadcast to javamw-sim in parts.
class Stream : public testing::Test {
protected:
    void TearDown() override { EndWriting(); }

    std::string MakeFifo() {
        EXPECT_EQ(mkfifo(m_set.Path("fifo").c_str(), 0600), 0);
        return m_set.Path("fifo");
    }

    /// Waits for a reader if file is a FIFO.
    void BeginWriting(const std::string& file) {
        m_file = open(file.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
        ASSERT_GE(m_file, 0);
    }
    void Write(const std::string& bytes) const {
        EXPECT_EQ(write(m_file, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }
    void EndWriting() {
        if (m_file >= 0) {
            close(std::exchange(m_file, -1));
        }
    }

    /// The next packets of the stream, with this version of the table.
    std::string Part(const std::vector<TsApplication>& applications, uint8_t version) {
        const size_t known = m_generator.stream().size();
        for (int i = 0; i < 2; ++i) {
            m_generator.Add(0, TsAssociation({{1, 0x0200}}));
            m_generator.Add(0x0200, TsMap(1, {0x0300}));
            m_generator.Add(0x0300, TsApplications(applications, 0x0010, version));
        }
        return From(known);
    }
    /// A packet with the time of the stream.
    std::string Clock(std::chrono::milliseconds time) {
        const size_t known = m_generator.stream().size();
        m_generator.AddClock(0x0100, static_cast<uint64_t>(time.count()) * 90);
        return From(known);
    }

    /// A packet without tables.
    static std::string Video() {
        std::string packet(188, '\xAB');
        return packet.replace(0, 4, {"\x47\x01\x00\x10", 4});
    }

    std::string Listed() {
        EXPECT_EQ(m_set.Run({"call", "GetAllItems"}), SUCCESS);
        return m_set.output();
    }

    /// What a new application shows once serve has filled its list.
    std::string ListedWhenFilled(ChildProcess& serve) {
        const auto list = m_set.StartList();
        EXPECT_TRUE(serve.WaitForText("filled"));
        return Listed();
    }

    Simulation m_set;

private:
    std::string From(size_t known) const {
        const TsBytes& stream = m_generator.stream();
        return {stream.begin() + static_cast<std::ptrdiff_t>(known), stream.end()};
    }

    TsGenerator m_generator;
    int m_file = -1;
};

TEST_F(Stream, FromAFifoFillsTheListAndChangesItWithEachVersion) {
    const std::string fifo = MakeFifo();
    const auto list = m_set.StartList();
    const auto serve = m_set.Start({"serve", "--broadcast", fifo});
    ASSERT_TRUE(serve->WaitForText("with 0 items\n"));
    BeginWriting(fifo);
    Write(Part({NEWS}, 0));
    ASSERT_TRUE(serve->WaitForText(": 1 added, 0 removed, 0 renamed\n"));
    EXPECT_EQ(Listed(), NEWS_LINE);
    // The writer is still there, so the end of the stream is not what applies the version.
    Write(Part({WEATHER}, 1));
    ASSERT_TRUE(serve->WaitForText(": 1 added, 1 removed, 0 renamed\n"));
    EXPECT_EQ(Listed(), WEATHER_LINE);
    EndWriting();
    EXPECT_TRUE(serve->WaitForText(fifo + ": ended after 2256 bytes; the list stays\n"));
    EXPECT_EQ(Listed(), WEATHER_LINE);
    EXPECT_EQ(Simulation::Interrupt(*serve), SUCCESS);
}

TEST_F(Stream, FromStandardInputFillsTheListOfALaterApplication) {
    const std::string file = m_set.File("broadcast.ts", Part({WEATHER, NEWS}, 0));
    ChildProcess serve(
        {"sh", "-c",
         "cat " + file + " | exec " + BuiltProgram("javamw-sim") + " serve --broadcast -"},
        m_set.bus().Environment());
    ASSERT_TRUE(serve.WaitForText("javamw-sim: -: ended after 1128 bytes; the list stays\n"));
    const auto list = m_set.StartList();
    ASSERT_TRUE(serve.WaitForText("with 2 items\n"));
    EXPECT_EQ(Listed(), WEATHER_LINE + NEWS_LINE);
}

TEST_F(Stream, FromAFifoContinuesWithTheNextWriterWhenFollowed) {
    const std::string fifo = MakeFifo();
    const auto list = m_set.StartList();
    const auto serve = m_set.Start({"serve", "--follow", "--broadcast", fifo});
    ASSERT_TRUE(serve->WaitForText("with 0 items\n"));
    BeginWriting(fifo);
    Write(Part({NEWS}, 0));
    EndWriting();
    ASSERT_TRUE(serve->WaitForText(": 1 added, 0 removed, 0 renamed\n"));
    BeginWriting(fifo);
    Write(Part({WEATHER}, 0));
    ASSERT_TRUE(serve->WaitForText(": 1 added, 1 removed, 0 renamed\n"));
    EXPECT_EQ(Listed(), WEATHER_LINE);
    EXPECT_EQ(serve->Errors(), "");
}

TEST_F(Stream, FromAFileChangesTheListAtTheRecordedSpeed) {
    using std::chrono::milliseconds;
    std::string recording = Clock(milliseconds(0));
    recording += Part({NEWS}, 0);
    recording += Clock(milliseconds(30));
    recording += Part({WEATHER}, 1);
    recording += Clock(milliseconds(60));
    const auto list = m_set.StartList();
    const auto serve = m_set.Start({"serve", "--broadcast", m_set.File("broadcast.ts", recording)});
    ASSERT_TRUE(serve->WaitForText(NEWS_LINE));
    ASSERT_TRUE(serve->WaitForText(": 1 added, 1 removed, 0 renamed\n"));
    EXPECT_EQ(Listed(), WEATHER_LINE);
    EXPECT_EQ(Simulation::Interrupt(*serve), SUCCESS);
    EXPECT_EQ(serve->Errors(), "");
}

TEST_F(Stream, FromAGrowingFileChangesTheListWhenFollowed) {
    const std::string file = m_set.File("growing.ts", "");
    BeginWriting(file);
    Write(Part({NEWS}, 0));
    const auto list = m_set.StartList();
    const auto serve = m_set.Start({"serve", "--follow", "--broadcast", file});
    ASSERT_TRUE(serve->WaitForText("0000000b.0001\tNotizie\n"));
    Write(Part({NEWS, WEATHER}, 1));
    ASSERT_TRUE(serve->WaitForText("1 added, 0 removed, 0 renamed\n"));
    EXPECT_EQ(Listed(), NEWS_LINE + WEATHER_LINE);
    // A recorder that starts anew empties the file.
    std::filesystem::resize_file(file, 0);
    ASSERT_TRUE(serve->WaitForText(file + ": truncated; reading it again from the start\n"));
    Write(Part({WEATHER}, 0));
    ASSERT_TRUE(serve->WaitForText("0 added, 1 removed, 0 renamed\n"));
    EXPECT_EQ(Listed(), WEATHER_LINE);
}

TEST_F(Stream, NamesTheDamageAtOnceAndLosesNothingAfterIt) {
    const std::string fifo = MakeFifo();
    const auto list = m_set.StartList();
    const auto serve = m_set.Start({"serve", "--broadcast", fifo});
    BeginWriting(fifo);
    std::string first = Part({NEWS}, 0);
    first.erase(200, 10);
    Write(first);
    ASSERT_TRUE(serve->WaitForText("javamw-sim: " + fifo + ": lost sync at byte 376\n"));
    ASSERT_TRUE(serve->WaitForText("0000000b.0001\tNotizie\n"));
    std::string second = Part({NEWS, WEATHER}, 1);
    second[2 * 188 + 30] ^= 1;
    Write(second);
    ASSERT_TRUE(serve->WaitForText(": wrong CRC at byte 1494 on PID 0x0300\n"));
    ASSERT_TRUE(serve->WaitForText("1 added, 0 removed, 0 renamed\n"));
    EXPECT_EQ(Simulation::Interrupt(*serve), SUCCESS);
    EXPECT_THAT(serve->Errors(), HasSubstr(": skipped damaged parts: "));
}

// The minute is 300 MB, here as fast as they are read.
TEST_F(Stream, OfAMinuteAt40MbitPerSecondLosesNothing) {
    const std::string fifo = MakeFifo();
    const auto list = m_set.StartList();
    const auto serve = m_set.Start({"serve", "--broadcast", fifo});
    BeginWriting(fifo);
    const std::string video = Video();
    // Eight parts have 16 packets of each table, so that their counters continue when repeated.
    std::string second;
    for (int i = 0; i < 8; ++i) {
        second += Part({NEWS}, 0);
        for (int packet = 0; packet < 3300; ++packet) {
            second += video;
        }
    }
    for (int i = 0; i < 60; ++i) {
        Write(second);
    }
    Write(Part({NEWS, WEATHER}, 1));
    ASSERT_TRUE(serve->WaitForText("1 added, 0 removed, 0 renamed\nevent"));
    EXPECT_EQ(serve->Errors(), "");
}

TEST_F(Stream, IsListedAsFarAsItWasReadWhenTheUserInterrupts) {
    const std::string fifo = MakeFifo();
    const auto listing = m_set.Start({"applications", "--csv", fifo});
    BeginWriting(fifo);
    // The pipe has room for 64 KiB, so the first bytes have been read when this returns.
    std::string stream = Part({NEWS}, 0);
    for (int packet = 0; packet < 500; ++packet) {
        stream += Video();
    }
    Write(stream);
    EXPECT_EQ(Simulation::Interrupt(*listing), SUCCESS);
    EXPECT_THAT(listing->Output(), HasSubstr(",Notizie,"));
}

// Recorded streams are not part of the project. Skipped unless a folder of them exists.
TEST_F(Stream, OfARecordingGivesTheListThatItsFileGives) {
    const char* source = std::getenv("APPLIST_SOURCE");
    const auto folder =
        std::filesystem::path(source != nullptr ? source : ".") / "../shared/captures";
    if (!std::filesystem::is_directory(folder)) {
        GTEST_SKIP() << "no recordings in " << folder;
    }
    const std::string fifo = MakeFifo();
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".ts") {
            const std::string file = entry.path().string();
            const auto direct = m_set.Start({"serve", "--broadcast", file});
            const std::string listed = ListedWhenFilled(*direct);
            EXPECT_THAT(listed, HasSubstr("\n")) << file;
            EXPECT_EQ(Simulation::Interrupt(*direct), SUCCESS);

            const auto serve = m_set.Start({"serve", "--broadcast", fifo});
            BeginWriting(fifo);
            Write(Simulation::ContentOf(file));
            EndWriting();
            ASSERT_TRUE(serve->WaitForText("the list stays\n"));
            EXPECT_EQ(ListedWhenFilled(*serve), listed) << file;
            EXPECT_EQ(Simulation::Interrupt(*serve), SUCCESS);
        }
    }
}

TEST_F(Stream, EndsTheProgramIfItIsNotABroadcast) {
    const std::string fifo = MakeFifo();
    const std::string error = "javamw-sim: " + fifo + ": ";
    for (const auto& [content, problem] :
         {std::pair<std::string, std::string>{"hello", "neither a transport stream with services"},
          {Part({}, 0), "offers no applications\n"}}) {
        const auto serve = m_set.Start({"serve", "--broadcast", fifo});
        BeginWriting(fifo);
        Write(content);
        EndWriting();
        EXPECT_EQ(serve->WaitForExit(), WRONG_USAGE);
        EXPECT_THAT(serve->Errors(), HasSubstr(error + problem));
    }
}

}  // namespace
}  // namespace applist::test
