// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <csignal>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "bus/simulator/Simulation.h"
#include "support/GlibWait.h"

namespace applist::test {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

/// The simulator's commands with the application's list on a real bus.
class Commands : public testing::Test {
protected:
    // Makes a call that must succeed; returns its output.
    std::string Call(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"call"});
        EXPECT_EQ(m_set.Run(arguments), SUCCESS);
        EXPECT_EQ(m_set.errors(), "");
        return m_set.output();
    }

    std::string ItemFile() const { return m_set.File("items", "w1\tWeather\nn1\tNews\n"); }

    static void Interrupt(ChildProcess& process) {
        EXPECT_EQ(Simulation::Interrupt(process), SUCCESS);
        EXPECT_EQ(process.Errors(), "");
    }

    Simulation m_set;
};

// The unique name differs from run to run.
const std::string FILLED =
    "connected :[0-9.]+\n"
    "event 4 LocalCreated selection none\n"
    "filled :[0-9.]+ with 2 items\n"
    "event 1 ItemChanged selection w1\tWeather\n"
    "event 2 ItemSelected selection w1\tWeather\n";
const std::string LAST_OF_FILLED = "event 2 ItemSelected selection w1\tWeather\n";

TEST_F(Commands, ServeFillsAnApplicationThatRunsAlready) {
    const auto list = m_set.StartList();
    const auto serve = m_set.Start({"serve", "--items", ItemFile()});
    EXPECT_TRUE(serve->WaitForText(LAST_OF_FILLED));
    EXPECT_THAT(serve->Output(), MatchesRegex(FILLED));
    EXPECT_EQ(Call({"GetAllItems"}), "w1\tWeather\nn1\tNews\n");
    Interrupt(*serve);
}

// Announcements are broadcast, so the application may send LocalCreated twice when two middlewares
// connect. "serve" must nevertheless fill the list only once.
TEST_F(Commands, SeveralAtOnceAreEachConnected) {
    const auto watch = m_set.Start({"watch"});
    const auto serve = m_set.Start({"serve", "--items", ItemFile()});
    const auto list = m_set.StartList();
    EXPECT_TRUE(serve->WaitForText(LAST_OF_FILLED));
    EXPECT_TRUE(watch->WaitForText("event 4 LocalCreated"));
    EXPECT_THAT(serve->Output(), StartsWith("connected "));
    EXPECT_EQ(serve->Output().find("filled"), serve->Output().rfind("filled"));
    Interrupt(*serve);
    Interrupt(*watch);
}

TEST_F(Commands, ServeTakesOneApplicationAfterTheOther) {
    const auto serve = m_set.Start({"serve", "--items", ItemFile()});
    const std::string lost = "disconnected :[0-9.]+\n";
    std::string expected;
    for (int i = 1; i <= 3; ++i) {
        const auto list = m_set.StartList();
        EXPECT_TRUE(serve->WaitUntil([&] { return serve->Output().ends_with(LAST_OF_FILLED); }));
        list->Signal(i == 2 ? SIGKILL : SIGTERM);
        list->WaitForExit();
        expected += FILLED + lost;
        EXPECT_TRUE(serve->WaitUntil(
            [&] { return testing::Matches(MatchesRegex(expected))(serve->Output()); }));
    }
    EXPECT_THAT(serve->Output(), MatchesRegex(expected));
    Interrupt(*serve);
}

TEST_F(Commands, ServeReplacesWhatAnotherLeftInTheList) {
    const auto list = m_set.StartList();
    EXPECT_EQ(Call({"AddItems", "old=Old", "w1=Former weather"}), "");
    const auto serve = m_set.Start({"serve", "--items", ItemFile()});
    EXPECT_TRUE(serve->WaitForText("filled"));
    EXPECT_EQ(Call({"GetAllItems"}), "w1\tWeather\nn1\tNews\n");
    Interrupt(*serve);
}

TEST_F(Commands, ServeOffersASampleWithoutAnyFileUntilATerminationSignal) {
    const auto list = m_set.StartList();
    const auto serve = m_set.Start({"serve"});
    EXPECT_TRUE(serve->WaitForText("filled"));
    EXPECT_THAT(Call({"GetAllItems"}), HasSubstr("\tMeteo\n"));
    serve->Signal(SIGTERM);
    EXPECT_EQ(serve->WaitForExit(), SUCCESS);
}

