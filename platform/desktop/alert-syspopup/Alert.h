// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "launch/AppControlRequest.h"

namespace applist::desktop {

/// The content of an alert, from a launch request.
struct Alert {
    enum class Kind { NOTIFICATION, UNAVAILABLE };
    Kind kind = Kind::NOTIFICATION;
    /// UTF-8 plain text. Markup is not interpreted.
    std::string text;
};

/// Reads the extra data "text" and "type". Returns nothing if the text is missing or empty. Any
/// type other than "unavailable" is a notification, so that alerts from newer programs are still
/// shown.
std::optional<Alert> ReadAlert(const app_control_s& request);

}  // namespace applist::desktop
