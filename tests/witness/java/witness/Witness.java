// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
package witness;

import static witness.Function.AddItemAtEnd;
import static witness.Function.AddItems;
import static witness.Function.GetAllItems;
import static witness.Function.GetSelection;
import static witness.Function.ModifyItem;
import static witness.Function.RemoveAllItems;
import static witness.Function.RemoveItem;
import static witness.Function.SetClicked;
import static witness.Function.SetSelection;

/** A middleware after docs/protocol.md, over dbus-java. See tests/witness/README.md. */
public final class Witness {
    private Witness() {}

    public static void main(String[] arguments) throws Exception {
        Middleware middleware = new Middleware();
        middleware.connectToRunningApplication();
        changeTheList(middleware);
        offerTwo(middleware);
        Middleware.report("please press OK");
        middleware.hear(2);

        Middleware.report("please start application");
        middleware.connectToStartingApplication();
        middleware.call(GetAllItems);
        offerTwo(middleware);

        Middleware.report("reconnect");
        middleware.leave();
        middleware = new Middleware();
        middleware.connectToRunningApplication();
        middleware.call(GetAllItems);
        Middleware.report("please press Back");
        middleware.hear(1);
        middleware.leave();
    }

    private static void changeTheList(Middleware middleware) throws Exception {
        middleware.call(GetAllItems);
        middleware.call(GetSelection);
        middleware.call(AddItems, "a=Alpha", "b=Bravo", "c=Citt\u00e0");
        middleware.hear(2);
        middleware.call(GetAllItems);
        middleware.call(GetSelection);
        middleware.call(SetSelection, "b=");
        middleware.hear(1);
        middleware.call(GetSelection);
        middleware.call(ModifyItem, "a=", "d=Delta");
        middleware.hear(1);
        middleware.call(AddItemAtEnd, "e=Echo");
        middleware.hear(1);
        middleware.call(GetAllItems);
        Middleware.report("please press Down");
        middleware.hear(1);
        middleware.call(GetSelection);
        middleware.call(RemoveItem, "c=");
        middleware.hear(2);
        middleware.call(GetSelection);
        middleware.call(SetClicked, "e=");
        middleware.call(RemoveAllItems);
        middleware.hear(2);
        middleware.call(GetAllItems);
    }

    private static void offerTwo(Middleware middleware) throws Exception {
        middleware.call(AddItems, "a=Alpha", "b=Bravo");
        middleware.hear(2);
    }
}
