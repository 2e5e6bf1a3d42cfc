// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <utility>
#include <vector>

#include "winset.h"

/// Theme messages as a history. Linking it provides edje_object_message_send_to_winset().
namespace applist::test {

/// Every message sent so far, oldest first; tests clear it to start afresh.
std::vector<std::pair<Evas_Object*, int>>& WinsetMessages();

}  // namespace applist::test
