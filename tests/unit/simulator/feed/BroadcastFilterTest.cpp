// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "feed/BroadcastFilter.h"
#include "feed/DisplayNames.h"

namespace applist::sim {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Names = std::vector<ApplicationName>;

Application Named(uint16_t id, const Names& names) {
    return {11, id, CONTROL_PRESENT, VISIBLE_ALL, 0, names, ""};
}

BroadcastService Service(uint16_t id, const std::vector<Application>& applications,
                         bool test = false) {
    return {id,
            "",
            {std::make_shared<const ApplicationTable>(ApplicationTable{1, test, applications})}};
}

Items Offered(const std::vector<BroadcastService>& services, const BroadcastFilter& filter = {}) {
    return OfferedItems({0, services}, filter);
}

TEST(Offer, HasVisibleApplicationsThatArePresentOrAutostarted) {
    ApplicationTable trial;
    trial.test = true;
    for (unsigned code = 0; code < 256; ++code) {
        for (unsigned visibility = 0; visibility < 4; ++visibility) {
            Application application;
            application.controlCode = static_cast<uint8_t>(code);
            application.visibility = static_cast<uint8_t>(visibility);
            const bool startable = code == 1 || code == 2;
            EXPECT_EQ(IsOffered({}, application, false), startable && visibility == 3);
            EXPECT_EQ(IsOffered({}, application, true), startable);
            EXPECT_FALSE(IsOffered(trial, application, false));
            EXPECT_EQ(IsOffered(trial, application, true), startable);
        }
    }
}

TEST(Offer, HasHiddenApplicationsAndThoseOfTrialsWhenAsked) {
    Application hidden = Named(1, {{"eng", "Hidden"}});
    hidden.visibility = 0;
    const std::vector<BroadcastService> services{Service(1, {hidden}),
                                                 Service(2, {Named(2, {{"eng", "Trial"}})}, true)};
    EXPECT_THAT(Offered(services), IsEmpty());
    EXPECT_EQ(Offered(services, {{}, {}, true}),
              (Items{{"0000000b.0001", "Hidden"}, {"0000000b.0002", "Trial"}}));
}

TEST(Offer, HasAnApplicationOfSeveralServicesOnce) {
    const Application news = Named(1, {{"eng", "News"}});
    EXPECT_EQ(Offered({Service(1, {news}), Service(2, {news, news})}),
              (Items{{"0000000b.0001", "News"}}));
}

TEST(Offer, DistinguishesApplicationsWithTheSameName) {
    EXPECT_EQ(Offered({Service(1, {Named(1, {{"eng", "News"}}), Named(2, {{"eng", "News"}}),
                                   Named(3, {{"eng", "News"}})})}),
              (Items{{"0000000b.0001", "News"},
                     {"0000000b.0002", "News (2)"},
                     {"0000000b.0003", "News (3)"}}));
}

TEST(Offer, GivesNoApplicationANameThatAnotherHas) {
    EXPECT_EQ(Offered({Service(1, {Named(1, {{"eng", "News"}}), Named(2, {{"eng", "News"}}),
                                   Named(3, {{"eng", "News (2)"}})})}),
              (Items{{"0000000b.0001", "News"},
                     {"0000000b.0002", "News (3)"},
                     {"0000000b.0003", "News (2)"}}));
}

TEST(Offer, DistinguishesOneIdWithTwoNamesByItsServices) {
    EXPECT_EQ(Offered({Service(1, {Named(1, {{"eng", "News"}})}),
                       Service(7, {Named(1, {{"eng", "Weather"}})}),
                       Service(8, {Named(1, {{"eng", "Weather"}})})}),
              (Items{{"0000000b.0001", "News"}, {"0000000b.0001@7", "Weather"}}));
}

TEST(Offer, NamesAnApplicationWithoutANameByItsId) {
    EXPECT_EQ(Offered({Service(1, {Named(1, {}), Named(2, {{"eng", ""}})})}),
              (Items{{"0000000b.0001", "0000000b.0001"}, {"0000000b.0002", "0000000b.0002"}}));
}

TEST(Offer, HasNamesInThePreferredLanguage) {
    const std::vector<BroadcastService> services{
        Service(1, {Named(1, {{"eng", "News"}, {"ita", "Notizie"}})})};
    EXPECT_EQ(Offered(services, {{}, {"ita", "eng"}, false}).at(0).name, "Notizie");
}

TEST(PreferredName, IsInTheFirstAvailableLanguage) {
    const Names names{{"eng", "News"}, {"fre", "Infos"}, {"ITA", "Notizie"}, {"ger", ""}};
    EXPECT_EQ(PreferredName(names, {}), "News");
    EXPECT_EQ(PreferredName(names, {"ita", "eng"}), "Notizie");
    EXPECT_EQ(PreferredName(names, {"spa", "it"}), "Notizie");
    EXPECT_EQ(PreferredName(names, {"fra"}), "Infos");
    EXPECT_EQ(PreferredName(names, {"fr"}), "Infos");
    EXPECT_EQ(PreferredName(names, {"deu"}), "News");
    EXPECT_EQ(PreferredName({{std::string("fr\0", 3), "Infos"}}, {"fra"}), "Infos");
    EXPECT_EQ(PreferredName({{"eng", ""}, {"ita", "Notizie"}}, {"eng"}), "Notizie");
    EXPECT_EQ(PreferredName({}, {"eng"}), "");
}

TEST(Languages, AreReadFromAListOfCodesOrLocales) {
    EXPECT_THAT(ParseLanguages("ita,EN"), ElementsAre("ita", "en"));
    EXPECT_THAT(ParseLanguages("it_IT.UTF-8,sr@latin,pt-BR"), ElementsAre("it", "sr", "pt"));
    EXPECT_THAT(ParseLanguages(""), IsEmpty());
    EXPECT_THAT(ParseLanguages(",,ita,"), ElementsAre("ita"));
}

TEST(Languages, AreStrippedOfOtherCharactersThanLetters) {
    EXPECT_EQ(CleanLanguage(std::string("fr\0", 3)), "fr");
    EXPECT_EQ(CleanLanguage("ITA"), "ita");
    EXPECT_EQ(CleanLanguage("\xFF\x01 "), "");
}

}  // namespace
}  // namespace applist::sim
