// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <iterator>
#include <vector>

#include <gmock/gmock.h>

#include "broadcast/ApplicationTable.h"
#include "support/TsGenerator.h"

namespace applist::sim {
namespace {

using test::TsApplication;
using test::TsApplications;
using test::TsBytes;
using testing::IsEmpty;

TsBytes Section(const std::vector<TsApplication>& applications) {
    return TsApplications(applications);
}

TEST(ApplicationTable, GivesTheApplicationsInTheirOrder) {
    const auto table = ParseApplicationTable(TsApplications(
        {{11, 0x1AB6, 1, 3, {{"eng", "Launcher"}}, 60}, {0x01020304, 0xFFFF, 7, 1, {}, 2}},
        0x0010));
    ASSERT_TRUE(table);
    EXPECT_EQ(table->type, 0x0010);
    EXPECT_FALSE(table->test);
    ASSERT_EQ(table->applications.size(), 2U);
    const Application& first = table->applications[0];
    EXPECT_EQ(first.organisation, 11U);
    EXPECT_EQ(first.id, 0x1AB6);
    EXPECT_EQ(first.controlCode, 1);
    EXPECT_EQ(first.visibility, 3);
    EXPECT_EQ(first.priority, 60);
    const Application& second = table->applications[1];
    EXPECT_EQ(second.organisation, 0x01020304U);
    EXPECT_EQ(second.id, 0xFFFF);
    EXPECT_EQ(second.controlCode, 7);
    EXPECT_EQ(second.visibility, 1);
    EXPECT_THAT(second.names, IsEmpty());
}

TEST(ApplicationTable, GivesTheNamesByLanguageDecoded) {
    const auto table = ParseApplicationTable(Section({{1,
                                                       1,
                                                       2,
                                                       3,
                                                       {{"ita",
                                                         "\x05"
                                                         "Caff\xE8"},
                                                        {{"fr\0", 3},
                                                         "M\xC2"
                                                         "et\xC2"
                                                         "eo"}}}}));
    ASSERT_TRUE(table);
    const auto& names = table->applications.at(0).names;
    ASSERT_EQ(names.size(), 2U);
    EXPECT_EQ(names[0].language, "ita");
    EXPECT_EQ(names[0].text, "Caff\u00e8");
    EXPECT_EQ(names[1].language, std::string("fr\0", 3));
    EXPECT_EQ(names[1].text, "M\u00e9t\u00e9o");
}

TEST(ApplicationTable, LeavesOutANameThatCannotBeDecoded) {
    const auto table =
        ParseApplicationTable(Section({{1, 1, 2, 3, {{"ita", "\x1F\x01xyz"}, {"eng", "News"}}}}));
    ASSERT_TRUE(table);
    ASSERT_EQ(table->applications.at(0).names.size(), 1U);
    EXPECT_EQ(table->applications[0].names[0].text, "News");
}

TEST(ApplicationTable, MarksATableForTrials) {
    const auto table = ParseApplicationTable(TsApplications({}, 0x8010));
    ASSERT_TRUE(table);
    EXPECT_EQ(table->type, 0x0010);
    EXPECT_TRUE(table->test);
}

TEST(ApplicationTable, MayBeEmpty) {
    const auto table = ParseApplicationTable(Section({}));
    ASSERT_TRUE(table);
    EXPECT_THAT(table->applications, IsEmpty());
}

TEST(ApplicationTable, IsNoOtherTable) {
    EXPECT_FALSE(ParseApplicationTable(test::TsMap(1, {})));
}

// Builds and parses a table of one application with this descriptor loop.
std::optional<ApplicationTable> WithDescriptors(const TsBytes& descriptors) {
    TsBytes loop{0, 0, 0, 1, 0, 2, 1, 0xF0, static_cast<uint8_t>(descriptors.size())};
    std::copy(descriptors.begin(), descriptors.end(), std::back_inserter(loop));
    TsBytes body{0xF0, 0x00, 0xF0, static_cast<uint8_t>(loop.size())};
    std::copy(loop.begin(), loop.end(), std::back_inserter(body));
    return ParseApplicationTable(test::TsSection(0x74, 1, body));
}

TEST(ApplicationTable, GivesWhatAReceiverDecidesBy) {
    const auto table = WithDescriptors(
        {0x02, 0x03, 0x00, 0x01, 0x05,                               // carousel, label 5
         0x02, 0x05, 0x00, 0x03, 0x06, 0x01, 'u',                    // HTTP, label 6
         0x02, 0x03, 0x00, 0x02, 0x07,                               // another, label 7
         0x00, 0x11, 0x0A, 0x00, 0x00, 0x01, 0x02, 0x03,             // profile 0, 1.2.3
         0x00, 0x02, 0x01, 0x05, 0x00, 0xFF, 0x01, 0x06, 0x05, 7,    // profile 2; bound; 6, 5, 7
         9,                                                          // a label without transport
         0x16, 0x01, 0x01,                                           // digital text
         0x17, 0x05, 0x02, 0x01, 'a',  0x01, 'b',                    // boundaries
         0x55, 0x08, 'I',  'T',  'A',  4,    'F',  'R',  'A',  9});  // ratings
    ASSERT_TRUE(table);
    EXPECT_EQ(table->applications.at(0).conditions,
              (ReceiverConditions{{{0, 1, 2, 3}, {2, 1, 5, 0}},
                                  true,
                                  1,
                                  {"a", "b"},
                                  {{"ITA", 4}, {"FRA", 9}},
                                  {"HTTP", "carousel", "0x0002"}}));
}

TEST(ApplicationTable, IgnoresConditionsThatAreTruncated) {
    const auto table = WithDescriptors({0x16, 0x00,                           // usage without type
                                        0x17, 0x04, 0x02, 0x01, 'a', 0x05,    // the second is cut
                                        0x55, 0x05, 'I', 'T', 'A', 4, 'F'});  // likewise
    ASSERT_TRUE(table);
    EXPECT_EQ(table->applications.at(0).conditions,
              (ReceiverConditions{{}, {}, {}, {"a"}, {{"ITA", 4}}, {}}));
}

TEST(ApplicationTable, HidesAnApplicationWithoutItsDescriptor) {
    const auto table = WithDescriptors({0x01, 0x04, 'i', 't', 'a', 0x00});
    ASSERT_TRUE(table);
    EXPECT_EQ(table->applications.at(0).visibility, 0);
}

TEST(ApplicationTable, CountsADescriptorThatIsTooShortAsAbsent) {
    for (const TsBytes& descriptors :
         {TsBytes{0x00, 0x00}, TsBytes{0x00, 0x01, 0x00}, TsBytes{0x00, 0x02, 0x00, 0xFF},
          TsBytes{0x00, 0x03, 0x09, 0xFF, 0xFF}, TsBytes{0x01, 0x05, 'i', 't', 'a', 9, 'x'},
          TsBytes{0x00, 0xFF, 0x00, 0xFF, 0xFF}, TsBytes{0x00}}) {
        const auto table = WithDescriptors(descriptors);
        ASSERT_TRUE(table);
        EXPECT_EQ(table->applications.at(0).visibility, 0);
        EXPECT_THAT(table->applications.at(0).names, IsEmpty());
    }
}

TEST(ApplicationTable, SkipsUnknownDescriptors) {
    const auto table = WithDescriptors({0x02, 0x02, 0xAA, 0xBB, 0x00, 0x03, 0x00, 0x7F, 0x05});
    ASSERT_TRUE(table);
    EXPECT_EQ(table->applications.at(0).visibility, 3);
}

const std::vector<TsApplication> TWO{{11, 0x1AB6, 1, 3, {{"eng", "Launcher"}}},
                                     {11, 0x1AB7, 2, 3, {{"ita", "Programmi"}}}};

TEST(ApplicationTable, IsRefusedWhenTruncatedAtAnyByte) {
    const TsBytes whole = Section(TWO);
    for (size_t size = 0; size < whole.size(); ++size) {
        // A heap block of the exact size, so that a sanitizer detects reads beyond its end.
        const TsBytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_FALSE(ParseApplicationTable(cut)) << size;
    }
}

TEST(ApplicationTable, IsRefusedWhenALoopExceedsTheTable) {
    const TsBytes whole = Section(TWO);
    const TsBytes body(whole.begin() + 8, whole.end() - 4);
    for (size_t size = 0; size < body.size(); ++size) {
        const TsBytes cut(body.begin(), body.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_FALSE(ParseApplicationTable(test::TsSection(0x74, 1, cut))) << size;
    }
}

TEST(Application, HasAnIdOfOrganisationAndApplicationInHexadecimal) {
    Application application;
    application.organisation = 11;
    application.id = 0x1AB7;
    EXPECT_EQ(UniqueId(application), "0000000b.1ab7");
    application.organisation = 0xFFFFFFFF;
    application.id = 0xFFFF;
    EXPECT_EQ(UniqueId(application), "ffffffff.ffff");
    EXPECT_EQ(UniqueId({}), "00000000.0000");
}

TEST(Application, NamesItsControlCode) {
    EXPECT_EQ(ControlName(1), "AUTOSTART");
    EXPECT_EQ(ControlName(2), "PRESENT");
    EXPECT_EQ(ControlName(3), "DESTROY");
    EXPECT_EQ(ControlName(4), "KILL");
    EXPECT_EQ(ControlName(8), "PLAYBACK_AUTOSTART");
    EXPECT_EQ(ControlName(0), "0x00");
    EXPECT_EQ(ControlName(9), "0x09");
}

TEST(ApplicationTable, NamesTheTypesOfDvbAndHbbTv) {
    EXPECT_EQ(TypeName(0x0001), "DVB-J");
    EXPECT_EQ(TypeName(0x0002), "DVB-HTML");
    EXPECT_EQ(TypeName(0x0010), "HbbTV");
    EXPECT_EQ(TypeName(0x0009), "Ginga-NCL");
    EXPECT_EQ(TypeName(0x0011), "ARIB-HTML5");
    EXPECT_EQ(TypeName(0x1234), "0x1234");
    EXPECT_EQ(TypeName(0), "");
}

}  // namespace
}  // namespace applist::sim
