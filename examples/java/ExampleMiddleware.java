// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0

import java.io.PrintStream;
import java.util.HashSet;
import java.util.List;
import java.util.Map;
import java.util.Set;
import java.util.concurrent.BlockingQueue;
import java.util.concurrent.CompletableFuture;
import java.util.concurrent.LinkedBlockingQueue;
import java.util.concurrent.ThreadLocalRandom;
import java.util.concurrent.TimeUnit;
import java.util.function.Consumer;

import org.freedesktop.DBus;
import org.freedesktop.dbus.CallbackHandler;
import org.freedesktop.dbus.DBusConnection;
import org.freedesktop.dbus.exceptions.DBusException;
import org.freedesktop.dbus.exceptions.DBusExecutionException;
import org.vantu.javamw.DbusCommunication;

import static java.nio.charset.StandardCharsets.UTF_8;

/**
 * A middleware for applist, to start your own from: fills the list, follows the selection and starts
 * the item that the viewer chooses. Runs until it is interrupted. Needs dbus-java 2.8 (libdbus-java).
 *
 * <p>The bus library's thread only adds tasks; the main thread runs them, so all fields belong to the
 * main thread. One thread receives events and replies, which keeps them in the order of the bus.
 */
public final class ExampleMiddleware {
    private static final String PATH = "/org/vantu/javamw/CommunicationChannel/Applist";
    private static final String NAMES = "org.vantu.JavaMW.Applist";
    /** The middleware's answer to each announcement of the application. */
    private static final Map<String, String> ANSWERS = Map.of(NAMES + "_SERVICE_SYN", "_CLIENT_SYN_ACK",
            NAMES + "_SERVICE_SYN_ACK", "_CLIENT_ACK", NAMES + "_SERVICE_ACK", "");
    private static final int GET_SELECTION = 2001;
    private static final int ADD_ITEMS = 2004;
    private static final int ITEM_SELECTED = 2;
    private static final int ITEM_CLICKED = 3;
    private static final int LOCAL_CREATED = 4;
    /** How often an announcement is tried while another middleware owns the name. */
    private static final int ATTEMPTS = 20;
    private static final int CALL_TIMEOUT_MS = 25_000;
    /** The application answers calls for 500 ms after event 3. Longer, because a set may be busy. */
    private static final int CHOICE_TIMEOUT_MS = 2_000;
    private static final PrintStream OUT = new PrintStream(System.out, true, UTF_8);

    /** Replace these with the applications of the broadcast. */
    private static final List<Item> ITEMS = List.of(new Item("it.guide", "Guida TV"),
            new Item("it.news", "Notizie"), new Item("it.weather", "Meteo"));

    private interface Task { void run() throws DBusException; }

    private final BlockingQueue<Task> tasks = new LinkedBlockingQueue<>();
    private final DBusConnection bus;
    /** Unique names of the applications that have received the items. */
    private final Set<String> filled = new HashSet<>();
    /** The unique name of the connected application, or empty. */
    private String application = "";
    /** The application's object. Kept, because the bus library never frees one. */
    private DbusCommunication channel;
    /** Counts events 2, so that late answers are recognised. */
    private int latestEvent;
    /** The answer to the GetSelection of the latest event 2, or null. */
    private Item selection;

    private ExampleMiddleware() throws DBusException {
        bus = DBusConnection.getConnection(DBusConnection.SYSTEM);
        bus.changeThreadCount((byte) 1);
        // The subscriptions must exist before the first announcement, because the answer may arrive at once.
        bus.addSigHandler(DBus.NameOwnerChanged.class, change -> tasks.add(() -> onOwnerChange(change)));
        bus.addSigHandler(DbusCommunication.SendSignal.class, event -> tasks.add(() -> onEvent(event)));
        bus.addSigHandler(DBus.Local.Disconnected.class, end -> tasks.add(() -> {
            throw new DBusException("closed"); }));
        announce("_CLIENT_SYN", ATTEMPTS);
    }

    /** Replace the body with code that starts an application of the broadcast. */
    private static void startApplication(Item item) {
        OUT.println("start " + item.id + " " + item.name);
    }

    // --- finding each other ------------------------------------------------------------------

