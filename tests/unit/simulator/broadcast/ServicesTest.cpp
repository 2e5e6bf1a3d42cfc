// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "broadcast/ProgramTables.h"
#include "feed/BroadcastFilter.h"
#include "support/ScannedBroadcast.h"
#include "support/TsGenerator.h"

namespace applist::sim {
namespace {

using test::ScanBroadcast;
using test::TsApplication;
using test::TsApplications;
using test::TsBytes;
using test::TsGenerator;
using testing::ElementsAre;
using testing::IsEmpty;

const TsApplication NEWS{11, 1, 2, 3, {{"ita", "Notizie"}}};
const TsApplication WEATHER{11, 2, 1, 3, {{"ita", "Meteo"}}};
const TsApplication SPORT{11, 3, 1, 3, {{"ita", "Sport"}}};

// Three services with one application each. The second service is unnamed.
Broadcast Three() {
    TsGenerator generator;
    generator.Add(0, test::TsAssociation({{1, 0x0200}, {2, 0x0201}, {1031, 0x0202}}));
    generator.Add(0x0200, test::TsMap(1, {0x0300}));
    generator.Add(0x0201, test::TsMap(2, {0x0301}));
    generator.Add(0x0202, test::TsMap(1031, {0x0302}));
    generator.Add(0x0011, test::TsDescription({{1, "\x15Rete Citt\u00e0"}, {1031, "Sport Uno"}}));
    generator.Add(0x0300, TsApplications({NEWS}));
    generator.Add(0x0301, TsApplications({WEATHER}));
    generator.Add(0x0302, TsApplications({SPORT}));
    return ScanBroadcast(generator.stream());
}

std::vector<std::string> NamesOf(const Broadcast& broadcast,
                                 const std::vector<std::string>& services) {
    std::vector<std::string> names;
    for (const Item& item : OfferedItems(broadcast.snapshots.back(), {services, {}, false})) {
        names.push_back(item.name);
    }
    return names;
}

TEST(Services, HaveTheNamesOfTheDescriptionTable) {
    const auto services = Three().snapshots.at(0).services;
    ASSERT_EQ(services.size(), 3U);
    EXPECT_EQ(services[0].name, "Rete Citt\u00e0");
    EXPECT_EQ(services[1].name, "");
    EXPECT_EQ(services[2].name, "Sport Uno");
}

TEST(Services, AreAllSelectedByDefault) {
    EXPECT_THAT(NamesOf(Three(), {}), ElementsAre("Notizie", "Meteo", "Sport"));
}

TEST(Services, AreSelectedByNumberOrName) {
    const Broadcast broadcast = Three();
    EXPECT_THAT(NamesOf(broadcast, {"1031"}), ElementsAre("Sport"));
    EXPECT_THAT(NamesOf(broadcast, {"0x407"}), ElementsAre("Sport"));
    EXPECT_THAT(NamesOf(broadcast, {"sport UNO"}), ElementsAre("Sport"));
    EXPECT_THAT(NamesOf(broadcast, {"RETE CITT\u00c0", "2"}), ElementsAre("Notizie", "Meteo"));
    EXPECT_THAT(NamesOf(broadcast, {"2", "1"}), ElementsAre("Notizie", "Meteo"));
    for (const char* none : {"3", "", "1x", " 1", "-1", "65537", "Sport", "0x"}) {
        EXPECT_THAT(NamesOf(broadcast, {none}), IsEmpty()) << none;
    }
}

TEST(Services, ThatAreMissingAreReportedWithTheExistingOnes) {
    EXPECT_EQ(MissingService(Three(), {{"1", "Sport Uno"}, {}, false}), "");
    EXPECT_EQ(MissingService(Three(), {{"1", "7"}, {}, false}),
              "no service '7'; it has 1 (Rete Citt\u00e0), 2, 1031 (Sport Uno)");
    EXPECT_EQ(MissingService({{Snapshot{}}, {}}, {{"7"}, {}, false}),
              "no service '7'; the broadcast does not name any");
}

TEST(ServiceDescription, IsRefusedWhenALoopIsLongerThanTheTable) {
    const TsBytes whole = test::TsDescription({{1, "Uno"}});
    ASSERT_TRUE(ParseServiceDescription(whole));
    const TsBytes body(whole.begin() + 8, whole.end() - 4);
    for (size_t size = 4; size < body.size(); ++size) {
        const TsBytes cut(body.begin(), body.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_FALSE(ParseServiceDescription(test::TsSection(0x42, 1, cut))) << size;
    }
}

TEST(ServiceDescription, IsNoOtherTable) {
    EXPECT_FALSE(ParseServiceDescription(test::TsMap(1, {})));
}

}  // namespace
}  // namespace applist::sim
