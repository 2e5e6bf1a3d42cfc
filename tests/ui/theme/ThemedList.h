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
#include "ui/theme/Scene.h"

namespace applist::test {

/// Groups of the theme that tests look into.
inline const std::string PANEL_GROUP = "elm/notify/center/popup/default";
inline const std::string POPUP_GROUP = "elm/popup/base/default";
inline const std::string LIST_GROUP = "elm/genlist/base/default";
inline const std::string ROW_GROUP = "elm/genlist/item/1text_left_styleA/default";

enum class Variant { STANDARD, HIGH_CONTRAST };
/// The compiled theme.
std::filesystem::path ThemeFile(Variant variant);

/// How something is to be shown.
struct Look {
    Variant variant = Variant::STANDARD;
    /// Of the screen, whose width follows.
    int height = 1080;
    bool rightToLeft = false;
};
/// Makes the toolkit, which must have the theme, draw that way, as the desktop's port does.
void Apply(const Look& look);

/// The real list in the desktop's theme, drawn into memory and filled by the test.
class ThemedList {
public:
    explicit ThemedList(const Look& look = {});

    /// Shows rows with these names and waits until the focus mark of one of them stands still.
    void Show(const std::vector<std::string>& names, size_t focused = 0);
    /// Moves the focus, and waits in the same way.
    void Focus(size_t row);
    /// Empties the list.
    void Clear();
    /// Waits until the focused name slides, or until this many seconds are over.
    bool WaitForSlide(double seconds) const;
    /// Runs for this time: for what must not happen in it.
    static void Pass(double seconds);

    Evas_Object* window() const;
    /// The one panel, popup and list.
    Evas_Object* panel() const { return Only(PANEL_GROUP); }
    Evas_Object* popup() const { return Only(POPUP_GROUP); }
    Evas_Object* list() const { return Only(LIST_GROUP); }
    /// The rows of which something can be seen, from the top of the screen.
    std::vector<Evas_Object*> rows() const;
    /// The one of them that shows this name, or null.
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

/// "Row 1" to "Row count".
std::vector<std::string> NumberedRows(int count);

}  // namespace applist::test
