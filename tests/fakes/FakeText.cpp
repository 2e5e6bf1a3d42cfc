// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "fakes/FakeText.h"

#include <set>

#include "i18n_text.h"

extern "C" const char* i18n_get_text(const char* message_id) {
    static std::set<std::string> texts;
    return texts.insert(applist::test::TranslationOf(message_id)).first->c_str();
}
