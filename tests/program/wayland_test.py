"""The program on a Wayland compositor that has no screen."""

import os
import select
import subprocess

import accessible
import session

SOCKET = "wayland-test"


def test_the_window_is_there_and_runs_on_wayland():
    reader.wait("Top processes")
    # It is connected to the compositor's socket. Columns 5 and 7 are the inodes of a socket and of its peer; the path is known at the compositor's end only.
    sockets = [line.split() for line in own.run("ss", "-xpH").stdout.splitlines()]
    peers = {fields[7] for fields in sockets if f"pid={running.pid}," in fields[-1]}
    assert any(fields[4].endswith("/" + SOCKET) and fields[5] in peers for fields in sockets), sockets
    reader.show("Memory")
    reader.wait("Memory Used")


def test_a_panel_shows_the_item_and_it_opens_the_popover():
    panel = own.start_script("panel.py").stdout
    session.wait_for("an item", lambda: select.select([panel], [], [], 0)[0])
    item = panel.readline().strip()
    assert item.startswith((":", "org.kde.StatusNotifierItem")), item
    own.call(item, "/StatusNotifierItem", "org.kde.StatusNotifierItem.Activate", "10", "10")
    reader.wait("Open main window")
    reader.press("push button", "Open main window")
    session.wait_for("the popover to close", lambda: "Open main window" not in shown())


def shown():
    """The names of what is on screen."""
    return [node.name for node in reader.everything()
            if accessible.described(node)[0] and accessible.is_in_state(node, "SHOWING")]


def test_the_day_is_saved_when_the_compositor_dies():
    session.end(compositor)
    assert running.wait(session.TIMEOUT) == 1, "Qt exits; it must not crash"
    assert own.day()


with session.Session(size=None) as own:
    own.environment.update(WAYLAND_DISPLAY=SOCKET, XDG_SESSION_TYPE="wayland")
    compositor = own.start("weston", "--backend=headless-backend.so", "--socket=" + SOCKET, "--idle-time=0",
                           stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    session.wait_for("the compositor", lambda: os.path.exists(os.path.join(own.environment["XDG_RUNTIME_DIR"], SOCKET)))
    running = own.start(session.program(), stderr=subprocess.DEVNULL)
    reader = accessible.Reader()
    session.main()
