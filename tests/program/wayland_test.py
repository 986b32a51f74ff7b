"""The program on a Wayland compositor that has no screen."""

import os
import shutil
import subprocess
import sys
import time

import accessible
import session


def the_window_is_there_and_runs_on_wayland():
    reader.wait("Top processes")
    assert runs_on_wayland(running)
    reader.show("Memory")
    reader.wait("Memory Used")


def runs_on_wayland(process):
    """Whether it talks over the compositor's socket: the socket's other end has the same inode's peer."""
    path = os.path.join(own.environment["XDG_RUNTIME_DIR"], "wayland-test")
    listed = subprocess.run(["ss", "-xpH"], capture_output=True, text=True, check=True).stdout
    mine = {line.split()[7] for line in listed.splitlines() if f"pid={process.pid}," in line}
    return any(path in line and line.split()[5] in mine for line in listed.splitlines())


def a_panel_shows_the_item_and_it_opens_the_popover():
    panel = own.start(sys.executable, os.path.join(os.path.dirname(__file__), "panel.py"), stdout=subprocess.PIPE, text=True)
    item = panel.stdout.readline().strip()
    assert item.startswith(":") or item.startswith("org.kde.StatusNotifierItem"), item
    own.call(item, "/StatusNotifierItem", "org.kde.StatusNotifierItem.Activate", "10", "10")
    reader.wait("Open main window")
    reader.press("push button", "Open main window")
    session.wait_for("the popover to close", lambda: "Open main window" not in shown())


def shown():
    """The names of what is on screen."""
    import pyatspi

    return [node.name for node in reader.everything()
            if accessible.said(node)[0] and node.getState().contains(pyatspi.STATE_SHOWING)]


def a_second_start_finds_the_first():
    again = own.start(session.program())
    session.ends_well(again)
    assert running.poll() is None


def it_ends_when_told():
    running.terminate()
    session.ends_well(running, 2)


def the_day_is_saved_when_the_compositor_dies():
    shutil.rmtree(os.path.join(own.environment["XDG_DATA_HOME"], "Kestrune"))
    again = own.start(session.program(), stderr=subprocess.DEVNULL)
    session.wait_for("the window", lambda: runs_on_wayland(again))
    time.sleep(1)  # it has come up
    own.end(compositor)
    assert again.wait(session.PATIENCE) == 1, "an end by Qt, no crash"
    history = os.path.join(own.environment["XDG_DATA_HOME"], "Kestrune", "history")
    assert len(os.listdir(history)) == 1


with session.Session() as own:
    own.environment.pop("DISPLAY")
    own.environment.update(WAYLAND_DISPLAY="wayland-test", XDG_SESSION_TYPE="wayland")
    compositor = own.start("weston", "--backend=headless-backend.so", "--socket=wayland-test", "--idle-time=0",
                           stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    session.wait_for("the compositor",
                     lambda: os.path.exists(os.path.join(own.environment["XDG_RUNTIME_DIR"], "wayland-test")))
    running = own.start(session.program())
    reader = accessible.Reader()
    session.main([
        the_window_is_there_and_runs_on_wayland,
        a_panel_shows_the_item_and_it_opens_the_popover,
        a_second_start_finds_the_first,
        it_ends_when_told,
        the_day_is_saved_when_the_compositor_dies,
    ])
