"""The program on a Wayland compositor that has no screen."""

import os
import select
import subprocess
import time

import accessible
import session

SOCKET = "wayland-test"


def test_the_window_is_there_and_runs_on_wayland():
    reader.wait("Top processes")
    assert runs_on_wayland(running)
    reader.show("Memory")
    reader.wait("Memory Used")


def runs_on_wayland(process):
    """Whether it is connected to the compositor's socket."""
    # Columns 5 and 7 are the inodes of a socket and of its peer; the path is known at the compositor's end only.
    sockets = [line.split() for line in own.run("ss", "-xpH").stdout.splitlines()]
    peers = {fields[7] for fields in sockets if f"pid={process.pid}," in fields[-1]}
    return any(fields[4].endswith("/" + SOCKET) and fields[5] in peers for fields in sockets)


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


def test_a_second_start_finds_the_first_which_ends_when_told():
    session.ends_well(own.start(session.program()))
    running.terminate()
    session.ends_well(running, 2)


def test_the_day_is_saved_when_the_compositor_dies():
    os.remove(own.day_file())
    again = own.start(session.program(), stderr=subprocess.DEVNULL)
    session.wait_for("the window", lambda: runs_on_wayland(again))
    time.sleep(1)  # the window is open
    session.end(compositor)
    assert again.wait(session.TIMEOUT) == 1, "Qt exits; it must not crash"
    assert own.day()


with session.Session(size=None) as own:
    own.environment.update(WAYLAND_DISPLAY=SOCKET, XDG_SESSION_TYPE="wayland")
    compositor = own.start("weston", "--backend=headless-backend.so", "--socket=" + SOCKET, "--idle-time=0",
                           stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    session.wait_for("the compositor", lambda: os.path.exists(os.path.join(own.environment["XDG_RUNTIME_DIR"], SOCKET)))
    running = own.start(session.program())
    reader = accessible.Reader()
    session.main()
