// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// One call fails in each run of the program: the n-th system call of a kind, the n-th operator new
// or the n-th call of a library's function. The run covers the start, the handshake, the nine
// calls, a key and the end. Whatever fails, the program must end by itself with a documented status
// and an error line, or work on and end when it is asked to.
//
// APPLIST_TORTURE_TRIES is the number of runs for each test, 3 by default. They are spread evenly
// over all calls. APPLIST_TORTURE_FAULT, "fcntl:42" for example, repeats one fault instead.
#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include <gmock/gmock.h>
#include <sys/wait.h>

#include "e2e/faults/FaultTest.h"
#include "support/GlibWait.h"

namespace applist::test {
namespace {

using sim::Function;
using std::chrono::seconds;
using testing::Contains;
using testing::HasSubstr;

// How long a start may take until the middleware is connected or the list is shown. A fault may
// prevent both.
constexpr seconds START{5};

/// The time in which the program must end when it is asked to. Longer in a default run, because
/// other tests run at the same time.
seconds Reaction() {
    return std::getenv("APPLIST_TORTURE_TRIES") != nullptr ? seconds(2) : PATIENCE;
}

const std::vector<int> DOCUMENTED{0, 101, 250, 251, 252, 253, 254};
// The dynamic loader's status.
constexpr int NOT_LOADED = 127;

/// A call that fails: the number-th one of this name.
struct Fault {
    std::string name;
    long number;
};

/// How often the program makes each call in a run without a fault.
using Counts = std::vector<std::pair<std::string, long>>;

// The maximum number of faults for each name. If a name has more calls, the faults are spread
// evenly over them.
constexpr long PLACES = 40;

std::vector<Fault> AllFaults(const Counts& counts) {
    std::vector<Fault> faults;
    for (const auto& [name, count] : counts) {
        const long places = std::min(count, PLACES);
        for (long place = 0; place < places; ++place) {
            faults.push_back({name, 1 + place * count / places});
        }
    }
    return faults;
}

size_t Tries() {
    return Setting("APPLIST_TORTURE_TRIES", 3);
}

std::vector<Fault> Sample(const std::vector<Fault>& faults, size_t tries) {
    std::vector<Fault> sample;
    if (const char* fault = std::getenv("APPLIST_TORTURE_FAULT"); fault != nullptr) {
        const std::string text = fault;
        const size_t colon = text.find(':');
        return std::vector<Fault>(tries,
                                  {text.substr(0, colon), std::stol(text.substr(colon + 1))});
    }
    for (size_t i = 0; i < std::min(tries, faults.size()); ++i) {
        sample.push_back(faults[i * faults.size() / std::min(tries, faults.size())]);
    }
    return sample;
}

class Torture : public FaultTest {
protected:
    // strace and the leak checker both need ptrace.
    Torture() : FaultTest({{"ASAN_OPTIONS", "detect_leaks=0"}}) {}

