// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// applist-headless: the application without a screen, for the tests of a middleware.
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <string>
#include <unistd.h>

#include <glib-unix.h>
#include <sys/stat.h>

#include "Number.h"
#include "Session.h"
#include "log/LogWriter.h"
#include "shared/CommandLine.h"
#include "shared/LineReader.h"

namespace applist::headless {
namespace {

constexpr const char* DEFAULT_TIMEOUT = "10";
constexpr double LONGEST_TIMEOUT = 86400;

struct Options {
    std::string file;
    Session::Options session;
};

constexpr const char* SUMMARY =
    "The application without a screen, for tests of a middleware: its list, its\n"
    "protocol and its keys, driven by lines of FILE or of standard input";

constexpr const char* STATEMENTS =
    "Statements, one on each line:\n"
    "  up, down, left, right, ok, back, exit   press a key of the remote control\n"
    "  wait TIME        advance the application's clock: 200ms, 65s, 2min\n"
    "  hang TIME        do not answer calls for this real time\n"
    "  second start     start the program again, which closes the list\n"
    "  die              end without notice, as after a crash\n"
    "  await connected | disconnected | ended | items N | item ID | selected ID\n"
    "  state            print the state as a line of JSON\n";

constexpr const char* EXIT_CODES =
    "Exit status: 0 end of the input, 1 an await timed out or writing failed,\n"
    "2 wrong usage or a wrong line, 3 the system bus cannot be used.\n";

/// Returns the value of --timeout, or nothing if it is not a number of the allowed range.
std::optional<double> Timeout(const std::string& text) {
    const auto seconds = ParseNumber<double>(text);
    return seconds && *seconds > 0 && *seconds <= LONGEST_TIMEOUT ? seconds : std::nullopt;
}

/// Returns the input, or -1 after a message.
int OpenInput(const std::string& file) {
    // A FIFO without a writer must not block the application.
    const int fd =
        file == "-" ? STDIN_FILENO : open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat status {};
    const bool isFolder = fd >= 0 && fstat(fd, &status) == 0 && S_ISDIR(status.st_mode);
    if (fd >= 0 && !isFolder) {
        return fd;
    }
    static_cast<void>(std::fprintf(stderr, "applist-headless: %s: %s\n",
                                   file.empty() ? "''" : file.c_str(),
                                   std::strerror(isFolder ? EISDIR : errno)));
    return -1;
}

int RunInput(int fd, const Options& options) {
    const std::unique_ptr<GMainLoop, decltype(&g_main_loop_unref)> loop(
        g_main_loop_new(nullptr, FALSE), g_main_loop_unref);
    Exit status = DONE;
    Session session(options.session, [&](Exit result) {
        status = result;
        g_main_loop_quit(loop.get());
    });
    const auto quit = [](void* running) -> gboolean {
        g_main_loop_quit(static_cast<GMainLoop*>(running));
        return G_SOURCE_CONTINUE;
    };
    g_unix_signal_add(SIGTERM, quit, loop.get());
    g_unix_signal_add(SIGINT, quit, loop.get());
    session.Start();
    const std::string name = options.file == "-" ? "standard input" : options.file;
    int number = 0;
    tools::LineReader lines(fd, {.line =
                                     [&](const std::string& line) {
                                         session.Take(line, name + ":" + std::to_string(++number));
                                     },
                                 .end = [&] { session.EndInput(); }});
    lines.Resume();
    if (status == DONE) {
        g_main_loop_run(loop.get());
    }
    return status;
}

int Run(const tools::Arguments& given) {
    const auto timeout = Timeout(given.Value("timeout", DEFAULT_TIMEOUT));
    if (!timeout) {
        return given.Refuse("--timeout takes a number of seconds up to a day");
    }
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    desktop::TakeGlibMessages();
    if (given.Has("address")) {
        setenv("DBUS_SYSTEM_BUS_ADDRESS", given.Value("address").c_str(), 1);
    }
    const Options options{.file = given.words().empty() ? "-" : given.words().front(),
                          .session = {.awaitSeconds = *timeout, .once = given.Has("once")}};
    const int fd = OpenInput(options.file);
    return fd < 0 ? WRONG_INPUT : RunInput(fd, options);
}

}  // namespace
}  // namespace applist::headless

namespace applist::tools {

const Program& TheProgram() {
    static const Program PROGRAM{
        .name = "applist-headless",
        .version = APPLIST_VERSION,
        .purpose = "",
        .options = {{"address", 'a', "ADDRESS", "Address of the bus; default: the system bus"},
                    {"timeout", 't', "SECONDS",
                     std::string("Time limit of \"await\"; default: ") + headless::DEFAULT_TIMEOUT},
                    {"once", '\0', "", "End with the application, not with the input"}},
        .commands = {{.name = "",
                      .words = "[FILE]",
                      .summary = headless::SUMMARY,
                      .options = {},
                      .details = headless::STATEMENTS,
                      .run = headless::Run}},
        .exitCodes = headless::EXIT_CODES,
        .values = {{"FILE", {}}}};
    return PROGRAM;
}

}  // namespace applist::tools
