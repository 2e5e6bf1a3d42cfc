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

/// A program that shows a list: applist or one to compare it with.
struct Subject {
    std::string name;
    /// Started by "sh -c"; $ROWS is the number of rows, $ITEMS a file with a name on each line.
    std::string command;
    /// Its rows are sent over the bus by a middleware.
    bool needsMiddleware = false;
    /// A key causes a visible change.
    bool showsKeys = true;
    /// Starts a process that waits for the command to launch it; empty if there is none.
    std::vector<std::string> prepare = {};
};

/// applist and the programs it is compared with, as far as installed.
std::vector<Subject> Subjects();

/// The environment of all subjects: a screen with a window manager and without a compositor, a bus,
/// and a set that offers the list.
class Stage {
public:
    Stage();

    /// Runs platformctl for the set.
    void Configure(std::vector<std::string> arguments) const;
    /// Prepares this many items for the next Start().
    void Prepare(const Subject& subject, int rows);
    /// Starts the subject's prepared process, if it has one, and waits until it is ready. REQUIRED
    /// before each Start().
    void MakeReady(const Subject& subject);
    std::unique_ptr<test::ChildProcess> Start(const Subject& subject) const;
    const test::ChildProcess& prepared() const { return *m_prepared; }
    /// The processor time that a started subject has used, in nanoseconds: without what its process
    /// used before the launch.
    long long Used(const test::ChildProcess& started) const;
    /// Waits until the middleware, if the subject has one, has received the reply to its call.
    void AwaitFilled(const Subject& subject);
    /// The items of the last Prepare() in wire format.
    std::vector<char> ItemsOnTheWire() const;
    /// Ends the middleware that fills the list, so that a benchmark can take its place.
    void DismissMiddleware() { m_middleware.reset(); }
    /// The environment of every program on the stage.
    test::ChildProcess::Environment Environment() const;

    test::XDisplay& screen() { return m_screen; }
    test::PrivateBus& bus() { return m_bus; }

private:
    std::string WriteItems(const Subject& subject, int rows) const;

    test::TemporaryDir m_folder;
    test::PrivateBus m_bus;
    test::XDisplay m_screen{{"openbox", ""}};
    std::unique_ptr<test::ChildProcess> m_middleware;
    std::unique_ptr<test::ChildProcess> m_prepared;
    long long m_usedBefore = 0;  ///< Nanoseconds of the prepared process before the launch.
    size_t m_heard = 0;          ///< Of what the middleware printed.
    int m_rows = 0;
    std::string m_items;
};

/// The channel's object path, and two of its functions.
constexpr const char* CHANNEL = "/org/vantu/javamw/CommunicationChannel/Applist";
constexpr int GET_SELECTION = 2001;
constexpr int ADD_ITEMS = 2004;
/// A frame that calls the list: the payload, then the function's number.
std::vector<char> Frame(std::vector<char> payload, int function);

/// Ends the program with an error if condition is false, because it would measure the wrong thing.
void GiveUpUnless(bool condition, const char* error);

/// A process' resident memory in kilobytes.
long ResidentKilobytes(pid_t process);
/// The processor time of its threads in nanoseconds, without threads that have ended.
long long ProcessorNanoseconds(pid_t process);

}  // namespace applist::bench