TEST_F(Commands, ServePrintsTheSelectionThatTheViewerMoves) {
    const auto list = m_set.StartList();
    const auto serve = m_set.Start({"serve", "--items", ItemFile()});
    ASSERT_TRUE(serve->WaitForText(LAST_OF_FILLED));
    list->Type("right");
    EXPECT_TRUE(serve->WaitForText("event 2 ItemSelected selection n1\tNews\n"));
    Interrupt(*serve);
}

// The application ends right after the ItemClicked event and does not answer further calls.
TEST_F(Commands, ServePrintsTheChoiceOfAnApplicationThatEndsOnActivation) {
    const auto list = m_set.StartList();
    const auto serve = m_set.Start({"serve", "--items", ItemFile()});
    ASSERT_TRUE(serve->WaitForText(LAST_OF_FILLED));
    list->Type("ok");
    list->Type("wait 500ms");
    list->EndInput();
    EXPECT_EQ(list->WaitForExit(), SUCCESS);
    EXPECT_TRUE(serve->WaitForText("disconnected"));
    EXPECT_THAT(
        serve->Output(),
        MatchesRegex(FILLED + "event 3 ItemClicked chose w1\tWeather\ndisconnected :[0-9.]+\n"));
    Interrupt(*serve);
}

TEST_F(Commands, WatchPrintsEventsAndChangesNothing) {
    const auto list = m_set.StartList();
    EXPECT_EQ(Call({"AddItems", "w1=Weather", "n1=News"}), "");
    const auto watch = m_set.Start({"watch"});
    ASSERT_TRUE(watch->WaitForText("event 4 LocalCreated selection w1\tWeather\n"));
    EXPECT_EQ(Call({"SetSelection", "n1"}), "");
    ASSERT_TRUE(watch->WaitForText("event 2 ItemSelected selection n1\tNews\n"));
    EXPECT_EQ(Call({"RemoveAllItems"}), "");
    ASSERT_TRUE(watch->WaitForText("event 2 ItemSelected selection none\n"));
    EXPECT_THAT(watch->Output(), MatchesRegex("connected :[0-9.]+\n"
                                              "event 4 LocalCreated selection w1\tWeather\n"
                                              "event 2 ItemSelected selection n1\tNews\n"
                                              "event 1 ItemChanged selection none\n"
                                              "event 2 ItemSelected selection none\n"));
    Interrupt(*watch);
}

TEST_F(Commands, CallReachesEachFunction) {
    const auto list = m_set.StartList();
    EXPECT_EQ(Call({"GetSelection"}), "\t\n");
    EXPECT_EQ(Call({"GetAllItems"}), "");
    EXPECT_EQ(Call({"AddItems", "a=A", "b=B"}), "");
    EXPECT_EQ(Call({"AddItemAtEnd", "c=Citt\u00e0"}), "");
    EXPECT_EQ(Call({"GetAllItems"}), "a\tA\nb\tB\nc\tCitt\u00e0\n");
    EXPECT_EQ(Call({"GetSelection"}), "a\tA\n");
    EXPECT_EQ(Call({"SetSelection", "c", "ignored"}), "");
    EXPECT_EQ(Call({"GetSelection"}), "c\tCitt\u00e0\n");
    EXPECT_EQ(Call({"ModifyItem", "b", "d=D\n"}), "");
    EXPECT_EQ(Call({"RemoveItem", "a"}), "");
    EXPECT_EQ(Call({"SetClicked"}), "");
    EXPECT_EQ(Call({"GetAllItems"}), "d\tD\\x0a\nc\tCitt\u00e0\n");
    EXPECT_EQ(Call({"RemoveAllItems"}), "");
    EXPECT_EQ(Call({"GetAllItems"}), "");
}

TEST_F(Commands, CallWaitsForTheApplication) {
    const auto call = m_set.Start({"call", "GetSelection", "--timeout=60"});
    const auto list = m_set.StartList();
    EXPECT_EQ(call->WaitForExit(), SUCCESS);
    EXPECT_EQ(call->Output(), "\t\n");
}

TEST_F(Commands, CallEndsWithoutAnApplication) {
    const auto call = m_set.Start({"call", "GetSelection", "--timeout=0"});
    EXPECT_EQ(call->WaitForExit(), NO_APPLICATION);
    EXPECT_EQ(call->Output(), "");
    EXPECT_EQ(call->Errors(),
              "javamw-sim: no application within 0 s\n"
              "javamw-sim: an application that offers no data services shows a notice and does not "
              "announce itself; \"platformctl visible\" says whether that is so\n");
}

