// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "broadcast/BroadcastParser.h"
#include "feed/BroadcastFilter.h"
#include "support/AitXml.h"

namespace applist::sim {
namespace {

using test::AitXml;
using test::XmlApplication;
using test::XmlName;
using testing::HasSubstr;
using testing::StartsWith;

Result<Broadcast> Read(const std::string& document) {
    return ReadApplicationXml({reinterpret_cast<const uint8_t*>(document.data()), document.size()});
}

// The only application of a document with only one.
Application One(const XmlApplication& application) {
    const auto broadcast = Read(AitXml({application}));
    EXPECT_TRUE(broadcast) << broadcast.error();
    const auto& service = broadcast->snapshots.at(0).services.at(0);
    EXPECT_EQ(service.tables.size(), 1U);
    return service.tables.at(0)->applications.at(0);
}

TEST(ApplicationXml, GivesTheValuesOfADocument) {
    const Application application =
        One({"19", "1001", XmlName("eng", "Quiz &amp; Play") + XmlName("ita", "Citt\u00e0"),
             "<mhp:DvbApp>DVB-J</mhp:DvbApp>", "PRESENT", "NOT_VISIBLE_USERS", "fF"});
    EXPECT_EQ(application.organisation, 19U);
    EXPECT_EQ(application.id, 1001);
    EXPECT_EQ(application.controlCode, CONTROL_PRESENT);
    EXPECT_EQ(application.visibility, 1);
    EXPECT_EQ(application.priority, 255);
    EXPECT_EQ(application.names,
              (std::vector<ApplicationName>{{"eng", "Quiz & Play"}, {"ita", "Citt\u00e0"}}));
    EXPECT_EQ(application.location, "http://a.example/index.html");
}

TEST(ApplicationXml, GivesWhatAReceiverDecidesBy) {
    XmlApplication application{"1", "1"};
    application.names =
        "<mhp:applicationBoundary><mhp:BoundaryExtension>http://b.example"
        "</mhp:BoundaryExtension></mhp:applicationBoundary>";
    application.type +=
        "</mhp:type><mhp:mhpVersion><mhp:profile>0A</mhp:profile>"
        "<mhp:versionMajor>1</mhp:versionMajor><mhp:versionMinor>5</mhp:versionMinor>"
        "<mhp:versionMicro>0</mhp:versionMicro></mhp:mhpVersion><mhp:type>";
    EXPECT_EQ(One(application).conditions,
              (ReceiverConditions{{{10, 1, 5, 0}}, false, {}, {"http://b.example"}, {}, {"HTTP"}}));
}

TEST(ApplicationXml, ReadsTypesWithANumber) {
    const auto type = [](const std::string& text) {
        XmlApplication application{"1", "1"};
        application.type = text;
        return Read(AitXml({application}))->snapshots.at(0).services.at(0).tables.at(0)->type;
    };
    EXPECT_EQ(type("<mhp:DvbApp>DVB-J</mhp:DvbApp>"), 1);
    EXPECT_EQ(type("<mhp:DvbApp>DVB-HTML</mhp:DvbApp>"), 2);
    EXPECT_EQ(type("<mhp:OtherApp>application/vnd.hbbtv.xhtml+xml</mhp:OtherApp>"), 16);
    EXPECT_EQ(type("<mhp:OtherApp>application/other</mhp:OtherApp>"), 0);
    EXPECT_EQ(type(""), 0);
}

TEST(ApplicationXml, OffersApplicationsByTheRulesOfTables) {
    XmlApplication hidden{"1", "2", XmlName("eng", "Hidden")};
    hidden.visibility = "NOT_VISIBLE_ALL";
    XmlApplication killed{"1", "3", XmlName("eng", "Killed")};
    killed.control = "KILL";
    const auto broadcast = Read(AitXml({{"1", "1", XmlName("eng", "News")}, hidden, killed}));
    ASSERT_TRUE(broadcast);
    ASSERT_EQ(broadcast->snapshots.size(), 1U);
    EXPECT_FALSE(broadcast->snapshots[0].services.at(0).id);
    EXPECT_EQ(OfferedItems(broadcast->snapshots[0], {}), (Items{{"00000001.0001", "News"}}));
}

TEST(ApplicationXml, SkipsAndCountsAnApplicationWithoutAValidIdentifier) {
    const auto broadcast = Read(AitXml({{"", "1"},
                                        {"1", "65536"},
                                        {"4294967296", "1"},
                                        {"x", "1"},
                                        {"-1", "1"},
                                        {" 4294967295 ", "\n65535", XmlName("eng", "Last")}}));
    ASSERT_TRUE(broadcast);
    EXPECT_EQ(Describe(broadcast->damage), "5 in sections (5 malformed)");
    EXPECT_EQ(OfferedItems(broadcast->snapshots.at(0), {}), (Items{{"ffffffff.ffff", "Last"}}));
}

TEST(ApplicationXml, TakesOtherYearsAndPrefixesOfTheNamespace) {
    std::string document = AitXml({{"1", "1", XmlName("eng", "News")}});
    for (size_t at = document.find("mhp:"); at != std::string::npos;
         at = document.find("mhp:", at + 1)) {
        if (document[at - 1] == '<' || document[at - 1] == '/') {
            document.erase(at, 4);
        }
    }
    document.replace(document.find("xmlns:mhp"), 9, "xmlns");
    document.replace(document.find("2009"), 4, "2014");
    EXPECT_EQ(OfferedItems(Read(document)->snapshots.at(0), {}).size(), 1U);
}

TEST(ApplicationXml, SkipsOtherNamespaces) {
    std::string document = AitXml({{"1", "1", XmlName("eng", "News")}});
    document.replace(document.find("urn:dvb"), 7, "urn:xyz");
    const auto broadcast = Read(document);
    ASSERT_TRUE(broadcast);
    EXPECT_TRUE(broadcast->snapshots.at(0).services.empty());
}

TEST(ApplicationXml, IsRefusedWithADocumentType) {
    const std::string body = AitXml({{"1", "1", XmlName("eng", "&a;")}});
    const std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    const std::string rest = body.substr(head.size());
    for (const char* type :
         {"<!DOCTYPE x [<!ENTITY a 'expanded'>]>", "<!DOCTYPE x SYSTEM \"/etc/passwd\">",
          "<!DOCTYPE x [<!ENTITY a SYSTEM \"file:///etc/passwd\">]>",
          "<!DOCTYPE x [<!ENTITY b 'bb'><!ENTITY a '&b;&b;&b;&b;&b;&b;'>]>"}) {
        const auto broadcast = Read(head + type + rest);
        EXPECT_FALSE(broadcast) << type;
        EXPECT_THAT(broadcast.error(), HasSubstr("document type"));
    }
}

TEST(ApplicationXml, IsRefusedWhenItIsNotWellFormed) {
    const auto unclosed = Read("<?xml version=\"1.0\"?>\n<a>\n<b>\n</a>");
    EXPECT_FALSE(unclosed);
    EXPECT_THAT(unclosed.error(), StartsWith("line 4: "));
    EXPECT_FALSE(Read(""));
    EXPECT_FALSE(Read("<a>&undefined;</a>"));
    EXPECT_FALSE(Read(std::string("<a>\0</a>", 8)));
}

TEST(ApplicationXml, IsRefusedBeyondItsLimits) {
    const auto large = Read(AitXml({}) + std::string(MAX_XML_SIZE, ' '));
    EXPECT_FALSE(large);
    EXPECT_THAT(large.error(), HasSubstr("4 MiB"));
    std::string deep;
    for (int i = 0; i < 100000; ++i) {
        deep += "<a>";
    }
    EXPECT_FALSE(Read(deep));
}

}  // namespace
}  // namespace applist::sim