    /** Owns a name for a moment. If another middleware owns it, tries again a little later. */
    private void announce(String suffix, int attempts) {
        try {
            bus.requestBusName(NAMES + suffix);
            bus.releaseBusName(NAMES + suffix);
        } catch (DBusException taken) {
            if (attempts == 0) {
                System.err.println("middleware: cannot announce " + NAMES + suffix + ": " + taken.getMessage());
                System.exit(1);
            }
            int pause = ThreadLocalRandom.current().nextInt(10, 51);
            CompletableFuture.delayedExecutor(pause, TimeUnit.MILLISECONDS)
                    .execute(() -> tasks.add(() -> announce(suffix, attempts - 1)));
        }
    }

    private void onOwnerChange(DBus.NameOwnerChanged change) {
        // The release of a name is the announcement. Ignored while an application is connected.
        if (!change.new_owner.isEmpty()) {
            return;
        }
        filled.remove(change.name);
        if (change.name.equals(application)) {
            OUT.println("lost " + application);
            application = "";
            selection = null;
        } else if (application.isEmpty() && !ANSWERS.getOrDefault(change.name, "").isEmpty()) {
            announce(ANSWERS.get(change.name), ATTEMPTS);
        }
    }

    // --- calls and events --------------------------------------------------------------------

    /** Calls the application without waiting; done receives the reply, or null. */
    private void call(int function, List<Item> items, int timeoutMs, Consumer<byte[]> done) {
        CompletableFuture<byte[]> answer = new CompletableFuture<>();
        answer.completeOnTimeout(null, timeoutMs, TimeUnit.MILLISECONDS)
                .thenAccept(reply -> tasks.add(() -> done.accept(reply)));
        bus.callWithCallback(channel, "Send", new CallbackHandler<byte[]>() {
            @Override public void handle(byte[] reply) {
                answer.complete(reply);
            }

            @Override public void handleError(DBusExecutionException error) {
                OUT.println("no answer: " + error.getMessage());
                answer.complete(null);
            }
        }, (Object) Item.pack(items, function));
    }

    private void onEvent(DbusCommunication.SendSignal event) throws DBusException {
        int number = event.data.length == 4 ? Item.numberAt(event.data, 0) : 0;
        if (number == LOCAL_CREATED) {
            connected(event.getSource());
        } else if (event.getSource().equals(application) && number == ITEM_SELECTED) {
            selectionChanged();
        } else if (event.getSource().equals(application) && number == ITEM_CLICKED) {
            itemChosen();
        }
    }

    /** Event 4 confirms the connection. It may be repeated, but the list is filled only once. */
    private void connected(String name) throws DBusException {
        if (!name.equals(application)) {
            application = name;
            channel = bus.getRemoteObject(name, PATH, DbusCommunication.class);
        }
        if (filled.add(name)) {
            OUT.println("connected " + name);
            call(ADD_ITEMS, ITEMS, CALL_TIMEOUT_MS,
                    reply -> OUT.println(reply != null ? "filled " + ITEMS.size() : "not filled"));
        }
    }

    private void selectionChanged() {
        int event = ++latestEvent;
        selection = null;
        call(GET_SELECTION, List.of(), CALL_TIMEOUT_MS, reply -> {
            // An answer for an older event names an item that the viewer has left.
            if (reply != null && event == latestEvent) {
                selection = Item.unpack(reply);
                OUT.println("selected " + selection.id);
            }
        });
    }

    private void itemChosen() {
        int event = latestEvent;
        Item last = selection;
        call(GET_SELECTION, List.of(), CHOICE_TIMEOUT_MS, reply -> {
            // If this call fails, the answer to the GetSelection of the latest event 2 is used, if any.
            Item known = last != null || event != latestEvent ? last : selection;
            Item item = reply != null ? Item.unpack(reply) : known;
            if (item != null && !item.id.isEmpty()) {
                startApplication(item);
            } else {
                OUT.println("start nothing: the choice is unknown");
            }
        });
    }

    public static void main(String[] arguments) throws InterruptedException {
        try {
            ExampleMiddleware middleware = new ExampleMiddleware();
            while (true) {
                middleware.tasks.take().run();
            }
        } catch (DBusException error) {
            System.err.println("middleware: cannot use the system bus: " + error.getMessage());
            System.exit(1);
        }
    }
}