TEST(CommandsOnAStrictBus, EndAtOnceWhenThePolicyDeniesTheirNames) {
    const PrivateBus bus("<deny own='org.vantu.JavaMW.Applist_CLIENT_SYN'/>");
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"serve"}, {"watch"}, {"call", "GetAllItems"}, {"shell"}}) {
        std::vector<std::string> command{BuiltProgram("javamw-sim")};
        command.insert(command.end(), arguments.begin(), arguments.end());
        ChildProcess process(command, bus.Environment());
        EXPECT_EQ(process.WaitForExit(), NO_BUS) << arguments.front();
        EXPECT_THAT(process.Errors(), HasSubstr("cannot announce "
                                                "org.vantu.JavaMW.Applist_CLIENT_SYN: "));
        EXPECT_THAT(process.Errors(),
                    HasSubstr("run as the user whom the policy of the bus allows"));
    }
}

TEST(CommandsOnAStrictBus, StopAScenario) {
    const PrivateBus bus("<deny own='org.vantu.JavaMW.Applist_CLIENT_SYN'/>");
    ChildProcess run(
        {"sh", "-c", "echo 'wait connected' | " + BuiltProgram("javamw-sim") + " run -"},
        bus.Environment());
    EXPECT_EQ(run.WaitForExit(), NO_BUS);
    EXPECT_THAT(run.Output(), HasSubstr("Bail out! cannot announce "));
}

TEST_F(Commands, CallFailsOnAnApplicationThatServesNothing) {
    ScriptedPeer application = m_set.ConnectApplication();
    const auto call = m_set.Start({"call", "GetSelection", "--timeout=60"});
    ASSERT_TRUE(application.AwaitHeard(1));
    application.Announce("_SERVICE_SYN_ACK");
    EXPECT_EQ(call->WaitForExit(), FAILED);
    EXPECT_EQ(call->Output(), "");
    EXPECT_THAT(call->Errors(), StartsWith("javamw-sim: GetSelection failed: "));
}

TEST_F(Commands, StopWhenTheBusIsGone) {
    const auto list = m_set.StartList();
    const auto watch = m_set.Start({"watch"});
    ASSERT_TRUE(watch->WaitForText("LocalCreated"));
    m_set.bus().Stop();
    EXPECT_EQ(watch->WaitForExit(), NO_BUS);
    EXPECT_EQ(watch->Errors(), "javamw-sim: the bus closed the connection\n");
}

// The application has not replied yet, so the call counts as failed.
TEST_F(Commands, CallStopsOnASignalBeforeItsEnd) {
    ScriptedPeer application = m_set.ConnectApplication();
    for (const int number : {SIGINT, SIGTERM}) {
        const size_t heard = application.Heard().size();
        const auto call = m_set.Start({"call", "GetSelection", "--timeout=60"});
        ASSERT_TRUE(application.AwaitHeard(heard + 1));
        call->Signal(number);
        EXPECT_EQ(call->WaitForExit(), FAILED);
        EXPECT_EQ(call->Output() + call->Errors(), "");
    }
}

TEST_F(Commands, UseTheGivenBus) {
    const auto list = m_set.StartList();
    const PrivateBus elsewhere;
    for (std::vector<std::string> command : std::vector<std::vector<std::string>>{
             {"call", "GetAllItems"}, {"run", m_set.File("it", "wait connected\n")}}) {
        command.insert(command.begin(), BuiltProgram("javamw-sim"));
        command.push_back("--address=" + m_set.bus().Address());
        ChildProcess process(command, elsewhere.Environment());
        EXPECT_EQ(process.WaitForExit(), SUCCESS) << process.Output() << process.Errors();
    }
}

TEST_F(Commands, PrintOneJsonObjectPerLine) {
    const auto list = m_set.StartList();
    const auto serve = m_set.Start({"serve", "--json", "--items", ItemFile()});
    ASSERT_TRUE(serve->WaitForText("\"name\":\"ItemSelected\",\"selection\":{\"id\":\"w1\""));
    EXPECT_THAT(serve->Output(), StartsWith("{\"type\":\"connected\",\"application\":\":1."));
    EXPECT_THAT(serve->Output(), HasSubstr(",\"items\":2}\n"));
    EXPECT_EQ(Call({"GetAllItems", "--json"}),
              "{\"type\":\"item\",\"id\":\"w1\",\"name\":\"Weather\"}\n{\"type\":\"item\",\"id\":"
              "\"n1\",\"name\":"
              "\"News\"}\n");
    Interrupt(*serve);
}

}  // namespace
}  // namespace applist::test
