// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <fstream>
#include <memory>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

#include "app/SpareMemory.h"

namespace applist::test {
namespace {

using desktop::SpareMemory;

constexpr size_t OBJECT = 200;
constexpr size_t MIB = 1 << 20;

size_t Resident() {
    std::ifstream file("/proc/self/statm");
    size_t total = 0;
    size_t resident = 0;
    file >> total >> resident;
    return resident * static_cast<size_t>(sysconf(_SC_PAGESIZE));
}

using Objects = std::vector<std::unique_ptr<char[]>>;

/// Allocates that much memory in small pieces.
Objects Take(size_t bytes) {
    Objects objects(bytes / OBJECT);
    for (auto& object : objects) {
        object = std::make_unique<char[]>(OBJECT);
    }
    return objects;
}

/// Allocates as above and frees all but the last piece.
std::unique_ptr<char[]> Fill(size_t bytes) {
    return std::move(Take(bytes).back());
}

TEST(SpareMemory, IsGivenBackFromTheMiddleOfTheHeapEachTimeItHasGrown) {
    SpareMemory memory;
    const size_t before = Resident();
    const auto first = Fill(16 * MIB);
    ASSERT_GT(Resident(), before + 15 * MIB);
    memory.GiveBack();
    const auto second = Fill(32 * MIB);
    memory.GiveBack();
    EXPECT_LT(Resident(), before + 4 * MIB);
}

TEST(SpareMemory, IsGivenBackIfItIsFreedOnlyAfterRests) {
    SpareMemory memory;
    const size_t before = Resident();
    Objects objects = Take(32 * MIB);
    memory.GiveBack();
    memory.GiveBack();
    const auto last = std::move(objects.back());
    objects.clear();
    memory.GiveBack();
    EXPECT_LT(Resident(), before + 4 * MIB);
}

TEST(SpareMemory, IsKeptWhereItIsLittle) {
    const auto enough = Fill(2 * MIB);
    SpareMemory memory;
    const auto last = Fill(MIB / 16);
    const size_t before = Resident();
    memory.GiveBack();
    EXPECT_GE(Resident(), before);
}

}  // namespace
}  // namespace applist::test
