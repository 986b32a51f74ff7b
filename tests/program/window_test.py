"""The program in a real window, read and pressed through the accessibility bus as a screen reader would."""

import os
import shutil
import signal
import subprocess
import tempfile

import session

application = None


def accessible_program():
    import pyatspi

    desktop = pyatspi.Registry.getDesktop(0)
    for i in range(desktop.childCount):
        child = desktop.getChildAtIndex(i)
        if child is not None and child.name == "kestrune":
            return child
    return None


def everything(node):
    yield node
    for i in range(node.childCount):
        child = node.getChildAtIndex(i)
        if child is not None:
            yield from everything(child)


def names():
    return [node.name for node in everything(application) if node.name]


def find(role, name):
    for node in everything(application):
        if node.getRoleName() == role and node.name == name:
            return node
    return None


def press(node):
    actions = node.queryAction()
    wanted = [i for i in range(actions.nActions) if actions.getName(i).lower() == "press"]
    assert wanted, f"{node.name} can't be pressed"
    actions.doAction(wanted[0])


def select(title):
    press(session.wait_for(f"the row {title}", lambda: find("list item", title)))


def percents(texts):
    return [int(t[:-1]) for t in texts if t.endswith("%") and t[:-1].isdigit()]


def sidebar_lists_all_tabs_in_order():
    rows = [node.name for node in everything(application) if node.getRoleName() == "list item"]
    assert rows == ["Overview", "CPU", "Memory", "Disk", "Network", "Power", "Audio", "Folders", "Stats",
                    "Settings"], rows


def a_pressed_row_shows_its_tab_and_titles_the_window():
    select("CPU")
    session.wait_for("the CPU page", lambda: "CPU Usage" in names())
    window = session.wait_for("the title", lambda: find("frame", "CPU"))
    assert window
    select("Disk")
    session.wait_for("the other page", lambda: "CPU Usage" not in names() and find("frame", "Disk"))


def the_cpu_page_agrees_with_the_kernel():
    select("CPU")
    with open("/proc/stat") as stat:
        processors = sum(line.startswith("cpu") and line[3].isdigit() for line in stat)

    def cores():
        return [n for n in names() if n.startswith(("efficiency core, ", "performance core, "))]

    session.wait_for("one bar for each processor", lambda: len(cores()) == processors)
    texts = names()
    for expected in ("CPU Usage", "Chip", "Model", "Cores", "Per-core usage", "Usage history", "Top processes",
                     "Process", "Metric trend", "60s ago", "Now", "0%", "100%"):
        assert expected in texts, f"{expected} is missing"
    assert all(0 <= p <= 100 for p in percents(texts))


def a_busy_process_shows_in_usage_and_table():
    select("CPU")
    with tempfile.TemporaryDirectory() as folder:
        copy = shutil.copy("/bin/sh", os.path.join(folder, "busybee"))
        burner = session_under_test.start(copy, "-c", "while :; do :; done")
        try:
            session.wait_for("the busy process in the table", lambda: "busybee" in names())
            session.wait_for("a load", lambda: max(percents(names()) or [0]) >= 20)
        finally:
            session_under_test.end(burner)


def the_range_picker_can_be_pressed():
    select("CPU")
    choice = session.wait_for("the range", lambda: find("radio button", "5m"))
    press(choice)

    def is_chosen():
        import pyatspi
        found = find("radio button", "5m")
        return found and found.getState().contains(pyatspi.STATE_CHECKED)

    session.wait_for("the range to be chosen", is_chosen)


def the_keyboard_switches_tabs():
    window = session_under_test.main_window()
    for key, title in (("0", "Settings"), ("8", "Folders"), ("1", "Overview"), ("2", "CPU")):
        session_under_test.xdotool("windowfocus", window, "key", "--window", window, "ctrl+" + key)
        session.wait_for(title, lambda: find("frame", title))


def a_second_start_brings_the_window_back():
    window = session_under_test.main_window()
    session_under_test.xdotool("windowfocus", window, "key", "--window", window, "ctrl+w")
    session.wait_for("the window to close", lambda: not session_under_test.main_window())
    assert running.poll() is None, "closing the window must not end the program"
    second = subprocess.run([session.program()], env=session_under_test.environment, timeout=session.PATIENCE,
                            check=False)
    assert second.returncode == 0
    session.wait_for("the window to come back", session_under_test.main_window)
    assert running.poll() is None


def a_termination_signal_ends_it_cleanly():
    running.send_signal(signal.SIGTERM)
    assert running.wait(session.PATIENCE) == 0


with session.Session() as session_under_test:
    running = session_under_test.start(session.program())
    application = session.wait_for("the program on the accessibility bus", accessible_program)
    session.wait_for("the window", session_under_test.main_window)
    session.main([
        sidebar_lists_all_tabs_in_order,
        a_pressed_row_shows_its_tab_and_titles_the_window,
        the_cpu_page_agrees_with_the_kernel,
        a_busy_process_shows_in_usage_and_table,
        the_range_picker_can_be_pressed,
        the_keyboard_switches_tabs,
        a_second_start_brings_the_window_back,
        a_termination_signal_ends_it_cleanly,
    ])
