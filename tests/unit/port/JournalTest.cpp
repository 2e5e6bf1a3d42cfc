// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Lines written to a journal: the test creates the journal's sockets at their usual paths in a /run
// that only this process sees.
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <sched.h>
#include <string>
#include <unistd.h>

#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/un.h>

#include "platform_log.h"

namespace applist::test {
namespace {

constexpr const char* FOLDER = "/run/systemd/journal";

bool HaveRunToOurselves() {
    const bool apart = unshare(CLONE_NEWNS) == 0 || unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0;
    // The names are ignored, but valgrind rejects null.
    return apart && mount("none", "/", "none", MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("tmpfs", "/run", "tmpfs", 0, nullptr) == 0;
}

sockaddr_un AddressOf(const std::string& name) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    (FOLDER + ("/" + name)).copy(address.sun_path, sizeof address.sun_path - 1);
    return address;
}

template <typename Function>
bool At(const std::string& name, Function* function, int socket) {
    const sockaddr_un address = AddressOf(name);
    return function(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

/// A field in the journal's binary form: name, length, value.
std::string Field(const std::string& name, const std::string& value) {
    std::string length(sizeof(uint64_t), '\0');
    length[0] = static_cast<char>(value.size());
    return name + "\n" + length + value + "\n";
}

class AJournal : public testing::Test {
protected:
    void SetUp() override {
        if (!HaveRunToOurselves()) {
            GTEST_SKIP() << "no mount namespace here: " << std::strerror(errno);
        }
        std::filesystem::create_directories(FOLDER);
        m_records = socket(AF_UNIX, SOCK_DGRAM, 0);
        m_streams = socket(AF_UNIX, SOCK_STREAM, 0);
        ASSERT_TRUE(At("socket", bind, m_records));
        ASSERT_TRUE(At("stdout", bind, m_streams) && listen(m_streams, 1) == 0);
    }
    void TearDown() override {
        close(m_records);
        close(m_streams);
    }

    /// Connects standard error as the journal does for the programs of a service.
    static void ConnectStandardError() {
        const int stream = socket(AF_UNIX, SOCK_STREAM, 0);
        ASSERT_TRUE(At("stdout", connect, stream));
        dup2(stream, STDERR_FILENO);
        close(stream);
    }

    /// The bytes of the next record; empty if none is pending.
    std::string Record() const {
        std::string bytes(4096, '\0');
        const ssize_t size = recv(m_records, bytes.data(), bytes.size(), MSG_DONTWAIT);
        bytes.resize(size > 0 ? static_cast<size_t>(size) : 0);
        return bytes;
    }

    int m_records = -1;
    int m_streams = -1;
};

TEST_F(AJournal, GetsRecordsWithTheirPriorityAndTheirPlaceInTheCode) {
    ConnectStandardError();
    EXPECT_EQ(__dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_ERROR, "applist",
                           "Main.cpp: main(7) > [main:7] nothing works\n\n"),
              0);
    EXPECT_EQ(Record(), Field("MESSAGE", "Main.cpp: main(7) > [main:7] nothing works") +
                            Field("PRIORITY", "3") + Field("SYSLOG_IDENTIFIER", "applist") +
                            Field("CODE_FILE", "Main.cpp") + Field("CODE_LINE", "7") +
                            Field("CODE_FUNC", "main"));
    EXPECT_EQ(Record(), "");
}

TEST_F(AJournal, GetsNothingFromAProgramWhoseStandardErrorIsNotItsOwn) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(__dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_ERROR, "applist", "here"), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "applist error: here\n");
    EXPECT_EQ(Record(), "");
}

TEST_F(AJournal, ThatIsGoneLeavesTheLineOnStandardError) {
    ConnectStandardError();
    const int stream = accept(m_streams, nullptr, nullptr);
    std::filesystem::remove(std::string(FOLDER) + "/socket");
    EXPECT_EQ(__dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_ERROR, "applist", "here"), 0);
    std::string line(100, '\0');
    const ssize_t size = recv(stream, line.data(), line.size(), MSG_DONTWAIT);
    close(stream);
    ASSERT_GT(size, 0);
    EXPECT_EQ(line.substr(0, static_cast<size_t>(size)), "applist error: here\n");
}

}  // namespace
}  // namespace applist::test
