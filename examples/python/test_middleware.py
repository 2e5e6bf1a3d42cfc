# Copyright (c) 2026 the applist authors
# SPDX-License-Identifier: Apache-2.0
"""Tests of a middleware against applist without a screen."""
import signal

from conftest import PATIENCE

IDS = ["it.guide", "it.news", "it.weather"]


def ids(state):
    return [item["id"] for item in state["items"]]


def test_fills_the_list_when_the_application_starts_first(start_application, start_middleware):
    application = start_application()
    start_middleware().sees("filled")
    assert ids(application.reaches("items 3")) == IDS


def test_fills_the_list_when_the_middleware_starts_first(start_application, start_middleware):
    middleware = start_middleware()
    application = start_application()
    middleware.sees("filled")
    assert ids(application.reaches("items 3")) == IDS


def test_follows_the_selection_and_starts_the_choice(start_application, start_middleware):
    application, middleware = start_application(), start_middleware()
    application.reaches("items 3")
    application.type("down")
    middleware.sees("selected it.news")
    application.type("ok")
    middleware.sees("start it.news Notizie")
    middleware.sees("lost")
    assert application.reaches("ended")["clicked"] == "it.news"


def test_starts_the_choice_of_two_quick_keys(start_application, start_middleware):
    application, middleware = start_application(), start_middleware()
    application.reaches("items 3")
    application.type("down", "down", "ok")
    assert middleware.sees("start").startswith("start it.weather")


def test_ignores_answers_for_older_events(start_application, start_middleware):
    application, middleware = start_application(), start_middleware()
    application.reaches("items 3")
    middleware.sees("selected it.guide")
    for last in ["it.weather", "it.news", "it.guide"] * 10:
        # The question about the first key is answered after the event of the second key.
        application.type("down", "hang 20ms", "down")
        assert middleware.line() == f"selected {last}"


def test_starts_the_known_choice_when_no_answer_comes(start_application, start_middleware):
    application, middleware = start_application(), start_middleware()
    application.reaches("items 3")
    application.type("down")
    middleware.sees("selected it.news")
    # The application crashes while the middleware is busy.
    middleware.process.send_signal(signal.SIGSTOP)
    application.type("ok", "state", "die")
    application.reaches("ended")
    middleware.process.send_signal(signal.SIGCONT)
    middleware.sees("start it.news")


def test_starts_nothing_when_the_choice_is_unknown(start_application, start_middleware):
    application, middleware = start_application(), start_middleware()
    application.reaches("items 3")
    middleware.sees("selected it.guide")
    middleware.process.send_signal(signal.SIGSTOP)
    application.type("down", "ok", "state", "die")
    application.reaches("ended")
    middleware.process.send_signal(signal.SIGCONT)
    middleware.sees("start nothing")


def test_waits_for_an_application_that_answers_late(start_application, start_middleware):
    application, middleware = start_application(), start_middleware()
    application.type("await connected", "hang 300ms")
    middleware.sees("filled")
    assert ids(application.reaches("items 3")) == IDS


def test_serves_the_next_application(start_application, start_middleware):
    middleware = start_middleware()
    for end in ("back", "second start", "wait 65s", "die"):
        application = start_application()
        application.reaches("items 3")
        application.type(end)
        middleware.sees("lost")
        application.stop()


def test_connects_again_after_its_own_restart(start_application, start_middleware):
    application = start_application()
    middleware = start_middleware()
    application.reaches("items 3")
    middleware.stop()
    application.reaches("disconnected")
    # The list has kept the items, so adding them again changes nothing.
    start_middleware().sees("filled")
    assert ids(application.reaches("connected")) == IDS


def test_ends_with_the_bus(bus, start_application, start_middleware):
    start_application()
    middleware = start_middleware()
    middleware.sees("connected")
    bus.stop()
    middleware.process.wait(PATIENCE)