    /// Runs the program once with wrapper before its command, and expects the properties above.
    void Run(const std::vector<std::string>& wrapper, bool key);
    std::string CountsFile() { return m_set.WriteFile("counts", ""); }

private:
    void UseTheList(DrivenMiddleware& middleware);
    void End(bool key);
    bool HasEnded() const;
    void ExpectDocumentedEnd(std::optional<int> status, bool withoutPipe);
};

bool Torture::HasEnded() const {
    siginfo_t end{};
    const pid_t pid = const_cast<Torture*>(this)->application().pid();
    return waitid(P_PID, static_cast<id_t>(pid), &end, WEXITED | WNOHANG | WNOWAIT) != 0 ||
           end.si_pid != 0;
}

void Torture::UseTheList(DrivenMiddleware& middleware) {
    static const std::pair<Function, sim::Items> CALLS[] = {
        {Function::AddItems, THREE},
        {Function::AddItemAtEnd, {{"d", "Delta"}}},
        {Function::ModifyItem, {{"d", "Delta"}, {"d", "Dora"}}},
        {Function::SetSelection, {{"b", "Bravo"}}},
        {Function::GetSelection, {}},
        {Function::GetAllItems, {}},
        {Function::RemoveItem, {{"c", "Charlie"}}},
        {Function::SetClicked, {}},
        {Function::RemoveAllItems, {}},
    };
    for (const auto& [function, items] : CALLS) {
        middleware.Call(function, items);
    }
    EXPECT_TRUE(RunUntil(
        [&] { return HasEnded() || middleware.Answered() + middleware.Failed() == 9; }, START))
        << "a call without an answer";
}

// The list may lack its window or the keyboard after a fault; then a signal ends it.
void Torture::End(bool key) {
    if (key &&
        m_set.screen().WaitUntil(
            [&] { return HasEnded() || m_set.screen().HasKeyboard(Television::LIST); }, START)) {
        m_set.screen().TypeKey("Down");
        m_set.screen().TypeKey("Escape");
        return;
    }
    application().Signal(SIGTERM);
}

// The toolkit's own faults with the pipe that its threads need. It does not check whether there is
// one: it crashes when a thread writes to it, or without a message when the toolkit ends before. It
// also reads for ever from one that it could not make non-blocking. The kernel never refuses the
// latter for an open pipe.
bool IsFaultOfTheToolkit(std::optional<int> status, const std::string& log, bool withoutPipe) {
    constexpr int SEGMENTATION_FAULT = 128 + SIGSEGV;
    if (status == SEGMENTATION_FAULT && withoutPipe && log.empty()) {
        return true;
    }
    const char* line = status ? "ecore_pipe_write()" : "can't set pipe to NONBLOCK";
    return status.value_or(SEGMENTATION_FAULT) == SEGMENTATION_FAULT &&
           log.find(line) != std::string::npos;
}

void Torture::ExpectDocumentedEnd(std::optional<int> status, bool withoutPipe) {
    const std::string log = Log();
    if (IsFaultOfTheToolkit(status, log, withoutPipe)) {
        return;
    }
    ASSERT_TRUE(status) << "hangs\n" << log;
    if (*status == NOT_LOADED) {
        EXPECT_THAT(log, HasSubstr("error while loading shared libraries"));
        return;
    }
    EXPECT_THAT(DOCUMENTED, Contains(*status)) << log;
    EXPECT_TRUE(*status == 0 || !log.empty()) << "a silent end with " << *status;
}

void Torture::Run(const std::vector<std::string>& wrapper, bool key) {
    const auto middleware = NewMiddleware();
    StartApplication(wrapper);
    const bool connected = RunUntil(
        [&] {
            return HasEnded() || (!middleware->application().empty() &&
                                  middleware->Events(sim::Event::LocalCreated) > 0);
        },
        START);
    if (connected && !HasEnded()) {
        UseTheList(*middleware);
    }
    const bool early = HasEnded();
    if (!early) {
        // A signal ends a list that has logged that keys may be ignored.
        End(key && Log().find("Failed to register") == std::string::npos);
    }
    const auto status = application().WaitForExit(Reaction());
    const bool withoutPipe = !wrapper.empty() && wrapper.back().rfind("inject=pipe2:", 0) == 0;
    ExpectDocumentedEnd(status, withoutPipe);
    EXPECT_TRUE(!early || !Log().empty()) << "ended by itself without a word";
}

// ---- The n-th operator new and the n-th call of a library's function.

class FailingFunction : public Torture {
protected:
    static std::vector<std::string> Wrapper(const std::string& setting) {
        return {"env", "LD_PRELOAD=" FAILING_CALLS, setting};
    }
    Counts CountCalls() {
        const std::string path = CountsFile();
        Run(Wrapper("APPLIST_COUNTS=" + path), true);
        Counts counts;
        std::ifstream file(path);
        std::string name;
        for (long count = 0; file >> name >> count;) {
            counts.emplace_back(name, count);
        }
        return counts;
    }
    void Try(const Fault& fault, bool key) {
        const std::string text = fault.name + ":" + std::to_string(fault.number);
        SCOPED_TRACE(text);
        Run(Wrapper("APPLIST_FAIL=" + text), key);
    }
    void TrySample(const Counts& counts) {
        ASSERT_FALSE(counts.empty());
        bool key = false;
        for (const Fault& fault : Sample(AllFaults(counts), Tries())) {
            Try(fault, key = !key);
        }
    }
};

TEST_F(FailingFunction, OfALibraryIsSurvivedOrReported) {
    Counts counts = CountCalls();
    std::erase_if(counts, [](const auto& function) { return function.first == "new"; });
    TrySample(counts);
}

TEST_F(FailingFunction, ThatAllocatesIsSurvivedOrReported) {
    if (MEMORY_FACTOR > 1) {
        GTEST_SKIP() << "the address sanitizer has its own operator new";
    }
    Counts counts = CountCalls();
    std::erase_if(counts, [](const auto& function) { return function.first != "new"; });
    TrySample(counts);
}

// Without its timer the list waited for ever after Back; without its job it never started.
TEST_F(FailingFunction, OfTheLifecycleEndsTheList) {
    Try({"ecore_timer_add", 2}, true);
    Try({"ecore_job_add", 1}, false);
    // The first row crashed.
    Try({"elm_genlist_item_class_new", 1}, true);
}

TEST_F(FailingFunction, ThatAllocatesBeforeTheLifecycleIsReported) {
    if (MEMORY_FACTOR > 1) {
        GTEST_SKIP() << "the address sanitizer has its own operator new";
    }
    for (const long number : {8, 13}) {
        Try({"new", number}, false);
    }
}

// ---- The n-th system call.

// The error for each call. Left out: calls that reserve memory and those that start threads,
// because libraries end the program on purpose, and write, because the program wakes its threads
// with it and the kernel never refuses that.
const std::map<std::string, std::string> ERRORS{
    {"access", "EACCES"},
    {"bind", "EADDRINUSE"},
    {"connect", "ECONNREFUSED"},
    {"epoll_create1", "EMFILE"},
    {"epoll_ctl", "ENOMEM"},
    {"epoll_wait", "EINTR"},
    {"eventfd2", "EMFILE"},
    {"fcntl", "EINVAL"},
    {"fstat", "EIO"},
    {"getdents64", "EIO"},
    {"getsockname", "ENOBUFS"},
    {"getsockopt", "ENOBUFS"},
    {"inotify_init1", "EMFILE"},
    {"inotify_add_watch", "ENOSPC"},
    {"lseek", "EINVAL"},
    {"newfstatat", "EACCES"},
    {"openat", "EMFILE"},
    {"pipe2", "EMFILE"},
    {"poll", "EINTR"},
    {"ppoll", "EINTR"},
    {"read", "EIO"},
    {"readlink", "EACCES"},
    {"recvfrom", "ECONNRESET"},
    {"recvmsg", "ECONNRESET"},
    {"rt_sigaction", "EINVAL"},
    {"sendmsg", "EPIPE"},
    {"sendto", "EPIPE"},
    {"socket", "EMFILE"},
    {"statx", "EACCES"},
    {"timerfd_create", "EMFILE"},
    {"timerfd_settime", "EINVAL"},
    {"uname", "EFAULT"},
    {"unlink", "EACCES"},
    {"writev", "EPIPE"},
};

class FailingSystemCall : public Torture {
protected:
    // The columns are share, seconds, microseconds for each call, calls, errors if any, and name.
    Counts CountCalls() {
        const std::string path = CountsFile();
        Run({"strace", "-D", "-f", "-qq", "-c", "-o", path}, true);
        Counts counts;
        std::ifstream file(path);
        for (std::string line; std::getline(file, line);) {
            std::istringstream columns(line);
            std::string share;
            std::string ignored;
            std::string name;
            long count = 0;
            if (columns >> share >> ignored >> ignored >> count) {
                while (columns >> name) {
                }
                if (ERRORS.contains(name)) {
                    counts.emplace_back(name, count);
                }
            }
        }
        return counts;
    }
};

TEST_F(FailingSystemCall, IsSurvivedOrReported) {
    if (MEMORY_FACTOR > 1) {
        GTEST_SKIP() << "the address sanitizer ends a program when its own system calls fail";
    }
    const Counts counts = CountCalls();
    ASSERT_FALSE(counts.empty());
    bool key = false;
    for (const auto& [name, number] : Sample(AllFaults(counts), Tries())) {
        SCOPED_TRACE(name + " " + std::to_string(number));
        Run({"strace", "-D", "-f", "-qq", "-o", "/dev/null", "-e", "trace=" + name, "-e",
             "inject=" + name + ":error=" + ERRORS.at(name) + ":when=" + std::to_string(number)},
            key = !key);
    }
}

}  // namespace
}  // namespace applist::test
