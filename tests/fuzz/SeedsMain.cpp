// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "fuzz/Properties.h"

namespace {

bool Write(const std::filesystem::path& folder, std::vector<std::string> seeds) {
    const std::vector<std::string> found = applist::test::Corpus(folder.filename());
    seeds.insert(seeds.end(), found.begin(), found.end());
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    bool written = !error;
    int number = 0;
    for (const std::string& seed : seeds) {
        std::ofstream file(folder / ("seed-" + std::to_string(++number)), std::ios::binary);
        written = written && file.write(seed.data(), static_cast<std::streamsize>(seed.size()));
    }
    return written;
}

}  // namespace

/// Writes the seeds and the corpus of each fuzzer to a subfolder of the given folder.
int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: fuzz_seeds FOLDER\n";
        return 2;
    }
    const std::filesystem::path root = argv[1];
    if (!Write(root / "item_stream", applist::test::ItemStreamSeeds()) ||
        !Write(root / "adapter_frame", applist::test::AdapterFrameSeeds()) ||
        !Write(root / "recorded_traffic", applist::test::RecordedTrafficSeeds()) ||
        !Write(root / "scenario", applist::test::ScenarioSeeds()) ||
        !Write(root / "settings_file", applist::test::SettingsFileSeeds()) ||
        !Write(root / "broadcast_stream", applist::test::BroadcastStreamSeeds()) ||
        !Write(root / "section_file", applist::test::SectionFileSeeds()) ||
        !Write(root / "table_body", applist::test::TableBodySeeds()) ||
        !Write(root / "application_xml", applist::test::ApplicationXmlSeeds()) ||
        !Write(root / "whole_program", applist::test::WholeProgramSeeds())) {
        std::cerr << "fuzz_seeds: cannot write to " << argv[1] << '\n';
        return 1;
    }
    return 0;
}
