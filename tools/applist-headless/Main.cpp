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

#include "Lines.h"
#include "Session.h"
#include "log/LogWriter.h"

namespace {

using namespace applist::headless;

constexpr double LONGEST_TIMEOUT = 86400;

struct Options {
    std::string file = "-";
    std::string address;
    Session::Options session;
};

constexpr const char* DESCRIPTION =
    "The application without a screen, for tests of a middleware: its list, its\n"
    "protocol and its keys, driven by lines of FILE or of standard input.";

constexpr const char* STATEMENTS =
    "Statements, one on each line:\n"
    "  up, down, left, right, ok, back, exit   press a key of the remote control\n"
    "  wait TIME        advance the application's clock: 200ms, 65s, 2min\n"
    "  hang TIME        do not answer calls for this real time\n"
    "  second start     start the program again, which closes the list\n"
    "  die              end without notice, as after a crash\n"
    "  await connected | disconnected | ended | items N | item ID | selected ID\n"
    "  state            print the state as a line of JSON\n\n"
    "Exit status: 0 end of the input, 1 an await timed out or writing failed,\n"
    "2 wrong usage or a wrong line, 3 the system bus cannot be used.\n";

int Refuse(const std::string& problem) {
    static_cast<void>(std::fprintf(stderr, "applist-headless: %s; see applist-headless --help\n",
                                   problem.c_str()));
    return WRONG_INPUT;
}

/// Returns the exit status if the program ends here.
std::optional<int> ParseOptions(int argc, char** argv, Options& options) {
    g_autofree char* address = nullptr;
    gboolean version = FALSE;
    gboolean once = FALSE;
    const GOptionEntry entries[] = {
        {"address", 'a', 0, G_OPTION_ARG_STRING, &address,
         "Address of the bus; default: the system bus", "ADDRESS"},
        {"timeout", 't', 0, G_OPTION_ARG_DOUBLE, &options.session.awaitSeconds,
         "Time limit of 'await'; default: 10", "SECONDS"},
        {"once", '\0', 0, G_OPTION_ARG_NONE, &once, "End with the application, not with the input",
         nullptr},
        {"version", '\0', 0, G_OPTION_ARG_NONE, &version, "Print the version and stop", nullptr},
        {}};
    g_autoptr(GOptionContext) context = g_option_context_new("[FILE]");
    g_option_context_add_main_entries(context, entries, nullptr);
    g_option_context_set_summary(context, DESCRIPTION);
    g_option_context_set_description(context, STATEMENTS);
    g_autoptr(GError) error = nullptr;
    if (g_option_context_parse(context, &argc, &argv, &error) == FALSE) {
        return Refuse(error->message);
    }
    if (version != FALSE) {
        std::puts("applist-headless " APPLIST_VERSION);
        return DONE;
    }
    if (argc > 2) {
        return Refuse(std::string("one FILE at most, not also '") + argv[2] + "'");
    }
    if (!(options.session.awaitSeconds > 0 && options.session.awaitSeconds <= LONGEST_TIMEOUT)) {
        return Refuse("--timeout takes a number of seconds up to a day");
    }
    options.session.once = once != FALSE;
    options.file = argc == 2 ? argv[1] : "-";
    options.address = address != nullptr ? address : "";
    return std::nullopt;
}

/// Returns the input, or -1 after a message.
int OpenInput(const std::string& file) {
    if (file == "-") {
        return STDIN_FILENO;
    }
    // A FIFO without a writer must not block the application.
    const int fd = open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0) {
        static_cast<void>(
            std::fprintf(stderr, "applist-headless: %s: %s\n", file.c_str(), std::strerror(errno)));
    }
    return fd;
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
    const Lines lines(
        fd,
        [&](const std::string& line, int number) {
            session.Take(line, name + ":" + std::to_string(number));
        },
        [&] { session.EndInput(); });
    if (status == DONE) {
        g_main_loop_run(loop.get());
    }
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    Options options;
    if (const auto status = ParseOptions(argc, argv, options)) {
        return *status;
    }
    applist::desktop::TakeGlibMessages();
    if (!options.address.empty()) {
        setenv("DBUS_SYSTEM_BUS_ADDRESS", options.address.c_str(), 1);
    }
    const int fd = OpenInput(options.file);
    return fd < 0 ? WRONG_INPUT : RunInput(fd, options);
}
