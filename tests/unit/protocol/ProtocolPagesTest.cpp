// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The protocol's document and its man page list exactly the names that the code defines.
#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <regex>
#include <set>
#include <sstream>

#include <gmock/gmock.h>

#include "ipc/javamw-dbus-local.h"
#include "link/Protocol.h"
#include "support/SourceFile.h"
#include "support/WireDocument.h"

namespace applist::test {
namespace {

using testing::HasSubstr;
using testing::UnorderedElementsAreArray;

constexpr const char* DOCUMENT = "docs/protocol.md";
constexpr const char* MAN_PAGE = "docs/man/applist-protocol.7";

constexpr std::array EVENTS{sim::Event::ItemChanged, sim::Event::ItemSelected,
                            sim::Event::ItemClicked, sim::Event::LocalCreated};

/// An id with its name: "2000 SetSelection".
using Entry = std::string;

template <typename Id>
Entry EntryOf(Id id) {
    return std::to_string(static_cast<int>(id)) + " " + std::string(NameOf(id));
}

std::vector<Entry> AllEntries() {
    std::vector<Entry> entries;
    std::transform(sim::FUNCTIONS.begin(), sim::FUNCTIONS.end(), std::back_inserter(entries),
                   EntryOf<sim::Function>);
    std::transform(EVENTS.begin(), EVENTS.end(), std::back_inserter(entries), EntryOf<sim::Event>);
    return entries;
}

/// The entries of a page's tables: the two groups of each line that matches the pattern.
std::vector<Entry> EntriesIn(const std::string& page, const std::regex& row) {
    std::vector<Entry> entries;
    std::istringstream lines(page);
    std::smatch match;
    for (std::string line; std::getline(lines, line);) {
        if (std::regex_search(line, match, row)) {
            entries.push_back(match[1].str() + " " + match[match.size() - 1].str());
        }
    }
    return entries;
}

/// The headings under which an example calls the function or receives the event with that id.
template <typename Id>
std::set<std::string> HeadingsWith(Id id, WireStep::Kind kind) {
    std::set<std::string> headings;
    for (const WireExample& example : ParseWireDocument(SourceFile(DOCUMENT)).examples) {
        for (const WireStep& step : example.steps) {
            if (step.kind == kind && MessageIdOf(step.bytes) == static_cast<long long>(id)) {
                headings.insert(example.heading);
            }
        }
    }
    return headings;
}

std::vector<std::string> NamesOnTheBus() {
    std::vector<std::string> names{std::string(JavaMWDbusLocal::JAVAMW_DBUS_OBJ_NAME) + "/Applist",
                                   JavaMWDbusLocal::JAVAMW_DBUS_OBJ_IFACE,
                                   JavaMWDbusLocal::JAVAMW_DBUS_OBJ_METHOD,
                                   JavaMWDbusLocal::JAVAMW_DBUS_SIG_NAME};
    for (const char* side : {JavaMWDbusLocal::LISTEN_PREFIX, JavaMWDbusLocal::BROADCAST_PREFIX}) {
        for (const char* ending :
             {JavaMWDbusLocal::JAVAMW_DBUS_SYN_SUFFIX, JavaMWDbusLocal::JAVAMW_DBUS_SYNACK_SUFFIX,
              JavaMWDbusLocal::JAVAMW_DBUS_ACK_SUFFIX}) {
            names.push_back(std::string(JavaMWDbusLocal::JAVAMW_DBUS_PREFIX) + ".Applist" + side +
                            ending);
        }
    }
    return names;
}

/// The anchor of a heading, as links spell it.
std::string Anchor(const std::string& heading) {
    std::string anchor;
    for (const char c : heading) {
        if (std::isalnum(static_cast<unsigned char>(c)) != 0) {
            anchor += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        } else if (c == ' ' || c == '-') {
            anchor += '-';
        }
    }
    return anchor;
}

TEST(ProtocolDocument, ListsEveryFunctionAndEventAndNoOther) {
    const std::regex row(R"(^\| (\d+) \| `([0-9A-F ]+)` \| (\w+) \|)");
    EXPECT_THAT(EntriesIn(SourceFile(DOCUMENT), row), UnorderedElementsAreArray(AllEntries()));
}

TEST(ProtocolDocument, GivesEachIdItsBytes) {
    const std::string page = SourceFile(DOCUMENT);
    for (const Entry& entry : AllEntries()) {
        const auto id = static_cast<unsigned>(std::stoi(entry));
        char bytes[64];
        static_cast<void>(std::snprintf(bytes, sizeof bytes, "| %u | `%02X %02X 00 00` |", id,
                                        id & 0xFFU, id >> 8U));
        EXPECT_THAT(page, HasSubstr(bytes));
    }
}

TEST(ProtocolDocument, HasAnExampleUnderTheHeadingOfEachFunction) {
    for (const sim::Function function : sim::FUNCTIONS) {
        EXPECT_THAT(HeadingsWith(function, WireStep::CALL), testing::Contains(EntryOf(function)));
    }
}

TEST(ProtocolDocument, HasAnExampleUnderTheHeadingOfEachEvent) {
    for (const sim::Event event : EVENTS) {
        EXPECT_THAT(HeadingsWith(event, WireStep::HEAR_EVENT), testing::Contains(EntryOf(event)));
    }
}

TEST(ProtocolDocument, LinksToItsOwnHeadings) {
    const std::string page = SourceFile(DOCUMENT);
    std::set<std::string> anchors;
    std::istringstream lines(page);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("#")) {
            anchors.insert(Anchor(line.substr(line.find_first_not_of("# "))));
        }
    }
    const std::regex link(R"(\]\(#([^)]+)\))");
    for (std::sregex_iterator it(page.begin(), page.end(), link); it != std::sregex_iterator();
         ++it) {
        EXPECT_THAT(anchors, testing::Contains((*it)[1].str()));
    }
}

TEST(ProtocolManPage, ListsEveryFunctionAndEventAndNoOther) {
    const std::regex row(R"(^\.It (\d+) Ta (\w+) Ta)");
    EXPECT_THAT(EntriesIn(SourceFile(MAN_PAGE), row), UnorderedElementsAreArray(AllEntries()));
}

class ProtocolPage : public testing::TestWithParam<const char*> {};

TEST_P(ProtocolPage, HasEveryNameOnTheBus) {
    const std::string page = SourceFile(GetParam());
    for (const std::string& name : NamesOnTheBus()) {
        EXPECT_TRUE(std::regex_search(page, std::regex("(^|[^\\w.])" + name + "(\\W|$)")))
            << GetParam() << " does not have " << name;
    }
}

INSTANTIATE_TEST_SUITE_P(Both, ProtocolPage, testing::Values(DOCUMENT, MAN_PAGE),
                         [](const auto& test) {
                             return std::string(test.param == DOCUMENT ? "Document" : "ManPage");
                         });

}  // namespace
}  // namespace applist::test
