// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include <gtest/gtest.h>

#include "feed/BroadcastFilter.h"
#include "support/ScannedBroadcast.h"

namespace applist::sim {
namespace {

using test::ScanBroadcast;

/// Scans recorded broadcasts. They cannot be distributed with the sources, so these tests are
/// skipped unless a folder of recordings exists.
class RecordedBroadcast : public testing::Test {
protected:
    Broadcast Scan(const std::string& name) {
        std::ifstream file(m_folder / name, std::ios::binary);
        const std::vector<uint8_t> bytes{std::istreambuf_iterator<char>(file), {}};
        EXPECT_FALSE(bytes.empty()) << name;
        return ScanBroadcast(bytes);
    }

    void SetUp() override {
        if (!std::filesystem::is_directory(m_folder)) {
            GTEST_SKIP() << "no recordings in " << m_folder;
        }
    }

private:
    static std::filesystem::path Folder() {
        const char* source = std::getenv("APPLIST_SOURCE");
        return std::filesystem::path(source != nullptr ? source : ".") / "../shared/captures";
    }

    std::filesystem::path m_folder = Folder();
};

TEST_F(RecordedBroadcast, OffersTwoOfThreeApplicationsSharedByItsServices) {
    const Broadcast broadcast = Scan("dvbj-three-services.ts");
    EXPECT_EQ(OfferedItems(broadcast.snapshots.back(), {}),
              (Items{{"0000000b.1ab6", "Launcher SAT"}, {"0000000b.1ab7", "Programmi TV SAT"}}));
    EXPECT_EQ(broadcast.snapshots.size(), 1U);
    EXPECT_EQ(broadcast.damage.packets(), 0U);
    EXPECT_EQ(broadcast.damage.sections(), 0U);
    for (const size_t service : {size_t{0}, size_t{1}}) {
        ASSERT_EQ(broadcast.snapshots.back().services.at(service).tables.size(), 3U);
        const Application& hidden =
            broadcast.snapshots.back().services[service].tables[0]->applications.at(0);
        EXPECT_EQ(UniqueId(hidden), "0000000b.1ab5");
        EXPECT_EQ(hidden.names.at(0).text, "Programmi TV BB SAT");
        EXPECT_EQ(hidden.visibility, 1);
    }
}

TEST_F(RecordedBroadcast, OffersBothApplicationsOfAServiceWithMalformedLanguageCodes) {
    const Broadcast broadcast = Scan("hbbtv-two-applications.ts");
    EXPECT_EQ(OfferedItems(broadcast.snapshots.back(), {}),
              (Items{{"00000120.0071", "Launcher"}, {"00000120.0072", "arte7"}}));
    ASSERT_EQ(broadcast.snapshots.back().services.size(), 1U);
    EXPECT_EQ(broadcast.snapshots.back().services[0].id, 1031);
    EXPECT_EQ(broadcast.snapshots.back().services[0].tables.at(0)->type, 0x0010);
}

}  // namespace
}  // namespace applist::sim
