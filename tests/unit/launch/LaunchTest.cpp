// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gio/gio.h>
#include <gmock/gmock.h>

#include "app_control.h"
#include "fakes/FakePlatformLog.h"
#include "launch/LaunchProtocol.h"

using namespace applist::desktop;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace applist::test {
namespace {

class AppControl : public testing::Test {
protected:
    void SetUp() override {
        ClearLog();
        ASSERT_EQ(app_control_create(&request), APP_CONTROL_ERROR_NONE);
    }
    void TearDown() override { EXPECT_EQ(app_control_destroy(request), APP_CONTROL_ERROR_NONE); }

    app_control_h request = nullptr;
};

TEST_F(AppControl, BeginsEmptyAndKeepsTheLastValueOfEachKeyInTheOrderOfTheFirst) {
    EXPECT_EQ(request->appId, "");
    EXPECT_THAT(request->extraData, IsEmpty());
    app_control_add_extra_data(request, "text", "Hello");
    app_control_add_extra_data(request, "colour", "");
    app_control_add_extra_data(request, "a", "last");
    EXPECT_EQ(app_control_add_extra_data(request, "text", "Bye"), APP_CONTROL_ERROR_NONE);
    EXPECT_THAT(request->extraData,
                ElementsAre(Pair("text", "Bye"), Pair("colour", ""), Pair("a", "last")));
}

TEST_F(AppControl, CopiesWhatItIsGiven) {
    std::string id = "org.vantu.one";
    std::string value = "Hello";
    app_control_set_app_id(request, id.c_str());
    app_control_add_extra_data(request, "text", value.c_str());
    id = value = "something else";
    EXPECT_EQ(request->appId, "org.vantu.one");
    EXPECT_THAT(request->extraData, ElementsAre(Pair("text", "Hello")));
}

TEST_F(AppControl, RefusesWhatNoBusCouldCarry) {
    EXPECT_LT(app_control_add_extra_data(request, "text", "\xFF\xFE"), 0);
    EXPECT_LT(app_control_add_extra_data(request, "\xC3", "Hello"), 0);
    EXPECT_LT(app_control_set_app_id(request, "org.\xC3"), 0);
    EXPECT_EQ(request->appId, "");
    EXPECT_THAT(request->extraData, IsEmpty());
}

TEST_F(AppControl, RefusesNull) {
    EXPECT_LT(app_control_create(nullptr), 0);
    EXPECT_LT(app_control_destroy(nullptr), 0);
    EXPECT_LT(app_control_set_app_id(nullptr, "org.vantu.one"), 0);
    EXPECT_LT(app_control_set_app_id(request, nullptr), 0);
    EXPECT_LT(app_control_add_extra_data(nullptr, "text", "Hello"), 0);
    EXPECT_LT(app_control_add_extra_data(request, nullptr, "Hello"), 0);
    EXPECT_LT(app_control_add_extra_data(request, "text", nullptr), 0);
    EXPECT_LT(app_control_send_launch_request(nullptr, nullptr, nullptr), 0);
}

TEST_F(AppControl, LaunchesNothingWithoutAnApplicationIdAndNoPath) {
    EXPECT_LT(app_control_send_launch_request(request, nullptr, nullptr), 0);
    app_control_set_app_id(request, "/bin/true");
    EXPECT_LT(app_control_send_launch_request(request, nullptr, nullptr), 0);
    EXPECT_THAT(Log(), ElementsAre(Error("Cannot launch '': not an application id"),
                                   Error("Cannot launch '/bin/true': not an application id")));
}

constexpr const char* ID = "org.vantu.alert-syspopup";

using Variant = std::unique_ptr<GVariant, decltype(&g_variant_unref)>;

Variant Sunk(GVariant* floating) {
    return {g_variant_ref_sink(floating), g_variant_unref};
}

app_control_s FromArguments(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "program");
    return desktop::FromArguments(ID, static_cast<int>(arguments.size()), arguments.data());
}

TEST(LaunchProtocol, CallsAnApplicationAtThePathOfItsId) {
    EXPECT_EQ(ObjectPathOf("org.vantu.applist"), "/org/vantu/applist");
    EXPECT_EQ(ObjectPathOf(ID), "/org/vantu/alert_syspopup");
    EXPECT_NE(g_variant_is_object_path(ObjectPathOf(ID).c_str()), 0);
}

TEST(LaunchProtocol, CarriesAnyExtraDataInOrderOverTheBus) {
    for (const app_control_s& sent :
         {app_control_s{ID, {{"text", "Ciao è"}, {"type", "notification"}, {"a", ""}}},
          app_control_s{ID, {}}}) {
        const Variant parameter = Sunk(ToActionParameter(sent));
        EXPECT_STREQ(g_variant_get_type_string(parameter.get()), "a{ss}");
        const app_control_s received = FromActionParameter(ID, parameter.get());
        EXPECT_EQ(received.appId, ID);
        EXPECT_EQ(received.extraData, sent.extraData);
    }
}

TEST(LaunchProtocol, ReadsNoExtraDataFromAnythingElse) {
    EXPECT_THAT(FromActionParameter(ID, nullptr).extraData, IsEmpty());
    const Variant number = Sunk(g_variant_new_int32(1));
    EXPECT_THAT(FromActionParameter(ID, number.get()).extraData, IsEmpty());
    EXPECT_EQ(FromActionParameter(ID, number.get()).appId, ID);
}

TEST(LaunchProtocol, CarriesExtraDataInOrderInArguments) {
    const app_control_s sent{ID, {{"text", "1 = 1; $(true) \"'"}, {"type", ""}}};
    const std::vector<std::string> arguments = ToArguments(sent);
    EXPECT_THAT(arguments, ElementsAre("--extra", "text=1 = 1; $(true) \"'", "--extra", "type="));
    std::vector<const char*> argv;
    argv.reserve(arguments.size());
    for (const std::string& argument : arguments) {
        argv.push_back(argument.c_str());
    }
    EXPECT_EQ(FromArguments(argv).extraData, sent.extraData);
}

TEST(LaunchProtocol, LeavesOtherArgumentsToOthers) {
    EXPECT_THAT(FromArguments({"--gapplication-service", "a=b", "--extra", "c=d", "--x"}).extraData,
                ElementsAre(Pair("c", "d")));
}

TEST(LaunchProtocol, ReadsNothingFromAnExtraWithoutAPair) {
    EXPECT_THAT(FromArguments({"--extra", "text"}).extraData, IsEmpty());
    EXPECT_THAT(FromArguments({"--extra"}).extraData, IsEmpty());
    EXPECT_THAT(FromArguments({}).extraData, IsEmpty());
}

TEST(ApplicationId, IsTheProgramsFileNameInOurDomainIfTheBusCanCarryIt) {
    EXPECT_EQ(ApplicationIdOf("applist"), "org.vantu.applist");
    EXPECT_EQ(ApplicationIdOf("/usr/bin/alert-syspopup"), "org.vantu.alert-syspopup");
    EXPECT_EQ(ApplicationIdOf("./build/bin/applist"), "org.vantu.applist");
    for (const std::string& name : {std::string(), std::string("/usr/bin/"), std::string("7zip"),
                                    std::string("app list"), std::string(300, 'a')}) {
        EXPECT_EQ(ApplicationIdOf(name), "") << name;
    }
}

}  // namespace
}  // namespace applist::test
