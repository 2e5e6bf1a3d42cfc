// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The built application behaves as docs/protocol.md describes, byte for byte.
#include <gmock/gmock.h>

#include "e2e/protocol/WireSession.h"
#include "support/SourceFile.h"

namespace applist::test {
namespace {

TEST(TheApplication, DoesWhatTheProtocolsDocumentSays) {
    const WireDocument document = ParseWireDocument(SourceFile("docs/protocol.md"));
    EXPECT_THAT(document.errors, testing::IsEmpty());
    WireSession session;
    for (const WireExample& example : document.examples) {
        ASSERT_TRUE(session.Play(example)) << "under \"" << example.heading << '"';
    }
}

/// Shows that the session detects wrong examples, so that the test above can fail.
class ASession : public testing::Test {
protected:
    testing::AssertionResult Play(const std::string& lines) {
        const WireDocument document = ParseWireDocument("```wire\n" + lines + "```\n");
        EXPECT_THAT(document.errors, testing::IsEmpty());
        return m_session.Play(document.examples.at(0));
    }
    void Connect() {
        ASSERT_TRUE(
            Play("-- middleware starts\n"
                 "-- application starts\n"
                 "<- announce org.vantu.JavaMW.Applist_SERVICE_SYN\n"
                 "-> announce org.vantu.JavaMW.Applist_CLIENT_SYN_ACK\n"
                 "<- announce org.vantu.JavaMW.Applist_SERVICE_ACK\n"
                 "<- event 04 00 00 00\n"));
    }

    WireSession m_session;
};

TEST_F(ASession, FailsOnAnotherReply) {
    ASSERT_NO_FATAL_FAILURE(Connect());
    const auto result = Play("-> call D1 07 00 00\n<- reply 00 00 00 00 00 00 00 01\n");
    EXPECT_FALSE(result);
    EXPECT_THAT(result.message(), testing::StartsWith("docs/protocol.md:3: heard REPLY"));
}

TEST_F(ASession, FailsOnAnEventMissingFromTheExample) {
    ASSERT_NO_FATAL_FAILURE(Connect());
    EXPECT_FALSE(
        Play("-> call 00 00 00 00 01 00 00 00 61 D5 07 00 00\n"
             "<- event 01 00 00 00\n"
             "<- reply\n"));
}

TEST_F(ASession, FailsOnAnEventAfterTheLastLine) {
    ASSERT_NO_FATAL_FAILURE(Connect());
    EXPECT_FALSE(Play("-> announce org.vantu.JavaMW.Applist_CLIENT_ACK\n"));
}

}  // namespace
}  // namespace applist::test
