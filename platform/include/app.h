/* Copyright (c) 2026 the applist authors
 * SPDX-License-Identifier: Apache-2.0 */
#pragma once

#include <stdbool.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The life cycle of an application. All functions must be called on the thread that called
 * ui_app_main(). All callbacks run on that thread, one at a time. */

typedef struct _Eo_Opaque Evas_Object;
struct app_control_s;

/* The callbacks of one application. All five must be set. Each receives the user data given to
 * ui_app_main(). */
typedef struct ui_app_callbacks {
    /* The toolkit is ready: build the application. If this returns false, the start is abandoned
     * and terminate is not called. */
    bool (*create)(void* user_data);
    /* The main loop has ended: release everything. Called once after each successful create, while
     * the toolkit is still usable. */
    void (*terminate)(void* user_data);
    /* The application's window is no longer visible. Not called before the first resume, and not
     * for windows that are deleted in terminate. */
    void (*pause)(void* user_data);
    /* The application's window is visible (again). */
    void (*resume)(void* user_data);
    /* A launch request. Called once right after create with the request that started the program,
     * and again for every later request. The platform owns the request, which is valid during the
     * call only. */
    void (*app_control)(struct app_control_s* request, void* user_data);
} ui_app_callbacks;

/* Runs the application until ui_app_exit(), SIGTERM, SIGINT or a close request from the window
 * manager.
 *
 * A port may answer options such as --help here: it then returns 0 without calling a callback.
 *
 * callbacks and user_data must outlive the call; the table is not copied. Returns 0 after a normal
 * run. Also returns 0 if another instance of the program was already running and has received the
 * launch request. Returns a negative number if the application could not run: callbacks is null or
 * incomplete, the toolkit does not start, there is no display, or create returned false. */
int ui_app_main(int argc, char** argv, ui_app_callbacks* callbacks, void* user_data);

/* Asks ui_app_main() to end and returns at once. May be called from any callback, starting with
 * create, any number of times. If called in create, the first launch request is still delivered
 * before the application ends. Outside ui_app_main() this does nothing.
 *
 * If a window is shown, the platform hides it and releases the keyboard at once. From then on a new
 * launch starts a new instance. The loop continues for up to half a second, so that other programs
 * can still read the viewer's choice from this one; then terminate is called. During this time no
 * keys, no pause and no launch requests are delivered. A signal ends the loop at once. */
void ui_app_exit(void);

/* Returns the window that the platform has created in advance for the application called name, or
 * null if the application must create its own. The caller owns the window and deletes it. */
Evas_Object* app_get_preinitialized_window(const char* name);

#ifdef __cplusplus
}
#endif
