// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "cli/ApplicationList.h"

namespace applist::sim {
namespace {

const Application NEWS{
    11, 0x1AB6, 1, 3, 60, {{"eng", "News"}, {"ita", "Notizie"}}, "http://a.example/i.html"};
const Application HIDDEN{11, 2, 4, 1, 0, {}, ""};

BroadcastService Service(std::optional<uint16_t> id, uint16_t type,
                         const std::vector<Application>& applications) {
    return {
        id,
        "",
        {std::make_shared<const ApplicationTable>(ApplicationTable{type, false, applications})}};
}

Broadcast With(const std::vector<BroadcastService>& services) {
    return {{Snapshot{0, services}}, {}};
}

std::vector<ListedApplication> List(const Broadcast& broadcast,
                                    const BroadcastFilter& filter = {}) {
    return ListApplications(broadcast, filter);
}

TEST(ApplicationList, HasEveryApplicationOnceForEachService) {
    const auto list = List(With({Service(1, 16, {NEWS, HIDDEN, NEWS}), Service(2, 16, {NEWS})}));
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list[0], (ListedApplication{1, 16, NEWS, "News"}));
    EXPECT_EQ(list[1],
              (ListedApplication{
                  1, 16, HIDDEN, "", {"control code KILL", "visible to other applications only"}}));
    EXPECT_EQ(list[2].service, 2);
}

TEST(ApplicationList, HasAnApplicationAsItWasDescribedLast) {
    Application renamed = NEWS;
    renamed.names = {{"eng", "News live"}};
    Broadcast broadcast = With({Service(1, 16, {NEWS, HIDDEN})});
    broadcast.snapshots.push_back({1, {Service(1, 16, {renamed})}});
    const auto list = List(broadcast);
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].name, "News live");
    EXPECT_EQ(list[1].application.id, 2);
}

TEST(ApplicationList, HasOnlyTheServicesAskedFor) {
    const auto list =
        List(With({Service(1, 16, {NEWS}), Service(2, 16, {HIDDEN})}), {{"2"}, {}, false});
    ASSERT_EQ(list.size(), 1U);
    EXPECT_EQ(list[0].application.id, 2);
}

TEST(ApplicationList, HasOneCleanNameForEachLanguage) {
    Application application = NEWS;
    application.names = {
        {std::string("fr\0", 3), "Infos"}, {"FR", "again"}, {"   ", "Nowhere"}, {"ita", "\xFF"}};
    const auto list = List(With({Service(1, 16, {application})}));
    EXPECT_EQ(
        list.at(0).application.names,
        (std::vector<ApplicationName>{{"fr", "Infos"}, {"und", "Nowhere"}, {"ita", "\uFFFD"}}));
}

TEST(ApplicationTable, IsForPeople) {
    const auto list = List(With({Service(1031, 16, {NEWS}), Service(2, 0, {HIDDEN})}));
    EXPECT_EQ(
        FormatTable(list),
        "SERVICE  ORGANISATION_ID  APPLICATION_ID  TYPE   CONTROL    VISIBILITY  PRIORITY  "
        "NAME  NAMES                  LOCATION                 PROFILES  SERVICE_BOUND  USAGE  "
        "BOUNDARIES  RATINGS  TRANSPORTS\n"
        "1031     11               6838            HbbTV  AUTOSTART  3           60        "
        "News  eng=News; ita=Notizie  http://a.example/i.html  -         -              -      "
        "-           -        -\n"
        "2        11               2               -      KILL       1           0         "
        "-     -                      -                        -         -              -      "
        "-           -        -\n");
}

TEST(ApplicationTable, CountsColumnsOfTheTerminalNotBytes) {
    const ListedApplication wide{1, 1, HIDDEN, "\u65e5\u672c"};
    const ListedApplication narrow{1, 1, HIDDEN, "Citt\u00e0"};
    const std::string table = FormatTable({wide, narrow});
    EXPECT_NE(table.find("\u65e5\u672c   -"), std::string::npos) << table;
    EXPECT_NE(table.find("Citt\u00e0  -"), std::string::npos) << table;
}

TEST(ApplicationTable, KeepsControlBytesFromTheTerminal) {
    ListedApplication listed{1, 1, HIDDEN, "a\nb"};
    listed.application.location = "\x1b[2J";
    const std::string table = FormatTable({listed});
    EXPECT_NE(table.find("a\\x0ab"), std::string::npos);
    EXPECT_NE(table.find("\\x1b[2J"), std::string::npos);
}

