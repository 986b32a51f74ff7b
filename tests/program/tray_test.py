"""The item in a real tray."""

import subprocess

import session


def icons():
    """The windows of the program that are embedded in the tray."""
    tree = subprocess.run(["xwininfo", "-root", "-tree"], env=under_test.environment, text=True, capture_output=True,
                          check=True).stdout
    lines = [line for line in tree.splitlines() if '"kestrune"' in line]
    return [line.split()[0] for line in lines if any(f"{side}x{side}+" in line for side in (16, 22, 24, 32))]


def the_item_is_in_the_tray():
    session.wait_for("the icon", icons)


def a_click_opens_the_main_window():
    window = under_test.main_window()
    under_test.xdotool("windowfocus", window, "key", "--window", window, "ctrl+w")
    session.wait_for("the window to close", lambda: not under_test.main_window())
    under_test.xdotool("mousemove", "--window", icons()[0], "8", "8", "click", "1")
    session.wait_for("the window to open", under_test.main_window)


with session.Session() as under_test:
    under_test.start("trayer", "--edge", "bottom", "--widthtype", "request", "--height", "24",
                     stderr=subprocess.DEVNULL)
    running = under_test.start(session.program())
    session.wait_for("the window", under_test.main_window)
    session.main([the_item_is_in_the_tray, a_click_opens_the_main_window])
