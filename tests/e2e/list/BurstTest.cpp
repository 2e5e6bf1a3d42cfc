// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Keys that arrive faster than the list draws: each key counts, in order.
#include <csignal>
#include <sstream>

#include <gtest/gtest.h>

#include "e2e/television/LoggedList.h"

namespace applist::test {
namespace {

struct Burst {
    const char* name;
    int rows;
    /// Keys and their numbers of presses, starting on the first row: "Down 20 Up 3".
    const char* keys;
    /// The index of the row that is focused at the end.
    int end;
    /// True if the keys come before the first row is drawn.
    bool atOnce;
};

void PrintTo(const Burst& burst, std::ostream* out) {
    *out << burst.keys << " in " << burst.rows << " rows";
}

std::string Id(int row) {
    return "id" + std::to_string(row);
}
std::string Name(int row) {
    return "Row " + std::to_string(row);
}

class ABurstOfKeys : public LoggedList, public testing::WithParamInterface<Burst> {
protected:
    void ShowRows(int count) {
        std::string items;
        for (int row = 0; row < count; ++row) {
            items += Id(row) + "\t" + Name(row) + "\n";
        }
        Show(items);
        ASSERT_TRUE(m_set.middleware().SeesSelected(Id(0), Name(0)));
        ASSERT_TRUE(m_set.WaitForWindow());
    }

    /// Presses all keys while the list is stopped, so that it finds them all in its queue. Returns
    /// their number.
    int Press(const std::string& keys) {
        int total = 0;
        m_set.application().Signal(SIGSTOP);
        std::istringstream words(keys);
        std::string key;
        for (int count = 0; words >> key >> count; total += count) {
            for (int i = 0; i < count; ++i) {
                m_set.screen().TypeKey(key);
            }
        }
        m_set.application().Signal(SIGCONT);
        return total;
    }

    /// True iff the middleware receives this many selection events and the last one names this row.
    testing::AssertionResult EndsOn(int row, int moves) {
        for (int move = 0; move + 1 < moves; ++move) {
            if (!m_set.middleware().Sees("event 2 ItemSelected")) {
                return testing::AssertionFailure() << "only " << move << " moves:\n"
                                                   << m_set.middleware().Transcript();
            }
        }
        if (!m_set.middleware().SeesSelected(Id(row), Name(row))) {
            return testing::AssertionFailure() << m_set.middleware().Transcript();
        }
        return testing::AssertionSuccess();
    }
};

TEST_P(ABurstOfKeys, MovesOneRowWithEach) {
    ASSERT_NO_FATAL_FAILURE(ShowRows(GetParam().rows));
    ASSERT_TRUE(GetParam().atOnce || m_set.WaitForFocusMark());
    const int moves = Press(GetParam().keys);
    EXPECT_TRUE(EndsOn(GetParam().end, moves));
    // OK activates the row that the screen shows as focused.
    m_set.screen().TypeKey("Return");
    EXPECT_TRUE(Activated(Name(GetParam().end)));
}

INSTANTIATE_TEST_SUITE_P(
    Keys, ABurstOfKeys,
    testing::Values(Burst{"DownRoundTwoRows", 2, "Down 21", 1, true},
                    Burst{"BothWaysOverTheEnds", 5, "Up 3 Down 8 Up 9", 1, true},
                    Burst{"AllFourOverTheEnds", 5, "Up 2 Left 2 Down 3 Right 4 Up 6 Down 1", 3,
                          false},
                    Burst{"DownRoundALongList", 40, "Up 3 Down 5", 2, true},
                    Burst{"RightThroughALongList", 40, "Right 20 Down 2", 22, false}),
    [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace applist::test
