// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "app/PreparedProcess.h"

#include <Ecore_X.h>
#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <glib.h>
#include <iterator>
#include <string_view>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

#include "CallbackGuard.h"
#include "app/Lifecycle.h"
#include "app/SettingsWatch.h"
#include "data/Text.h"
#include "display/Screen.h"
#include "display/Theme.h"
#include "launch/LaunchProtocol.h"
#include "launch/PreparedLaunch.h"
#include "log/LogWriter.h"

namespace applist::desktop {
namespace {

// A launcher that has connected sends its request at once.
constexpr timeval REQUEST_TIMEOUT{0, 500'000};

PreparedProcess* g_prepared = nullptr;

// The launcher of this process; -1 before it is told the exit status, because it then closes the
// connection.
std::atomic<int> g_launcher = -1;

Eina_Bool OnConnected(void* process, Ecore_Fd_Handler*) {
    GuardCallback([process] { static_cast<PreparedProcess*>(process)->Connected(); });
    return ECORE_CALLBACK_RENEW;
}

Eina_Bool OnBeforeWait(void* process) {
    GuardCallback([process] { static_cast<PreparedProcess*>(process)->CheckSurroundings(); });
    return ECORE_CALLBACK_RENEW;
}

// The caller sees only the launcher. This process therefore gets the signals that the launcher
// receives, and is killed when the launcher ends before it.
void FollowLauncher(int connection) {
    unsigned char signal = 0;
    while (recv(connection, &signal, 1, 0) == 1) {
        kill(getpid(), signal);
    }
    if (g_launcher >= 0) {
        kill(getpid(), SIGKILL);
    }
}

// A thread, because the application may be waiting outside its loop. It blocks all signals, which
// are for the main thread.
void StartFollowing(int connection) {
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, &before);
    std::thread(FollowLauncher, connection).detach();
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

void OnExit(int status, void*) {
    // The launcher's caller may read the output as soon as the launcher ends.
    static_cast<void>(std::fflush(nullptr));
    send(g_launcher.exchange(-1), &status, sizeof status, MSG_NOSIGNAL);
}

// Reads one message into text. Returns the descriptors that came with it.
std::vector<int> ReceiveMessage(int connection, std::string& text) {
    std::vector<int> descriptors(PREPARED_DESCRIPTORS, -1);
    const size_t size = descriptors.size() * sizeof(int);
    // Aligned, because the kernel stores a header in it.
    alignas(cmsghdr) std::array<char, CMSG_SPACE(PREPARED_DESCRIPTORS * sizeof(int))> control{};
    text.resize(PREPARED_REQUEST_BYTES);
    iovec part{text.data(), text.size()};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    const ssize_t length = recvmsg(connection, &message, MSG_CMSG_CLOEXEC);
    text.resize(length > 0 ? static_cast<size_t>(length) : 0);
    const cmsghdr* header = CMSG_FIRSTHDR(&message);
    if (header == nullptr || header->cmsg_len != CMSG_LEN(size)) {
        return {};
    }
    std::memcpy(descriptors.data(), CMSG_DATA(header), size);
    return descriptors;
}

// The starts of the variables that the toolkit, fontconfig, Xlib, GLib and the loader read before
// the application does, and of those with which this port finds the viewer's settings.
constexpr std::string_view READ_AT_START[] = {"APPLIST_PLATFORM_ROOT=",
                                              "DISPLAY=",
                                              "ECORE_",
                                              "EDJE_",
                                              "EET_",
                                              "EFL_",
                                              "EFREET_",
                                              "EINA_",
                                              "EIO_",
                                              "ELM_",
                                              "EO_",
                                              "EVAS_",
                                              "FC_",
                                              "FONTCONFIG_",
                                              "FREETYPE_",
                                              "GLIBC_TUNABLES=",
                                              "GOBJECT_",
                                              "G_",
                                              "HB_",
                                              "HOME=",
                                              "LANG=",
                                              "LANGUAGE=",
                                              "LC_",
                                              "LD_",
                                              "MALLOC_",
                                              "TMPDIR=",
                                              "WAYLAND_",
                                              "XAUTHORITY=",
                                              "XCURSOR_",
                                              "XDG_CACHE_HOME=",
                                              "XDG_CONFIG",
                                              "XDG_DATA_",
                                              "XDG_RUNTIME_DIR=",
                                              "XKB",
                                              "XKEYSYMDB=",
                                              "XLOCALEDIR="};

bool IsReadAtStart(std::string_view variable) {
    return std::any_of(std::begin(READ_AT_START), std::end(READ_AT_START),
                       [variable](std::string_view start) { return variable.starts_with(start); });
}

std::string ScreenSizes() {
    // Asks the X server; the toolkit may not know the new size of the screen yet.
    int width = 0;
    int height = 0;
    ecore_x_window_size_get(ecore_x_window_root_first_get(), &width, &height);
    const Eina_Rectangle monitor = FirstMonitor();
    return std::to_string(width) + 'x' + std::to_string(height) + ' ' + std::to_string(monitor.w) +
           'x' + std::to_string(monitor.h);
}

// Returns what the start of the toolkit depends on, one sorted line each: the variables of the
// environment that the toolkit and its libraries have read by then, the theme, the screen, and the
// program's file. A process that has started the toolkit can become the application only as long
// as they stay the same.
std::vector<std::string> ReadSurroundings() {
    std::error_code ignored;
    const std::string theme = FindTheme();
    const auto changed = std::filesystem::last_write_time(theme, ignored).time_since_epoch();
    // The kernel adds "(deleted)" to the name of a program that has been replaced.
    const std::string program = std::filesystem::read_symlink("/proc/self/exe", ignored);
    std::vector<std::string> lines{"program " + program,
                                   "theme " + theme + ' ' + std::to_string(changed.count()),
                                   "screen " + ScreenSizes()};
    std::copy_if(environ, environ + g_strv_length(environ), std::back_inserter(lines),
                 IsReadAtStart);
    std::sort(lines.begin(), lines.end());
    return lines;
}

}  // namespace

PreparedProcess::PreparedProcess(std::string applicationId)
    : m_applicationId(std::move(applicationId)) {
    g_prepared = this;
}

PreparedProcess::~PreparedProcess() {
    StopListening();
    g_prepared = nullptr;
}

std::unique_ptr<Toolkit> PreparedProcess::TakeToolkit() {
    return g_prepared != nullptr ? std::move(g_prepared->m_toolkit) : nullptr;
}

bool PreparedProcess::Prepare(int argc, char** argv) {
    m_toolkit = std::make_unique<Toolkit>(argc, argv);
    if (!m_toolkit->Started() || !m_toolkit->Connect() || ecore_x_display_get() == nullptr) {
        LOG_ERROR("Cannot prepare %s: no X server can be reached", m_applicationId.c_str());
        return false;
    }
    m_toolkit->PrepareWindow(m_applicationId);
    m_surroundings = ReadSurroundings();
    return Listen();
}

bool PreparedProcess::Listen() {
    const auto address = PreparedAddress(m_applicationId);
    if (!address) {
        LOG_ERROR("Cannot prepare %s: XDG_RUNTIME_DIR names no usable folder",
                  m_applicationId.c_str());
        return false;
    }
    const auto* name = reinterpret_cast<const sockaddr*>(&*address);
    const int listener = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    // Only a live process accepts a connection; the file alone may be left over.
    if (connect(listener, name, sizeof *address) == 0) {
        LOG_ERROR("Cannot prepare %s: another process is prepared already",
                  m_applicationId.c_str());
        close(listener);
        return false;
    }
    // A process that was killed leaves its socket behind.
    unlink(address->sun_path);
    if (bind(listener, name, sizeof *address) != 0 || listen(listener, 1) != 0) {
        LOG_ERROR("Cannot prepare %s: %s: %s", m_applicationId.c_str(), address->sun_path,
                  std::strerror(errno));
        close(listener);
        return false;
    }
    m_socket = address->sun_path;
    m_listener = listener;
    LOG_INFO("%s is prepared", m_applicationId.c_str());
    return true;
}

// The next launcher starts the program itself, or finds a process that was prepared later.
void PreparedProcess::StopListening() {
    if (m_listener >= 0) {
        unlink(m_socket.c_str());
        close(std::exchange(m_listener, -1));
    }
}

bool PreparedProcess::AwaitRequest() {
    Ecore_Fd_Handler* handler =
        ecore_main_fd_handler_add(m_listener, ECORE_FD_READ, OnConnected, this, nullptr, nullptr);
    Ecore_Idle_Enterer* enterer = ecore_idle_enterer_add(OnBeforeWait, this);
    const SettingsWatch settings([this] { CheckSurroundings(); });
    ecore_main_loop_begin();
    ecore_idle_enterer_del(enterer);
    ecore_main_fd_handler_del(handler);
    StopListening();
    return m_connection >= 0;
}

bool PreparedProcess::FitsSurroundings() const {
    const std::vector<std::string> now = ReadSurroundings();
    std::vector<std::string> different;
    std::set_symmetric_difference(now.begin(), now.end(), m_surroundings.begin(),
                                  m_surroundings.end(), std::back_inserter(different));
    if (!different.empty()) {
        LOG_INFO("%s is prepared for other surroundings: %s", m_applicationId.c_str(),
                 different.front().c_str());
    }
    return different.empty();
}

void PreparedProcess::CheckSurroundings() {
    if (!FitsSurroundings()) {
        ecore_main_loop_quit();
    }
}

void PreparedProcess::Connected() {
    const int connection = accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
    if (connection < 0) {
        return;
    }
    if (!PeerIsSameUser(connection) || !Receive(connection)) {
        close(connection);
    }
}

bool PreparedProcess::Receive(int connection) {
    setsockopt(connection, SOL_SOCKET, SO_RCVTIMEO, &REQUEST_TIMEOUT, sizeof REQUEST_TIMEOUT);
    std::string request;
    const std::vector<int> descriptors = ReceiveMessage(connection, request);
    const bool complete =
        !descriptors.empty() && request.size() > sizeof(uint32_t) && request.back() == '\0';
    if (complete) {
        Adopt(request);
        // Ends the wait in any case: the environment and the arguments have been replaced, so this
        // process cannot wait for another request.
        ecore_main_loop_quit();
        if (FitsSurroundings()) {
            Become(connection, descriptors);
        }
    }
    std::for_each(descriptors.begin(), descriptors.end(), close);
    return m_connection >= 0;
}

// Keeps the texts until the process ends, because the environment refers to them.
void PreparedProcess::Adopt(const std::string& request) {
    uint32_t count = 0;
    std::memcpy(&count, request.data(), sizeof count);
    static auto* const texts = new std::string;
    static auto* const variables = new std::vector<char*>;
    texts->assign(request, sizeof count);
    for (size_t at = 0; at < texts->size(); at = texts->find('\0', at) + 1) {
        (m_arguments.size() < count ? m_arguments : *variables).push_back(texts->data() + at);
    }
    m_arguments.push_back(nullptr);
    variables->push_back(nullptr);
    environ = variables->data();
    // As at the start of any program of this port.
    ChooseLanguages();
    Toolkit::SetEnvironment();
}

void PreparedProcess::Become(int connection, const std::vector<int>& descriptors) {
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
        dup2(descriptors[static_cast<size_t>(stream)], stream);
    }
    const char accepted = 1;
    if (fchdir(descriptors.back()) != 0 ||
        send(connection, &accepted, sizeof accepted, MSG_NOSIGNAL) < 0) {
        return;
    }
    // The request has other streams and another environment than the start of this process.
    LogWriter::Reread();
    m_connection = connection;
    // The limit was for the request; the next message may come at any time.
    constexpr timeval FOREVER{0, 0};
    setsockopt(connection, SOL_SOCKET, SO_RCVTIMEO, &FOREVER, sizeof FOREVER);
    g_launcher = connection;
    on_exit(OnExit, nullptr);
    StartFollowing(connection);
}

}  // namespace applist::desktop
