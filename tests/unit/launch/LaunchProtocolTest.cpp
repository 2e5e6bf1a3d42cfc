// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <memory>
#include <string>
#include <vector>

#include <gio/gio.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "launch/LaunchProtocol.h"

namespace applist::test {
namespace {

using namespace applist::desktop;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

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

TEST(LaunchProtocol, CarriesExtraDataInOrderOverTheBus) {
    const app_control_s sent{ID, {{"text", "Ciao è"}, {"type", "notification"}, {"a", ""}}};
    const Variant parameter = Sunk(ToActionParameter(sent));
    EXPECT_STREQ(g_variant_get_type_string(parameter.get()), "a{ss}");
    const app_control_s received = FromActionParameter(ID, parameter.get());
    EXPECT_EQ(received.appId, ID);
    EXPECT_EQ(received.extraData, sent.extraData);
}

TEST(LaunchProtocol, CarriesARequestWithoutExtraData) {
    const Variant parameter = Sunk(ToActionParameter({ID, {}}));
    EXPECT_STREQ(g_variant_get_type_string(parameter.get()), "a{ss}");
    EXPECT_THAT(FromActionParameter(ID, parameter.get()).extraData, IsEmpty());
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

}  // namespace
}  // namespace applist::test
