# Copyright (c) 2026 the applist authors
# SPDX-License-Identifier: Apache-2.0
"""What a screen reader finds: the windows of applist and all below, as lines "role<TAB>name".

Waits until an object has the name that is the only argument, or forever.
"""
import sys

import pyatspi
from gi.repository import GLib


def objects_of(accessible):
    yield accessible
    for child in accessible:
        if child is not None:
            yield from objects_of(child)


def tree():
    applications = [a for a in pyatspi.Registry.getDesktop(0) if a is not None and a.name == "applist"]
    return [(o.getRoleName(), o.name) for a in applications for window in a for o in objects_of(window)]


def look():
    try:
        found = tree()
    except Exception as error:  # Objects come and go while they are looked at.
        print(error, file=sys.stderr, flush=True)
        found = []
    if any(name == sys.argv[1] for _, name in found):
        print("".join(f"{role}\t{name}\n" for role, name in found), end="", flush=True)
        pyatspi.Registry.stop()
    # Only after this look has ended: each asks the list for every object, and the list must get on.
    GLib.timeout_add(250, look)
    return False


# The bindings keep what they have seen until an event says that it has changed.
pyatspi.Registry.registerEventListener(
    lambda event: None, "object:children-changed", "object:property-change"
)
GLib.idle_add(look)
pyatspi.Registry.start()
