// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Evas.h>

namespace applist::desktop {

/// Sends the X server less for the frames of this object's window than the toolkit does, as long as
/// the window is shaped. The window's picture is the same. Call before the first frame.
///
/// Without a compositor a transparent window has the shape of its opaque pixels. With each frame,
/// the toolkit sends which of the drawn pixels are opaque, and sets the shape again. The server
/// then computes the window's area from two million pixels, and the window manager shapes its
/// frame. A frame inside the panel does not change the shape, so the program replaces XPutImage()
/// and XShapeCombineMask(), which send nothing in this case.
///
/// The toolkit waits for the server before it sends a frame, because the server may still read the
/// previous frame's shared memory. Without shared memory, see SetUpFrameMemory(), there is no
/// reason to wait. The program therefore replaces XSync().
void SendFramesAtOnce(const Evas_Object* object);

}  // namespace applist::desktop
