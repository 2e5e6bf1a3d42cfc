/* Copyright (c) 2026 the applist authors
 * SPDX-License-Identifier: Apache-2.0 */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/* Launch requests from one application to another. Main thread only. */

typedef struct app_control_s* app_control_h;

/* Every function below returns APP_CONTROL_ERROR_NONE on success or a negative number on
 * failure. */
enum { APP_CONTROL_ERROR_NONE = 0 };

/* Receives the reply of the launched application. result is 0 if the launch was accepted. The
 * platform owns both handles, which are valid during the call only. */
typedef void (*app_control_reply_cb)(app_control_h request, app_control_h reply, int result,
                                     void* user_data);

/* Creates an empty request. On success the caller owns *request and releases it with
 * app_control_destroy(). On failure *request is unchanged. */
int app_control_create(app_control_h* request);

/* Sets the application to launch. id is copied. */
int app_control_set_app_id(app_control_h request, const char* id);

/* Adds one string to the extra data that the launched application receives. The order of the calls
 * is kept; a second value for the same key replaces the first one in its place. Both strings are
 * copied. */
int app_control_add_extra_data(app_control_h request, const char* key, const char* value);

/* Passes the request to the platform, which starts the application or forwards the request to the
 * running one. Does not wait until the application has handled it. reply may be null. Fails if the
 * request does not name an application or the application is not installed. */
int app_control_send_launch_request(app_control_h request, app_control_reply_cb reply,
                                    void* user_data);

/* Releases a request. Fails if request is null. */
int app_control_destroy(app_control_h request);

#ifdef __cplusplus
}
#endif
