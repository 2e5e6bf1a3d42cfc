// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "fakes/FakeText.h"

#include <set>

#include "i18n_text.h"

namespace {

bool IsId(const std::string& text) {
    return text.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_") == std::string::npos;
}

}  // namespace

extern "C" const char* i18n_get_text(const char* message_id) {
    static std::set<std::string> texts;
    const std::string text =
        IsId(message_id) ? applist::test::TranslationOf(message_id) : message_id;
    return texts.insert(text).first->c_str();
}
