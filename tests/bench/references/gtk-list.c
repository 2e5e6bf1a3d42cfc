// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// gtk-list ROWS: a full-screen GTK 4 list without any function, for comparison.
#include <gtk/gtk.h>

#include "row-name.h"

static void setup(GtkSignalListItemFactory* factory, GtkListItem* item, gpointer data) {
    (void)factory;
    (void)data;
    gtk_list_item_set_child(item, gtk_label_new(NULL));
}

static void bind(GtkSignalListItemFactory* factory, GtkListItem* item, gpointer data) {
    (void)factory;
    (void)data;
    GtkStringObject* row = gtk_list_item_get_item(item);
    gtk_label_set_text(GTK_LABEL(gtk_list_item_get_child(item)), gtk_string_object_get_string(row));
}

static void activate(GtkApplication* application, gpointer rows) {
    GtkStringList* names = gtk_string_list_new(NULL);
    for (int i = 0; i < GPOINTER_TO_INT(rows); ++i) {
        char name[32];
        write_row_name(name, i);
        gtk_string_list_append(names, name);
    }
    GtkListItemFactory* factory = gtk_signal_list_item_factory_new();
    g_signal_connect(factory, "setup", G_CALLBACK(setup), NULL);
    g_signal_connect(factory, "bind", G_CALLBACK(bind), NULL);
    GtkSelectionModel* selection =
        GTK_SELECTION_MODEL(gtk_single_selection_new(G_LIST_MODEL(names)));
    GtkWidget* list = gtk_list_view_new(selection, factory);
    GtkWidget* scroller = gtk_scrolled_window_new();
    gtk_scrolled_window_set_child(GTK_SCROLLED_WINDOW(scroller), list);
    GtkWidget* window = gtk_application_window_new(application);
    gtk_window_set_child(GTK_WINDOW(window), scroller);
    gtk_window_set_default_size(GTK_WINDOW(window), 800, 1000);
    gtk_window_present(GTK_WINDOW(window));
    gtk_widget_grab_focus(list);
}

int main(int argc, char** argv) {
    int rows = argc > 1 ? atoi(argv[1]) : 10;
    GtkApplication* application = gtk_application_new(NULL, G_APPLICATION_NON_UNIQUE);
    g_signal_connect(application, "activate", G_CALLBACK(activate), GINT_TO_POINTER(rows));
    return g_application_run(G_APPLICATION(application), 1, argv);
}
