// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/PrivateBus.h"

#include <csignal>
#include <fstream>

#include <gtest/gtest.h>

namespace applist::test {
namespace {

std::string Configuration(const std::string& folder, const std::string& rules) {
    return R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>system</type>
  <listen>unix:path=)" +
           folder + R"(/bus</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow user="*"/>
    <allow own="*"/>
    <allow send_destination="*"/>
    <allow send_type="signal"/>
    <allow receive_sender="*"/>
    )" + rules +
           R"(
  </policy>
</busconfig>
)";
}

}  // namespace

PrivateBus::PrivateBus(const std::string& rules) {
    const std::string file = m_folder.path() / "bus.conf";
    std::ofstream(file) << Configuration(m_folder.path(), rules);
    m_daemon = std::make_unique<ChildProcess>(
        std::vector<std::string>{"dbus-daemon", "--config-file=" + file, "--nofork", "--nopidfile",
                                 "--nosyslog", "--print-address=1"});
    const auto& output = m_daemon->Output();
    // The daemon prints the address when it listens.
    if (m_daemon->WaitUntil([&output] { return output.find('\n') != std::string::npos; })) {
        m_address = output.substr(0, output.find('\n'));
    } else {
        ADD_FAILURE() << "dbus-daemon did not start: " << m_daemon->Errors();
    }
}

void PrivateBus::Stop() {
    m_daemon.reset();
}

void PrivateBus::Freeze() const {
    m_daemon->Signal(SIGSTOP);
}

void PrivateBus::Thaw() const {
    m_daemon->Signal(SIGCONT);
}

SessionBus::SessionBus(const ChildProcess::Environment& environment)
    : m_address("unix:path=" + (m_folder.path() / "bus").string()),
      m_daemon({"dbus-daemon", "--session", "--nofork", "--nosyslog", "--address=" + m_address,
                "--print-address=1"},
               environment) {
    // The daemon prints the address when it listens.
    EXPECT_TRUE(m_daemon.WaitForText("guid=")) << m_daemon.Errors();
}

}  // namespace applist::test
