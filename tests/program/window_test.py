"""The program in a real window, read and pressed through the accessibility bus as a screen reader would."""

import os
import shutil
import signal
import subprocess
import tempfile

import accessible
import session

reader = None


def percents(texts):
    return [int(t[:-1]) for t in texts if t.endswith("%") and t[:-1].isdigit()]


def sidebar_lists_all_tabs_in_order():
    rows = [node.name for node in reader.everything() if node.getRoleName() == "list item"]
    assert rows == ["Overview", "CPU", "Memory", "Disk", "Network", "Power", "Audio", "Folders", "Stats",
                    "Settings"], rows


def a_pressed_row_shows_its_tab_and_titles_the_window():
    reader.show("CPU")
    reader.wait("CPU Usage")
    reader.show("Disk")
    session.wait_for("the other page", lambda: "CPU Usage" not in reader.names())


def the_cpu_page_agrees_with_the_kernel():
    reader.show("CPU")
    with open("/proc/stat") as stat:
        processors = sum(line.startswith("cpu") and line[3].isdigit() for line in stat)

    def cores():
        return [n for n in reader.names() if n.startswith(("efficiency core, ", "performance core, "))]

    session.wait_for("one bar for each processor", lambda: len(cores()) == processors)
    texts = reader.names()
    for expected in ("CPU Usage", "Chip", "Model", "Cores", "Per-core usage", "Usage history", "Top processes",
                     "Process", "Metric trend", "60s ago", "Now", "0%", "100%"):
        assert expected in texts, f"{expected} is missing"
    assert all(0 <= p <= 100 for p in percents(texts))


def a_busy_process_shows_in_usage_and_table():
    reader.show("CPU")
    with tempfile.TemporaryDirectory() as folder:
        copy = shutil.copy("/bin/sh", os.path.join(folder, "busybee"))
        burner = session_under_test.start(copy, "-c", "while :; do :; done")
        try:
            session.wait_for("the busy process in the table", lambda: "busybee" in reader.names())
            session.wait_for("a load", lambda: max(percents(reader.names()) or [0]) >= 20)
        finally:
            session_under_test.end(burner)


def the_range_picker_can_be_pressed():
    reader.show("CPU")
    reader.press("radio button", "5m")
    session.wait_for("the range to be chosen", lambda: reader.is_checked("radio button", "5m"))


def the_keyboard_switches_tabs():
    window = session_under_test.main_window()
    for key, title in (("0", "Settings"), ("8", "Folders"), ("1", "Overview"), ("2", "CPU")):
        session_under_test.press(window, "ctrl+" + key)
        session.wait_for(title, lambda: reader.find("frame", title))


def a_second_start_brings_the_window_back():
    window = session_under_test.main_window()
    session_under_test.press_to_close(window, "ctrl+w")
    session.wait_for("the window to close", lambda: not session_under_test.main_window())
    assert running.poll() is None, "closing the window must not end the program"
    second = subprocess.run([session.program()], env=session_under_test.environment, timeout=session.PATIENCE,
                            check=False)
    assert second.returncode == 0
    session.wait_for("the window to come back", session_under_test.main_window)
    assert running.poll() is None


def a_termination_signal_ends_it_cleanly():
    running.send_signal(signal.SIGTERM)
    session.ends_well(running)


with session.Session() as session_under_test:
    running = session_under_test.open_program()
    reader = accessible.Reader()
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
