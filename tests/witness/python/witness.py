#!/usr/bin/python3
# Copyright (c) 2026 the applist authors
# SPDX-License-Identifier: Apache-2.0
"""A middleware after docs/protocol.md, over GIO. See tests/witness/README.md."""

import collections
import struct
import sys

from gi.repository import Gio, GLib

PATH = "/org/vantu/javamw/CommunicationChannel/Applist"
INTERFACE = "org.vantu.javamw.DbusCommunication"
CHANNEL = "org.vantu.JavaMW.Applist_"
OBJECT = f"""
<node><interface name='{INTERFACE}'><method name='Send'>
  <arg type='ay' name='data' direction='in'/><arg type='ay' name='response' direction='out'/>
</method></interface></node>
"""
DAEMON = ("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus")
DO_NOT_QUEUE = 4
PRIMARY_OWNER = 1
PATIENCE_SECONDS = 30

FUNCTIONS = {
    "SetSelection": 2000,
    "GetSelection": 2001,
    "GetAllItems": 2002,
    "RemoveAllItems": 2003,
    "AddItems": 2004,
    "AddItemAtEnd": 2005,
    "SetClicked": 2006,
    "RemoveItem": 2007,
    "ModifyItem": 2008,
}


def encode_text(text):
    data = text.encode()
    return struct.pack("<I", len(data)) + data


def encode_item(item):
    """The wire form of "id=name"."""
    identity, name = item.split("=")
    return encode_text(name) + encode_text(identity)


def decode_items(data):
    """The "id=name" forms of a reply."""
    texts = []
    while data:
        (length,) = struct.unpack_from("<I", data)
        texts.append(data[4 : 4 + length].decode())
        data = data[4 + length :]
    return [f"{identity}={name}" for name, identity in zip(texts[::2], texts[1::2])]


def report(line):
    print(line, flush=True)


class Middleware:
    """One connection to the bus; the application is the one that announced itself last."""

    def __init__(self):
        self.application = None
        self.heard = collections.deque()
        self.bus = Gio.DBusConnection.new_for_address_sync(
            Gio.dbus_address_get_for_bus_sync(Gio.BusType.SYSTEM, None),
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
            | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION,
            None,
            None,
        )
        interface = Gio.DBusNodeInfo.new_for_xml(OBJECT).interfaces[0]
        self.bus.register_object(PATH, interface, self.on_call, None, None)
        for name in ("SERVICE_SYN", "SERVICE_SYN_ACK", "SERVICE_ACK"):
            self.listen("NameOwnerChanged", *DAEMON, CHANNEL + name, self.on_announcement)
        self.listen("SendSignal", None, PATH, INTERFACE, None, self.on_signal)

    def listen(self, member, sender, path, interface, argument, handler):
        self.bus.signal_subscribe(
            sender, interface, member, path, argument, Gio.DBusSignalFlags.NONE, handler
        )

    def on_call(self, *call):
        call[-1].return_value(GLib.Variant("(ay)", (b"",)))

    def on_announcement(self, _bus, _sender, _path, _interface, _member, parameters):
        name, old_owner, new_owner = parameters.unpack()
        if new_owner or old_owner == self.bus.get_unique_name():
            return
        if old_owner != self.application:
            self.application = old_owner
            self.listen("NameOwnerChanged", *DAEMON, old_owner, self.on_application_owner)
        self.heard.append(name.removeprefix(CHANNEL))

    def on_application_owner(self, _bus, _sender, _path, _interface, _member, parameters):
        if not parameters.unpack()[2]:
            self.heard.append("application gone")

    def on_signal(self, _bus, _sender, _path, _interface, _member, parameters):
        (event,) = struct.unpack("<i", bytes(parameters.unpack()[0]))
        self.heard.append(f"event {event}")

    def ask_daemon(self, method, parameters):
        return self.bus.call_sync(
            *DAEMON, method, parameters, GLib.VariantType("(u)"), Gio.DBusCallFlags.NONE, -1
        ).unpack()[0]

    def say(self, name):
        report(f"say {name}")
        code = self.ask_daemon("RequestName", GLib.Variant("(su)", (CHANNEL + name, DO_NOT_QUEUE)))
        if code != PRIMARY_OWNER:
            sys.exit(f"{name} was not announced: {code}")
        self.ask_daemon("ReleaseName", GLib.Variant("(s)", (CHANNEL + name,)))

    def hear(self, count=1):
        context = GLib.MainContext.default()
        for _ in range(count):
            late = []
            timeout = GLib.timeout_add_seconds(PATIENCE_SECONDS, late.append, True)
            while not self.heard and not late:
                context.iteration(True)
            if late:
                sys.exit("nothing comes")
            GLib.source_remove(timeout)
            report(f"hear {self.heard.popleft()}")

    def call(self, function, *items):
        frame = b"".join(map(encode_item, items)) + struct.pack("<i", FUNCTIONS[function])
        reply = self.bus.call_sync(
            self.application,
            PATH,
            INTERFACE,
            "Send",
            GLib.Variant("(ay)", (frame,)),
            GLib.VariantType("(ay)"),
            Gio.DBusCallFlags.NONE,
            -1,
        )
        answer = decode_items(bytes(reply.unpack()[0]))
        report(" ".join([function, *items, "->", *answer]))

    def connect_to_running_application(self):
        self.say("CLIENT_SYN")
        self.hear()
        self.say("CLIENT_ACK")
        self.hear()

    def connect_to_starting_application(self):
        self.hear()
        self.say("CLIENT_SYN_ACK")
        self.hear(2)


def change_the_list(middleware):
    middleware.call("GetAllItems")
    middleware.call("GetSelection")
    middleware.call("AddItems", "a=Alpha", "b=Bravo", "c=Città")
    middleware.hear(2)
    middleware.call("GetAllItems")
    middleware.call("GetSelection")
    middleware.call("SetSelection", "b=")
    middleware.hear()
    middleware.call("GetSelection")
    middleware.call("ModifyItem", "a=", "d=Delta")
    middleware.hear()
    middleware.call("AddItemAtEnd", "e=Echo")
    middleware.hear()
    middleware.call("GetAllItems")
    report("please press Down")
    middleware.hear()
    middleware.call("GetSelection")
    middleware.call("RemoveItem", "c=")
    middleware.hear(2)
    middleware.call("GetSelection")
    middleware.call("SetClicked", "e=")
    middleware.call("RemoveAllItems")
    middleware.hear(2)
    middleware.call("GetAllItems")


def offer_two(middleware):
    middleware.call("AddItems", "a=Alpha", "b=Bravo")
    middleware.hear(2)


def main():
    middleware = Middleware()
    middleware.connect_to_running_application()
    change_the_list(middleware)
    offer_two(middleware)
    report("please press OK")
    middleware.hear(2)

    report("please start application")
    middleware.connect_to_starting_application()
    middleware.call("GetAllItems")
    offer_two(middleware)

    report("reconnect")
    middleware.bus.close_sync()
    middleware = Middleware()
    middleware.connect_to_running_application()
    middleware.call("GetAllItems")
    report("please press Back")
    middleware.hear()


if __name__ == "__main__":
    main()
