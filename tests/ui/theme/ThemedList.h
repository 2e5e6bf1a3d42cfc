// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Elementary.h>
#include <deque>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "applist/DefaultAppListItem.h"
#include "fakes/FakeListModel.h"
#include "support/HeadlessToolkit.h"
#include "support/Scene.h"

namespace applist::test {

enum class Variant { STANDARD, HIGH_CONTRAST };
/// A way to show the list.
struct Look {
    Variant variant = Variant::STANDARD;
    /// The screen's height in pixels.
    int height = 1080;
    bool rightToLeft = false;
    /// The viewer's text size in per cent.
    int textSize = 100;
    /// The screen's width divided by its height.
    double aspect = 16.0 / 9;
    bool reducedMotion = false;

    int Width() const { return static_cast<int>(height * aspect); }
};
std::ostream& operator<<(std::ostream& out, const Look& look);
/// The path of the compiled theme.
std::filesystem::path ThemeFile(const Look& look);
/// Makes the toolkit, which must have loaded the theme, draw that way, as the desktop's port does.
void Apply(const Look& look);

/// The real list in the desktop's theme, drawn into memory and filled by the test.
class ThemedList {
public:
    explicit ThemedList(const Look& look = {});

    /// Shows rows with these names and waits until the focus mark on one of them has stopped
    /// moving.
    void Show(const std::vector<std::string>& names, size_t focused = 0);
    /// Moves the focus and waits until the mark has stopped moving.
    void Focus(size_t row);
    /// Empties the list.
    void Clear();
    /// Waits until the focused name slides; false if it does not within this many seconds.
    bool WaitForSlide(double seconds) const;
    /// Runs the main loop for this time, to show that something does not happen.
    static void Pass(double seconds);

    Evas_Object* window() const;
    /// The list's panel, popup and list widget.
    Evas_Object* panel() const { return Only(PANEL_GROUP); }
    Evas_Object* popup() const { return Only(POPUP_GROUP); }
    Evas_Object* list() const { return Only(LIST_GROUP); }
    /// The rows that are at least partly visible, from the top of the screen.
    std::vector<Evas_Object*> rows() const;
    /// The visible row with this name, or null.
    Evas_Object* row(const std::string& name) const;
    HeadlessToolkit& toolkit() { return m_toolkit; }

private:
    class Renderer;
    Evas_Object* Only(const std::string& group) const;
    void WaitForFocus(const std::string& name) const;

    HeadlessToolkit m_toolkit;
    FakeListModel m_model;
    std::deque<DefaultAppListItem> m_items;
    std::shared_ptr<Renderer> m_renderer;
};

/// Counts how many times pixels of the window change on the screen.
class Frames {
public:
    explicit Frames(const Evas_Object* window) : m_canvas(evas_object_evas_get(window)) {
        evas_event_callback_add(m_canvas, EVAS_CALLBACK_RENDER_FLUSH_PRE, Count, &m_count);
    }
    ~Frames() {
        evas_event_callback_del_full(m_canvas, EVAS_CALLBACK_RENDER_FLUSH_PRE, Count, &m_count);
    }
    Frames(const Frames&) = delete;
    Frames& operator=(const Frames&) = delete;
    int count() const { return m_count; }

private:
    static void Count(void* count, Evas* /*canvas*/, void* /*info*/) {
        ++*static_cast<int*>(count);
    }
    Evas* m_canvas;
    int m_count = 0;
};

/// "Row 1" to "Row count".
std::vector<std::string> NumberedRows(int count);

/// Shows a row of capital H and returns the height of its letters on the screen, in pixels.
int HeightOfCapitalH(ThemedList& list);
/// The angle that a length spans at a distance of three picture heights, in degrees.
double AngleOf(int length, int pictureHeight);

}  // namespace applist::test
