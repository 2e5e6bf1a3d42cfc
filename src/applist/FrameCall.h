// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

typedef struct _Eo_Opaque Evas;

namespace applist {

/// A call that comes when a canvas is about to draw a frame, or would be if its window were shown:
/// everything is laid out, nothing is drawn, and what the call changes is part of that frame. The
/// theme's programs for signals that are due run with it. Dropped if the object goes first. Main
/// thread only.
class FrameCall {
public:
    explicit FrameCall(std::function<void()> body);
    ~FrameCall();
    FrameCall(const FrameCall&) = delete;
    FrameCall& operator=(const FrameCall&) = delete;
    FrameCall(FrameCall&&) = delete;
    FrameCall& operator=(FrameCall&&) = delete;

    /// Asks for one call before canvas's next frame, which takes something to draw; asking again
    /// before it came changes nothing. canvas must outlive the request.
    void Request(Evas* canvas);
    /// Takes the request back.
    void Drop();

private:
    static void OnFrame(void* data, Evas* canvas, void* event);
    void Run();

    std::function<void()> m_body;
    Evas* m_canvas = nullptr;
};

}  // namespace applist
