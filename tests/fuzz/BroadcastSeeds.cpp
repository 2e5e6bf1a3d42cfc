// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "fuzz/Properties.h"
#include "support/AitXml.h"
#include "support/TsGenerator.h"

namespace applist::test {
namespace {

constexpr uint16_t CLOCK_PID = 0x0100;
constexpr uint16_t MAP_PID = 0x0200;
constexpr uint16_t TABLE_PID = 0x0300;

std::string Text(const TsBytes& bytes) {
    return {bytes.begin(), bytes.end()};
}

TsApplication News() {
    TsApplication news{11, 1, 2, 3, {{"ita", "\x05Notizie"}, {"jpn", "\x25\x4B\x25\x65"}}};
    for (const TsBytes& descriptor :
         {TsHttpTransport(1, "http://a.example/"), TsDescriptor(0x15, {'i', '.', 'h'}),
          TsDescriptor(0x04, {1, '/', 0, 'M'}), TsDescriptor(0x09, {1, '/', 'i'})}) {
        news.descriptors.insert(news.descriptors.end(), descriptor.begin(), descriptor.end());
    }
    return news;
}

const TsApplication WEATHER{11,
                            2,
                            1,
                            3,
                            {{std::string("fr\0", 3),
                              "M\xC2"
                              "et\xC2"
                              "eo"}}};

TsBytes Stream(Signalling signalling) {
    TsGenerator generator;
    generator.AddClock(CLOCK_PID, 90000);
    generator.Add(0, TsAssociation({{1, MAP_PID}}));
    generator.Add(0x0011, TsDescription({{1, "Rete 1"}}));
    generator.Add(MAP_PID, TsMap(1, {TABLE_PID}, signalling));
    generator.Add(TABLE_PID, TsApplications({News()}, 0x0010, 0));
    generator.AddClock(CLOCK_PID, 180000);
    generator.Add(TABLE_PID, TsApplications({News(), WEATHER}, 0x0010, 1));
    return generator.stream();
}

std::string Body(const TsBytes& section) {
    return Text({section.begin() + 8, section.end() - 4});
}

}  // namespace

std::vector<std::string> BroadcastStreamSeeds() {
    const TsBytes stream = Stream(Signalling::Described);
    return {
        "",
        Text(stream),
        Text(TsRepacked(stream, 4, 0)),
        Text(TsRepacked(Stream(Signalling::DataComponent), 0, 16)),
    };
}

std::vector<std::string> SectionFileSeeds() {
    const std::string table = Text(TsApplications({News(), WEATHER}));
    return {
        "",
        table + Text(TsApplications({WEATHER}, 0x0001, 1)),
        Text(TsAssociation({{1, MAP_PID}})) + "\xFF\xFF" + table,
        Text(TsOneOf(TsApplications({WEATHER}), 1, 1)) + table.substr(0, 20) + table,
    };
}

std::vector<std::string> TableBodySeeds() {
    return {
        Body(TsApplications({News(), WEATHER})),
        Body(TsMap(1, {TABLE_PID}, Signalling::DataComponent)),
        Body(TsDescription({{1, "Rete 1"}})),
        Body(TsAssociation({{1, MAP_PID}})),
    };
}

std::vector<std::string> ApplicationXmlSeeds() {
    return {
        "",
        AitXml({{"11", "1", XmlName("ita", "Notizie &amp; Meteo") + XmlName("eng", "News")},
                {"11", "x"}}),
        "<?xml version=\"1.0\"?><!DOCTYPE a [<!ENTITY b \"c\">]><a>&b;</a>",
        "<a xmlns=\"urn:dvb:mhp:2009\"><Application/></a>",
    };
}

}  // namespace applist::test
