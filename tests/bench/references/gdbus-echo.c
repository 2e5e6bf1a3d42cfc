// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// gdbus-echo: the minimal program that answers calls on the bus, for comparison. "Send" answers
// with the bytes of the call; 'P' makes the caller a partner, 'E' is forwarded to all partners.
// Prints its unique bus name.
#include <stdio.h>

#include <gio/gio.h>

static const char INTERFACE[] = "org.vantu.javamw.DbusCommunication";
static const char PATH[] = "/org/vantu/javamw/CommunicationChannel/Applist";
static const char XML[] =
    "<node><interface name='org.vantu.javamw.DbusCommunication'><method name='Send'>"
    "<arg type='ay' direction='in'/><arg type='ay' direction='out'/></method></interface></node>";

static GVariant* copy(const void* bytes, gsize size) {
    return g_variant_new("(@ay)", g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, bytes, size, 1));
}

static void send(GDBusConnection* connection, const char* sender, const char* path,
                 const char* interface, const char* method, GVariant* parameters,
                 GDBusMethodInvocation* invocation, gpointer partners) {
    (void)path, (void)interface, (void)method;
    GVariant* array = g_variant_get_child_value(parameters, 0);
    gsize size = 0;
    const char* bytes = g_variant_get_fixed_array(array, &size, 1);
    if (size > 0 && bytes[0] == 'P') {
        g_ptr_array_add(partners, g_strdup(sender));
    } else if (size > 0 && bytes[0] == 'E') {
        for (guint i = 0; i < ((GPtrArray*)partners)->len; ++i) {
            g_dbus_connection_emit_signal(connection, g_ptr_array_index((GPtrArray*)partners, i),
                                          PATH, INTERFACE, "SendSignal", copy(bytes, size), NULL);
        }
    }
    g_dbus_method_invocation_return_value(invocation, copy(bytes, size));
    g_variant_unref(array);
}

int main(void) {
    GDBusConnection* bus = g_bus_get_sync(G_BUS_TYPE_SYSTEM, NULL, NULL);
    GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(XML, NULL);
    GPtrArray* partners = g_ptr_array_new_with_free_func(g_free);
    const GDBusInterfaceVTable table = {.method_call = send};
    if (bus == NULL || g_dbus_connection_register_object(bus, PATH, node->interfaces[0], &table,
                                                         partners, NULL, NULL) == 0) {
        fputs("gdbus-echo: no bus\n", stderr);
        return 1;
    }
    puts(g_dbus_connection_get_unique_name(bus));
    fflush(stdout);
    g_main_loop_run(g_main_loop_new(NULL, FALSE));
    return 0;
}
