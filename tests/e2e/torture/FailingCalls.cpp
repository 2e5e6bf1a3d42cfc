// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Makes one call of the program into which it is preloaded fail. APPLIST_FAIL=NAME:NUMBER selects
// the call: the NUMBER-th one of the function NAME after main has started. "new" is operator new;
// it counts for all libraries, the other functions only if the program itself calls them. If
// APPLIST_COUNTS names a file, the number of calls of each function is written to it at the end.
#include <Ecore_File.h>
#include <Ecore_X.h>
#include <Elementary.h>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <new>

#include <gio/gio.h>

namespace {

constexpr size_t MAX_FUNCTIONS = 64;

struct Function {
    const char* name = nullptr;
    std::atomic<long> calls{0};
};
Function g_functions[MAX_FUNCTIONS];

bool g_running = false;
const void* g_program = nullptr;

const void* ObjectOf(const void* address) {
    Dl_info info;
    return dladdr(address, &info) != 0 ? info.dli_fbase : nullptr;
}

// Does not allocate, because operator new calls it.
Function& Named(const char* name) {
    for (Function& function : g_functions) {
        if (function.name == nullptr || std::strcmp(function.name, name) == 0) {
            function.name = name;
            return function;
        }
    }
    std::abort();
}

long NumberToFail(const char* name) {
    const char* fault = std::getenv("APPLIST_FAIL");
    const size_t length = std::strlen(name);
    return fault != nullptr && std::strncmp(fault, name, length) == 0 && fault[length] == ':'
               ? std::atol(fault + length + 1)
               : 0;
}

bool Fails(const char* name) {
    return g_running && ++Named(name).calls == NumberToFail(name);
}

bool FailsFor(const void* caller, const char* name) {
    return g_running && ObjectOf(caller) == g_program && Fails(name);
}

template <typename Type>
Type* Real(const char* name) {
    return reinterpret_cast<Type*>(dlsym(RTLD_NEXT, name));
}

void SetError(GError** error) {
    g_set_error_literal(error, G_IO_ERROR, G_IO_ERROR_FAILED, "failed by the test");
}

using Main = int(int, char**, char**);
Main* g_main = nullptr;

int RunMain(int argc, char** argv, char** environment) {
    g_program = ObjectOf(reinterpret_cast<const void*>(g_main));
    g_running = true;
    return g_main(argc, argv, environment);
}

// Opens the file at once, because the program must not open files for writing later.
struct CountsAtTheEnd {
    const char* path = std::getenv("APPLIST_COUNTS");
    FILE* file = path != nullptr ? std::fopen(path, "w") : nullptr;

    ~CountsAtTheEnd() {
        for (const Function& function : g_functions) {
            if (file != nullptr && function.name != nullptr) {
                std::fprintf(file, "%s %ld\n", function.name, function.calls.load());
            }
        }
        if (file != nullptr) {
            std::fclose(file);
        }
    }
} g_countsAtTheEnd;

}  // namespace

void* operator new(size_t size) {
    void* memory = Fails("new") ? nullptr : std::malloc(size > 0 ? size : 1);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, size_t /*size*/) noexcept {
    std::free(memory);
}

