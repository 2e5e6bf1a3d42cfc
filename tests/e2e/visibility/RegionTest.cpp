// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Sets of each region, from their stored settings to the screen: the list, or the alert popup with
// the reason why there is no list.
#include <cstdlib>
#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Television.h"

namespace applist::test {
namespace {

using testing::HasSubstr;
using testing::Not;

// The badge colours of the two kinds of alert in the desktop's theme.
constexpr uint32_t INFORM = 0x76B4FF;
constexpr uint32_t WARN = 0xFFB040;

struct Settings {
    std::string region;
    std::string flag;
    bool autorun = false;
    int autostart = 0;
};

class ATelevision {
public:
    ATelevision(const std::string& language, const Settings& settings)
        : m_set({{"LANGUAGE", language}, {"APPLIST_LOG", "debug"}}) {
        EXPECT_EQ(m_set.Configure({"region", settings.region}), 0);
        EXPECT_EQ(m_set.Configure({"set", "memory/tv-viewer/data_service", "int", settings.flag}),
                  0);
        EXPECT_EQ(m_set.Configure({"set", "db/menu/broadcasting/autorun-dataservice", "bool",
                                   settings.autorun ? "1" : "0"}),
                  0);
        EXPECT_EQ(m_set.Configure({"set", "memory/javamw/autostart-app", "int",
                                   std::to_string(settings.autostart)}),
                  0);
    }

    /// True iff the popup of this kind with this text is the only window.
    void ExpectAlert(const std::string& type, const std::string& text) {
        ASSERT_TRUE(m_set.WaitForWindow(Television::ALERT_POPUP)) << Popup().Errors();
        EXPECT_TRUE(Popup().WaitForText("Showing as " + type + ": " + text + "\n"))
            << Popup().Errors();
        EXPECT_TRUE(screen().WaitForColour(type == "unavailable" ? WARN : INFORM));
        EXPECT_FALSE(screen().Shows(type == "unavailable" ? INFORM : WARN));
        EXPECT_EQ(screen().WindowTitled(Television::LIST), 0U);
    }

    /// The viewer's keys to close a popup.
    void CloseAlert() {
        screen().TypeKey("Return");
        EXPECT_TRUE(m_set.WaitForNoWindow(Television::ALERT_POPUP));
    }

    Television& set() { return m_set; }
    XDisplay& screen() { return m_set.screen(); }

private:
    ChildProcess& Popup() { return m_set.sessionBus().daemon(); }

    Television m_set;
};

/// The program's log lines about the popup's launch request.
std::vector<std::string> ExtraDataOf(const std::string& log) {
    const std::string start = "Adding extra data: ";
    std::vector<std::string> lines;
    for (size_t at = log.find(start); at != std::string::npos; at = log.find(start, at)) {
        const size_t end = log.find('\n', at);
        lines.push_back(log.substr(at + start.size(), end - at - start.size()));
        at = end;
    }
    return lines;
}

TEST(ARegionThatOffersTheList, ShowsIt) {
    ATelevision television("en", {"italy", "2", true, 0});
    ASSERT_NO_FATAL_FAILURE(television.set().ShowThreeItems());
    EXPECT_EQ(television.screen().WindowTitled(Television::ALERT_POPUP), 0U);
    television.screen().TypeKey("Escape");
    EXPECT_EQ(television.set().application().WaitForExit(), 0);
    const std::string& log = television.set().application().Errors();
    EXPECT_THAT(log, HasSubstr("CheckVisibility resulting in :1\n"));
    EXPECT_THAT(log, Not(HasSubstr("Adding extra data")));
}

struct Refused {
    std::string name;
    Settings settings;
    std::string language;
    std::string type;
    std::string text;
};
std::ostream& operator<<(std::ostream& out, const Refused& row) {
    return out << row.name;
}

class RegionWithoutTheList : public testing::TestWithParam<Refused> {};

TEST_P(RegionWithoutTheList, SaysWhyInItsLanguage) {
    const auto& [name, settings, language, type, text] = GetParam();
    ATelevision television(language, settings);
    const auto application = television.set().StartApplication();
    EXPECT_EQ(application->WaitForExit(), 0) << application->Errors();
    ASSERT_NO_FATAL_FAILURE(television.ExpectAlert(type, text));
    EXPECT_THAT(ExtraDataOf(application->Errors()),
                testing::ElementsAre("key=text, value=" + text, "key=type, value=" + type));
    EXPECT_THAT(application->Errors(), HasSubstr("CheckVisibility resulting in :0\n"));
    EXPECT_EQ(application->Output(), "APPLIST v: plm-applist-20150201.1\n");
    television.CloseAlert();
}

constexpr const char* STARTS_BY_ITSELF_IT =
    "I servizi dati di questo canale si avviano da soli, perciò non c'è un elenco. Per sceglierli, "
    "disattiva l'avvio automatico nel menu Trasmissione.";

INSTANTIATE_TEST_SUITE_P(
    Rows, RegionWithoutTheList,
    testing::Values(
        Refused{"Italy", {"italy", "2", true, 1}, "it", "notification", STARTS_BY_ITSELF_IT},
        Refused{"Brazil",
                {"brazil", "1", true, 1},
                "pt_BR",
                "unavailable",
                "Os serviços de dados não estão disponíveis."},
        Refused{"AViewerWhoReadsFromRightToLeft",
                {"none", "7"},
                "ar",
                "unavailable",
                "خدمات البيانات غير متوفّرة."}),
    [](const auto& row) { return row.param.name; });

TEST(ASetWithoutARegion, SaysSoAfterItsTenAttempts) {
    ATelevision television("it", {"italy", "2"});
    ASSERT_EQ(television.set().Configure({"factory", "unset", "194"}), 0);
    // Ten seconds of the program's clock.
    const auto application = television.set().StartApplication(ClockAtSpeed("20"));
    EXPECT_EQ(application->WaitForExit(), 0) << application->Errors();
    ASSERT_NO_FATAL_FAILURE(
        television.ExpectAlert("unavailable", "I servizi dati non sono disponibili."));
    EXPECT_THAT(application->Errors(), HasSubstr("GetData(ID_LOCALSET, ...) loop=9;\n"));
    EXPECT_THAT(application->Errors(), HasSubstr("CheckVisibility resulting in :0\n"));
    television.CloseAlert();
}

TEST(ASetWithoutARegion, ShowsTheListWhenTheRegionComesInTime) {
    ATelevision television("it", {"italy", "2"});
    ASSERT_EQ(television.set().Configure({"factory", "unset", "194"}), 0);
    const auto application = television.set().StartApplication();
    ASSERT_TRUE(application->WaitForText("loop=1;"));
    ASSERT_EQ(television.set().Configure({"region", "argentina"}), 0);
    EXPECT_TRUE(television.set().WaitForWindow(Television::LIST));
    EXPECT_EQ(television.screen().WindowTitled(Television::ALERT_POPUP), 0U);
    television.screen().TypeKey("Escape");
    EXPECT_EQ(application->WaitForExit(), 0);
}

}  // namespace
}  // namespace applist::test
