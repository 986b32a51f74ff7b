"""The pages in a real window, read through the accessibility bus and compared with the system's own figures."""

import csv
import json
import os
import re
import shutil
import tempfile
import time

import accessible
import days
import session

reader = None


def probe():
    """What the samplers see now."""
    return json.loads(session.output(session.program("kestrune_probe"), "--seconds", "4").splitlines()[-1])


def gibibytes(text):
    return float(text.split()[0])


def percents():
    return [int(name[:-1]) for name in reader.names() if name.endswith("%") and name[:-1].isdigit()]


def agree(what, shown, sampled):
    """Window and samplers show the same. On a busy machine the figure may change between the two readings."""
    looks = []
    for _ in range(5):
        looks.append((shown(), sampled()))
        if abs(looks[-1][0] - looks[-1][1]) <= 0.15:
            return
    raise AssertionError(f"{what}: {looks}")


def test_the_sidebar_lists_all_pages_in_order():
    assert reader.named("list item") == ["Overview", "CPU", "Memory", "Disk", "Network", "Power", "Audio", "Folders",
                                         "Stats", "Settings"], reader.named("list item")


def test_the_overview_agrees_with_the_samplers():
    reader.show("Overview")
    reader.wait("OUTPUT")
    seen = probe()
    missing = {"CPU", "Memory", "Battery", "Storage", "I/O", "Uptime", "Network", "OUTPUT", "INPUT", "ACTIVE",
               "Top processes", seen["network"]["interfaceName"]} - set(reader.names())
    assert not missing, missing
    total = seen["disk"]["volumeTotalBytes"] / 2**30
    assert abs(gibibytes(reader.after("Total")) - total) <= 0.05 + 1e-9, (reader.after("Total"), total)
    agree("used memory", lambda: float(reader.after("Memory")), lambda: probe()["memory"]["usedBytes"] / 2**30)


def test_the_cpu_page_agrees_with_the_kernel():
    reader.show("CPU")

    def cores():
        return [name for name in reader.names() if name.startswith(("efficiency core, ", "performance core, "))]

    session.wait_for("one bar for each processor", lambda: len(cores()) == os.sysconf("SC_NPROCESSORS_ONLN"))
    missing = {"CPU Usage", "Chip", "Model", "Cores", "Per-core usage", "Usage history", "Top processes", "Process",
               "Metric trend", "60s ago", "Now", "0%", "100%"} - set(reader.names())
    assert not missing, missing
    assert all(0 <= percent <= 100 for percent in percents())


def test_a_busy_process_shows_in_usage_and_table():
    copy = shutil.copy("/bin/sh", os.path.join(folder, "busybee"))
    burner = own.start(copy, "-c", "while :; do :; done")
    reader.wait("busybee")
    session.wait_for("a load", lambda: max(percents() or [0]) >= 20)
    session.end(burner)


def test_the_memory_page_agrees_with_the_samplers():
    reader.show("Memory")
    reader.wait("Memory Used")
    agree("used memory", lambda: gibibytes(reader.after("Memory Used")),
          lambda: probe()["memory"]["usedBytes"] / 2**30)
    memory = probe()["memory"]
    assert reader.after("Pressure") == memory["pressure"]
    assert f"{memory['totalBytes'] / 2**30:.0f} GB total" in reader.names()


def test_the_disk_and_network_pages_agree_with_the_samplers():
    seen = probe()
    reader.show("Disk")
    reader.wait(seen["disk"]["volumeName"])
    reader.wait_gone("Memory Used")
    reader.show("Network")
    for interface in seen["network"]["interfaces"]:
        reader.wait(interface["id"])
    reader.press("push button", "Reload")


def test_a_chart_shows_another_span_when_asked():
    for page in ("CPU", "Memory", "Network"):
        reader.show(page)
        reader.press("radio button", "5m")
        session.wait_for("five minutes", lambda: reader.is_checked("radio button", "5m"))
    reader.wait("5m ago")
    assert "60s ago" not in reader.names()


def test_the_network_page_shows_one_network_or_all():
    reader.show("Network")
    reader.wait("Throughput history")
    session.wait_for("both", lambda: {"Home", "Ethernet"} <= networks_of_today())
    reader.choose("All", "Home")
    session.wait_for("one", lambda: "Home" in networks_of_today() and "Ethernet" not in networks_of_today())
    reader.choose("Home", "All")
    session.wait_for("both again", lambda: {"Home", "Ethernet"} <= networks_of_today())


def networks_of_today():
    names = reader.names()
    return set(names[names.index("Today's Networks"):names.index("Throughput history")])


