// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
package org.vantu.javamw;

import org.freedesktop.dbus.DBusInterface;
import org.freedesktop.dbus.DBusSignal;
import org.freedesktop.dbus.exceptions.DBusException;

/** The channel's interface. The bus library takes its name from this package and type. */
public interface DbusCommunication extends DBusInterface {
    byte[] Send(byte[] data);

    /** An event of the application. */
    class SendSignal extends DBusSignal {
        public final byte[] data;

        public SendSignal(String path, byte[] data) throws DBusException {
            super(path, (Object) data);
            this.data = data;
        }
    }
}
