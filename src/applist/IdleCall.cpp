// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "applist/IdleCall.h"

#include <Ecore.h>
#include <utility>

#include "CallbackGuard.h"

namespace applist {

IdleCall::IdleCall(std::function<void()> body) : m_body(std::move(body)) {}

IdleCall::~IdleCall() {
    Drop();
}

void IdleCall::Request() {
    if (m_idler == nullptr) {
        m_idler = ecore_idler_add(OnIdle, this);
    }
}

void IdleCall::Drop() {
    if (m_idler != nullptr) {
        ecore_idler_del(m_idler);
        m_idler = nullptr;
    }
}

Eina_Bool IdleCall::OnIdle(void* data) {
    GuardCallback([data] { static_cast<IdleCall*>(data)->Run(); });
    return ECORE_CALLBACK_CANCEL;
}

void IdleCall::Run() {
    m_idler = nullptr;
    m_body();
    // The loop goes to sleep straight after its idlers; only an event makes it draw before that.
    ecore_job_add([](void* /*data*/) {}, nullptr);
}

}  // namespace applist
