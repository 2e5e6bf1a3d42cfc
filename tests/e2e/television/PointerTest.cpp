// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// A remote control with a pointer, an air mouse: it points at rows and clicks.
#include "LoggedList.h"

namespace applist::test {
namespace {

class AnAirMouse : public LoggedList {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(ShowThreeItems());
        m_firstRow = AreaOf(m_set.screen().Grab(), Television::FOCUS_COLOUR);
    }
    int Middle() const { return m_firstRow.CentreX(); }
    int MiddleOfRow(int row) const { return m_firstRow.CentreY() + row * m_firstRow.height; }

private:
    Box m_firstRow;
};

TEST_F(AnAirMouse, ActivatesTheRowThatItClicks) {
    m_set.screen().Click(Middle(), MiddleOfRow(1));
    EXPECT_TRUE(m_set.middleware().Sees("event 2 ItemSelected"));
    EXPECT_TRUE(m_set.middleware().Sees("event 3 ItemClicked"));
    EXPECT_TRUE(Activated("Bravo"));
}

TEST_F(AnAirMouse, ActivatesTheRowThatIsSelectedAlready) {
    m_set.screen().Click(Middle(), MiddleOfRow(0));
    EXPECT_TRUE(m_set.middleware().Sees("event 3 ItemClicked"));
    EXPECT_TRUE(Activated("Alpha"));
}

TEST_F(AnAirMouse, MovesNothingWhileItOnlyPoints) {
    for (int row = 2; row >= 0; --row) {
        m_set.screen().MovePointer(Middle(), MiddleOfRow(row));
    }
    m_set.screen().MovePointer(Middle(), MiddleOfRow(2));
    m_set.screen().TypeKey("Down");
    EXPECT_TRUE(m_set.middleware().SeesSelected("b", "Bravo"));
    EXPECT_EQ(m_set.middleware().Transcript().find("Charlie"), std::string::npos);
    m_set.screen().TypeKey("Return");
    EXPECT_TRUE(Activated("Bravo"));
}

TEST_F(AnAirMouse, ClicksBesideTheListWithoutEffect) {
    m_set.screen().Click(100, 100);
    m_set.screen().TypeKey("Down");
    EXPECT_TRUE(m_set.middleware().SeesSelected("b", "Bravo"));
    EXPECT_EQ(m_set.middleware().Transcript().find("event 3"), std::string::npos);
}

}  // namespace
}  // namespace applist::test
