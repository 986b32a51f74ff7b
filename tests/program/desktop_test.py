"""How the program lives with a session: how it is started and ended with it, and what of it may go or change."""

import json
import os
import shlex
import signal
import subprocess
import sys
import time

import accessible
import session

HISTORY = os.path.join("Kestrune", "history", time.strftime("%Y-%m-%d") + ".json")


def login_command(own):
    """What the session runs once “launch at login” is on."""
    running = own.open_program()
    reader = accessible.Reader()
    reader.show("Settings")
    reader.press("check box", "Launch at login")
    path = os.path.join(own.environment["XDG_CONFIG_HOME"], "autostart", "kestrune.desktop")
    session.wait_for("the login item", lambda: os.path.exists(path))
    running.terminate()
    session.ends_well(running)
    with open(path) as entry:
        return next(shlex.split(line[5:]) for line in entry if line.startswith("Exec="))


def with_a_tray_it_starts_there_alone():
    with session.Session() as own:
        command = login_command(own)
        running = own.start(*command)
        time.sleep(1)
        own.start("trayer", "--edge", "bottom", "--widthtype", "request", "--height", "24", stderr=subprocess.DEVNULL)
        session.wait_for("the icon", own.tray_icons)
        end = time.monotonic() + 11  # as long as it waits for a tray
        while time.monotonic() < end:
            assert not own.main_window(), "there is a tray, so no window comes up"
            time.sleep(0.5)
        again = own.start(session.program())
        session.wait_for("the window", own.main_window)
        session.ends_well(again)
        assert running.poll() is None


def without_a_tray_it_starts_minimised():
    with session.Session() as own:
        own.start("openbox", stderr=subprocess.DEVNULL)
        own.start("env", "KESTRUNE_START=quiet", session.program())
        session.wait_for("a minimised window", lambda: "Iconic" in states(own))
        assert not own.main_window()
        own.start(session.program())
        session.wait_for("the window", own.main_window)


def states(own):
    """What the window manager says of the program's windows."""
    windows = own.xdotool("search", "--class", "kestrune").split()
    said = [subprocess.run(["xprop", "-id", window, "WM_STATE"], env=own.environment, text=True, capture_output=True,
                           check=False).stdout for window in windows]
    return " ".join(said)


def a_quiet_start_disturbs_nobody():
    with session.Session() as own:
        running = own.open_program()
        own.press_to_close(own.main_window(), "ctrl+w")
        session.wait_for("the window to close", lambda: not own.main_window())
        session.ends_well(own.start("env", "KESTRUNE_START=quiet", session.program()))
        time.sleep(0.5)
        assert not own.main_window() and running.poll() is None


def a_copy_without_a_display_makes_room_for_one_with():
    with session.Session() as own:
        bare = {name: value for name, value in own.environment.items() if name != "DISPLAY"}
        headless = subprocess.Popen([session.program()], env=bare, stderr=subprocess.DEVNULL)
        try:
            session.wait_for("its name", lambda: "org.kestrune.Kestrune" in own.call(
                "org.freedesktop.DBus", "/", "org.freedesktop.DBus.ListNames"))
            time.sleep(0.5)
            own.open_program()
            session.ends_well(headless)
            check_day(own)
        finally:
            own.end(headless)


def calls_that_make_no_sense_are_refused():
    with session.Session() as own:
        running = own.open_program()
        for method, *arguments in (("Activate", "dict:string:string:a,b"), ("Activate",), ("Activate", "string:x"),
                                   ("ActivateAction", "string:settings"), ("Nonsense",)):
            done = subprocess.run(["dbus-send", "--session", "--print-reply", "--dest=org.kestrune.Kestrune",
                                   "/org/kestrune/Kestrune", "org.freedesktop.Application." + method, *arguments],
                                  env=own.environment, capture_output=True, text=True, check=False)
            assert "Error org.freedesktop.DBus.Error" in done.stderr and "NoReply" not in done.stderr, done.stderr
        assert running.poll() is None


def it_outlives_its_session_bus():
    with session.Session() as own:
        running = own.open_program()
        window = own.main_window()
        own.end(own.bus)
        for shortcut, title in (("ctrl+3", "Memory"), ("ctrl+2", "CPU")):
            own.press(window, shortcut)
            session.wait_for(title, lambda: own.xdotool("getwindowname", window) == title)
        assert running.poll() is None
        running.terminate()
        session.ends_well(running, 2)


def every_word_to_end_is_obeyed_in_time_and_saves_the_day():
    for word in (signal.SIGTERM, signal.SIGHUP, signal.SIGINT):
        with session.Session() as own:
            running = own.open_program()
            running.send_signal(word)
            session.ends_well(running, 2)
            check_day(own)


def check_day(own):
    with open(os.path.join(own.environment["XDG_DATA_HOME"], HISTORY)) as file:
        json.load(file)


def the_day_is_saved_when_the_display_dies():
    with session.Session() as own:
        running = own.open_program(stderr=subprocess.DEVNULL)
        own.end(own.display)
        assert running.wait(session.PATIENCE) == 1, "an end by Qt, no crash"
        check_day(own)


def it_follows_dark_mode_and_accent_as_they_change():
    with session.Session() as own:
        portal = own.start(sys.executable, os.path.join(os.path.dirname(__file__), "portal.py"), stdin=subprocess.PIPE,
                           stdout=subprocess.PIPE, text=True)
        assert portal.stdout.readline() == "ready\n"

        def tell(line):
            portal.stdin.write(line + "\n")
            portal.stdin.flush()

        own.open_program()
        session.wait_for("a light window", lambda: sum(own.pixel(700, 12)) > 600)
        tell("dark")
        session.wait_for("a dark window", lambda: 0 < sum(own.pixel(700, 12)) < 200)
        tell("accent 0.9 0.3 0.7")
        pink = (230, 77, 179)
        session.wait_for("the accent", lambda: own.shows(pink))
        tell("light")
        session.wait_for("a light window", lambda: sum(own.pixel(700, 12)) > 600)


def it_fits_the_screen_at_every_scale():
    for scale, size in (("1", "1280x800"), ("1.25", "1366x900"), ("1.5", "1920x1080"), ("2", "2560x1440"),
                        ("3", "3840x2160")):
        with session.Session(size) as own:
            own.environment["QT_SCALE_FACTOR"] = scale
            own.open_program()
            said = own.geometry(own.main_window())
            most = [int(side) for side in size.split("x")]
            reach = [said["X"] + said["WIDTH"], said["Y"] + said["HEIGHT"]]
            assert reach[0] <= most[0] and reach[1] <= most[1], (scale, size, said)


session.main([
    with_a_tray_it_starts_there_alone,
    without_a_tray_it_starts_minimised,
    a_quiet_start_disturbs_nobody,
    a_copy_without_a_display_makes_room_for_one_with,
    calls_that_make_no_sense_are_refused,
    it_outlives_its_session_bus,
    every_word_to_end_is_obeyed_in_time_and_saves_the_day,
    the_day_is_saved_when_the_display_dies,
    it_follows_dark_mode_and_accent_as_they_change,
    it_fits_the_screen_at_every_scale,
])
