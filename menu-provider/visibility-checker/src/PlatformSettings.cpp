// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "PlatformSettings.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <unistd.h>

#include "Log.h"
#include "factory_data.h"
#include "settings_store.h"

const std::string PlatformSettings::AUTORUN_DATA_SERVICE_KEY =
    "db/menu/broadcasting/autorun-dataservice";
const std::string PlatformSettings::DATA_SERVICE_KEY = "memory/tv-viewer/data_service";
const std::string PlatformSettings::AUTOSTART_APP = "memory/javamw/autostart-app";

namespace {

// The factory data are served by another process that may still be starting after power-on. Five
// seconds in all.
constexpr int LOCALSET_ATTEMPTS = 10;
constexpr useconds_t LOCALSET_PAUSE_US = 500'000;

using FactoryBuffer = std::array<std::byte, FACTORY_DATA_BUFFER_SIZE>;

// Copied, because reading bytes through a pointer to int is undefined.
int FirstWord(const FactoryBuffer& buffer) {
    int32_t word = 0;
    std::memcpy(&word, buffer.data(), sizeof word);
    return word;
}

LocalSet LocalSetOf(int factoryRegion) {
    switch (factoryRegion) {
        case FACTORY_ITALY:
            return LOCAL_ITALY;
        case FACTORY_BRAZIL:
            return LOCAL_BRAZIL;
        case FACTORY_ARGENTINA:
            return LOCAL_ARGENTINA;
        case FACTORY_URUGUAY:
            return LOCAL_URUGUAY;
        // A set knows more regions than these. None of the others offers data services.
        default:
            return LOCAL_NONE_OF;
    }
}

}  // namespace

bool PlatformSettings::IsAutorunDataService() {
    LOG_DEBUG("Get Autorun Data Service");
    int value = 0;
    // An unreadable setting counts as off or 0, so the checks that follow need no error path.
    if (vconf_get_bool(AUTORUN_DATA_SERVICE_KEY.c_str(), &value) != 0) {
        LOG_ERROR("Can not get value for Autorun Data Service menu item");
    }
    LOG_DEBUG("Autorun Data Service value from vconf: %d", value);
    return value != 0;
}

bool PlatformSettings::IsAutostartApp() {
    LOG_DEBUG("Get autostart application information");
    int value = 0;
    if (vconf_get_int(AUTOSTART_APP.c_str(), &value) != 0) {
        LOG_ERROR("Can not get value for autostart application");
    }
    LOG_DEBUG("Autostart application value from vconf: %d", value);
    return value != 0;
}

int PlatformSettings::GetDataServiceFlag() {
    int value = 0;
    if (vconf_get_int(DATA_SERVICE_KEY.c_str(), &value) == 0) {
        LOG_DEBUG("DATA_SERVICE VCONF value is : %d", value);
    } else {
        LOG_ERROR("Can not get data service value from VCONF");
    }
    return value;
}

int PlatformSettings::GetLocalSet() {
    // Aligned because GetDataDirect() writes an int into it.
    alignas(int32_t) FactoryBuffer buffer{};
    for (int attempt = 0; attempt < LOCALSET_ATTEMPTS; ++attempt) {
        LOG_DEBUG("GetData(ID_LOCALSET, ...) loop=%d;", attempt);
        const int status = GetDataDirect(ID_LOCALSET, buffer.data());
        const int value = FirstWord(buffer);
        LOG_DEBUG("ID_LOCALSET value: %d", value);
        if (status == FACTORY_DATA_INTEGER) {
            return LocalSetOf(value);
        }
        // Blocks, because nothing can be decided without the region.
        usleep(LOCALSET_PAUSE_US);
    }
    // The line prints the buffer's address in place of a value, because no value could be read.
    LOG_ERROR("GetData failed or is not int for ID_LOCALSET[value = %d]",
              static_cast<int>(reinterpret_cast<intptr_t>(buffer.data())));
    return LOCAL_NONE_OF;
}
