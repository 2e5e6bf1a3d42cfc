// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "launch/LaunchProtocol.h"

#include <algorithm>

#include <gio/gio.h>

namespace applist::desktop {
namespace {

constexpr const char* VENDOR = "org.vantu.";

}  // namespace

std::string ApplicationIdOf(std::string_view program) {
    const std::string name(program.substr(program.find_last_of('/') + 1));
    // The alert popup's program file already has the complete id as its name.
    const std::string id = name.starts_with(VENDOR) ? name : VENDOR + name;
    return g_application_id_is_valid(id.c_str()) != 0 ? id : std::string();
}

std::string ObjectPathOf(const std::string& appId) {
    std::string path = "/" + appId;
    std::replace(path.begin(), path.end(), '.', '/');
    std::replace(path.begin(), path.end(), '-', '_');
    return path;
}

GVariant* ToActionParameter(const app_control_s& request) {
    GVariantBuilder extraData;
    g_variant_builder_init(&extraData, G_VARIANT_TYPE(LAUNCH_ACTION_TYPE));
    for (const auto& [key, value] : request.extraData) {
        g_variant_builder_add(&extraData, "{ss}", key.c_str(), value.c_str());
    }
    return g_variant_builder_end(&extraData);
}

GDBusMessage* ToMessage(const app_control_s& request) {
    GDBusMessage* message =
        g_dbus_message_new_method_call(request.appId.c_str(), ObjectPathOf(request.appId).c_str(),
                                       "org.freedesktop.Application", "ActivateAction");
    // ActivateAction takes the action's name, an array of at most one parameter and platform data.
    GVariant* parameters[] = {g_variant_new_variant(ToActionParameter(request))};
    g_dbus_message_set_body(
        message, g_variant_new("(s@av@a{sv})", LAUNCH_ACTION,
                               g_variant_new_array(G_VARIANT_TYPE_VARIANT, parameters, 1),
                               g_variant_new_array(G_VARIANT_TYPE("{sv}"), nullptr, 0)));
    // The sender does not wait until the application has handled the request.
    g_dbus_message_set_flags(message, G_DBUS_MESSAGE_FLAGS_NO_REPLY_EXPECTED);
    return message;
}

app_control_s FromActionParameter(const std::string& appId, GVariant* parameter) {
    app_control_s request{appId, {}};
    // A parameter of the wrong type would make the iterator below read an incompatible format.
    if (parameter == nullptr ||
        !g_variant_is_of_type(parameter, G_VARIANT_TYPE(LAUNCH_ACTION_TYPE))) {
        return request;
    }
    GVariantIter pairs;
    const char* key = nullptr;
    const char* value = nullptr;
    g_variant_iter_init(&pairs, parameter);
    // The strings belong to parameter, which outlives the loop; the request copies them.
    while (g_variant_iter_next(&pairs, "{&s&s}", &key, &value)) {
        request.extraData.emplace_back(key, value);
    }
    return request;
}

std::vector<std::string> ToArguments(const app_control_s& request) {
    std::vector<std::string> arguments;
    for (const auto& [key, value] : request.extraData) {
        arguments.emplace_back(EXTRA_ARGUMENT);
        arguments.emplace_back(key).append("=").append(value);
    }
    return arguments;
}

app_control_s FromArguments(const std::string& appId, int argc, const char* const* argv) {
    app_control_s request{appId, {}};
    // An --extra in the last place does not have a value and is ignored.
    for (int i = 1; i + 1 < argc; ++i) {
        if (std::string(argv[i]) != EXTRA_ARGUMENT) {
            continue;
        }
        const std::string pair = argv[++i];
        // The first '=' ends the key, so that a value may contain further ones.
        const size_t equals = pair.find('=');
        if (equals != std::string::npos) {
            request.extraData.emplace_back(pair.substr(0, equals), pair.substr(equals + 1));
        }
    }
    return request;
}

}  // namespace applist::desktop
