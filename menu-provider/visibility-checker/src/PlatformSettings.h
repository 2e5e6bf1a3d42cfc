// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

/// The region of the set. The program treats the three ISDB regions (Brazil, Argentina, Uruguay)
/// alike.
enum LocalSet {
    LOCAL_NONE_OF = 0,
    LOCAL_ITALY = 1,
    LOCAL_BRAZIL = 2,
    LOCAL_ARGENTINA = 3,
    LOCAL_URUGUAY = 4,
};

/// The id of the factory item that holds the region, and the item's values for the known regions.
constexpr int ID_LOCALSET = 194;
constexpr int FACTORY_ITALY = 8;
constexpr int FACTORY_BRAZIL = 81;
constexpr int FACTORY_ARGENTINA = 84;
constexpr int FACTORY_URUGUAY = 85;

/// Bits of PlatformSettings::GetDataServiceFlag().
enum DataServiceFlag {
    /// A data service exists.
    DATA_SERVICE_EXISTS = 1 << 1,
    /// Either of these bits means that a data service is available in an ISDB region.
    DATA_SERVICE_ISDB_MASK = DATA_SERVICE_EXISTS | 1 << 2,
};

/// Reads the settings that decide whether data services are offered.
///
/// Stateless: each call reads the platform's stores again. A value that cannot be read is logged as
/// an error and replaced by its neutral value (false, 0 or LOCAL_NONE_OF). Any thread.
class PlatformSettings {
public:
    PlatformSettings() = delete;

    /// Bool: true if the viewer has chosen in the menu that data services start automatically.
    static const std::string AUTORUN_DATA_SERVICE_KEY;
    /// Int: the TV viewer's flags for the current channel, see DataServiceFlag.
    static const std::string DATA_SERVICE_KEY;
    /// Int: non-zero while the middleware has an auto-start application.
    static const std::string AUTOSTART_APP;

    static bool IsAutorunDataService();
    static bool IsAutostartApp();
    static int GetDataServiceFlag();

    /// Returns the region, a LocalSet, from the factory data. The factory-data service may start
    /// later than this program, so a failed read is retried every 500 ms. Blocks for up to five
    /// seconds.
    static int GetLocalSet();
};
