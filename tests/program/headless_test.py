"""The program where there is no display."""

import os
import signal
import subprocess
import tempfile
import time

import session


def bare_environment(folder):
    environment = {name: value for name, value in os.environ.items()
                   if name not in ("DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "QT_QPA_PLATFORM")}
    environment.update(XDG_RUNTIME_DIR=folder, XDG_CONFIG_HOME=folder)
    return environment


def it_says_so_samples_and_ends_at_an_interrupt():
    with tempfile.TemporaryDirectory() as folder:
        running = subprocess.Popen([session.program()], env=bare_environment(folder), stderr=subprocess.PIPE, text=True)
        try:
            assert running.stderr.readline() == "kestrune: no display; running without a window\n"
            session.wait_for("the walk of the processes", lambda: "kestrune-scan" in threads(running.pid))
            assert running.poll() is None
            running.send_signal(signal.SIGINT)
            begun = time.monotonic()
            session.ends_well(running)
            assert time.monotonic() - begun < 2, "it must end at once"
            assert running.stderr.read() == ""
        finally:
            session.Session.end(running)


def threads(pid):
    found = []
    for thread in os.listdir(f"/proc/{pid}/task"):
        with open(f"/proc/{pid}/task/{thread}/comm") as comm:
            found.append(comm.read().strip())
    return found


session.main([it_says_so_samples_and_ends_at_an_interrupt])
