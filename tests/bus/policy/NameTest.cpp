// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Which users may own the six names of the handshake, and similar names. Every user requests each
// of them.
#include <algorithm>

#include "bus/policy/PolicyTest.h"

namespace applist::test {
namespace {

using Names = std::vector<std::string>;

const Names SERVICE_NAMES{"org.vantu.JavaMW.Applist_SERVICE_SYN",
                          "org.vantu.JavaMW.Applist_SERVICE_SYN_ACK",
                          "org.vantu.JavaMW.Applist_SERVICE_ACK"};
const Names CLIENT_NAMES{"org.vantu.JavaMW.Applist_CLIENT_SYN",
                         "org.vantu.JavaMW.Applist_CLIENT_SYN_ACK",
                         "org.vantu.JavaMW.Applist_CLIENT_ACK"};
// The application must not own a permanent name under which it could be called.
const Names OTHER_NAMES{"org.vantu.JavaMW.Applist", "org.vantu.applist"};

Names AllNames() {
    Names all = SERVICE_NAMES;
    all.insert(all.end(), CLIENT_NAMES.begin(), CLIENT_NAMES.end());
    all.insert(all.end(), OTHER_NAMES.begin(), OTHER_NAMES.end());
    return all;
}

/// The expected output of a bus_actor that requests all names and is granted these.
std::vector<std::string> Grants(const Names& granted) {
    std::vector<std::string> lines;
    for (const std::string& name : AllNames()) {
        const bool isGranted = std::find(granted.begin(), granted.end(), name) != granted.end();
        lines.push_back("own " + name + ": " +
                        (isGranted ? "(1,)" : "org.freedesktop.DBus.Error.AccessDenied"));
    }
    return lines;
}

std::vector<std::string> Ask(const PolicyBus& bus, const User& user) {
    std::vector<std::string> commands;
    for (const std::string& name : AllNames()) {
        commands.insert(commands.end(), {"own", name});
    }
    return Actor(bus, user, commands).Lines();
}

class PolicyOfNames : public PolicyTest {};
INSTANTIATE_TEST_SUITE_P(On, PolicyOfNames, testing::ValuesIn(AllPlaces()), NameOfPlace);

TEST_P(PolicyOfNames, GrantsEachSideItsThreeAndOtherUsersNone) {
    const auto bus = MakeBus();
    EXPECT_EQ(Ask(*bus, APPLICATION_USER), Grants(SERVICE_NAMES));
    EXPECT_EQ(Ask(*bus, MIDDLEWARE_USER), Grants(CLIENT_NAMES));
    EXPECT_EQ(Ask(*bus, STRANGER), Grants({}));
    EXPECT_EQ(Ask(*bus, ROOT), Grants({}));
}

// A mistyped user name or a missing account must not grant anything.
TEST_P(PolicyOfNames, GrantsNoneWhenTheUsersAreUnknown) {
    const PolicyBus bus(GetParam().daemon, GetParam().rules, POLICY_OF_UNKNOWN_USERS);
    for (const User* user : {&APPLICATION_USER, &MIDDLEWARE_USER, &STRANGER, &ROOT}) {
        EXPECT_EQ(Ask(bus, *user), Grants({})) << user->name;
    }
}

TEST_P(PolicyOfNames, OneUserMayBeBothSides) {
    const PolicyBus bus(GetParam().daemon, GetParam().rules, POLICY_OF_ONE_USER);
    Names both = SERVICE_NAMES;
    both.insert(both.end(), CLIENT_NAMES.begin(), CLIENT_NAMES.end());
    EXPECT_EQ(Ask(bus, APPLICATION_USER), Grants(both));
    EXPECT_EQ(Ask(bus, MIDDLEWARE_USER), Grants({}));
}

// Shows on a developer's bus that the tests above can fail.
TEST_P(PolicyOfNames, AStrangerOwnsAllWhereEverythingIsAllowed) {
    const PolicyBus bus(GetParam().daemon, PolicyBus::OPEN_RULES, "");
    EXPECT_EQ(Ask(bus, STRANGER), Grants(AllNames()));
}

}  // namespace
}  // namespace applist::test
