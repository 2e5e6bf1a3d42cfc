// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "data/Text.h"

#include <algorithm>
#include <array>
#include <clocale>
#include <cstring>
#include <glib.h>
#include <libintl.h>
#include <set>
#include <string>
#include <string_view>

#include "CallbackGuard.h"
#include "data/FilePaths.h"
#include "i18n_text.h"

namespace applist::desktop {
namespace {

constexpr const char* DOMAIN = "applist";
constexpr const char* FALLBACK_LANGUAGE = "en";

struct EnglishText {
    std::string_view id;
    const char* text;
};

// The English catalogue, generated from po/en.po and compiled in.
constexpr auto ENGLISH_TEXTS = std::to_array<EnglishText>({
#include "EnglishTexts.inc"
});

// Returns the viewer's languages in order of preference, in the format of gettext's LANGUAGE, with
// English last. Omits the plain C locale, because gettext stops searching when it reaches that.
std::string Languages() {
    std::string languages;
    for (const char* const* name = g_get_language_names(); *name != nullptr; ++name) {
        const std::string base(*name, std::strcspn(*name, ".@"));
        if (base != "C" && base != "POSIX") {
            languages += std::string(*name) + ":";
        }
    }
    return languages + FALLBACK_LANGUAGE;
}

// The environment must not be changed once other threads run, so this initialiser sets it before
// main().
const bool LANGUAGES_CHOSEN = GuardCallback(false, [] {
    ChooseLanguages();
    return true;
});

// Sets the locale of this thread for one look-up. In the plain C locale gettext ignores LANGUAGE,
// and the locale of the viewer's language may not be generated on this system. C.UTF-8 is always
// available.
class ScopedLocale {
public:
    ScopedLocale() {
        // Kept, because reading it takes longer than the look-up.
        static const locale_t lookUp = newlocale(LC_MESSAGES_MASK, "C.UTF-8", nullptr);
        m_previous = lookUp != nullptr ? uselocale(lookUp) : nullptr;
    }
    ~ScopedLocale() {
        if (m_previous != nullptr) {
            uselocale(m_previous);
        }
    }
    ScopedLocale(const ScopedLocale&) = delete;
    ScopedLocale& operator=(const ScopedLocale&) = delete;
    ScopedLocale(ScopedLocale&&) = delete;
    ScopedLocale& operator=(ScopedLocale&&) = delete;

private:
    locale_t m_previous;
};

bool BindCatalogues() {
    const std::string catalogues = FindData("locale");
    if (catalogues.empty()) {
        LOG_ERROR(
            "No message catalogues: cannot find the program's folder share/locale; texts are "
            "English");
        return false;
    }
    bindtextdomain(DOMAIN, catalogues.c_str());
    bind_textdomain_codeset(DOMAIN, "UTF-8");
    return true;
}

// Returns the compiled-in text, or null if the id is unknown. It is used if the catalogues are
// missing or incomplete, so that the viewer sees English and not message ids.
const char* English(std::string_view messageId) {
    const auto* const found =
        std::find_if(ENGLISH_TEXTS.begin(), ENGLISH_TEXTS.end(),
                     [messageId](const EnglishText& text) { return text.id == messageId; });
    return found != ENGLISH_TEXTS.end() ? found->text : nullptr;
}

// Returns a copy of the id that is never freed. Callers may keep any returned text, but messageId
// may be a temporary of the caller.
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

// gettext reads the languages from the environment only.
void ChooseLanguages() {
    g_setenv("LANGUAGE", Languages().c_str(), TRUE);
}

// Asks the catalogue, because gettext may have fallen back to a language other than the first one
// that the viewer prefers.
bool TextRunsRightToLeft() {
    return std::strcmp(i18n_get_text("TEXT_DIRECTION"), "rtl") == 0;
}

}  // namespace applist::desktop

// gettext returns the catalogue's header for the empty id, so it is handled here.
extern "C" const char* i18n_get_text(const char* message_id) {
    if (message_id == nullptr || *message_id == '\0') {
        return "";
    }
    return applist::GuardCallback(message_id,
                                  [&] { return applist::desktop::Translate(message_id); });
}
