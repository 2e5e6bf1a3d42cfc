// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/DrivenMiddleware.h"
#include "support/Gauge.h"
#include "support/Television.h"

namespace applist::test {

/// A count or duration from an environment variable; usual if the variable is not set.
size_t Setting(const char* variable, size_t usual);

/// A whole set for tests that cause a fault and check the state afterwards.
class FaultTest : public testing::Test {
protected:
    /// a "Alpha", b "Bravo" and c "Charlie".
    static const sim::Items THREE;

    /// changes are added to the environment of every program of the set.
    explicit FaultTest(const ChildProcess::Environment& changes = {});

    /// Starts the application; wrapper precedes it on the command line.
    void StartApplication(const std::vector<std::string>& wrapper = {});
    /// Starts the application and a middleware that fills its list, and waits until the list is
    /// visible and the first row selected.
    void ShowThree();
    ChildProcess& application() { return *m_application; }
    /// The application's log so far.
    std::string Log() const;

    std::unique_ptr<DrivenMiddleware> NewMiddleware();
    /// A gauge of the application that driver is connected to.
    Gauge GaugeOf(const DrivenMiddleware& driver);
    /// The application's footprint after it has slept for a second. The toolkit frees its last
    /// frame's memory half a second after the frame, and then the application returns spare memory.
    Footprint AtRest(const Gauge& gauge);

    /// Expects these items in the list and a row for each on the screen, in this order: Down visits
    /// them all and returns to the first. Leaves the first one selected.
    void ExpectList(DrivenMiddleware& driver, const sim::Items& items);
    /// Closes the list as a viewer does and expects an exit without errors.
    void ExpectCleanEnd();

    Television m_set;

private:
    void Step(DrivenMiddleware& driver, const sim::Item& next);

    std::string m_log;
    std::unique_ptr<ChildProcess> m_application;
};

}  // namespace applist::test
