# Copyright (c) 2026 the applist authors
# SPDX-License-Identifier: Apache-2.0
"""The messages that a screen reader speaks: a line for each, after a line "listening"."""
import pyatspi
from gi.repository import GLib


def handle(event):
    shown = event.type.startswith("object:state-changed:showing") and event.detail1
    if shown and event.source.getRole() == pyatspi.ROLE_NOTIFICATION:
        print(event.source.name, flush=True)


def say_ready():
    print("listening", flush=True)


# As screen readers do. Without the second event the bindings keep the first name of each object.
pyatspi.Registry.registerEventListener(
    handle, "object:state-changed:showing", "object:property-change:accessible-name"
)
GLib.idle_add(say_ready)
pyatspi.Registry.start()
