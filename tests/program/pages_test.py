"""Each page in a real window, read through the accessibility bus and compared with what the system's figures are."""

import csv
import json
import os
import re
import subprocess
import tempfile
import time

import accessible
import days
import session

reader = None


def probe():
    """What the samplers see right now."""
    with subprocess.Popen([session.program("kestrune_probe"), "--seconds", "4"], stdout=subprocess.PIPE, text=True) as process:
        lines = process.stdout.read().splitlines()
    return json.loads(lines[-1])


def gibibytes(text):
    return float(text.split()[0])


def agree(what, shown, sampled):
    """The window and the samplers show the same, but for what moves between the two looks on a busy machine."""
    looks = []
    for _ in range(5):
        looks.append((shown(), sampled()))
        if abs(looks[-1][0] - looks[-1][1]) <= 0.15:
            return
    raise AssertionError(f"{what}: {looks}")


def the_overview_agrees_with_the_samplers():
    reader.show("Overview")
    reader.wait("OUTPUT")
    seen = probe()
    names = reader.names()
    for card in ("CPU", "Memory", "Battery", "Storage", "I/O", "Uptime", "Network", "OUTPUT", "INPUT", "ACTIVE",
                 "Top processes"):
        assert card in names, f"{card} is missing"
    total = seen["disk"]["volumeTotalBytes"] / 2**30
    assert abs(gibibytes(reader.after("Total")) - total) <= 0.05 + 1e-9, (reader.after("Total"), total)
    assert seen["network"]["interfaceName"] in names
    agree("used memory", lambda: float(reader.after("Memory")), lambda: probe()["memory"]["usedBytes"] / 2**30)


def the_memory_page_agrees_with_the_samplers():
    reader.show("Memory")
    reader.wait("Memory Used")
    agree("used memory", lambda: gibibytes(reader.after("Memory Used")),
          lambda: probe()["memory"]["usedBytes"] / 2**30)
    memory = probe()["memory"]
    assert reader.after("Pressure") == memory["pressure"]
    assert f"{memory['totalBytes'] / 2**30:.0f} GB total" in reader.names()


def the_disk_and_network_pages_agree_with_the_samplers():
    seen = probe()
    reader.show("Disk")
    reader.wait(seen["disk"]["volumeName"])
    reader.show("Network")
    for interface in seen["network"]["interfaces"]:
        reader.wait(interface["id"])
    reader.press("push button", "Reload")


def a_chart_shows_another_span_when_asked():
    for page in ("Memory", "Network"):
        reader.show(page)
        reader.press("radio button", "5m")
        session.wait_for("five minutes", lambda: reader.is_checked("radio button", "5m"))
    reader.wait("5m ago")
    assert "60s ago" not in reader.names()


def the_network_page_shows_one_network_or_all():
    reader.show("Network")
    reader.wait("Throughput history")
    session.wait_for("both", lambda: {"Home", "Ethernet"} <= networks_of_today())
    choose("All", "Home")
    session.wait_for("one", lambda: "Ethernet" not in networks_of_today())
    assert "Home" in networks_of_today()
    choose("Home", "All")
    session.wait_for("both again", lambda: {"Home", "Ethernet"} <= networks_of_today())


def networks_of_today():
    names = reader.names()
    return set(names[names.index("Today's Networks"):names.index("Throughput history")])


def choose(face, item):
    """Opens the menu that shows so, and takes one of its items."""
    reader.press("push button", face)
    reader.press("menu item", item)


def past_days_are_a_press_away():
    reader.show("Overview")
    reader.press("push button", "Previous day")
    reader.wait("Yesterday")
    reader.wait("Multiple Networks")
    of_all = reader.after("Sent")
    choose("Filter by network", "Home")
    session.wait_for("the figures of one network", lambda: reader.after("Sent") != of_all)
    assert "Multiple Networks" not in reader.names()
    choose("Filter by network", "All Networks")
    session.wait_for("those of all", lambda: reader.after("Sent") == of_all)
    reader.wait("Audio activity is not recorded in history")
    reader.press("push button", "Previous day")
    # Three days ago there was no file, so that the way ends here.
    session.wait_for("the day before yesterday", lambda: "Yesterday" not in reader.names())
    reader.press("push button", "Live")
    reader.wait("OUTPUT")


def the_statistics_can_be_exported_and_read_back():
    reader.show("Stats")
    reader.wait("Days recorded")
    assert reader.after("Days recorded") == "3", reader.after("Days recorded")
    reader.press("radio button", "30 days")
    session.wait_for("more days", lambda: reader.after("Days recorded") == "5")
    path = os.path.join(folder, "out", "days.csv")
    os.mkdir(os.path.dirname(path))
    reader.press("push button", "Export CSV")
    dialog = session.wait_for("the dialog", lambda: under_test.xdotool("search", "--onlyvisible", "--name", "^Save|^Kestrune.*Save|Save As"))
    dialog = dialog.split()[0]
    time.sleep(0.5)  # keys that come before it has been painted are lost
    under_test.press(dialog, "ctrl+a")
    under_test.xdotool("type", "--window", dialog, path)
    under_test.press_to_close(dialog, "Return")
    session.wait_for("the file", lambda: os.path.exists(path))
    with open(path, newline="") as file:
        rows = list(csv.reader(file))
    table = rows[1:rows.index([])]
    assert [row[0] for row in table] == sorted(row[0] for row in table) and len(table) == 5, table
    assert all(len(row) == 9 for row in table)
    yesterday = days.day(days.datetime.date.today() - days.datetime.timedelta(days=1))
    peak = max(hour["cpu"]["peak"] for hour in yesterday["hours"])
    assert abs(float(table[-2][2]) - peak) <= 0.05 + 1e-9, (table[-2], peak)


