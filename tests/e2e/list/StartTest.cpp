// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Limits of what a start uses. They are counts, so they do not depend on the machine's load. If a
// change exceeds one, `scripts/bench --ledger` shows the step.
#include <gmock/gmock.h>

#include "support/StartLedger.h"

namespace applist::test {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Le;
using testing::Not;

/// A set without a compositor, whose middleware is running.
class TheStart : public testing::Test {
protected:
    StartLedger Record(bool traced) {
        StartLedger ledger = RecordStart(m_set, traced);
        EXPECT_FALSE(ledger.steps.empty()) << "no frame was drawn";
        return ledger;
    }

private:
    Television m_set{{}, {"openbox", ""}};
    std::unique_ptr<Middleware> m_middleware = m_set.StartMiddlewareWithThreeItems();
};

TEST_F(TheStart, StaysWithinItsLimits) {
    const StartStep total = Record(false).Total();
    EXPECT_THAT(total.faults + total.readingFaults, Le(4300));
    EXPECT_THAT(total.roundTrips, Le(50));
    EXPECT_THAT(total.libraries, Le(97));
}

// Opening it takes 5 ms.
TEST_F(TheStart, DoesNotOpenTheToolkitsDefaultTheme) {
    const StartLedger ledger = Record(true);
    EXPECT_THAT(ledger.files, Contains(HasSubstr("theme/applist.edj")));
    EXPECT_THAT(ledger.files, Not(Contains(HasSubstr("themes/default.edj"))));
}

}  // namespace
}  // namespace applist::test
