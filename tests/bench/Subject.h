// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/ChildProcess.h"
#include "support/PrivateBus.h"
#include "support/TemporaryDir.h"
#include "support/XDisplay.h"

namespace applist::bench {

/// A program that shows a list, ours or one to compare it with.
struct Subject {
    std::string name;
    /// Started by "sh -c"; $ROWS is the number of rows, $ITEMS a file with a name on each line.
    std::string command;
    /// Its rows come over the bus from a middleware.
    bool needsMiddleware = false;
    /// A key changes something that can be seen.
    bool showsKeys = true;
};

/// applist and what it is compared with, of those that are installed.
std::vector<Subject> Subjects();

/// A screen with a window manager and no compositor, a bus, and a set that offers the list: what
/// every subject runs in.
class Stage {
public:
    Stage();

    /// Makes rows items ready for the next Start().
    void Prepare(const Subject& subject, int rows);
    std::unique_ptr<test::ChildProcess> Start(const Subject& subject) const;
    /// Waits until the middleware, where there is one, has the reply to what it filled in.
    void AwaitFilled(const Subject& subject);
    /// The items of the last Prepare() as a call carries them.
    std::vector<char> ItemsOnTheWire() const;
    /// Ends the middleware that fills the list; a partner can take its place.
    void DismissMiddleware() { m_middleware.reset(); }
    /// What every program on the stage finds in its environment.
    test::ChildProcess::Environment Environment() const;

    test::XDisplay& screen() { return m_screen; }
    test::PrivateBus& bus() { return m_bus; }

private:
    std::string WriteItems(const Subject& subject, int rows) const;

    test::TemporaryDir m_folder;
    test::PrivateBus m_bus;
    test::XDisplay m_screen{{"openbox", ""}};
    std::unique_ptr<test::ChildProcess> m_middleware;
    size_t m_heard = 0;  ///< Of what the middleware printed.
    int m_rows = 0;
    std::string m_items;
};

/// Kilobytes of memory that a process has resident.
long ResidentKilobytes(pid_t process);
/// Nanoseconds of processor time that its threads have used, those that ended not counted.
long long ProcessorNanoseconds(pid_t process);
/// How often its threads have gone to sleep.
long Sleeps(pid_t process);

}  // namespace applist::bench
