// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "display/KeyNames.h"

namespace applist::desktop {

const char* RemoteControlKey(std::string_view keyboardKey) {
    if (keyboardKey == "Escape") {
        return "XF86Back";
    }
    // The toolkit's database of key names has none for XF86Exit and makes one up from the code.
    if (keyboardKey == "F10" || keyboardKey == "Keycode-182") {
        return "XF86Exit";
    }
    return nullptr;
}

}  // namespace applist::desktop
