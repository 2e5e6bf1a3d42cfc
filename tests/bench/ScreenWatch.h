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

/// How wide a strip is: some letters, so that no two rows look the same in it.
constexpr int STRIP_WIDTH = 48;

/// The pixels of an upright strip of the screen, row by row from its top, as 0xRRGGBB.
using Strip = std::vector<uint32_t>;

/// How many borders of letters and boxes the strip holds: what tells a strip through rows of text
/// from one through an empty panel, however either is coloured.
int CountEdges(const Strip& strip);

/// Watches a display for changes at the cost of one shared-memory copy of a strip for each.
class ScreenWatch {
public:
    /// name is the display's, ":7". Ends the program if it cannot be watched.
    explicit ScreenWatch(const std::string& name);
    ~ScreenWatch();
    ScreenWatch(const ScreenWatch&) = delete;
    ScreenWatch& operator=(const ScreenWatch&) = delete;
    ScreenWatch(ScreenWatch&&) = delete;
    ScreenWatch& operator=(ScreenWatch&&) = delete;

    /// The pixels of the strip from x on, now.
    Strip Grab(int x);
    /// Where the strip begins that holds most edges, now.
    int BusiestStrip();

    /// Waits until something is drawn; when that was reported, or nothing if until passes first.
    std::optional<Clock::time_point> AwaitDamage(Clock::time_point until);
    /// Waits until nothing has been drawn for quiet.
    void AwaitQuiet(std::chrono::milliseconds quiet);
    /// Asks after each drawing whether what is wanted is in the strip from x on; when that drawing
    /// was reported, or nothing if patience ends first.
    std::optional<Clock::time_point> AwaitStrip(int x,
                                                const std::function<bool(const Strip&)>& wanted,
                                                std::chrono::milliseconds patience);
    /// Waits until a window leaves the screen; when.
    std::optional<Clock::time_point> AwaitUnmap(std::chrono::milliseconds patience);
    /// Forgets what was reported so far.
    void Forget();

private:
    struct Connection;
    std::unique_ptr<Connection> m_connection;
};

}  // namespace applist::bench
