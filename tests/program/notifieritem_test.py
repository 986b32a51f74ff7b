"""The item in a panel that shows items over D-Bus, as current desktops do."""

import re
import subprocess

import session

WATCHER = "org.kde.StatusNotifierWatcher"


def items():
    """Who has an item in the panel."""
    listed = under_test.call(WATCHER, "/StatusNotifierWatcher", "org.freedesktop.DBus.Properties.Get", WATCHER,
                  "RegisteredStatusNotifierItems")
    return re.findall(r"'([^']+)/StatusNotifierItem'", listed)


def start_panel():
    return under_test.start("xfce4-panel", "--disable-wm-check", stderr=subprocess.DEVNULL)


def popover():
    return under_test.xdotool("search", "--onlyvisible", "--name", "^Kestrune$").split()


def the_panel_shows_the_item():
    found = session.wait_for("the item", items)
    tip = under_test.call(found[0], "/StatusNotifierItem", "org.freedesktop.DBus.Properties.Get", "org.kde.StatusNotifierItem",
               "ToolTip")
    assert "Kestrune · CPU" in tip, tip


def its_activation_opens_the_popover():
    under_test.call(items()[0], "/StatusNotifierItem", "org.kde.StatusNotifierItem.Activate", "10", "10")
    session.wait_for("the popover", popover)


def the_item_comes_back_with_the_panel():
    global panel
    session.Session.end(panel)
    session.wait_for("no panel", lambda: not items())
    panel = start_panel()
    session.wait_for("the item", items)
    assert running.poll() is None


def a_panel_that_turns_up_later_shows_the_item_too():
    global panel
    session.Session.end(running)
    session.Session.end(panel)
    session.wait_for("no panel", lambda: not items())
    again = under_test.open_program()
    panel = start_panel()
    session.wait_for("the item", items)
    its_activation_opens_the_popover()
    assert again.poll() is None


with session.Session() as under_test:
    panel = start_panel()
    session.wait_for("the panel", lambda: "Registered" in under_test.call(WATCHER, "/StatusNotifierWatcher",
                                                               "org.freedesktop.DBus.Introspectable.Introspect"))
    running = under_test.open_program()
    session.main([the_panel_shows_the_item, its_activation_opens_the_popover, the_item_comes_back_with_the_panel,
                  a_panel_that_turns_up_later_shows_the_item_too])
