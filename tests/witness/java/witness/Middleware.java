// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
package witness;

import java.io.PrintStream;
import java.util.ArrayList;
import java.util.List;
import java.util.Set;
import java.util.concurrent.BlockingQueue;
import java.util.concurrent.LinkedBlockingQueue;
import java.util.concurrent.TimeUnit;

import org.freedesktop.DBus;
import org.freedesktop.dbus.DBusConnection;
import org.freedesktop.dbus.exceptions.DBusException;
import org.vantu.javamw.DbusCommunication;

import static java.nio.charset.StandardCharsets.UTF_8;

/**
 * One connection to the bus. The application is the one that announced itself last. The library's
 * single worker thread receives messages; the main thread does everything else.
 */
final class Middleware implements DbusCommunication {
    private static final String PATH = "/org/vantu/javamw/CommunicationChannel/Applist";
    private static final String CHANNEL = "org.vantu.JavaMW.Applist_";
    private static final Set<String> ANNOUNCEMENTS =
            Set.of(CHANNEL + "SERVICE_SYN", CHANNEL + "SERVICE_SYN_ACK", CHANNEL + "SERVICE_ACK");
    private static final int PATIENCE_SECONDS = 30;
    private static final PrintStream REPORT = new PrintStream(System.out, true, UTF_8);

    private final DBusConnection bus;
    private final BlockingQueue<String> heard = new LinkedBlockingQueue<>();
    private volatile String application = "";

    Middleware() throws DBusException {
        bus = DBusConnection.getConnection(DBusConnection.SYSTEM);
        bus.changeThreadCount((byte) 1);
        bus.exportObject(PATH, this);
        bus.addSigHandler(DBus.NameOwnerChanged.class, this::onNameOwnerChanged);
        bus.addSigHandler(DbusCommunication.SendSignal.class, this::onEvent);
    }

    static void report(String line) {
        REPORT.println(line);
    }

    @Override
    public boolean isRemote() {
        return false;
    }

    @Override
    public byte[] Send(byte[] data) {
        return new byte[0];
    }

    private void onNameOwnerChanged(DBus.NameOwnerChanged change) {
        if (!change.new_owner.isEmpty()) {
            return;
        }
        if (ANNOUNCEMENTS.contains(change.name)) {
            application = change.old_owner;
            heard.add(change.name.substring(CHANNEL.length()));
        } else if (change.name.equals(application)) {
            heard.add("application gone");
        }
    }

    private void onEvent(DbusCommunication.SendSignal event) {
        heard.add("event " + Item.numberOf(event.data));
    }

    void say(String name) throws DBusException {
        report("say " + name);
        bus.requestBusName(CHANNEL + name);
        bus.releaseBusName(CHANNEL + name);
    }

    void hear(int count) throws InterruptedException {
        for (int i = 0; i < count; ++i) {
            String next = heard.poll(PATIENCE_SECONDS, TimeUnit.SECONDS);
            if (next == null) {
                throw new IllegalStateException("nothing comes");
            }
            report("hear " + next);
        }
    }

    void call(Function function, String... texts) throws DBusException {
        List<Item> items = new ArrayList<>();
        for (String text : texts) {
            items.add(Item.of(text));
        }
        DbusCommunication remote =
                bus.getRemoteObject(application, PATH, DbusCommunication.class);
        byte[] reply = remote.Send(Item.frame(items, function.id));
        StringBuilder line = new StringBuilder(function.toString());
        items.forEach(item -> line.append(' ').append(item));
        line.append(" ->");
        Item.parse(reply).forEach(item -> line.append(' ').append(item));
        report(line.toString());
    }

    void connectToRunningApplication() throws DBusException, InterruptedException {
        say("CLIENT_SYN");
        hear(1);
        say("CLIENT_ACK");
        hear(1);
    }

    void connectToStartingApplication() throws DBusException, InterruptedException {
        hear(1);
        say("CLIENT_SYN_ACK");
        hear(2);
    }

    void leave() {
        bus.disconnect();
    }
}
