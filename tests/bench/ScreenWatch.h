// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace applist::bench {

using Clock = std::chrono::steady_clock;

/// The width of a strip in pixels: a few letters, so that no two rows look the same in it.
constexpr int STRIP_WIDTH = 48;

/// The pixels of a vertical strip of the screen, row by row from the top, as 0xRRGGBB.
using Strip = std::vector<uint32_t>;

/// The number of edges of letters and boxes in the strip. It distinguishes a strip with rows of
/// text from an empty panel, whatever the colours.
int CountEdges(const Strip& strip);

/// Watches a display for changes. Each change costs one shared-memory copy of a strip.
class ScreenWatch {
public:
    /// name is the display's name, such as ":7". Ends the program if the display cannot be watched.
    explicit ScreenWatch(const std::string& name);
    ~ScreenWatch();
    ScreenWatch(const ScreenWatch&) = delete;
    ScreenWatch& operator=(const ScreenWatch&) = delete;

    /// The current pixels of the strip that starts at x.
    Strip Grab(int x);
    /// The start of the strip that now contains the most edges.
    int BusiestStrip();

    /// Waits until something is drawn. Returns the time of the report, or nothing if until passes
    /// first.
    std::optional<Clock::time_point> AwaitDamage(Clock::time_point until);
    /// Waits until nothing has been drawn for the time quiet.
    void AwaitQuiet(std::chrono::milliseconds quiet);
    /// Checks the strip at x with wanted after each drawing. Returns the time at which the matching
    /// drawing was reported, or nothing if patience ends first.
    std::optional<Clock::time_point> AwaitStrip(int x,
                                                const std::function<bool(const Strip&)>& wanted,
                                                std::chrono::milliseconds patience);
    /// Waits until a window leaves the screen and returns the time.
    std::optional<Clock::time_point> AwaitUnmap(std::chrono::milliseconds patience);
    /// Discards the pending reports.
    void Forget();

private:
    /// Waits for an event of a wanted type; returns the time, or nothing if until passes first.
    std::optional<Clock::time_point> AwaitEvent(Clock::time_point until,
                                                const std::function<bool(int type)>& wanted);

    struct Connection;
    std::unique_ptr<Connection> m_connection;
};

}  // namespace applist::bench
