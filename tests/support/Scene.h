// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Evas.h>
#include <filesystem>
#include <string>
#include <vector>

#include "support/Picture.h"

namespace applist::test {

/// Groups of the desktop's theme that tests look into.
inline const std::string PANEL_GROUP = "elm/notify/center/popup/default";
inline const std::string POPUP_GROUP = "elm/popup/base/default";
inline const std::string LIST_GROUP = "elm/genlist/base/default";
inline const std::string ROW_GROUP = "elm/genlist/item/1text_left_styleA/default";

/// What the window shows now.
Picture Draw(Evas_Object* window);
/// Writes and reads PNG files with the toolkit's own code; window lends its canvas. False, or a
/// picture without pixels, where the file cannot be written or read.
bool SavePng(Evas_Object* window, const Picture& picture, const std::filesystem::path& file);
Picture LoadPng(Evas_Object* window, const std::filesystem::path& file);

/// The visible objects on the window's canvas that draw this group of the theme, from top to
/// bottom of the screen.
std::vector<Evas_Object*> ObjectsOf(Evas_Object* window, const std::string& group);
/// Where an object, and a part of it, stands.
Box BoxOf(const Evas_Object* object);
Box BoxOf(const Evas_Object* object, const char* part);
/// Where the letters of a text part stand: a part may be larger than its text.
Box TextBoxOf(const Evas_Object* object, const char* part);
/// What a text part draws, cut or not.
std::string TextOf(const Evas_Object* object, const char* part);
/// The state that a part is in or on its way to.
std::string StateOf(const Evas_Object* object, const char* part);

}  // namespace applist::test
