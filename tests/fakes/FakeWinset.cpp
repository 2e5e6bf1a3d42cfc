// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "winset.h"

// A theme that ignores messages. A test that checks them records the call before it arrives here.
extern "C" void edje_object_message_send_to_winset(Evas_Object* /*widget*/, int /*message*/) {}
