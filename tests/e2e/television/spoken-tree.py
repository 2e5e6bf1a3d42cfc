# Copyright (c) 2026 the applist authors
# SPDX-License-Identifier: Apache-2.0
"""What a screen reader finds: the windows of applist and all below, as lines "role<TAB>name".

Waits until an object has the name that is the only argument, or forever.
"""
import sys

import pyatspi


def objects_of(accessible):
    yield accessible
    for child in accessible:
        if child is not None:
            yield from objects_of(child)


def tree():
    applications = [a for a in pyatspi.Registry.getDesktop(0) if a is not None and a.name == "applist"]
    return [(o.getRoleName(), o.name) for a in applications for window in a for o in objects_of(window)]


def look(_event=None):
    try:
        found = tree()
    except Exception as error:  # Objects come and go while they are looked at.
        print(error, file=sys.stderr, flush=True)
        return True
    if any(name == sys.argv[1] for _, name in found):
        print("".join(f"{role}\t{name}\n" for role, name in found), end="", flush=True)
        pyatspi.Registry.stop()
    return True


pyatspi.Registry.registerEventListener(look, "object:children-changed", "object:property-change")
# Not everything that changes is announced.
from gi.repository import GLib  # noqa: E402

GLib.timeout_add(250, look)
pyatspi.Registry.start()
