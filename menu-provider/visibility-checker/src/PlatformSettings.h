// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

/// The region of the set, as this program numbers it. The three ISDB regions are treated alike.
enum LocalSet {
    LOCAL_NONE_OF = 0,
    LOCAL_ITALY = 1,
    LOCAL_BRAZIL = 2,
    LOCAL_ARGENTINA = 3,
    LOCAL_URUGUAY = 4,
};

/// The factory's item that holds the region, and the values that mean one of these.
constexpr int ID_LOCALSET = 194;
constexpr int FACTORY_ITALY = 8;
constexpr int FACTORY_BRAZIL = 81;
constexpr int FACTORY_ARGENTINA = 84;
constexpr int FACTORY_URUGUAY = 85;

/// Bits of PlatformSettings::GetDataServiceFlag().
enum DataServiceFlag {
    /// A data service exists.
    DATA_SERVICE_EXISTS = 1 << 1,
    /// What offers data services in the ISDB regions: either of these two bits.
    DATA_SERVICE_ISDB_MASK = DATA_SERVICE_EXISTS | 1 << 2,
};

/// The few settings of the set on which the offer of data services depends.
///
/// No state: each call reads the platform's stores anew. No call fails: a value that cannot be read
/// leaves an error line in the log and becomes the neutral one (false, 0, LOCAL_NONE_OF).
class PlatformSettings {
public:
    PlatformSettings() = delete;

    /// Bool: the viewer's menu setting that data services start by themselves.
    static const std::string AUTORUN_DATA_SERVICE_KEY;
    /// Int: what the TV viewer says of the current channel, see DataServiceFlag.
    static const std::string DATA_SERVICE_KEY;
    /// Int: not 0 while the middleware has an auto-start application.
    static const std::string AUTOSTART_APP;

    static bool IsAutorunDataService();
    static bool IsAutostartApp();
    static int GetDataServiceFlag();

    /// The region, a LocalSet, from the factory's data. That service may come up later than this
    /// program, so a failed read is tried again: blocks for up to five seconds.
    static int GetLocalSet();
};
