// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "display/ThemeSignals.h"

#include <Edje.h>

namespace applist::desktop {
namespace {

Eina_Bool BeforeFrame(void* /*data*/) {
    edje_message_signal_process();
    return ECORE_CALLBACK_RENEW;
}

}  // namespace

ThemeSignals::ThemeSignals() : m_beforeFrame(ecore_idle_enterer_before_add(BeforeFrame, nullptr)) {}

}  // namespace applist::desktop
