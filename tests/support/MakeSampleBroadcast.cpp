// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0

// make-sample-broadcast FILE: writes a small transport stream with the services and applications
// of an invented broadcaster, for a first look at the list without a recording.
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "support/TsGenerator.h"

namespace applist::test {
namespace {

constexpr uint16_t DESCRIPTION_PID = 0x0011;
constexpr uint16_t FIRST_SERVICE_PID = 0x0200;
constexpr uint16_t SECOND_SERVICE_PID = 0x0201;
constexpr uint16_t FIRST_TABLE_PID = 0x0300;
constexpr uint16_t SECOND_TABLE_PID = 0x0301;
constexpr uint32_t ORGANISATION = 0x0000002A;
constexpr uint8_t AUTOSTART = 1;
constexpr uint8_t PRESENT = 2;
constexpr uint8_t FOR_APPLICATIONS_ONLY = 1;
// A real stream repeats its tables every 100 ms or so; a few repetitions are enough here.
constexpr int REPETITIONS = 4;

TsApplication Named(uint16_t id, uint8_t controlCode, const std::string& name) {
    return {ORGANISATION, id, controlCode, 3, {{"ita", name}}};
}

// The names use the default table, with and without combining accents, and several others.
std::vector<TsApplication> FirstTable() {
    std::vector<TsApplication> applications{
        Named(0x0101, AUTOSTART, "Portale Mediterraneo"),
        Named(0x0102, PRESENT,
              "Citt\xC1"
              "a e Comuni"),
        Named(0x0103, PRESENT,
              "\x05"
              "Caff\xE8 e Novit\xE0"),
        Named(0x0104, PRESENT, "\x15Perch\u00e9 no? Quiz"),
        Named(0x0105, PRESENT, "Servizio interno"),
    };
    applications.back().visibility = FOR_APPLICATIONS_ONLY;
    applications.front().descriptors = TsHttpTransport(1, "http://portale.example/");
    const TsBytes path = TsDescriptor(0x15, {'t', 'v', '/'});
    applications.front().descriptors.insert(applications.front().descriptors.end(), path.begin(),
                                            path.end());
    return applications;
}

std::vector<TsApplication> SecondTable() {
    return {
        Named(0x0201, PRESENT,
              std::string("\x10\x00\x0F"
                          "Pi\xF9 Sport",
                          12)),
        Named(0x0202, PRESENT, std::string("\x11\0M\0e\0t\0e\0o\0 \0L\0u\0n\0e\0d\0\xEC", 25)),
        Named(0x0203, PRESENT, "Oroscopo \x86Oggi\x87"),
        Named(0x0204, PRESENT, "Borsa e \xA4uro"),
    };
}

TsBytes SampleBroadcast() {
    TsGenerator generator;
    for (int repetition = 0; repetition < REPETITIONS; ++repetition) {
        generator.Add(0, TsAssociation({{1, FIRST_SERVICE_PID}, {2, SECOND_SERVICE_PID}}));
        generator.Add(DESCRIPTION_PID,
                      TsDescription({{1, "Mediterraneo Uno"}, {2, "Mediterraneo Due"}}));
        generator.Add(FIRST_SERVICE_PID, TsMap(1, {FIRST_TABLE_PID}));
        generator.Add(SECOND_SERVICE_PID, TsMap(2, {FIRST_TABLE_PID, SECOND_TABLE_PID}));
        generator.Add(FIRST_TABLE_PID, TsApplications(FirstTable()));
        generator.Add(SECOND_TABLE_PID, TsApplications(SecondTable(), 0x0010));
    }
    return generator.stream();
}

}  // namespace
}  // namespace applist::test

int main(int argc, char** argv) {
    if (argc != 2) {
        static_cast<void>(std::fputs("Usage: make-sample-broadcast FILE\n", stderr));
        return 2;
    }
    const applist::test::TsBytes stream = applist::test::SampleBroadcast();
    std::ofstream file(argv[1], std::ios::binary);
    file.write(reinterpret_cast<const char*>(stream.data()),
               static_cast<std::streamsize>(stream.size()));
    file.close();
    if (!file) {
        static_cast<void>(
            std::fprintf(stderr, "make-sample-broadcast: cannot write %s\n", argv[1]));
        return 1;
    }
    return 0;
}
