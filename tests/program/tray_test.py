"""The item in a real tray."""

import subprocess
import time

import session


def the_item_is_in_the_tray():
    session.wait_for("the icon", under_test.tray_icons)


def popover():
    """The id of the popover if it is on screen."""
    found = under_test.xdotool("search", "--onlyvisible", "--name", "^Kestrune$").split()
    return found[0] if found else None


def click_the_item():
    under_test.xdotool("mousemove", "--window", under_test.tray_icons()[0], "8", "8", "click", "1")


def a_click_opens_the_popover_beside_the_item():
    click_the_item()
    window = session.wait_for("the popover", popover)
    place, item = under_test.geometry(window), under_test.geometry(under_test.tray_icons()[0])
    assert place["Y"] + 100 < item["Y"], "the tray is at the bottom, so the popover stands above it"
    assert item["Y"] - place["Y"] < 600, (place, item)


def escape_closes_it():
    def is_closed_by_escape():
        window = popover()  # keys that come before it has been painted are lost
        if window:
            under_test.xdotool("key", "--window", window, "Escape")
            time.sleep(0.2)
        return not popover()

    session.wait_for("the popover to close", is_closed_by_escape)


def its_command_brings_the_closed_main_window_back():
    under_test.press_to_close(under_test.main_window(), "ctrl+w")
    session.wait_for("the window to close", lambda: not under_test.main_window())
    time.sleep(0.3)  # a click right after closing does not open it again
    click_the_item()
    window = session.wait_for("the popover", popover)
    time.sleep(0.5)  # keys that come before it has been painted are lost
    # Tab goes to the first command, and the space bar presses it.
    under_test.xdotool("key", "--window", window, "Tab", "space")
    session.wait_for("the window to open", under_test.main_window)
    session.wait_for("the popover to close", lambda: not popover())


def start_tray():
    return under_test.start("trayer", "--edge", "bottom", "--widthtype", "request", "--height", "24",
                            stderr=subprocess.DEVNULL)


def the_item_comes_back_with_the_tray():
    global tray
    session.Session.end(tray)
    session.wait_for("no icon", lambda: not under_test.tray_icons())
    assert running.poll() is None
    tray = start_tray()
    session.wait_for("the icon", under_test.tray_icons)


def the_popover_opens_again():
    time.sleep(0.3)
    click_the_item()
    session.wait_for("the popover", popover)
    escape_closes_it()


with session.Session() as under_test:
    # The tray turns up after the program.
    running = under_test.open_program()
    tray = start_tray()
    session.main([the_item_is_in_the_tray, a_click_opens_the_popover_beside_the_item, escape_closes_it,
                  its_command_brings_the_closed_main_window_back, the_item_comes_back_with_the_tray,
                  the_popover_opens_again])
