"""The item in a panel that shows items over D-Bus, as current desktops do."""

import re
import subprocess

import session

WATCHER = ("org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher")
ITEM = "org.kde.StatusNotifierItem"
GET = "org.freedesktop.DBus.Properties.Get"


def items():
    """The bus names of the programs that have an item in the panel."""
    return re.findall(r"'([^']+)/StatusNotifierItem'", own.call(*WATCHER, GET, WATCHER[0], "RegisteredStatusNotifierItems"))


def start_panel():
    return own.start("xfce4-panel", "--disable-wm-check", stderr=subprocess.DEVNULL)


def end_panel():
    session.end(panel)
    session.wait_for("no panel", lambda: not items())


def test_the_panel_shows_the_item():
    found = session.wait_for("the item", items)
    tip = own.call(found[0], "/StatusNotifierItem", GET, ITEM, "ToolTip")
    assert "Kestrune · CPU" in tip, tip


def test_activating_it_opens_the_popover():
    own.call(items()[0], "/StatusNotifierItem", ITEM + ".Activate", "10", "10")
    session.wait_for("the popover", own.popover)


def test_the_item_returns_with_the_panel():
    global panel
    end_panel()
    panel = start_panel()
    session.wait_for("the item", items)
    assert running.poll() is None


def test_a_panel_that_starts_after_the_program_shows_the_item():
    global panel
    session.end(running)
    end_panel()
    again = own.open_program()
    panel = start_panel()
    session.wait_for("the item", items)
    test_activating_it_opens_the_popover()
    assert again.poll() is None


with session.Session() as own:
    panel = start_panel()
    session.wait_for("the panel",
                     lambda: "Registered" in own.call(*WATCHER, "org.freedesktop.DBus.Introspectable.Introspect"))
    running = own.open_program()
    session.main()