def settings():
    path = os.path.join(os.environ["XDG_CONFIG_HOME"], "kestrune", "preferences.json")
    if not os.path.exists(path):
        return {}
    with open(path) as file:
        return json.load(file)


def every_setting_reaches_the_store():
    reader.show("Settings")
    for title, key in (("Disk activity", "metrics.disk.menubar.enabled"), ("IP address", "metrics.ip.menubar.enabled"),
                       ("Daily data usage", "alerts.network.enabled")):
        before = reader.is_checked("check box", title)
        reader.press("check box", title)
        session.wait_for(title, lambda: settings().get(key) is (not before))
        assert reader.is_checked("check box", title) is not before
    for choice, key, value in (("Critical only", "alerts.memory.threshold", "critical"),
                               ("15% free", "alerts.disk.threshold", 15), ("90 days", "history.retentionDays", 90)):
        reader.press("radio button", choice)
        session.wait_for(choice, lambda: settings().get(key) == value)
    slider = session.wait_for("the slider", lambda: reader.find("slider", "CPU high usage"))
    slider.queryValue().currentValue = 90
    session.wait_for("the threshold", lambda: settings().get("alerts.cpu.threshold") == 90)
    login = os.path.join(os.environ["XDG_CONFIG_HOME"], "autostart", "kestrune.desktop")
    reader.press("check box", "Launch at login")
    session.wait_for("the login item", lambda: os.path.exists(login))
    with open(login) as entry:
        assert os.path.realpath(session.program()) in entry.read()
    reader.press("check box", "Launch at login")
    session.wait_for("no login item", lambda: not os.path.exists(login))


def a_reset_asks_and_then_brings_the_defaults():
    reader.press("push button", "Reset")
    reader.wait("Reset All Settings?")
    buttons = [node for node in reader.everything()
               if accessible.said(node) == ("push button", "Reset")]
    in_dialog = [node for node in buttons if "alert" in roles_around(node)]
    assert in_dialog, [roles_around(node) for node in buttons]
    in_dialog[0].queryAction().doAction(0)
    session.wait_for("the defaults", lambda: settings().get("alerts.cpu.threshold") == 80)
    assert settings()["metrics.disk.menubar.enabled"] is False


def roles_around(node):
    roles = []
    while node.parent is not None and node.getRoleName() != "application":
        node = node.parent
        roles.append(node.getRoleName())
    return roles


def folders_open_and_close():
    reader.show("Folders")
    entry = session.wait_for("an entry", lambda: entry_named("inner"))
    entry.queryAction().doAction(0)
    session.wait_for("what is inside", lambda: entry_named("deep.txt"))
    reader.press("push button", "Go up")
    session.wait_for("the way back", lambda: entry_named("inner"))


def entry_named(name):
    """The row of the list that begins with the name."""
    rows = (node for node in reader.everything()
            if accessible.said(node)[0] in ("list item", "static", "label"))
    return next((node for node in rows if re.match(re.escape(name) + r"\b", accessible.said(node)[1])), None)


def the_other_language_comes_with_a_restart():
    global reader
    reader.show("Settings")
    day_file = os.path.join(os.environ["XDG_DATA_HOME"], "Kestrune", "history", time.strftime("%Y-%m-%d") + ".json")
    reader.press("radio button", "ES")
    session.wait_for("the choice in the store", lambda: settings().get("AppleLanguages") == ["es"])
    time.sleep(1.5)  # the restart takes a second
    session.wait_for("the window", under_test.main_window)
    reader = session.wait_for("the program", accessible.Reader)
    session.wait_for("Spanish", lambda: "Resumen" in reader.names())
    assert running.poll() is None, "it is the same process"
    assert os.path.exists(day_file), "the open day has been saved"
    assert "Overview" not in reader.names()


with tempfile.TemporaryDirectory() as folder, session.Session() as under_test:
    home = os.path.join(folder, "home")
    os.makedirs(os.path.join(home, "inner"))
    with open(os.path.join(home, "inner", "deep.txt"), "w") as deep:
        deep.write("deep")
    under_test.environment["HOME"] = os.environ["HOME"] = home
    days.write_days(under_test.environment["XDG_DATA_HOME"], 20, gaps=set(range(3, 21)) - {10, 20})
    days.write_day(under_test.environment["XDG_DATA_HOME"], days.datetime.date.today())
    running = under_test.open_program()
    reader = accessible.Reader()
    session.main([
        the_overview_agrees_with_the_samplers,
        the_memory_page_agrees_with_the_samplers,
        the_disk_and_network_pages_agree_with_the_samplers,
        a_chart_shows_another_span_when_asked,
        the_network_page_shows_one_network_or_all,
        past_days_are_a_press_away,
        the_statistics_can_be_exported_and_read_back,
        every_setting_reaches_the_store,
        a_reset_asks_and_then_brings_the_defaults,
        folders_open_and_close,
        the_other_language_comes_with_a_restart,
    ])
