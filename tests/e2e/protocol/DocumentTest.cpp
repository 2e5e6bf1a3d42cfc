// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The built application behaves as docs/protocol.md describes, byte for byte.
#include <memory>
#include <string>

#include <gio/gio.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/GlibWait.h"
#include "support/ScriptedPeer.h"
#include "support/SourceFile.h"
#include "support/Television.h"
#include "support/WireDocument.h"

namespace applist::test {
namespace {

using testing::AssertionFailure;
using testing::AssertionResult;
using testing::AssertionSuccess;

// The names as in the document, not taken from the product, which is under test.
const std::string BASE = "org.vantu.JavaMW.Applist";
const std::string PATH = "/org/vantu/javamw/CommunicationChannel/Applist";
const std::string INTERFACE = "org.vantu.javamw.DbusCommunication";

std::string OptionOr(const WireStep& step, const char* name, const std::string& usual) {
    const auto found = step.options.find(name);
    return found != step.options.end() ? found->second : usual;
}

/// Returns a value that the caller must unref, or null if arguments is not a GVariant.
GVariant* ArgumentsOf(const WireStep& step) {
    const auto text = step.options.find("arguments");
    if (text != step.options.end()) {
        return g_variant_parse(nullptr, text->second.c_str(), nullptr, nullptr, nullptr);
    }
    return g_variant_ref_sink(Payload(step.bytes));
}

std::string EndingOf(const std::string& name) {
    return name.starts_with(BASE) ? name.substr(BASE.size()) : "no ending: " + name;
}

AssertionResult Succeeds(bool condition, const char* otherwise) {
    return condition ? AssertionSuccess() : AssertionFailure() << otherwise;
}

/// Plays examples in order as one session on a set with the built application. It acts as the
/// middleware, and compares all messages that it receives, in order.
class WireSession {
public:
    /// Plays one example. Fails at the first line that does not match and on any message that the
    /// example does not contain.
    testing::AssertionResult Play(const WireExample& example);

private:
    testing::AssertionResult PlayStep(const WireStep& step);
    testing::AssertionResult PlayApplication(const std::string& what);
    testing::AssertionResult PlayMiddleware(const std::string& what);
    testing::AssertionResult PressKey(const std::string& key);
    testing::AssertionResult Send(const WireStep& step);
    testing::AssertionResult Hear(const PeerEvent& expected);
    /// Expects that every message received was in an example and that no other is on its way.
    testing::AssertionResult HearsNoMore();

    Television m_set;
    std::unique_ptr<ChildProcess> m_application;
    std::unique_ptr<ScriptedPeer> m_middleware;
    /// The unique name of the application that announced itself last.
    std::string m_applicationName;
    size_t m_heard = 0;  ///< Of the middleware's events.
};

AssertionResult WireSession::Play(const WireExample& example) {
    int line = example.line;
    AssertionResult result = AssertionSuccess();
    for (const WireStep& step : example.steps) {
        line = step.line;
        result = PlayStep(step);
        if (!result) {
            break;
        }
    }
    if (result) {
        result = HearsNoMore();
    }
    return result ? result
                  : AssertionFailure() << "docs/protocol.md:" << line << ": " << result.message();
}

AssertionResult WireSession::PlayStep(const WireStep& step) {
    if (step.kind == WireStep::APPLICATION) {
        return PlayApplication(step.text);
    }
    if (step.kind == WireStep::MIDDLEWARE) {
        return PlayMiddleware(step.text);
    }
    if (step.kind == WireStep::KEY) {
        return PressKey(step.text);
    }
    if (!m_middleware) {
        return AssertionFailure() << "no middleware runs";
    }
    const std::vector<char> bytes = BytesFrom(step.bytes);
    switch (step.kind) {
        case WireStep::ANNOUNCE:
            m_middleware->Announce(EndingOf(step.text));
            return AssertionSuccess();
        case WireStep::HEAR_ANNOUNCE:
            return Hear({PeerEvent::ANNOUNCEMENT, EndingOf(step.text), m_applicationName, {}});
        case WireStep::HEAR_EVENT:
            return Hear({PeerEvent::SIGNAL, "SendSignal " + PATH, m_applicationName, bytes});
        case WireStep::HEAR_REPLY:
            return Hear({PeerEvent::REPLY, "", "", bytes});
        case WireStep::HEAR_ERROR:
            return Hear({PeerEvent::FAILURE, step.text, "", {}});
        default:
            return Send(step);
    }
}

AssertionResult WireSession::PlayApplication(const std::string& what) {
    if (what == "starts") {
        m_application = m_set.StartApplication();
        m_applicationName.clear();
        // The window opens after the announcement, so the application is ready for the next line.
        return Succeeds(m_set.WaitForWindow(), "the application shows no window");
    }
    const auto status = m_application ? m_application->WaitForExit() : std::nullopt;
    m_application.reset();
    return Succeeds(status == 0, "the application does not end well");
}

AssertionResult WireSession::PlayMiddleware(const std::string& what) {
    m_middleware.reset();
    m_heard = 0;
    if (what == "starts") {
        m_middleware = std::make_unique<ScriptedPeer>(m_set.systemBus().Address());
    }
    return AssertionSuccess();
}

AssertionResult WireSession::PressKey(const std::string& key) {
    if (key == "Back") {
        m_set.screen().TypeKey("Escape");
        return AssertionSuccess();
    }
    if (!m_set.WaitForFocusedRow()) {
        return AssertionFailure() << "no row has the focus";
    }
    m_set.screen().TypeKey(key == "OK" ? "Return" : key);
    return AssertionSuccess();
}

AssertionResult WireSession::Send(const WireStep& step) {
    g_autoptr(GVariant) arguments = ArgumentsOf(step);
    if (arguments == nullptr) {
        return AssertionFailure() << "these are no arguments";
    }
    const std::string path = OptionOr(step, "path", PATH);
    if (step.kind == WireStep::SIGNAL) {
        m_middleware->Emit(m_applicationName, path, OptionOr(step, "member", "SendSignal"),
                           arguments);
        return AssertionSuccess();
    }
    m_middleware->Call(m_applicationName, path, OptionOr(step, "interface", INTERFACE),
                       OptionOr(step, "member", "Send"), arguments);
    return AssertionSuccess();
}

AssertionResult WireSession::Hear(const PeerEvent& expected) {
    const auto& events = m_middleware->Events();
    if (!RunUntil([&] { return events.size() > m_heard; })) {
        return AssertionFailure() << "nothing is heard";
    }
    const PeerEvent heard = events[m_heard++];
    PeerEvent wanted = expected;
    // A first announcement means a new application.
    if (expected.kind == PeerEvent::ANNOUNCEMENT && m_applicationName.empty()) {
        m_applicationName = heard.sender;
        wanted.sender = heard.sender;
    }
    return heard == wanted ? AssertionSuccess()
                           : AssertionFailure() << "heard " << heard << " instead of " << wanted;
}

AssertionResult WireSession::HearsNoMore() {
    if (!m_middleware || !m_application || m_applicationName.empty()) {
        return AssertionSuccess();
    }
    // A frame without an id has no effect. Its reply arrives after all earlier messages.
    WireStep fence;
    Send(fence);
    return Hear({PeerEvent::REPLY, "", "", {}});
}

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
