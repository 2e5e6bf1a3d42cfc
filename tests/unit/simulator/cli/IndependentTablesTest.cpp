// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/ChildProcess.h"
#include "support/Simulator.h"
#include "support/TemporaryDir.h"
#include "support/TsGenerator.h"

namespace applist::test {
namespace {

using Lines = std::set<std::string>;

std::filesystem::path Source() {
    const char* source = std::getenv("APPLIST_SOURCE");
    return source != nullptr ? source : ".";
}

std::string OutputOf(const std::vector<std::string>& command) {
    ChildProcess program(command, {{"LC_ALL", "C"}, {"LANGUAGE", ""}});
    EXPECT_EQ(program.WaitForExit(), 0) << program.Errors();
    return program.Output();
}

Lines Independent(const std::string& file) {
    std::istringstream output(OutputOf(
        {"python3", (Source() / "tests/unit/simulator/cli/independent_tables.py").string(), file}));
    Lines lines;
    for (std::string line; std::getline(output, line);) {
        lines.insert(line);
    }
    return lines;
}

// The fields before the names of a line of CSV, with the number of the control code.
std::string Fields(const std::string& line) {
    static const std::map<std::string, std::string> CODES{
        {"AUTOSTART", "1"}, {"PRESENT", "2"}, {"DESTROY", "3"}, {"KILL", "4"}};
    std::istringstream cells(line);
    std::string fields;
    std::string cell;
    for (int column = 0; column < 7 && std::getline(cells, cell, ','); ++column) {
        const auto code = CODES.find(cell);
        fields += (column == 0 ? "" : " ") + (code != CODES.end() ? code->second : cell);
    }
    return fields;
}

/// Compares the lists, and that of the same stream through a pipe. Returns the number of lines.
size_t ExpectAgreement(const std::string& file) {
    const std::string simulator = BuiltProgram("javamw-sim");
    const std::string csv = OutputOf({simulator, "applications", "--csv", file});
    std::istringstream output(csv);
    Lines lines;
    std::string line;
    std::getline(output, line);
    while (std::getline(output, line)) {
        lines.insert(Fields(line));
    }
    EXPECT_EQ(lines, Independent(file)) << file;
    EXPECT_EQ(OutputOf({"sh", "-c", "cat '" + file + "' | " + simulator + " applications --csv -"}),
              csv);
    return lines.size();
}

TEST(IndependentTables, AgreeOnAGeneratedStream) {
    TsGenerator generator;
    std::vector<TsApplication> many;
    for (uint16_t id = 0; id < 60; ++id) {
        many.push_back({0xFFFFFF00U + id,
                        id,
                        static_cast<uint8_t>(1 + id % 4),
                        static_cast<uint8_t>(id % 4),
                        {{"ita", "Servizio " + std::to_string(id)}},
                        static_cast<uint8_t>(id * 4)});
    }
    for (int i = 0; i < 3; ++i) {
        generator.Add(0, TsAssociation({{1, 0x0200}, {0xFFFF, 0x1FFE}}));
        generator.Add(0x0200, TsMap(1, {0x0300, 0x0301}));
        generator.Add(0x1FFE, TsMap(0xFFFF, {0x0301}));
        generator.Add(0x0300, TsApplications(many, 0x0001));
        generator.Add(0x0301, TsApplications({{11, 1}, {11, 2}}, 0x0010));
    }
    const TemporaryDir folder;
    const std::string file = (folder.path() / "generated.ts").string();
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(generator.stream().data()),
               static_cast<std::streamsize>(generator.stream().size()));
    EXPECT_EQ(ExpectAgreement(file), 64U);
}

// Recorded streams are not part of the project. Skipped unless a folder of them exists.
TEST(IndependentTables, AgreeOnRecordedStreams) {
    const auto folder = Source() / "../shared/captures";
    if (!std::filesystem::is_directory(folder)) {
        GTEST_SKIP() << "no recordings in " << folder;
    }
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".ts") {
            EXPECT_GT(ExpectAgreement(entry.path().string()), 0U);
        }
    }
}

}  // namespace
}  // namespace applist::test
