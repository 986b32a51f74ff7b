"""How the program lives with a session: how it starts and ends with it, and what may fail or change meanwhile."""

import os
import shlex
import subprocess
import time

import accessible
import session


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


def test_with_a_tray_it_starts_there_only():
    with session.Session() as own:
        command = login_command(own)
        running = own.start(*command)
        time.sleep(1)
        own.start_tray()
        session.wait_for("the icon", own.tray_icons)
        end = time.monotonic() + 11  # longer than it waits for a tray
        while time.monotonic() < end:
            assert not own.main_window(), "there is a tray, so no window opens"
            time.sleep(0.5)
        again = own.start(session.program())
        session.wait_for("the window", own.main_window)
        session.ends_well(again)
        assert running.poll() is None


def test_without_a_tray_it_starts_minimised():
    with session.Session() as own:
        own.start("openbox", stderr=subprocess.DEVNULL)
        own.start("env", "KESTRUNE_START=quiet", session.program())
        session.wait_for("a minimised window", lambda: "Iconic" in window_states(own))
        assert not own.main_window()
        own.start(session.program())
        session.wait_for("the window", own.main_window)


def window_states(own):
    """The states of the program's windows, according to the window manager."""
    windows = own.xdotool("search", "--class", "kestrune").split()
    return " ".join(own.run("xprop", "-id", window, "WM_STATE").stdout for window in windows)


def test_a_second_start_shows_the_closed_window_unless_it_is_quiet():
    with session.Session() as own:
        running = own.open_program()
        own.close_main_window()
        session.ends_well(own.start("env", "KESTRUNE_START=quiet", session.program()))
        time.sleep(0.5)
        assert not own.main_window()
        session.ends_well(own.start(session.program()))
        session.wait_for("the window", own.main_window)
        assert running.poll() is None


def test_a_copy_without_a_display_makes_way_for_one_with():
    with session.Session() as own:
        bare = {name: value for name, value in own.environment.items() if name != "DISPLAY"}
        headless = own.start(session.program(), env=bare, stderr=subprocess.DEVNULL)
        own.wait_for_name(session.NAME)
        time.sleep(0.5)
        own.open_program()
        session.ends_well(headless)
        assert own.day()


def test_malformed_calls_are_refused():
    with session.Session() as own:
        running = own.open_program()
        for method, *arguments in (("Activate", "dict:string:string:a,b"), ("Activate",), ("Activate", "string:x"),
                                   ("ActivateAction", "string:settings"), ("Nonsense",)):
            error = own.run("dbus-send", "--session", "--print-reply", "--dest=" + session.NAME, "/org/kestrune/Kestrune",
                            "org.freedesktop.Application." + method, *arguments).stderr
            assert "Error org.freedesktop.DBus.Error" in error and "NoReply" not in error, error
        assert running.poll() is None


def test_it_outlives_its_session_bus_and_saves_the_day():
    with session.Session() as own:
        running = own.open_program()
        window = own.main_window()
        session.end(own.bus)
        for shortcut, title in (("ctrl+3", "Memory"), ("ctrl+2", "CPU")):
            own.press(window, shortcut)
            session.wait_for(title, lambda: own.title(window) == title)
        running.terminate()
        session.ends_well(running, 2)
        assert own.day()


def test_the_day_is_saved_when_the_display_dies():
    with session.Session() as own:
        running = own.open_program(stderr=subprocess.DEVNULL)
        session.end(own.display)
        assert running.wait(session.TIMEOUT) == 1, "Qt exits; it must not crash"
        assert own.day()


def test_it_follows_dark_mode_and_accent():
    with session.Session() as own:
        portal = own.start_script("portal.py", stdin=subprocess.PIPE)
        assert portal.stdout.readline() == "ready\n"
        own.open_program()
        def is_light():
            return own.brightness(700, 12) > 600

        session.wait_for("a light window", is_light)
        for line, what, is_shown in (("color-scheme uint32 1", "a dark window", lambda: 0 < own.brightness(700, 12) < 200),
                                     ("accent-color (0.9, 0.3, 0.7)", "the accent", lambda: own.shows(230, 77, 179)),
                                     ("color-scheme uint32 2", "a light window", is_light)):
            print(line, file=portal.stdin, flush=True)
            session.wait_for(what, is_shown)


def test_it_fits_the_screen_at_every_scale():
    for scale, width, height in (("1", 1280, 800), ("1.25", 1366, 900), ("1.5", 1920, 1080), ("2", 2560, 1440),
                                 ("3", 3840, 2160)):
        with session.Session(f"{width}x{height}") as own:
            own.environment["QT_SCALE_FACTOR"] = scale
            own.open_program()
            window = own.geometry(own.main_window())
            assert window["X"] + window["WIDTH"] <= width and window["Y"] + window["HEIGHT"] <= height, (scale, window)


session.main()
