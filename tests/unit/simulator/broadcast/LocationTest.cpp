// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "broadcast/ApplicationTable.h"
#include "support/TsGenerator.h"

namespace applist::sim {
namespace {

using test::TsApplication;
using test::TsBytes;
using test::TsDescriptor;
using test::TsHttpTransport;

TsBytes Bytes(const std::string& text) {
    return {text.begin(), text.end()};
}

std::string Location(const std::vector<TsBytes>& descriptors) {
    TsApplication application{11, 1};
    for (const TsBytes& descriptor : descriptors) {
        application.descriptors.insert(application.descriptors.end(), descriptor.begin(),
                                       descriptor.end());
    }
    const auto table = ParseApplicationTable(test::TsApplications({application}));
    return table ? table->applications.at(0).location : "(no table)";
}

// The generator's applications prefer the transport with the label 1.
TEST(Location, IsTheAddressOfTheTransportAndThePathInIt) {
    EXPECT_EQ(Location({TsHttpTransport(1, "http://a.example/tv/"),
                        TsDescriptor(0x15, Bytes("index.html?l=it"))}),
              "http://a.example/tv/index.html?l=it");
}

TEST(Location, TakesTheTransportThatTheApplicationNames) {
    EXPECT_EQ(Location({TsHttpTransport(2, "http://two.example/"),
                        TsHttpTransport(1, "http://one.example/"), TsDescriptor(0x15, Bytes("x"))}),
              "http://one.example/x");
    EXPECT_EQ(Location({TsHttpTransport(2, "http://two.example/"), TsDescriptor(0x15, Bytes("x"))}),
              "x");
}

TEST(Location, HasOneSlashBetweenAddressAndPath) {
    EXPECT_EQ(Location({TsHttpTransport(1, "http://a.example/"), TsDescriptor(0x15, Bytes("/x"))}),
              "http://a.example/x");
}

TEST(Location, OfAJavaApplicationIsItsFolderAndFirstClass) {
    const TsBytes content{4, '/', 'a', 'p', 'p', 0, 'i', 't', '.', 'M', 'a', 'i', 'n'};
    EXPECT_EQ(Location({TsDescriptor(0x04, content)}), "/app/it.Main");
    EXPECT_EQ(Location({TsDescriptor(0x07, content)}), "/app/it.Main");
    EXPECT_EQ(Location({TsDescriptor(0x04, {1, '/', 2, 'x', 'y', 'M'})}), "/M");
}

TEST(Location, OfAnHtmlApplicationIsItsRootAndPath) {
    EXPECT_EQ(Location({TsDescriptor(0x09, {3, '/', 'w', '/', 'i', '.', 'h'})}), "/w/i.h");
}

TEST(Location, IsEmptyWhenTheBroadcastDoesNotNameOne) {
    EXPECT_EQ(Location({}), "");
}

TEST(Location, CountsADescriptorThatIsTooShortAsAbsent) {
    for (const uint8_t tag : TsBytes{0x02, 0x04, 0x07, 0x09}) {
        for (const TsBytes& content :
             {TsBytes{}, TsBytes{9}, TsBytes{9, 'x'}, TsBytes{0, 3, 1, 9}}) {
            if (tag != 0x09 || content.size() != 4) {
                EXPECT_EQ(Location({TsDescriptor(tag, content)}), "") << int{tag};
            }
        }
    }
}

// One object carousel (TS 102 809, 5.3.6.1) without addresses.
TEST(Location, HasNoAddressInACarousel) {
    EXPECT_EQ(Location({TsDescriptor(0x02, {0x00, 0x01, 0x01, 0x7F, 0x2F}),
                        TsDescriptor(0x15, Bytes("index.html"))}),
              "index.html");
}

TEST(Location, MayUseATransportThatIsCommonToTheTable) {
    TsBytes loop{0, 0, 0, 1, 0, 2, 1, 0xF0};
    TsBytes own = TsDescriptor(0x00, {0, 0x7F, 1, 9});
    const TsBytes path = TsDescriptor(0x15, Bytes("p"));
    own.insert(own.end(), path.begin(), path.end());
    loop.push_back(static_cast<uint8_t>(own.size()));
    loop.insert(loop.end(), own.begin(), own.end());
    const TsBytes common = TsHttpTransport(9, "http://c/");
    TsBytes body{0xF0, static_cast<uint8_t>(common.size())};
    body.insert(body.end(), common.begin(), common.end());
    body.insert(body.end(), {0xF0, static_cast<uint8_t>(loop.size())});
    body.insert(body.end(), loop.begin(), loop.end());
    const auto table = ParseApplicationTable(test::TsSection(0x74, 0x0010, body));
    ASSERT_TRUE(table);
    EXPECT_EQ(table->applications.at(0).location, "http://c/p");
}

}  // namespace
}  // namespace applist::sim
