// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "support/BusActor.h"
#include "support/PolicyBus.h"

namespace applist::test {

/// A bus to test a policy on; the parameter of the tests.
struct Place {
    PolicyBus::Daemon daemon;
    std::string name;
    std::string rules;
};

std::ostream& operator<<(std::ostream& out, const Place& place);

/// Tests that need several users, and so root. Uses the installed policy on the bus that the
/// parameter describes.
class PolicyTest : public testing::TestWithParam<Place> {
protected:
    void SetUp() override;
    std::unique_ptr<PolicyBus> MakeBus() const;
};

/// Both daemons, each with both sets of rules.
std::vector<Place> AllPlaces();
std::string NameOfPlace(const testing::TestParamInfo<Place>& info);

}  // namespace applist::test
