# Copyright (c) 2026 the applist authors
# SPDX-License-Identifier: Apache-2.0
"""Fixtures for tests of a middleware: a private bus for each test, and the application on it
without a screen. Needs dbus-daemon and applist-headless (APPLIST_HEADLESS names another path)."""
import json
import os
import queue
import subprocess
import sys
import threading

import pytest

PATIENCE = 30  # seconds that an expected line may take
MIDDLEWARE = os.environ.get("MIDDLEWARE", os.path.join(os.path.dirname(__file__), "middleware.py"))
BUS = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig><type>system</type><listen>unix:dir=%s</listen><auth>EXTERNAL</auth>
<policy context="default"><allow user="*"/><allow own="*"/><allow send_destination="*"/>
<allow receive_sender="*"/></policy></busconfig>"""


class Process:
    """A program whose output lines a test reads in order."""

    def __init__(self, command):
        self.process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.lines = queue.Queue()
        threading.Thread(target=self._read, daemon=True).start()

    def _read(self):
        for line in self.process.stdout:
            self.lines.put(line.rstrip("\n"))

    def type(self, *lines):
        self.process.stdin.write("".join(line + "\n" for line in lines))
        self.process.stdin.flush()

    def line(self):
        return self.lines.get(timeout=PATIENCE)

    def sees(self, start):
        """Reads lines until one starts with this text, and returns it."""
        while not (line := self.line()).startswith(start):
            pass
        return line

    def stop(self):
        self.process.kill()
        self.process.wait()


class Application(Process):
    """The application without a screen; man applist-headless lists the statements."""

    def __init__(self):
        super().__init__([os.environ.get("APPLIST_HEADLESS", "applist-headless"), f"--timeout={PATIENCE}"])
        self.state()

    def state(self):
        self.type("state")
        return json.loads(self.sees("{"))

    def reaches(self, *conditions):
        """Waits for conditions such as "items 3", and returns the state then."""
        self.type(*(f"await {condition}" for condition in conditions))
        return self.state()


@pytest.fixture
def started():
    """Keeps the processes of a test, which end with it."""
    processes = []
    yield processes
    for process in reversed(processes):
        process.stop()


@pytest.fixture
def bus(tmp_path, monkeypatch, started):
    """A private system bus; every program that the test starts uses it."""
    config = tmp_path / "bus.conf"
    config.write_text(BUS % tmp_path)
    daemon = Process(["dbus-daemon", "--nofork", "--print-address", f"--config-file={config}"])
    started.append(daemon)
    monkeypatch.setenv("DBUS_SYSTEM_BUS_ADDRESS", daemon.line())
    return daemon


@pytest.fixture
def start_application(bus, started):
    def start():
        started.append(Application())
        return started[-1]

    return start


@pytest.fixture
def start_middleware(bus, started):
    """Starts the middleware under test. MIDDLEWARE is its command."""

    def start():
        command = MIDDLEWARE.split() if "MIDDLEWARE" in os.environ else [sys.executable, MIDDLEWARE]
        started.append(Process(command))
        return started[-1]

    return start
