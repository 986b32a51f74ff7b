"""The item in a real tray."""

import time

import session


def click_the_item():
    own.xdotool("mousemove", "--window", own.tray_icons()[0], "8", "8", "click", "1")
    return session.wait_for("the popover", own.popover)


def test_a_click_opens_the_popover_beside_the_item():
    session.wait_for("the icon", own.tray_icons)
    place, item = own.geometry(click_the_item()), own.geometry(own.tray_icons()[0])
    gap = item["Y"] - (place["Y"] + place["HEIGHT"])
    assert 0 <= gap < 100, "the tray is at the bottom, so the popover is right above it"


def test_escape_closes_it():
    def is_closed_by_escape():
        window = own.popover()  # keys that come before it has been painted are lost
        if window:
            own.xdotool("key", "--window", window, "Escape")
            time.sleep(0.2)
        return not own.popover()

    session.wait_for("the popover to close", is_closed_by_escape)


def test_its_command_reopens_the_closed_main_window():
    own.close_main_window()
    time.sleep(0.3)  # a click right after closing doesn't reopen it
    window = click_the_item()
    time.sleep(0.5)  # keys that come before it has been painted are lost
    # Tab goes to the first command, and the space bar presses it.
    own.xdotool("key", "--window", window, "Tab", "space")
    session.wait_for("the window to open", own.main_window)
    session.wait_for("the popover to close", lambda: not own.popover())


def test_item_and_popover_return_with_the_tray():
    session.end(tray)
    session.wait_for("no icon", lambda: not own.tray_icons())
    assert running.poll() is None
    own.start_tray()
    session.wait_for("the icon", own.tray_icons)
    time.sleep(0.3)
    click_the_item()
    test_escape_closes_it()


with session.Session() as own:
    # The tray starts after the program.
    running = own.open_program()
    tray = own.start_tray()
    session.main()
