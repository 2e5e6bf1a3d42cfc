// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "bus/simulator/ScriptedApplication.h"
#include "bus/simulator/Simulation.h"
#include "link/Connection.h"
#include "link/Protocol.h"
#include "support/GlibWait.h"
#include "support/TsGenerator.h"

namespace applist::test {
namespace {

using testing::ElementsAre;

constexpr int SUCCESS = 0;
constexpr uint16_t MAP_PID = 0x0200;
constexpr uint16_t TABLE_PID = 0x0300;
constexpr uint16_t CLOCK_PID = 0x0100;
constexpr uint64_t SECOND = 90000;

const TsApplication NEWS{11, 1, 2, 3, {{"ita", "Notizie"}}};
const TsApplication WEATHER{11, 2, 1, 3, {{"ita", "Meteo"}}};
const TsApplication WEATHER_LIVE{11, 2, 1, 3, {{"ita", "Meteo in diretta"}}};
const TsApplication SPORT{11, 3, 2, 3, {{"ita", "Sport"}}};

// Two versions of a service's table: "news" is removed, "weather" renamed, "sport" added.
std::string TwoVersions() {
    TsGenerator generator;
    for (uint8_t version = 0; version < 2; ++version) {
        const std::vector<TsApplication> applications =
            version == 0 ? std::vector<TsApplication>{NEWS, WEATHER}
                         : std::vector<TsApplication>{SPORT, WEATHER_LIVE};
        for (uint64_t second = 0; second < 3; ++second) {
            generator.AddClock(CLOCK_PID, (version * uint64_t{3} + second) * SECOND / 100);
            generator.Add(0, TsAssociation({{1, MAP_PID}}));
            generator.Add(MAP_PID, TsMap(1, {TABLE_PID}));
            generator.Add(TABLE_PID, TsApplications(applications, 0x0010, version));
        }
    }
    return {generator.stream().begin(), generator.stream().end()};
}

/// Answers every call with an empty reply and records it as "AddItems id=name id=name".
class CalledApplication : public ScriptedApplication {
public:
    explicit CalledApplication(const std::string& address) : ScriptedApplication(address) {
        const sim::GNodeInfoPtr node(
            g_dbus_node_info_new_for_xml(sim::names::INTERFACE_XML, nullptr));
        static const GDBusInterfaceVTable TABLE{
            [](GDBusConnection*, const char*, const char*, const char*, const char*,
               GVariant* content, GDBusMethodInvocation* invocation, void* self) {
                static_cast<CalledApplication*>(self)->OnCall(content);
                g_dbus_method_invocation_return_value(invocation, sim::ToVariant({}));
            },
            nullptr,
            nullptr,
            {}};
        EXPECT_NE(
            g_dbus_connection_register_object(connection(), sim::names::OBJECT_PATH,
                                              node->interfaces[0], &TABLE, this, nullptr, nullptr),
            0U);
    }

    /// Sends LocalCreated, as an application does once it is connected.
    void ReportList() { Notify(middleware, sim::ToVariant({4, 0, 0, 0})); }

    std::vector<std::string> calls;  ///< Without those that only read the selection.

private:
    void OnCall(GVariant* content) {
        sim::Bytes message = sim::FromVariant(content);
        const size_t size = message.size();
        ASSERT_GE(size, 4U);
        const int id = static_cast<unsigned char>(message[size - 4]) |
                       static_cast<unsigned char>(message[size - 3]) << 8;
        message.resize(size - 4);
        std::string call(NameOf(static_cast<sim::Function>(id)));
        const auto items = sim::DecodeItems(message);
        ASSERT_TRUE(items) << call;
        for (const sim::Item& item : *items) {
            call += ' ' + item.id + '=' + item.name;
        }
        if (call != "GetSelection") {
            calls.push_back(call);
        }
    }
};

TEST(ListUpdate, ConsistsOfRemovalsRenamingsAndAdditions) {
    Simulation set;
    CalledApplication application(set.bus().Address());
    const auto serve = set.Start(
        {"serve", "--broadcast", set.File("broadcast.ts", TwoVersions()), "--interval=0"});
    ASSERT_TRUE(RunUntil([&] { return !application.heard.empty(); }));
    application.Announce(sim::names::SYN_ACK);
    ASSERT_TRUE(RunUntil([&] { return application.heard.back() == sim::names::ACK; }));
    application.ReportList();
    EXPECT_TRUE(RunUntil([&] { return application.calls.size() >= 6; }));
    EXPECT_EQ(Simulation::Interrupt(*serve), SUCCESS);
    EXPECT_THAT(
        application.calls,
        ElementsAre("RemoveAllItems", "AddItems 0000000b.0001=Notizie 0000000b.0002=Meteo",
                    "RemoveItem 0000000b.0001=Notizie",
                    "ModifyItem 0000000b.0002=Meteo 0000000b.0002~=Meteo in diretta",
                    "ModifyItem 0000000b.0002~=Meteo in diretta 0000000b.0002=Meteo in diretta",
                    "AddItems 0000000b.0003=Sport"));
}

// At the recorded speed, in which the second version follows 30 ms after the first.
TEST(ListUpdate, MakesTheListOfTheApplicationMatchTheBroadcast) {
    Simulation set;
    const auto list = set.StartList();
    const auto serve = set.Start({"serve", "--broadcast", set.File("broadcast.ts", TwoVersions())});
    ASSERT_TRUE(serve->WaitForText(": 1 added, 1 removed, 1 renamed\n"));
    EXPECT_EQ(set.Run({"call", "GetAllItems"}), SUCCESS);
    EXPECT_EQ(set.output(), "0000000b.0002\tMeteo in diretta\n0000000b.0003\tSport\n");
    // The selected news item was removed, so the selection moves to its neighbour.
    EXPECT_TRUE(serve->WaitForText("selection 0000000b.0002\tMeteo in diretta\n"));

    const auto second = set.StartList();
    EXPECT_TRUE(serve->WaitUntil([&] {
        const std::string output = serve->Output();
        return output.find("filled", output.find("filled") + 1) != std::string::npos;
    }));
    EXPECT_EQ(Simulation::Interrupt(*serve), SUCCESS);
    EXPECT_EQ(serve->Errors(), "");
}

}  // namespace
}  // namespace applist::test
