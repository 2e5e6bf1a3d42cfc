/* Copyright (c) 2026 the applist authors
 * SPDX-License-Identifier: Apache-2.0 */
#pragma once

#include <stdbool.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The life of an application, as the platform runs it. All functions belong to the thread that
 * called ui_app_main(), and all callbacks come on it, one at a time. */

typedef struct _Eo_Opaque Evas_Object;
struct app_control_s;

/* The callbacks of one application. All five must be set. Each receives the user data given to
 * ui_app_main(). */
typedef struct ui_app_callbacks {
    /* The toolkit is ready: build the application. False abandons the start; terminate is then
     * not called. */
    bool (*create)(void* user_data);
    /* The loop has ended: take everything down. Called once after each successful create, while
     * the toolkit still works. */
    void (*terminate)(void* user_data);
    /* The application's window is no longer visible. Not called before the first resume, nor for
     * windows that go in terminate. */
    void (*pause)(void* user_data);
    /* The application's window is visible (again). */
    void (*resume)(void* user_data);
    /* A request to launch: the one that started the program, right after create, and every later
     * one while it runs. The request is the platform's and lives as long as the call. */
    void (*app_control)(struct app_control_s* request, void* user_data);
} ui_app_callbacks;

/* Runs the application until ui_app_exit(), SIGTERM, SIGINT or the wish of the window manager to
 * close its window.
 *
 * callbacks and user_data must outlive the call; the table is not copied. Returns 0 after a normal
 * run, and also when another instance of the program was already running and has taken over the
 * launch request. Returns a negative number when the application could not be run: no callbacks,
 * a toolkit that does not start, no display, or create returning false. */
int ui_app_main(int argc, char** argv, ui_app_callbacks* callbacks, void* user_data);

/* Asks the loop of ui_app_main() to end; returns at once. May be called from any callback, from
 * create on, and any number of times. Asked for in create, the end comes after the first launch
 * request has been delivered. Outside ui_app_main() it does nothing.
 *
 * If a window is shown, the platform hides it and returns the keyboard at once. From then on a new
 * launch starts a new instance. The loop continues for up to half a second, so that other programs
 * can still read from this one what the viewer has chosen; then terminate is called. During this
 * time no key, no pause and no launch request is delivered. A signal ends the loop at once. */
void ui_app_exit(void);

/* The window that the platform has made ready for the application called name before it asked for
 * one, or null where there is none and the application makes its own. The caller owns the window
 * and deletes it. */
Evas_Object* app_get_preinitialized_window(const char* name);

#ifdef __cplusplus
}
#endif
