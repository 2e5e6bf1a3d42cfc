// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "app/GlibLoop.h"

#include <cerrno>
#include <ctime>
#include <optional>
#include <utility>

#include "CallbackGuard.h"

namespace applist::desktop {
namespace {

// The toolkit's select function does not have a user-data argument.
GlibLoop* g_loop = nullptr;

int OnSelect(int count, fd_set* reads, fd_set* writes, fd_set* exceptions, timeval* timeout) {
    return GuardCallback(-1,
                         [&] { return g_loop->Select(count, reads, writes, exceptions, timeout); });
}

Eina_Bool OnTurn(void* loop) {
    GuardCallback([loop] { static_cast<GlibLoop*>(loop)->Dispatch(); });
    return ECORE_CALLBACK_RENEW;
}

bool Holds(const fd_set* set, int descriptor) {
    return set != nullptr && FD_ISSET(descriptor, set);
}

// Removes the descriptor from its set unless it is ready. Returns true if it stays.
bool Keep(fd_set* set, const pollfd& polled, int readiness) {
    if (!Holds(set, polled.fd)) {
        return false;
    }
    if ((polled.revents & readiness) == 0) {
        FD_CLR(polled.fd, set);
        return false;
    }
    return true;
}

// Returns the shorter of the toolkit's and GLib's timeouts; nothing if both are unlimited.
std::optional<timespec> Shorter(const timeval* toolkit, int glibMilliseconds) {
    std::optional<timespec> wait;
    if (glibMilliseconds >= 0) {
        wait = timespec{glibMilliseconds / 1000, glibMilliseconds % 1000 * 1'000'000L};
    }
    if (toolkit != nullptr) {
        const timespec other{toolkit->tv_sec, toolkit->tv_usec * 1000L};
        if (!wait ||
            std::pair(other.tv_sec, other.tv_nsec) < std::pair(wait->tv_sec, wait->tv_nsec)) {
            wait = other;
        }
    }
    return wait;
}

// Returns true if a wait of this length counts as idle. The toolkit finishes a frame within 500 ms,
// and a sliding name pauses for 1 s, so 250 ms separates both.
bool IsIdle(const std::optional<timespec>& wait) {
    constexpr long QUARTER_SECOND_NS = 250'000'000;
    return !wait || wait->tv_sec > 0 || wait->tv_nsec >= QUARTER_SECOND_NS;
}

bool TakesTime(const std::optional<timespec>& wait) {
    return !wait || wait->tv_sec > 0 || wait->tv_nsec > 0;
}

// GLib declares its own type for poll(2), with the same layout; the cast below relies on it.
static_assert(sizeof(GPollFD) == sizeof(pollfd) &&
              offsetof(GPollFD, events) == offsetof(pollfd, events) &&
              offsetof(GPollFD, revents) == offsetof(pollfd, revents));

GPollFD* AsGlib(pollfd* descriptors) {
    return reinterpret_cast<GPollFD*>(descriptors);
}

}  // namespace

GlibLoop::GlibLoop(std::function<void()> beforeIdle)
    : m_beforeIdle(std::move(beforeIdle)), m_context(g_main_context_default()) {
    // Stays acquired while this object exists. If another thread adds a source, as GDBus does, GLib
    // wakes up a waiting context only if a thread owns it.
    g_main_context_acquire(m_context);
    g_loop = this;
    m_replaced = ecore_main_loop_select_func_get();
    ecore_main_loop_select_func_set(OnSelect);
    m_afterWait = ecore_idle_exiter_add(OnTurn, this);
    // Nested loops run single iterations, which do not call the idle exiter.
    m_beforeWait = ecore_idle_enterer_before_add(OnTurn, this);
}

GlibLoop::~GlibLoop() {
    ecore_idle_enterer_del(m_beforeWait);
    ecore_idle_exiter_del(m_afterWait);
    ecore_main_loop_select_func_set(m_replaced);
    g_loop = nullptr;
    g_main_context_release(m_context);
}

int GlibLoop::Select(int count, fd_set* reads, fd_set* writes, fd_set* exceptions,
                     timeval* timeout) {
    CollectToolkit(count, reads, writes, exceptions);
    int priority = 0;
    int glibTimeout = -1;
    const int glibCount = CollectGlib(&priority, &glibTimeout);
    const auto wait = Shorter(timeout, glibTimeout);
    if (std::exchange(m_timedOut, false) && IsIdle(wait)) {
        m_beforeIdle();
    }
    const int polled =
        ppoll(m_descriptors.data(), m_descriptors.size(), wait ? &*wait : nullptr, nullptr);
    // g_main_context_check() may overwrite errno.
    const int error = errno;
    m_timedOut = polled == 0 && TakesTime(wait);
    m_ready = g_main_context_check(m_context, priority,
                                   AsGlib(m_descriptors.data() + m_toolkitCount), glibCount) != 0;
    if (polled < 0) {
        errno = error;
        return -1;
    }
    const int ready = Report(reads, writes, exceptions);
    // The toolkit runs the idle exiter only if something is ready.
    return ready == 0 && m_ready ? 1 : ready;
}

void GlibLoop::Dispatch() {
    if (std::exchange(m_ready, false)) {
        g_main_context_dispatch(m_context);
    }
}

void GlibLoop::CollectToolkit(int count, const fd_set* reads, const fd_set* writes,
                              const fd_set* exceptions) {
    m_descriptors.clear();
    for (int descriptor = 0; descriptor < count; ++descriptor) {
        const int events = (Holds(reads, descriptor) ? POLLIN : 0) |
                           (Holds(writes, descriptor) ? POLLOUT : 0) |
                           (Holds(exceptions, descriptor) ? POLLPRI : 0);
        if (events != 0) {
            m_descriptors.push_back({descriptor, static_cast<short>(events), 0});
        }
    }
    m_toolkitCount = m_descriptors.size();
}

int GlibLoop::CollectGlib(int* priority, int* timeout) {
    g_main_context_prepare(m_context, priority);
    // If this is too small, the loop asks again with the size that GLib needs.
    size_t room = 8;
    for (;;) {
        m_descriptors.resize(m_toolkitCount + room);
        const int needed = g_main_context_query(m_context, *priority, timeout,
                                                AsGlib(m_descriptors.data() + m_toolkitCount),
                                                static_cast<int>(room));
        if (static_cast<size_t>(needed) <= room) {
            m_descriptors.resize(m_toolkitCount + static_cast<size_t>(needed));
            return needed;
        }
        room = static_cast<size_t>(needed);
    }
}

int GlibLoop::Report(fd_set* reads, fd_set* writes, fd_set* exceptions) const {
    int ready = 0;
    for (size_t i = 0; i < m_toolkitCount; ++i) {
        const pollfd& polled = m_descriptors[i];
        // As select(2) does for a closed descriptor.
        if ((polled.revents & POLLNVAL) != 0) {
            errno = EBADF;
            return -1;
        }
        // select(2) reports end of file and errors as readable, and errors also as writable.
        ready += Keep(reads, polled, POLLIN | POLLHUP | POLLERR) ? 1 : 0;
        ready += Keep(writes, polled, POLLOUT | POLLERR) ? 1 : 0;
        ready += Keep(exceptions, polled, POLLPRI) ? 1 : 0;
    }
    return ready;
}

}  // namespace applist::desktop
