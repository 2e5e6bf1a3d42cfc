// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The click is the application's last message: activating a row ends it at once.
//   APPLIST_CLICKS   number of rows to activate; default 10
//   APPLIST_LOAD     number of programs that keep the processor busy; default 0
#include <iostream>

#include "e2e/faults/FaultTest.h"

namespace applist::test {
namespace {

using sim::Event;
using sim::Function;

class AClick : public FaultTest {
protected:
    /// Starts a list and activates a row, which ends the list; true iff the middleware received the
    /// click.
    bool Arrives() {
        const auto application = m_set.StartApplication();
        EXPECT_TRUE(m_middleware->AwaitApplication());
        EXPECT_TRUE(m_middleware->Ask(Function::AddItems, THREE));
        EXPECT_TRUE(m_set.WaitForFocusedRow());
        m_set.screen().TypeKey("Return");
        EXPECT_EQ(application->WaitForExit(), 0) << application->Errors();
        // The bus reports the disconnection after all messages of the application.
        EXPECT_TRUE(m_middleware->AwaitDisconnection());
        return m_middleware->Events(Event::ItemClicked) == 1;
    }

    std::unique_ptr<DrivenMiddleware> m_middleware = NewMiddleware();
};

TEST_F(AClick, ArrivesEachTime) {
    const size_t clicks = Setting("APPLIST_CLICKS", 10);
    std::vector<std::unique_ptr<ChildProcess>> load(Setting("APPLIST_LOAD", 0));
    for (auto& busy : load) {
        busy = std::make_unique<ChildProcess>(
            std::vector<std::string>{"sh", "-c", "while :; do :; done"});
    }
    size_t arrived = 0;
    for (size_t click = 0; click < clicks && !HasFailure(); ++click) {
        arrived += Arrives() ? 1 : 0;
    }
    std::cout << arrived << " of " << clicks << " clicks arrived\n";
    EXPECT_EQ(arrived, clicks);
}

}  // namespace
}  // namespace applist::test
