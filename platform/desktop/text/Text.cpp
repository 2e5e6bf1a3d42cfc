// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "text/Text.h"

#include <algorithm>
#include <clocale>
#include <cstring>
#include <glib.h>
#include <libintl.h>
#include <set>
#include <string>
#include <string_view>

#include "CallbackGuard.h"
#include "EnglishTexts.h"
#include "i18n_text.h"
#include "paths/DataPath.h"

namespace applist::desktop {
namespace {

constexpr const char* DOMAIN = "applist";
constexpr const char* LAST_RESORT = "en";

// The viewer's languages, best first, as gettext's LANGUAGE lists them, and English behind all.
// The plain C locale is left out: it would end gettext's search.
std::string Languages() {
    std::string languages;
    for (const char* const* name = g_get_language_names(); *name != nullptr; ++name) {
        const std::string base(*name, std::strcspn(*name, ".@"));
        if (base != "C" && base != "POSIX") {
            languages += std::string(*name) + ":";
        }
    }
    return languages + LAST_RESORT;
}

// gettext takes the languages from the environment alone, which must not change once there are
// other threads: this runs before main.
const bool LANGUAGES_CHOSEN =
    GuardCallback(false, [] { return g_setenv("LANGUAGE", Languages().c_str(), TRUE) != FALSE; });

// Sets a locale for one look-up in this thread. gettext ignores the languages in the plain C
// locale, and the viewer's own may not be generated on this system; C.UTF-8 always is there.
class ScopedLocale {
public:
    ScopedLocale() : m_locale(newlocale(LC_MESSAGES_MASK, "C.UTF-8", nullptr)) {
        m_previous = m_locale != nullptr ? uselocale(m_locale) : nullptr;
    }
    ~ScopedLocale() {
        if (m_locale != nullptr) {
            uselocale(m_previous);
            freelocale(m_locale);
        }
    }
    ScopedLocale(const ScopedLocale&) = delete;
    ScopedLocale& operator=(const ScopedLocale&) = delete;
    ScopedLocale(ScopedLocale&&) = delete;
    ScopedLocale& operator=(ScopedLocale&&) = delete;

private:
    locale_t m_locale;
    locale_t m_previous;
};

bool BindCatalogues() {
    const std::string catalogues = FindData("locale");
    if (catalogues.empty()) {
        LOG_ERROR(
            "No message catalogues: there is no folder share/locale of this program; texts "
            "are English");
        return false;
    }
    bindtextdomain(DOMAIN, catalogues.c_str());
    bind_textdomain_codeset(DOMAIN, "UTF-8");
    return true;
}

// What is compiled in; null for an id that nobody knows. A viewer without catalogues, or with one
// that is cut short, gets English, not ids.
const char* English(std::string_view messageId) {
    const auto* const found =
        std::find_if(ENGLISH_TEXTS.begin(), ENGLISH_TEXTS.end(),
                     [messageId](const EnglishText& text) { return text.id == messageId; });
    return found != ENGLISH_TEXTS.end() ? found->text : nullptr;
}

// The id itself must outlive the call, too, like a text: it may be the caller's temporary.
const char* Keep(const char* messageId) {
    static std::set<std::string> ids;
    return ids.insert(messageId).first->c_str();
}

const char* Translate(const char* messageId) {
    static const bool bound = BindCatalogues();
    const ScopedLocale locale;
    const char* text = bound ? dgettext(DOMAIN, messageId) : messageId;
    if (text != messageId) {
        return text;
    }
    const char* english = English(messageId);
    return english != nullptr ? english : Keep(messageId);
}

}  // namespace

// The catalogue answers, since it may not be in the language that was asked for first.
bool TextRunsRightToLeft() {
    return std::strcmp(i18n_get_text("TEXT_DIRECTION"), "rtl") == 0;
}

}  // namespace applist::desktop

// An empty id is the key of a catalogue's own header, no message.
extern "C" const char* i18n_get_text(const char* message_id) {
    if (message_id == nullptr || *message_id == '\0') {
        return "";
    }
    return applist::GuardCallback(message_id,
                                  [&] { return applist::desktop::Translate(message_id); });
}
