/* Copyright (c) 2026 the applist authors
 * SPDX-License-Identifier: Apache-2.0 */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/* The text for a message id in the viewer's language, in UTF-8. Falls back to English where the
 * language has none, and to the id itself for an id that nobody knows. The result is the
 * platform's and stays valid while the program runs. Main thread only. */
const char* i18n_get_text(const char* message_id);

#ifdef __cplusplus
}
#endif
