/* Copyright (c) 2026 the applist authors
 * SPDX-License-Identifier: Apache-2.0 */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/* Returns the text for a message id in the viewer's language, in UTF-8. Falls back to English if
 * the language lacks the text, and to the id itself if the id is unknown. The platform owns the
 * result, which stays valid until the program ends. Main thread only. */
const char* i18n_get_text(const char* message_id);

#ifdef __cplusplus
}
#endif
