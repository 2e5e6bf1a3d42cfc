// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "data/FactoryData.h"

#include <cstring>

#include "CallbackGuard.h"
#include "Log.h"
#include "Number.h"
#include "data/FilePaths.h"
#include "data/KeyFile.h"
#include "factory_data.h"

namespace applist::desktop {
namespace {

constexpr const char* GROUP = "items";

/// Result of GetDataDirect(): no number could be read.
constexpr int FACTORY_DATA_FAILED = -1;

int Get(int id, void* buffer) {
    const auto item = ReadFactoryItem(id);
    if (!item) {
        LOG_ERROR("%s", item.error().c_str());
    }
    if (!item || !*item) {
        return FACTORY_DATA_FAILED;
    }
    // memcpy, because the caller's untyped buffer need not be aligned for an int32_t.
    std::memcpy(buffer, &**item, sizeof(int32_t));
    return FACTORY_DATA_INTEGER;
}

}  // namespace

Result<std::optional<int32_t>> ReadFactoryItem(int id) {
    using Found = Result<std::optional<int32_t>>;
    const std::string path = FactoryDataPath();
    const auto file = KeyFile::Load(path);
    if (!file) {
        return Found::Failure(file.error());
    }
    const auto text = file->Get(GROUP, std::to_string(id));
    if (!text) {
        return Found(std::nullopt);
    }
    const auto number = ParseNumber(*text);
    return number ? Found(number)
                  : Found::Failure(path + ": factory item " + std::to_string(id) +
                                   " is not a 32-bit number");
}

Failure WriteFactoryItem(int id, int32_t value) {
    return UpdateKeyFile(FactoryDataPath(), [=](KeyFile& file) {
        file.Set(GROUP, std::to_string(id), std::to_string(value));
    });
}

Failure RemoveFactoryItem(int id) {
    return UpdateKeyFile(FactoryDataPath(),
                         [=](KeyFile& file) { file.Remove(GROUP, std::to_string(id)); });
}

}  // namespace applist::desktop

extern "C" int GetDataDirect(int id, void* buffer) {
    // An exception must not reach the C caller.
    return applist::GuardCallback(-1, [=] { return applist::desktop::Get(id, buffer); });
}