def test_past_days_are_a_press_away():
    reader.show("Overview")
    reader.press("push button", "Previous day")
    reader.wait("Yesterday")
    reader.wait("Multiple Networks")
    of_all = reader.after("Sent")
    reader.choose("Filter by network", "Home")
    session.wait_for("the figures of one network", lambda: reader.after("Sent") != of_all)
    assert "Multiple Networks" not in reader.names()
    reader.choose("Filter by network", "All Networks")
    session.wait_for("those of all", lambda: reader.after("Sent") == of_all)
    reader.wait("Audio activity is not recorded in history")
    reader.press("push button", "Previous day")
    # Three days ago there was no file, so the buttons end here.
    reader.wait_gone("Yesterday")
    reader.press("push button", "Live")
    reader.wait("OUTPUT")


def test_the_statistics_can_be_exported_and_read_back():
    reader.show("Stats")
    reader.wait("Days recorded")
    assert reader.after("Days recorded") == "3", reader.after("Days recorded")
    reader.press("radio button", "30 days")
    session.wait_for("more days", lambda: reader.after("Days recorded") == "5")
    path = os.path.join(folder, "out", "days.csv")
    os.mkdir(os.path.dirname(path))
    reader.press("push button", "Export CSV")
    dialog = session.wait_for("the dialog", lambda: own.windows("--name", "^Save|^Kestrune.*Save|Save As"))[0]
    time.sleep(0.5)  # keys that come before it has been painted are lost
    own.press(dialog, "ctrl+a")
    own.xdotool("type", "--window", dialog, path)
    own.press_to_close(dialog, "Return")
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


def test_each_kind_of_setting_reaches_the_store():
    reader.show("Settings")
    before = reader.is_checked("check box", "Disk activity")
    reader.press("check box", "Disk activity")
    session.wait_for("the switch", lambda: settings().get("metrics.disk.menubar.enabled") is (not before))
    assert reader.is_checked("check box", "Disk activity") is not before
    for choice, key, value in (("Critical only", "alerts.memory.threshold", "critical"),
                               ("15% free", "alerts.disk.threshold", 15), ("90 days", "history.retentionDays", 90)):
        reader.press("radio button", choice)
        session.wait_for(choice, lambda: settings().get(key) == value)
    slider = session.wait_for("the slider", lambda: reader.find("slider", "CPU high usage"))
    slider.queryValue().currentValue = 90
    session.wait_for("the threshold", lambda: settings().get("alerts.cpu.threshold") == 90)


def test_a_reset_asks_and_then_restores_the_defaults():
    reader.press("push button", "Reset")
    reader.wait("Reset All Settings?")
    buttons = [node for node in reader.everything() if accessible.described(node) == ("push button", "Reset")]
    next(node for node in buttons if is_in_dialog(node)).queryAction().doAction(0)
    session.wait_for("the defaults", lambda: settings().get("alerts.cpu.threshold") == 80)
    assert settings()["metrics.disk.menubar.enabled"] is False


def is_in_dialog(node):
    return node is not None and (node.getRoleName() == "alert" or is_in_dialog(node.parent))


def test_folders_open_and_close():
    reader.show("Folders")
    entry = session.wait_for("an entry", lambda: entry_named("inner"))
    entry.queryAction().doAction(0)
    session.wait_for("what is inside", lambda: entry_named("deep.txt"))
    reader.press("push button", "Go up")
    session.wait_for("the way back", lambda: entry_named("inner"))


def entry_named(name):
    """The row of the list whose text starts with the name."""
    rows = (node for node in reader.everything()
            if accessible.described(node)[0] in ("list item", "static", "label"))
    return next((node for node in rows if re.match(re.escape(name) + r"\b", accessible.described(node)[1])), None)


def test_the_other_language_comes_with_a_restart():
    global reader
    reader.show("Settings")
    before = time.time()
    reader.press("radio button", "ES")
    session.wait_for("the choice in the store", lambda: settings().get("AppleLanguages") == ["es"])
    time.sleep(1.5)  # the restart takes a second
    session.wait_for("the window", own.main_window)
    reader = accessible.Reader()
    reader.wait("Resumen")
    assert running.poll() is None, "it is the same process"
    assert os.path.getmtime(own.day_file()) > before, "the open day has been saved"
    assert "Overview" not in reader.names()


with tempfile.TemporaryDirectory() as folder, session.Session() as own:
    home = os.path.join(folder, "home")
    os.makedirs(os.path.join(home, "inner"))
    with open(os.path.join(home, "inner", "deep.txt"), "w") as deep:
        deep.write("deep")
    own.environment["HOME"] = os.environ["HOME"] = home
    days.write_days(own.environment["XDG_DATA_HOME"], 20, gaps=set(range(3, 21)) - {10, 20})
    days.write_day(own.environment["XDG_DATA_HOME"], days.datetime.date.today())
    running = own.open_program()
    reader = accessible.Reader()
    session.main()
