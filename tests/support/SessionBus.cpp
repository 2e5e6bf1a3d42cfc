// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/SessionBus.h"

#include <gtest/gtest.h>

namespace applist::test {

SessionBus::SessionBus(const ChildProcess::Environment& environment)
    : m_address("unix:path=" + (m_folder.path() / "bus").string()),
      m_daemon({"dbus-daemon", "--session", "--nofork", "--nosyslog", "--address=" + m_address,
                "--print-address=1"},
               environment) {
    // The daemon prints the address when it listens.
    EXPECT_TRUE(m_daemon.WaitForText("guid=")) << m_daemon.Errors();
}

}  // namespace applist::test