// Defines NAME with these parameters. It has the value FAILURE when it fails.
#define CAN_FAIL(RESULT, NAME, PARAMETERS, ARGUMENTS, FAILURE)                            \
    extern "C" RESULT NAME PARAMETERS {                                                   \
        return FailsFor(__builtin_return_address(0), #NAME) ? (FAILURE)                   \
                                                            : Real<decltype(NAME)>(#NAME) \
                                                                  ARGUMENTS;              \
    }

// Sets *error and returns the value, which is a null pointer, an id of 0 or FALSE.
template <typename Result>
Result WithError(GError** error, Result result = {}) {
    SetError(error);
    return result;
}

CAN_FAIL(GDBusConnection*, g_bus_get_sync, (GBusType type, GCancellable* stop, GError** error),
         (type, stop, error), WithError<GDBusConnection*>(error))
CAN_FAIL(guint, g_dbus_connection_register_object,
         (GDBusConnection * bus, const gchar* path, GDBusInterfaceInfo* info,
          const GDBusInterfaceVTable* table, gpointer data, GDestroyNotify release, GError** error),
         (bus, path, info, table, data, release, error), WithError<guint>(error))
CAN_FAIL(GVariant*, g_dbus_connection_call_sync,
         (GDBusConnection * bus, const gchar* name, const gchar* path, const gchar* interface,
          const gchar* method, GVariant* parameters, const GVariantType* reply,
          GDBusCallFlags flags, gint timeout, GCancellable* stop, GError** error),
         (bus, name, path, interface, method, parameters, reply, flags, timeout, stop, error),
         WithError<GVariant*>(error))
CAN_FAIL(gboolean, g_dbus_connection_emit_signal,
         (GDBusConnection * bus, const gchar* name, const gchar* path, const gchar* interface,
          const gchar* signal, GVariant* parameters, GError** error),
         (bus, name, path, interface, signal, parameters, error), WithError<gboolean>(error))
CAN_FAIL(GDBusProxy*, g_dbus_proxy_new_sync,
         (GDBusConnection * bus, GDBusProxyFlags flags, GDBusInterfaceInfo* info, const gchar* name,
          const gchar* path, const gchar* interface, GCancellable* stop, GError** error),
         (bus, flags, info, name, path, interface, stop, error), WithError<GDBusProxy*>(error))
CAN_FAIL(guint, g_bus_watch_name_on_connection,
         (GDBusConnection * bus, const gchar* name, GBusNameWatcherFlags flags,
          GBusNameAppearedCallback appeared, GBusNameVanishedCallback vanished, gpointer data,
          GDestroyNotify release),
         (bus, name, flags, appeared, vanished, data, release), 0U)
CAN_FAIL(gboolean, g_application_register,
         (GApplication * application, GCancellable* stop, GError** error),
         (application, stop, error), WithError<gboolean>(error))
CAN_FAIL(int, elm_init, (int count, char** arguments), (count, arguments), 0)
CAN_FAIL(int, ecore_x_init, (const char* name), (name), 0)
CAN_FAIL(Evas_Object*, elm_win_add, (Evas_Object * parent, const char* name, Elm_Win_Type type),
         (parent, name, type), nullptr)
CAN_FAIL(Evas_Object*, elm_bg_add, (Evas_Object * parent), (parent), nullptr)
CAN_FAIL(Ecore_Timer*, ecore_timer_add, (double seconds, Ecore_Task_Cb call, const void* data),
         (seconds, call, data), nullptr)
CAN_FAIL(Ecore_Job*, ecore_job_add, (Ecore_Cb call, const void* data), (call, data), nullptr)
CAN_FAIL(Ecore_Event_Handler*, ecore_event_handler_add,
         (int type, Ecore_Event_Handler_Cb call, const void* data), (type, call, data), nullptr)
CAN_FAIL(Ecore_Event_Handler*, ecore_event_handler_prepend,
         (int type, Ecore_Event_Handler_Cb call, const void* data), (type, call, data), nullptr)
CAN_FAIL(Elm_Object_Item*, elm_genlist_item_append,
         (Evas_Object * list, const Elm_Genlist_Item_Class* kind, const void* data,
          Elm_Object_Item* parent, Elm_Genlist_Item_Type type, Evas_Smart_Cb call,
          const void* callData),
         (list, kind, data, parent, type, call, callData), nullptr)

CAN_FAIL(Elm_Object_Item*, elm_genlist_item_insert_after,
         (Evas_Object * list, const Elm_Genlist_Item_Class* kind, const void* data,
          Elm_Object_Item* parent, Elm_Object_Item* after, Elm_Genlist_Item_Type type,
          Evas_Smart_Cb call, const void* callData),
         (list, kind, data, parent, after, type, call, callData), nullptr)
CAN_FAIL(Elm_Genlist_Item_Class*, elm_genlist_item_class_new, (), (), nullptr)
CAN_FAIL(Evas_Object*, elm_popup_add, (Evas_Object * parent), (parent), nullptr)
CAN_FAIL(Evas_Object*, elm_table_add, (Evas_Object * parent), (parent), nullptr)
CAN_FAIL(Evas_Object*, elm_genlist_add, (Evas_Object * parent), (parent), nullptr)
CAN_FAIL(Evas_Object*, evas_object_rectangle_add, (Evas * canvas), (canvas), nullptr)
CAN_FAIL(char*, edje_file_data_get, (const char* file, const char* key), (file, key), nullptr)
CAN_FAIL(Ecore_Idle_Enterer*, ecore_idle_enterer_add, (Ecore_Task_Cb call, const void* data),
         (call, data), nullptr)
CAN_FAIL(Ecore_Idle_Enterer*, ecore_idle_enterer_before_add, (Ecore_Task_Cb call, const void* data),
         (call, data), nullptr)
CAN_FAIL(Ecore_Idle_Exiter*, ecore_idle_exiter_add, (Ecore_Task_Cb call, const void* data),
         (call, data), nullptr)
CAN_FAIL(Ecore_File_Monitor*, ecore_file_monitor_add,
         (const char* path, Ecore_File_Monitor_Cb call, void* data), (path, call, data), nullptr)
CAN_FAIL(Ecore_X_Window, ecore_x_window_input_new,
         (Ecore_X_Window parent, int x, int y, int width, int height),
         (parent, x, y, width, height), 0U)
CAN_FAIL(GDBusProxy*, g_dbus_proxy_new_for_bus_finish, (GAsyncResult * result, GError** error),
         (result, error), WithError<GDBusProxy*>(error))

// Starts RunMain in place of the program's main, which RunMain then calls.
extern "C" int __libc_start_main(Main* main, int argc, char** argv, void (*init)(), void (*fini)(),
                                 void (*end)(), void* stack) {
    g_main = main;
    return Real<decltype(__libc_start_main)>("__libc_start_main")(RunMain, argc, argv, init, fini,
                                                                  end, stack);
}
