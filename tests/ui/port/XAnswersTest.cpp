// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdlib>
#include <memory>

#include <gmock/gmock.h>

#include "support/AllocationWatch.h"
#include "support/HeadlessToolkit.h"
#include "support/XDisplay.h"
#include "toolkit-internals/XAnswers.h"

// Last, because it defines macros with common names.
#include <X11/Xlib.h>

namespace applist::test {
namespace {

using desktop::XAnswers;

struct Close {
    void operator()(Display* display) const { XCloseDisplay(display); }
};

/// The toolkit, which is not connected to the screen, and an X client like the toolkit.
class XAnswersTest : public testing::Test {
protected:
    XAnswersTest() { setenv("DISPLAY", m_screen.Name().c_str(), 1); }

    /// Extension numbers and an atom as the client sees them.
    std::vector<unsigned long> Seen(const char* extension, const char* atom) {
        int request = 0;
        int event = 0;
        int error = 0;
        const unsigned long present =
            XQueryExtension(m_client.get(), extension, &request, &event, &error) != False ? 1 : 0;
        return {present, static_cast<unsigned long>(request), static_cast<unsigned long>(event),
                static_cast<unsigned long>(error), XInternAtom(m_client.get(), atom, False)};
    }
    /// The number of requests that the client has sent.
    unsigned long Requests() { return NextRequest(m_client.get()); }

    HeadlessToolkit m_toolkit{{}};
    XDisplay m_screen;
    std::unique_ptr<Display, Close> m_client{XOpenDisplay(m_screen.Name().c_str())};
};

TEST_F(XAnswersTest, AreThoseOfTheServer) {
    const auto asked = Seen("RENDER", "image/png");
    const XAnswers answers;
    const unsigned long before = Requests();
    EXPECT_EQ(Seen("RENDER", "image/png"), asked);
    EXPECT_EQ(Requests(), before);
}

TEST_F(XAnswersTest, NeedNoMemory) {
    const XAnswers answers;
    Atom atom = None;
    {
        const AllocationFailure failure;
        atom = XInternAtom(m_client.get(), "application/x-elementary-markup", False);
    }
    EXPECT_NE(atom, static_cast<Atom>(None));
}

TEST_F(XAnswersTest, DoNotCoverOtherNames) {
    const XAnswers answers;
    const auto seen = Seen("No such extension", "applist-test-atom");
    EXPECT_EQ(seen[0], 0U);
    EXPECT_NE(seen[4], 0U);
}

TEST_F(XAnswersTest, AreForgottenWhenTheLoopIsIdle) {
    const XAnswers answers;
    HeadlessToolkit::Settle();
    EXPECT_EQ(XAnswers::For(m_screen.Name().c_str()), nullptr);
    const unsigned long before = Requests();
    Seen("RENDER", "image/png");
    EXPECT_GT(Requests(), before);
}

// The numbers of another server may differ.
TEST_F(XAnswersTest, AreNotUsedForAnotherDisplay) {
    const XAnswers answers;
    EXPECT_NE(XAnswers::For(m_screen.Name().c_str()), nullptr);
    EXPECT_EQ(XAnswers::For(":4711"), nullptr);
}

TEST_F(XAnswersTest, AreMissingWithoutAServer) {
    setenv("DISPLAY", ":4711", 1);
    const XAnswers answers;
    EXPECT_EQ(XAnswers::For(":4711"), nullptr);
}

}  // namespace
}  // namespace applist::test
