// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What i18n_get_text() knows beyond the texts themselves.
///
/// The viewer's languages are those of LANGUAGE, LC_ALL, LC_MESSAGES and LANG as the process was
/// started; a language needs a catalogue, but no locale on the system.
namespace applist::desktop {

/// True iff the language in which texts are given is written from right to left. Main thread.
bool TextRunsRightToLeft();

}  // namespace applist::desktop
