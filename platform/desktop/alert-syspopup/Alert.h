// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "AppControlRequest.h"

namespace applist::desktop {

/// What a launch request asks the alert popup to say.
struct Alert {
    enum class Kind { NOTIFICATION, UNAVAILABLE };
    Kind kind = Kind::NOTIFICATION;
    /// UTF-8, shown as it is: no markup.
    std::string text;
};

/// Reads the extra data "text" and "type". Nothing without a text. A type other than "unavailable"
/// is a notification, so that a text from a newer program is shown all the same.
std::optional<Alert> ReadAlert(const app_control_s& request);

}  // namespace applist::desktop