TEST(ApplicationJson, IsAnArrayOfObjects) {
    EXPECT_EQ(FormatJson({}), "[]\n");
    EXPECT_EQ(FormatJson(List(With({Service(1031, 16, {NEWS})}))),
              "[\n  {\n    \"service\": 1031,\n    \"organisation_id\": 11,\n"
              "    \"application_id\": 6838,\n    \"type\": 16,\n"
              "    \"control\": \"AUTOSTART\",\n    \"visibility\": 3,\n"
              "    \"priority\": 60,\n    \"name\": \"News\",\n"
              "    \"names\": {\n      \"eng\": \"News\",\n      \"ita\": \"Notizie\"\n    },\n"
              "    \"location\": \"http://a.example/i.html\",\n"
              "    \"profiles\": [],\n    \"service_bound\": null,\n    \"usage\": null,\n"
              "    \"boundaries\": [],\n    \"ratings\": {},\n    \"transports\": []\n  }\n]\n");
}

TEST(ApplicationJson, HasNullForValuesMissingInTheSource) {
    const std::string json = FormatJson(List(With({Service(std::nullopt, 0, {HIDDEN})})));
    EXPECT_NE(json.find("\"service\": null"), std::string::npos) << json;
    EXPECT_NE(json.find("\"type\": null"), std::string::npos);
    EXPECT_NE(json.find("\"names\": {}"), std::string::npos) << json;
    EXPECT_NE(json.find("\"location\": \"\""), std::string::npos);
}

TEST(ApplicationCsv, HasAHeaderAndQuotesSpecialCharacters) {
    Application application = NEWS;
    application.names = {{"eng", "News, \"live\"\r\nnow"}};
    EXPECT_EQ(FormatCsv(List(With({Service(std::nullopt, 0, {application})}))),
              "service,organisation_id,application_id,type,control,visibility,priority,name,names,"
              "location,profiles,service_bound,usage,boundaries,ratings,transports\r\n"
              ",11,6838,,AUTOSTART,3,60,\"News, \"\"live\"\"\r\nnow\","
              "\"{\"\"eng\"\":\"\"News, \\\"\"live\\\"\"\\r\\nnow\"\"}\","
              "http://a.example/i.html,,,,,,\r\n");
}

// An application with a value for every condition by which a receiver decides.
Application WithConditions() {
    Application application = NEWS;
    application.conditions = {{{0, 1, 1, 1}, {2, 1, 5, 0}}, true,         1,
                              {"http://a.example"},         {{"ITA", 4}}, {"HTTP", "carousel"}};
    return application;
}

TEST(ApplicationConditions, AreInEveryFormat) {
    const auto list = List(With({Service(1, 16, {WithConditions()})}));
    EXPECT_THAT(FormatTable(list),
                testing::HasSubstr("0/1.1.1 2/1.5.0  yes            1      http://a.example  "
                                   "ITA=4    HTTP carousel\n"));
    EXPECT_THAT(FormatCsv(list), testing::EndsWith(",0/1.1.1 2/1.5.0,yes,1,http://a.example,ITA=4,"
                                                   "HTTP carousel\r\n"));
    const std::string json = FormatJson(list);
    EXPECT_THAT(json, testing::HasSubstr("\"profile\": 2,\n        \"version\": \"1.5.0\""));
    EXPECT_THAT(json, testing::HasSubstr("\"service_bound\": true,\n    \"usage\": 1,"));
    EXPECT_THAT(json, testing::HasSubstr("\"ITA\": 4"));
}

TEST(ApplicationReasons, SayWhyAnApplicationIsOfferedOrNot) {
    Broadcast broadcast = With({Service(1, 16, {NEWS, HIDDEN})});
    auto trial = std::make_shared<ApplicationTable>(ApplicationTable{16, true, {NEWS}});
    broadcast.snapshots[0].services.push_back({2, "", {trial}});
    broadcast.snapshots.push_back({1, broadcast.snapshots[0].services});
    broadcast.snapshots[1].services[0] = Service(1, 16, {NEWS});
    const auto list = List(broadcast);
    ASSERT_EQ(list.size(), 3U);
    EXPECT_THAT(list[0].against, testing::IsEmpty());
    EXPECT_THAT(list[1].against,
                testing::ElementsAre("control code KILL", "visible to other applications only",
                                     "not in the last tables"));
    EXPECT_THAT(list[2].against, testing::ElementsAre("for trials"));
}

TEST(ApplicationReasons, ArePrintedOnRequest) {
    const auto list = List(With({Service(1, 16, {NEWS, HIDDEN})}));
    EXPECT_THAT(FormatTable(list, true), testing::HasSubstr("  WHY\n"));
    EXPECT_THAT(FormatTable(list, true), testing::HasSubstr("  offered\n"));
    EXPECT_THAT(
        FormatCsv(list, true),
        testing::EndsWith(",\"not offered: control code KILL, visible to other applications only\""
                          "\r\n"));
    EXPECT_THAT(FormatJson(list, true), testing::HasSubstr("\"why\": \"offered\""));
    EXPECT_THAT(FormatJson(list), testing::Not(testing::HasSubstr("why")));
}

}  // namespace
}  // namespace applist::sim
