// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "alert-syspopup/Alert.h"

namespace applist::desktop {

std::optional<Alert> ReadAlert(const app_control_s& request) {
    Alert alert;
    for (const auto& [key, value] : request.extraData) {
        if (key == "text") {
            alert.text = value;
        } else if (key == "type" && value == "unavailable") {
            alert.kind = Alert::Kind::UNAVAILABLE;
        }
    }
    return alert.text.empty() ? std::nullopt : std::optional(alert);
}

}  // namespace applist::desktop
