// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "fakes/FakeWinset.h"

namespace applist::test {

std::vector<std::pair<Evas_Object*, int>>& WinsetMessages() {
    static std::vector<std::pair<Evas_Object*, int>> messages;
    return messages;
}

}  // namespace applist::test

extern "C" void edje_object_message_send_to_winset(Evas_Object* widget, int message) {
    applist::test::WinsetMessages().emplace_back(widget, message);
}
