// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0

// An application for launch tests: registers the id given as its first argument and writes a line
// to the file in $LAUNCH_LINES for each request, "PID bus KEY=VALUE;..." or "PID start
// KEY=VALUE;...".

#include <cstdlib>
#include <fstream>
#include <string>
#include <unistd.h>

#include <gio/gio.h>

#include "launch/LaunchProtocol.h"

using namespace applist::desktop;

namespace {

void Tell(const char* way, const app_control_s& request) {
    std::string line = std::to_string(getpid()) + " " + way + " ";
    for (const auto& [key, value] : request.extraData) {
        line.append(key).append("=").append(value).append(";");
    }
    std::ofstream(std::getenv("LAUNCH_LINES")) << line << std::endl;
}

void OnLaunch(GSimpleAction*, GVariant* parameter, gpointer) {
    Tell("bus", FromActionParameter("", parameter));
}

void OnActivate(GApplication*, gpointer) {
    Tell("activate", {});
}

int Serve(const char* id) {
    GApplication* application = g_application_new(id, G_APPLICATION_IS_SERVICE);
    GSimpleAction* launch = g_simple_action_new(LAUNCH_ACTION, G_VARIANT_TYPE(LAUNCH_ACTION_TYPE));
    g_signal_connect(launch, "activate", G_CALLBACK(OnLaunch), nullptr);
    g_signal_connect(application, "activate", G_CALLBACK(OnActivate), nullptr);
    g_action_map_add_action(G_ACTION_MAP(application), G_ACTION(launch));
    g_application_hold(application);
    return g_application_run(application, 0, nullptr);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 2 && std::string(argv[2]) == SERVICE_ARGUMENT) {
        return Serve(argv[1]);
    }
    Tell("start", FromArguments("", argc, argv));
    return 0;
}
