// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Evas.h>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "support/Picture.h"

namespace applist::test {

/// Groups of the desktop's theme that tests look into.
inline const std::string PANEL_GROUP = "elm/notify/center/popup/default";
inline const std::string POPUP_GROUP = "elm/popup/base/default";
inline const std::string LIST_GROUP = "elm/genlist/base/default";
inline const std::string ROW_GROUP = "elm/genlist/item/1text_left_styleA/default";

/// Returns a picture of the window's current content.
Picture Draw(Evas_Object* window);
/// Write and read PNG files with the toolkit's own code on the window's canvas. On failure they
/// return false and a picture without pixels.
bool SavePng(Evas_Object* window, const Picture& picture, const std::filesystem::path& file);
Picture LoadPng(Evas_Object* window, const std::filesystem::path& file);

/// The visible objects on the window's canvas that use this group of the theme, from top to bottom.
std::vector<Evas_Object*> ObjectsOf(Evas_Object* window, const std::string& group);
/// The theme files that the visible objects on the window's canvas come from.
std::set<std::string> ThemesOf(Evas_Object* window);
/// The box of an object, and of one of its parts.
Box BoxOf(const Evas_Object* object);
Box BoxOf(const Evas_Object* object, const char* part);
/// The box of the letters in a text part, which may be smaller than the part.
Box TextBoxOf(const Evas_Object* object, const char* part);
/// The whole text of a text part, even if it is drawn cut.
std::string TextOf(const Evas_Object* object, const char* part);
/// The state of a part, or the state to which it is changing.
std::string StateOf(const Evas_Object* object, const char* part);

}  // namespace applist::test
