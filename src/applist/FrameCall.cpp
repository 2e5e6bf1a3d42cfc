// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "applist/FrameCall.h"

#include <Edje.h>
#include <Evas.h>
#include <utility>

#include "CallbackGuard.h"

namespace applist {

FrameCall::FrameCall(std::function<void()> body) : m_body(std::move(body)) {}

FrameCall::~FrameCall() {
    Drop();
}

void FrameCall::Request(Evas* canvas) {
    if (m_canvas == nullptr) {
        m_canvas = canvas;
        evas_event_callback_add(m_canvas, EVAS_CALLBACK_RENDER_PRE, OnFrame, this);
    }
}

void FrameCall::Drop() {
    if (m_canvas != nullptr) {
        evas_event_callback_del_full(m_canvas, EVAS_CALLBACK_RENDER_PRE, OnFrame, this);
        m_canvas = nullptr;
    }
}

void FrameCall::OnFrame(void* data, Evas* /*canvas*/, void* /*event*/) {
    GuardCallback([data] { static_cast<FrameCall*>(data)->Run(); });
}

void FrameCall::Run() {
    Evas* canvas = m_canvas;
    Drop();
    m_body();
    // The theme would hear of it in the next turn of the loop, and be laid out for the next frame.
    edje_message_signal_process();
    evas_smart_objects_calculate(canvas);
}

}  // namespace applist
