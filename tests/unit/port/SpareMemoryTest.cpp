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

/// Takes that much in small pieces and gives it back, but for a piece at its end.
std::unique_ptr<char[]> Fill(size_t bytes) {
    std::vector<std::unique_ptr<char[]>> objects(bytes / OBJECT);
    for (auto& object : objects) {
        object = std::make_unique<char[]>(OBJECT);
    }
    return std::move(objects.back());
}

TEST(SpareMemory, IsGivenBackFromTheMiddleOfTheHeap) {
    SpareMemory memory;
    const size_t before = Resident();
    const auto last = Fill(32 * MIB);
    ASSERT_GT(Resident(), before + 30 * MIB);
    memory.GiveBack();
    EXPECT_LT(Resident(), before + 4 * MIB);
}

TEST(SpareMemory, IsGivenBackAgainEachTimeTheHeapHasGrown) {
    SpareMemory memory;
    const size_t before = Resident();
    const auto first = Fill(16 * MIB);
    memory.GiveBack();
    const auto second = Fill(32 * MIB);
    memory.GiveBack();
    EXPECT_LT(Resident(), before + 4 * MIB);
}

TEST(SpareMemory, IsKeptWhereItIsLittle) {
    const auto enough = Fill(2 * MIB);
    SpareMemory memory;
    const auto last = Fill(MIB);
    const size_t before = Resident();
    memory.GiveBack();
    EXPECT_GE(Resident(), before);
}

}  // namespace
}  // namespace applist::test
