// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "fakes/FakeFactoryData.h"

#include <cstring>

namespace applist::test {

// The most that the service may write for one item; a smaller buffer overflows. Deliberately not
// the constant from which callers take the size.
constexpr size_t ITEM_SIZE = 1008;

FakeFactoryData& TheFactoryData() {
    static FakeFactoryData data;
    return data;
}

}  // namespace applist::test

extern "C" int GetDataDirect(int id, void* buffer) {
    using applist::test::ITEM_SIZE;
    auto& data = applist::test::TheFactoryData();
    data.reads.push_back({id, buffer});
    if (data.answers.empty()) {
        return -1;
    }
    const auto answer = data.answers.front();
    if (data.answers.size() > 1) {
        data.answers.pop_front();
    }
    std::memset(buffer, 0x5A, ITEM_SIZE);
    std::memcpy(buffer, &answer.value, sizeof answer.value);
    return answer.status;
}
