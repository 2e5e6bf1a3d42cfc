// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "bus/policy/PolicyTest.h"

namespace applist::test {

std::ostream& operator<<(std::ostream& out, const Place& place) {
    return out << place.name;
}

void PolicyTest::SetUp() {
    SkipUnlessRoot();
}

std::unique_ptr<PolicyBus> PolicyTest::MakeBus() const {
    return std::make_unique<PolicyBus>(GetParam().daemon, GetParam().rules, BUS_POLICY);
}

std::vector<Place> AllPlaces() {
    std::vector<Place> places;
    for (const auto daemon : {PolicyBus::Daemon::DBUS_DAEMON, PolicyBus::Daemon::DBUS_BROKER}) {
        places.push_back({daemon, NameOf(daemon) + "AsUsual", PolicyBus::USUAL_RULES});
        places.push_back({daemon, NameOf(daemon) + "Closed", PolicyBus::CLOSED_RULES});
    }
    return places;
}

std::string NameOfPlace(const testing::TestParamInfo<Place>& info) {
    return info.param.name;
}

}  // namespace applist::test
