// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "fakes/FakePlatformLog.h"
#include "fuzz/Properties.h"

namespace applist::test {
namespace {

using Property = std::string (*)(std::string_view);

void ExpectToHold(Property property, const std::string& bytes) {
    EXPECT_EQ(property(bytes), "") << testing::PrintToString(bytes);
    ClearLog();
}

/// Each seed, cut at every position, and with each byte replaced by the boundary values of lengths
/// and signs.
void ExpectToHoldAround(Property property, const std::vector<std::string>& seeds) {
    for (const std::string& seed : seeds) {
        ExpectToHold(property, seed);
        for (size_t i = 0; i < std::min<size_t>(seed.size(), 200); ++i) {
            ExpectToHold(property, seed.substr(0, i));
            std::string changed = seed;
            for (const int value : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
                changed[i] = static_cast<char>(value);
                ExpectToHold(property, changed);
            }
        }
    }
}

void ExpectToHoldForCorpus(Property property, const std::string& fuzzer) {
    const std::vector<std::string> inputs = Corpus(fuzzer);
    EXPECT_GT(inputs.size(), 1U) << fuzzer;
    for (const std::string& input : inputs) {
        ExpectToHold(property, input);
    }
}

TEST(AnyBytes, AreReadAsTheItemsThatTheyBeginWith) {
    ExpectToHoldAround(CheckItemStream, ItemStreamSeeds());
    ExpectToHoldForCorpus(CheckItemStream, "item_stream");
}

TEST(AnyBytes, PassTheAdapterUnchanged) {
    ExpectToHoldAround(CheckAdapterFrame, AdapterFrameSeeds());
    ExpectToHoldForCorpus(CheckAdapterFrame, "adapter_frame");
}

TEST(AnyBytes, AreStepsAfterWhichTheProgramIsAsTheProtocolSays) {
    ExpectToHoldAround(CheckWholeProgram, WholeProgramSeeds());
    ExpectToHoldForCorpus(CheckWholeProgram, "whole_program");
}

TEST(AnyBytes, ReadBackWithoutADifferenceWhenTheyAreRecordedTraffic) {
    ExpectToHoldAround(CheckRecordedTraffic, RecordedTrafficSeeds());
    ExpectToHoldForCorpus(CheckRecordedTraffic, "recorded_traffic");
}

TEST(AnyBytes, ChangeNoOtherSettingWhenTheyAreTheFileOfOne) {
    ExpectToHoldAround(CheckSettingsFile, SettingsFileSeeds());
    ExpectToHoldForCorpus(CheckSettingsFile, "settings_file");
}

TEST(AnyBytes, AreReadLineByLineWhenTheyAreAScenario) {
    ExpectToHoldAround(CheckScenario, ScenarioSeeds());
    ExpectToHoldForCorpus(CheckScenario, "scenario");
}

TEST(AnyBytes, MakeAListOfTheirApplicationsWhenTheyAreATransportStream) {
    ExpectToHoldAround(CheckBroadcastStream, BroadcastStreamSeeds());
    ExpectToHoldForCorpus(CheckBroadcastStream, "broadcast_stream");
}

TEST(AnyBytes, MakeAListOfTheirApplicationsWhenTheyAreSections) {
    ExpectToHoldAround(CheckSectionFile, SectionFileSeeds());
    ExpectToHoldForCorpus(CheckSectionFile, "section_file");
}

TEST(AnyBytes, MakeAListOfTheirApplicationsWhenTheyAreTheBodyOfATable) {
    ExpectToHoldAround(CheckTableBody, TableBodySeeds());
    ExpectToHoldForCorpus(CheckTableBody, "table_body");
}

TEST(AnyBytes, MakeAListOfTheirApplicationsWhenTheyAreXml) {
    ExpectToHoldAround(CheckApplicationXml, ApplicationXmlSeeds());
    ExpectToHoldForCorpus(CheckApplicationXml, "application_xml");
}

}  // namespace
}  // namespace applist::test
