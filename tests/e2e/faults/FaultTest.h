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

/// How often or how long, by an environment variable; usual where it is not set.
size_t Setting(const char* variable, size_t usual);

/// A whole set to which something bad is done, and what must hold afterwards.
class FaultTest : public testing::Test {
protected:
    /// a "Alpha", b "Bravo" and c "Charlie".
    static const sim::Items THREE;

    /// changes come on top of what every program of the set finds in its environment.
    explicit FaultTest(const ChildProcess::Environment& changes = {});

    /// Starts the application; wrapper precedes it on the command line.
    void StartApplication(const std::vector<std::string>& wrapper = {});
    /// The application and a middleware that filled its list: on the screen, first row selected.
    void ShowThree();
    ChildProcess& application() { return *m_application; }
    /// All that the application has logged.
    std::string Log() const;

    std::unique_ptr<DrivenMiddleware> NewMiddleware();
    /// The application as driver knows it.
    Gauge GaugeOf(const DrivenMiddleware& driver);
    /// What the application holds when it has slept for a second: the toolkit drops what its last
    /// frame needed half a second later, and the application then gives back what is spare.
    Footprint AtRest(const Gauge& gauge);

    /// The list holds these, and the screen has a row for each in their order: Down visits them all
    /// and comes back to the first. Leaves the first one selected.
    void ExpectList(DrivenMiddleware& driver, const sim::Items& items);
    /// Closes the list as a viewer does; it takes its leave without a fault.
    void ExpectCleanEnd();

    Television m_set;

private:
    void Step(DrivenMiddleware& driver, const sim::Item& next);

    std::string m_log;
    std::unique_ptr<ChildProcess> m_application;
};

}  // namespace applist::test
