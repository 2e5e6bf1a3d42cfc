// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <memory>
#include <utility>

#include "Commands.h"
#include "app_control.h"
#include "data/Reading.h"

namespace applist::desktop {
namespace {

using Pair = std::pair<std::string, std::string>;

struct Destroy {
    void operator()(app_control_h request) const { app_control_destroy(request); }
};
using LaunchRequest = std::unique_ptr<app_control_s, Destroy>;

/// Parses KEY=VALUE. The value may be empty and may contain '='.
Reading<Pair> ParsePair(const std::string& word) {
    const size_t sign = word.find('=');
    if (sign == std::string::npos || sign == 0) {
        return {{}, "extra data '" + word + "' is not KEY=VALUE"};
    }
    return {Pair(word.substr(0, sign), word.substr(sign + 1)), {}};
}

bool Fill(app_control_h request, const std::string& id, const std::vector<Pair>& data) {
    for (const auto& [key, value] : data) {
        if (app_control_add_extra_data(request, key.c_str(), value.c_str()) !=
            APP_CONTROL_ERROR_NONE) {
            return false;
        }
    }
    return app_control_set_app_id(request, id.c_str()) == APP_CONTROL_ERROR_NONE;
}

bool Send(const std::string& id, const std::vector<Pair>& data) {
    app_control_h handle = nullptr;
    if (app_control_create(&handle) != APP_CONTROL_ERROR_NONE) {
        return false;
    }
    const LaunchRequest request(handle);
    // Without a reply callback, because the return value reports whether the launch was accepted.
    return Fill(handle, id, data) &&
           app_control_send_launch_request(handle, nullptr, nullptr) == APP_CONTROL_ERROR_NONE;
}

}  // namespace

int Launch(const Arguments& given) {
    const std::string& id = given.words()[0];
    std::vector<Pair> data;
    for (size_t i = 1; i < given.words().size(); ++i) {
        auto pair = ParsePair(given.words()[i]);
        if (!pair.value) {
            return Complain(pair.problem, WRONG_USAGE);
        }
        data.push_back(std::move(*pair.value));
    }
    return Send(id, data) ? DONE : Complain("application '" + id + "' was not launched", FAILED);
}

}  // namespace applist::desktop
