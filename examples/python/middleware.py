#!/usr/bin/env python3
# Copyright (c) 2026 the applist authors
# SPDX-License-Identifier: Apache-2.0
"""A middleware for applist, to start your own from: fills the list, follows the selection and
starts the item that the viewer chooses. Runs until it is interrupted. Needs python3-gi."""
import random
import signal
import struct
import sys

from gi.repository import Gio, GLib

PATH = "/org/vantu/javamw/CommunicationChannel/Applist"
INTERFACE = "org.vantu.javamw.DbusCommunication"
NAMES = "org.vantu.JavaMW.Applist"
DAEMON = ("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus")
# The middleware's answer to each announcement of the application.
ANSWERS = {"_SERVICE_SYN": "_CLIENT_SYN_ACK", "_SERVICE_SYN_ACK": "_CLIENT_ACK", "_SERVICE_ACK": None}
GET_SELECTION, ADD_ITEMS = 2001, 2004
ITEM_SELECTED, ITEM_CLICKED, LOCAL_CREATED = 2, 3, 4
# The application answers calls for 500 ms after event 3. The timeout is longer, because a set may be busy.
CHOICE_TIMEOUT_MS = 2000

# Replace these with the applications of the broadcast, as pairs of id and name.
ITEMS = [("it.guide", "Guida TV"), ("it.news", "Notizie"), ("it.weather", "Meteo")]


def say(text):
    print(text, flush=True)


def start_application(item_id, name):
    """Replace the body with code that starts an application of the broadcast."""
    say(f"start {item_id} {name}")


def pack(items):
    """Returns the bytes of items: each has a name and an id, with their lengths before them."""
    texts = [text.encode() for item_id, name in items for text in (name, item_id)]
    return b"".join(struct.pack("<I", len(text)) + text for text in texts)


def unpack(data):
    """Returns the items in a reply, as pairs of id and name."""
    texts = []
    while data:
        (length,) = struct.unpack_from("<I", data)
        texts.append(data[4 : 4 + length].decode(errors="replace"))
        data = data[4 + length :]
    return list(zip(texts[1::2], texts[0::2]))


class Middleware:
    def __init__(self, bus):
        self.bus = bus
        self.application = None  # the unique name of the connected application
        self.watched = {}  # subscriptions to the end of an application, by its unique name
        self.filled = set()  # unique names whose list has been filled
        self.latest_event = 0  # counts events 2, so that late answers are recognised
        self.selection = None  # the answer to the GetSelection of the latest event 2, or None
        # The subscriptions must exist before the first announcement, because the answer may arrive at once.
        for suffix in ANSWERS:
            self.subscribe_owner(NAMES + suffix, self.on_announcement)
        bus.signal_subscribe(None, INTERFACE, "SendSignal", PATH, None, Gio.DBusSignalFlags.NONE, self.on_event)
        self.announce("_CLIENT_SYN")

    def subscribe_owner(self, name, callback):
        return self.bus.signal_subscribe(
            DAEMON[0], DAEMON[2], "NameOwnerChanged", DAEMON[1], name, Gio.DBusSignalFlags.NONE,
            lambda *signal: callback(*signal[5].unpack()))  # fmt: skip

    # --- finding each other -----------------------------------------------------------------

    def announce(self, suffix):
        """Owns a name for a moment. If another middleware owns it, tries again a little later."""
        name = NAMES + suffix
        try:
            (code,) = self.bus.call_sync(
                *DAEMON, "RequestName", GLib.Variant("(su)", (name, 4)), None, 0, -1, None)  # fmt: skip
            if code == 1:
                self.bus.call_sync(*DAEMON, "ReleaseName", GLib.Variant("(s)", (name,)), None, 0, -1, None)
        except GLib.Error as error:
            sys.exit(f"middleware: cannot announce {name}: {error.message}")
        if code != 1:
            GLib.timeout_add(random.randint(10, 50), lambda: self.announce(suffix))
        return GLib.SOURCE_REMOVE

    def on_announcement(self, name, old_owner, new_owner):
        # The release of a name is the announcement. Ignored while an application is connected.
        if not old_owner or new_owner or self.application:
            return
        if old_owner not in self.watched:
            self.watched[old_owner] = self.subscribe_owner(old_owner, self.on_owner_change)
        answer = ANSWERS[name.removeprefix(NAMES)]
        if answer:
            self.announce(answer)

    def on_owner_change(self, name, _old_owner, new_owner):
        if new_owner:
            return
        self.bus.signal_unsubscribe(self.watched.pop(name))
        self.filled.discard(name)
        if name == self.application:
            say(f"lost {name}")
            self.application = self.selection = None

    # --- calls and events -------------------------------------------------------------------

    def call(self, function, payload, done, timeout=-1):
        """Calls the application without waiting; done receives the reply's bytes, or None."""
        data = payload + struct.pack("<i", function)
        arguments = GLib.Variant.new_tuple(GLib.Variant.new_from_bytes(GLib.VariantType("ay"), GLib.Bytes.new(data), True))

        def finish(bus, result):
            try:
                done(bytes(bus.call_finish(result).unpack()[0]))
            except GLib.Error as error:
                say(f"no answer to {function}: {error.message}")
                done(None)

        self.bus.call(self.application, PATH, INTERFACE, "Send", arguments,
                      GLib.VariantType("(ay)"), 0, timeout, None, finish)  # fmt: skip

    def on_event(self, _bus, sender, _path, _interface, _signal, parameters):
        (data,) = parameters.unpack()
        event = struct.unpack("<i", bytes(data))[0] if len(data) == 4 else 0
        if event == LOCAL_CREATED:
            self.connected(sender)
        elif sender == self.application and event == ITEM_SELECTED:
            self.selection_changed()
        elif sender == self.application and event == ITEM_CLICKED:
            self.item_chosen()

    def connected(self, application):
        """Event 4 confirms the connection. It may be repeated, but the list is filled only once."""
        self.application = application
        if application not in self.filled:
            self.filled.add(application)
            say(f"connected {application}")
            self.call(ADD_ITEMS, pack(ITEMS), lambda reply: reply is not None and say(f"filled {len(ITEMS)}"))

    def selection_changed(self):
        self.latest_event += 1
        self.selection = None
        event = self.latest_event

        def keep(reply):
            # An answer for an older event names an item that the viewer has left.
            if reply is not None and event == self.latest_event:
                self.selection = unpack(reply)[0]
                say(f"selected {self.selection[0]}")

        self.call(GET_SELECTION, b"", keep)

    def item_chosen(self):
        event, last = self.latest_event, self.selection

        def start(reply):
            # If this call fails, the answer to the GetSelection of the latest event 2 is used, if any.
            fallback = last or (self.selection if event == self.latest_event else None)
            item = unpack(reply)[0] if reply is not None else fallback
            if item and item[0]:
                start_application(*item)
            else:
                say("start nothing: the choice is unknown")

        self.call(GET_SELECTION, b"", start, CHOICE_TIMEOUT_MS)


def main():
    try:
        bus = Gio.bus_get_sync(Gio.BusType.SYSTEM)
    except GLib.Error as error:
        sys.exit(f"middleware: cannot connect to the system bus: {error.message}")
    middleware = Middleware(bus)  # noqa: F841: kept while the loop runs
    loop = GLib.MainLoop()
    for number in (signal.SIGINT, signal.SIGTERM):
        GLib.unix_signal_add(GLib.PRIORITY_DEFAULT, number, loop.quit)
    loop.run()


if __name__ == "__main__":
    main()
