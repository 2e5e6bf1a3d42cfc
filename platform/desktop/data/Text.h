// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Properties of the texts that i18n_get_text() returns.
///
/// The viewer's languages are taken from LANGUAGE, LC_ALL, LC_MESSAGES and LANG at the start of the
/// process. A language needs a catalogue, but its locale need not be installed.
namespace applist::desktop {

/// Sets LANGUAGE to the viewer's languages. Done at the start of the process; only to be called
/// again after the whole environment has been replaced. No other thread may use the environment.
void ChooseLanguages();

/// Returns true if the language of the texts is written from right to left. Main thread.
bool TextRunsRightToLeft();

}  // namespace applist::desktop
