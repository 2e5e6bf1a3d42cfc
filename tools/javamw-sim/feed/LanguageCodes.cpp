// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "feed/LanguageCodes.h"

namespace applist::sim {
namespace {

constexpr size_t SHORT_SIZE = 2;
constexpr size_t LONG_SIZE = 3;

// Two letters (ISO 639-1), three (639-2, terminology) and, where that differs, three more
// (639-2, bibliography), as in "frfra/fre". Broadcasts use either of the longer ones.
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

}  // namespace

std::vector<std::string> LanguageCodes(std::string_view language) {
    for (size_t start = 0; start < CODES.size(); start = CODES.find(' ', start) + 1) {
        std::string_view entry = CODES.substr(start, CODES.find(' ', start) - start);
        const std::string_view shortCode = entry.substr(0, SHORT_SIZE);
        const std::string_view code = entry.substr(SHORT_SIZE, LONG_SIZE);
        entry.remove_prefix(SHORT_SIZE + LONG_SIZE);
        const std::string_view other = entry.empty() ? entry : entry.substr(1);
        if (language == shortCode || language == code || (!other.empty() && language == other)) {
            std::vector<std::string> codes{std::string(shortCode), std::string(code)};
            if (!other.empty()) {
                codes.emplace_back(other);
            }
            return codes;
        }
    }
    return {std::string(language)};
}

}  // namespace applist::sim
