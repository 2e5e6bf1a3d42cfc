// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "feed/DisplayNames.h"

#include <algorithm>
#include <glib.h>
#include <sstream>

namespace applist::sim {
namespace {

constexpr size_t SHORT_SIZE = 2;
constexpr size_t LONG_SIZE = 3;

// Two letters (ISO 639-1), three letters (639-2, terminology) and, where different, three letters
// (639-2, bibliography), as in "frfra/fre". Broadcasts use both codes of three letters.
constexpr std::string_view CODES =
    "aaaar ababk aeave afafr akaka amamh anarg arara asasm avava ayaym azaze babak bebel "
    "bgbul bhbih bibis bmbam bnben bobod/tib brbre bsbos cacat ceche chcha cocos crcre "
    "csces/cze cuchu cvchv cycym/wel dadan dedeu/ger dvdiv dzdzo eeewe elell/gre eneng "
    "eoepo esspa etest eueus/baq fafas/per ffful fifin fjfij fofao frfra/fre fyfry gagle "
    "gdgla glglg gngrn guguj gvglv hahau heheb hihin hohmo hrhrv hthat huhun hyhye/arm "
    "hzher iaina idind ieile igibo iiiii ikipk ioido isisl/ice itita iuiku jajpn jvjav "
    "kakat/geo kgkon kikik kjkua kkkaz klkal kmkhm knkan kokor krkau kskas kukur kvkom "
    "kwcor kykir lalat lbltz lglug lilim lnlin lolao ltlit lulub lvlav mgmlg mhmah "
    "mimri/mao mkmkd/mac mlmal mnmon mrmar msmsa/may mtmlt mymya/bur nanau nbnob ndnde "
    "nenep ngndo nlnld/dut nnnno nonor nrnbl nvnav nynya ococi ojoji omorm orori ososs "
    "papan pipli plpol pspus ptpor quque rmroh rnrun roron/rum rurus rwkin sasan scsrd "
    "sdsnd sesme sgsag sisin skslk/slo slslv smsmo snsna sosom sqsqi/alb srsrp ssssw stsot "
    "susun svswe swswa tatam tetel tgtgk ththa titir tktuk tltgl tntsn toton trtur tstso "
    "tttat twtwi tytah uguig ukukr ururd uzuzb veven vivie vovol wawln wowol xhxho yiyid "
    "yoyor zazha zhzho/chi zuzul ";

std::string CodeOf(const std::string& locale) {
    return CleanLanguage(locale.substr(0, locale.find_first_of("_-.@")));
}

}  // namespace

std::vector<std::string> LanguageCodes(std::string_view language) {
    for (size_t start = 0; start < CODES.size(); start = CODES.find(' ', start) + 1) {
        std::string_view entry = CODES.substr(start, CODES.find(' ', start) - start);
        const std::string_view shortCode = entry.substr(0, SHORT_SIZE);
        const std::string_view code = entry.substr(SHORT_SIZE, LONG_SIZE);
        entry.remove_prefix(SHORT_SIZE + LONG_SIZE);
        // An optional third code follows a slash.
        const std::string_view other = entry.empty() ? entry : entry.substr(1);
        if (language == shortCode || language == code || (!other.empty() && language == other)) {
            std::vector<std::string> codes{std::string(shortCode), std::string(code)};
            if (!other.empty()) {
                codes.emplace_back(other);
            }
            return codes;
        }
    }
    // A code that is not in the table can still match the same code in a broadcast.
    return {std::string(language)};
}

std::vector<std::string> ParseLanguages(const std::string& list) {
    std::vector<std::string> languages;
    std::istringstream parts(list);
    for (std::string part; std::getline(parts, part, ',');) {
        if (std::string code = CodeOf(part); !code.empty()) {
            languages.push_back(std::move(code));
        }
    }
    return languages;
}

// GLib returns each locale in several spellings, and "C" last.
std::vector<std::string> LocaleLanguages() {
    std::vector<std::string> languages;
    for (const char* const* name = g_get_language_names(); *name != nullptr; ++name) {
        const std::string code = CodeOf(*name);
        // "C" and "POSIX" are locales without a language.
        if (code.size() > 1 && code != "posix" &&
            std::ranges::find(languages, code) == languages.end()) {
            languages.push_back(code);
        }
    }
    return languages;
}

std::string CleanLanguage(const std::string& sent) {
    std::string code;
    for (const char letter : sent) {
        // The three bytes come from the broadcast and may be padding or damaged.
        if (g_ascii_isalpha(letter)) {
            code += g_ascii_tolower(letter);
        }
    }
    return code;
}

std::string PreferredName(const std::vector<ApplicationName>& names,
                          const std::vector<std::string>& languages) {
    for (const std::string& language : languages) {
        const auto codes = LanguageCodes(language);
        for (const ApplicationName& name : names) {
            const std::string code = CleanLanguage(name.language);
            if (!name.text.empty() && std::ranges::find(codes, code) != codes.end()) {
                return name.text;
            }
        }
    }
    // A name in another language is better than none.
    const auto readable =
        std::ranges::find_if(names, [](const ApplicationName& name) { return !name.text.empty(); });
    return readable != names.end() ? readable->text : std::string();
}

std::string ValidUtf8(const std::string& text) {
    g_autofree char* valid = g_utf8_make_valid(text.data(), static_cast<gssize>(text.size()));
    return valid;
}

}  // namespace applist::sim
