// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
package witness;

/** The functions of the list. */
enum Function {
    SetSelection(2000),
    GetSelection(2001),
    GetAllItems(2002),
    RemoveAllItems(2003),
    AddItems(2004),
    AddItemAtEnd(2005),
    SetClicked(2006),
    RemoveItem(2007),
    ModifyItem(2008);

    final int id;

    Function(int id) {
        this.id = id;
    }
}
