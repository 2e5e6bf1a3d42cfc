/* Copyright (c) 2026 the applist authors
 * SPDX-License-Identifier: Apache-2.0 */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/* Launch requests from one application to another. Main thread only. */

typedef struct app_control_s* app_control_h;

/* Every function here returns this, or a negative number for a failure. */
enum { APP_CONTROL_ERROR_NONE = 0 };

/* Receives the launched application's answer; result is 0 when the launch was accepted. Both
 * handles are the platform's and live as long as the call. */
typedef void (*app_control_reply_cb)(app_control_h request, app_control_h reply, int result,
                                     void* user_data);

/* Makes an empty request. On success *request is owned by the caller, who ends it with
 * app_control_destroy(); on failure it is left as it was. */
int app_control_create(app_control_h* request);

/* Names the application to launch; id is copied. */
int app_control_set_app_id(app_control_h request, const char* id);

/* Adds one string to what the launched application receives, in the order of the calls; a second
 * value for a key replaces the first in its place. Both strings are copied. */
int app_control_add_extra_data(app_control_h request, const char* key, const char* value);

/* Hands the request to the platform, which starts the application or passes the request to the
 * running one. Does not wait for the application to handle it. reply may be null. Fails when the
 * request names no application, or one that is not installed. */
int app_control_send_launch_request(app_control_h request, app_control_reply_cb reply,
                                    void* user_data);

/* Ends a request. Null is refused with a failure. */
int app_control_destroy(app_control_h request);

#ifdef __cplusplus
}
#endif
