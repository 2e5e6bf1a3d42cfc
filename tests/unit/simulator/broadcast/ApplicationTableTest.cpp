// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "broadcast/ApplicationTable.h"
#include "support/TsGenerator.h"

namespace applist::sim {
namespace {

using std::string_literals::operator""s;
using test::TsApplication;
using test::TsApplications;
using test::TsBytes;
using test::TsDescriptor;
using test::TsHttpTransport;

TsBytes Bytes(const std::string& text) {
    return {text.begin(), text.end()};
}

TsBytes Joined(const std::vector<TsBytes>& parts) {
    TsBytes all;
    for (const TsBytes& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

/// A loop: its twelve-bit length and its bytes.
TsBytes Loop(const TsBytes& bytes) {
    return Joined({{0xF0, static_cast<uint8_t>(bytes.size())}, bytes});
}

/// Builds and parses a table of one application with these descriptors.
Application WithDescriptors(const TsBytes& own, const TsBytes& common = {}) {
    const TsBytes application = Joined({{0, 0, 0, 1, 0, 2, 1}, Loop(own)});
    const auto table =
        ParseApplicationTable(test::TsSection(0x74, 1, Joined({Loop(common), Loop(application)})));
    EXPECT_TRUE(table);
    return table ? table->applications.at(0) : Application();
}

/// "0000000b.1ab6 AUTOSTART 3 60 eng=Launcher": id, control code, visibility, priority and names.
std::string TextOf(const Application& application) {
    std::string text = UniqueId(application) + ' ' + ControlName(application.controlCode) + ' ' +
                       std::to_string(application.visibility) + ' ' +
                       std::to_string(application.priority);
    for (const ApplicationName& name : application.names) {
        text += ' ' + name.language + '=' + name.text;
    }
    return text;
}

std::string TextOf(const TsBytes& section) {
    const auto table = ParseApplicationTable(section);
    if (!table) {
        return "refused";
    }
    std::string text = TypeName(table->type) + (table->test ? " for trials" : "");
    for (const Application& application : table->applications) {
        text += "; " + TextOf(application);
    }
    return text;
}

TEST(ApplicationTable, HasItsTypeAndItsApplicationsInTheirOrder) {
    EXPECT_EQ(TextOf(TsApplications({{11, 0x1AB6, 1, 3, {{"eng", "Launcher"}}, 60},
                                     {0x01020304, 0xFFFF, 7, 1, {}, 2}},
                                    0x0010)),
              "HbbTV; 0000000b.1ab6 AUTOSTART 3 60 eng=Launcher; 01020304.ffff DISABLED 1 2");
    EXPECT_EQ(TextOf(TsApplications({}, 0x8010)), "HbbTV for trials");
    EXPECT_EQ(TextOf(TsApplications({})), "DVB-J");
    EXPECT_EQ(TextOf(test::TsMap(1, {})), "refused") << "another table";
}

TEST(ApplicationTable, HasTheReadableNamesByLanguage) {
    const std::string meteo = "M\302et\302eo";
    EXPECT_EQ(
        TextOf(TsApplications({{1, 1, 2, 3, {{"ita", "\005Caff\xE8"}, {{"fr\0", 3}, meteo}}}})),
        "DVB-J; 00000001.0001 PRESENT 3 1 ita=Caff\u00e8 fr\0=M\u00e9t\u00e9o"s);
    EXPECT_EQ(TextOf(TsApplications({{1, 1, 2, 3, {{"ita", "\x1F\x01xyz"}, {"eng", "News"}}}})),
              "DVB-J; 00000001.0001 PRESENT 3 1 eng=News");
}

TEST(ApplicationTable, HasTheConditionsByWhichAReceiverDecides) {
    EXPECT_EQ(WithDescriptors({0x02, 0x03, 0x00, 0x01, 0x05,                // carousel, label 5
                               0x02, 0x05, 0x00, 0x03, 0x06, 0x01, 'u',     // HTTP, label 6
                               0x02, 0x03, 0x00, 0x02, 0x07,                // another, label 7
                               0x00, 0x11, 0x0A, 0x00, 0x00, 1,    2,   3,  // profile 0, 1.2.3
                               0x00, 0x02, 1,    5,    0,    0xFF, 1,   6,   5,   7,
                               9,                                        // profile 2; bound; labels
                               0x16, 0x01, 0x01,                         // digital text
                               0x17, 0x05, 0x02, 0x01, 'a',  0x01, 'b',  // boundaries
                               0x55, 0x08, 'I',  'T',  'A',  4,    'F', 'R', 'A', 9})  // ratings
                  .conditions,
              (ReceiverConditions{{{0, 1, 2, 3}, {2, 1, 5, 0}},
                                  true,
                                  1,
                                  {"a", "b"},
                                  {{"ITA", 4}, {"FRA", 9}},
                                  {"HTTP", "carousel", "0x0002"}}));
    EXPECT_EQ(WithDescriptors({0x16, 0x00,                          // usage without type
                               0x17, 0x04, 0x02, 0x01, 'a', 0x05,   // the second is truncated
                               0x55, 0x05, 'I', 'T', 'A', 4, 'F'})  // likewise
                  .conditions,
              (ReceiverConditions{{}, {}, {}, {"a"}, {{"ITA", 4}}, {}}));
}

TEST(ApplicationTable, HidesAnApplicationWithoutItsDescriptorOrWithOneThatIsTooShort) {
    for (const TsBytes& descriptors :
         {TsBytes{0x01, 0x04, 'i', 't', 'a', 0x00}, TsBytes{0x00, 0x00}, TsBytes{0x00, 0x01, 0x00},
          TsBytes{0x00, 0x02, 0x00, 0xFF}, TsBytes{0x00, 0x03, 0x09, 0xFF, 0xFF},
          TsBytes{0x01, 0x05, 'i', 't', 'a', 9, 'x'}, TsBytes{0x00, 0xFF, 0x00, 0xFF, 0xFF},
          TsBytes{0x00}}) {
        EXPECT_EQ(TextOf(WithDescriptors(descriptors)).substr(0, 25), "00000001.0002 AUTOSTART 0");
    }
}

TEST(ApplicationTable, SkipsUnknownDescriptors) {
    EXPECT_EQ(TextOf(WithDescriptors({0x02, 0x02, 0xAA, 0xBB, 0x00, 0x03, 0x00, 0x7F, 0x05})),
              "00000001.0002 AUTOSTART 3 5");
}

TEST(ApplicationTable, IsRefusedIfItIsTruncatedOrALoopExceedsIt) {
    const TsBytes whole = TsApplications(
        {{11, 0x1AB6, 1, 3, {{"eng", "Launcher"}}}, {11, 0x1AB7, 2, 3, {{"ita", "Programmi"}}}});
    for (size_t size = 0; size < whole.size(); ++size) {
        // A heap block of the exact size, so that a sanitizer detects reads beyond its end.
        const TsBytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_FALSE(ParseApplicationTable(cut)) << size;
    }
    const TsBytes body(whole.begin() + 8, whole.end() - 4);
    for (size_t size = 0; size < body.size(); ++size) {
        const TsBytes cut(body.begin(), body.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_FALSE(ParseApplicationTable(test::TsSection(0x74, 1, cut))) << size;
    }
}

TEST(Application, HasAnIdOfOrganisationAndApplicationInHexadecimal) {
    const auto idOf = [](uint32_t organisation, uint16_t id) {
        return UniqueId({organisation, id, 0, 0, 0, {}, ""});
    };
    EXPECT_EQ(idOf(11, 0x1AB7), "0000000b.1ab7");
    EXPECT_EQ(idOf(0xFFFFFFFF, 0xFFFF), "ffffffff.ffff");
    EXPECT_EQ(UniqueId({}), "00000000.0000");
}

TEST(Names, OfControlCodesAndTypes) {
    for (const auto& [code, name] : std::map<uint8_t, std::string>{{1, "AUTOSTART"},
                                                                   {2, "PRESENT"},
                                                                   {3, "DESTROY"},
                                                                   {4, "KILL"},
                                                                   {8, "PLAYBACK_AUTOSTART"},
                                                                   {0, "0x00"},
                                                                   {9, "0x09"}}) {
        EXPECT_EQ(ControlName(code), name);
    }
    for (const auto& [type, name] : std::map<uint16_t, std::string>{{0x0001, "DVB-J"},
                                                                    {0x0002, "DVB-HTML"},
                                                                    {0x0010, "HbbTV"},
                                                                    {0x0009, "Ginga-NCL"},
                                                                    {0x0011, "ARIB-HTML5"},
                                                                    {0x1234, "0x1234"},
                                                                    {0, ""}}) {
        EXPECT_EQ(TypeName(type), name);
    }
}

struct LocationCase {
    const char* name;
    std::vector<TsBytes> descriptors;
    std::string location;
};

LocationCase Case(const char* name, std::vector<TsBytes> descriptors, const char* location) {
    return {name, std::move(descriptors), location};
}

void PrintTo(const LocationCase& location, std::ostream* out) {
    *out << location.descriptors.size() << " descriptors";
}

class Location : public testing::TestWithParam<LocationCase> {};

// The generator's applications prefer the transport with the label 1.
TEST_P(Location, IsReadFromTheDescriptors) {
    TsApplication application{11, 1};
    application.descriptors = Joined(GetParam().descriptors);
    const auto table = ParseApplicationTable(TsApplications({application}));
    ASSERT_TRUE(table);
    EXPECT_EQ(table->applications.at(0).location, GetParam().location);
}

const TsBytes JAVA{4, '/', 'a', 'p', 'p', 0, 'i', 't', '.', 'M', 'a', 'i', 'n'};

INSTANTIATE_TEST_SUITE_P(
    OfAnApplication, Location,
    testing::Values(
        Case("IsTheAddressOfTheTransportAndThePathInIt",
             {TsHttpTransport(1, "http://a.example/tv/"),
              TsDescriptor(0x15, Bytes("index.html?l=it"))},
             "http://a.example/tv/index.html?l=it"),
        Case("UsesTheTransportThatTheApplicationNames",
             {TsHttpTransport(2, "http://two.example/"), TsHttpTransport(1, "http://one.example/"),
              TsDescriptor(0x15, Bytes("x"))},
             "http://one.example/x"),
        Case("HasNoAddressOfAnotherTransport",
             {TsHttpTransport(2, "http://two.example/"), TsDescriptor(0x15, Bytes("x"))}, "x"),
        Case("HasOneSlashBetweenAddressAndPath",
             {TsHttpTransport(1, "http://a.example/"), TsDescriptor(0x15, Bytes("/x"))},
             "http://a.example/x"),
        // One object carousel (TS 102 809, 5.3.6.1) without addresses.
        Case("HasNoAddressInACarousel",
             {TsDescriptor(0x02, {0x00, 0x01, 0x01, 0x7F, 0x2F}),
              TsDescriptor(0x15, Bytes("index.html"))},
             "index.html"),
        Case("InJavaIsFolderAndFirstClass", {TsDescriptor(0x04, JAVA)}, "/app/it.Main"),
        Case("InJavaMayUseTheOtherTag", {TsDescriptor(0x07, JAVA)}, "/app/it.Main"),
        Case("InJavaSkipsTheClassPath", {TsDescriptor(0x04, {1, '/', 2, 'x', 'y', 'M'})}, "/M"),
        Case("InHtmlIsRootAndPath", {TsDescriptor(0x09, {3, '/', 'w', '/', 'i', '.', 'h'})},
             "/w/i.h"),
        Case("IsEmptyWithoutADescriptor", {}, "")),
    [](const auto& test) { return test.param.name; });

TEST(NoLocation, IsInADescriptorThatIsTooShort) {
    for (const uint8_t tag : TsBytes{0x02, 0x04, 0x07, 0x09}) {
        for (const TsBytes& content :
             {TsBytes{}, TsBytes{9}, TsBytes{9, 'x'}, TsBytes{0, 3, 1, 9}}) {
            if (tag != 0x09 || content.size() != 4) {
                EXPECT_EQ(WithDescriptors(TsDescriptor(tag, content)).location, "") << int{tag};
            }
        }
    }
}

TEST(CommonTransport, GivesTheLocationItsAddress) {
    const TsBytes own =
        Joined({TsDescriptor(0x00, {0, 0x7F, 1, 9}), TsDescriptor(0x15, Bytes("p"))});
    EXPECT_EQ(WithDescriptors(own, TsHttpTransport(9, "http://c/")).location, "http://c/p");
}

}  // namespace
}  // namespace applist::sim
