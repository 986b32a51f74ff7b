"""What an installation leaves below its prefix, and whether the desktop can start the program from there."""

import configparser
import os
import signal
import struct
import subprocess
import tempfile

import session

ID = "org.kestrune.Kestrune"
SIZES = (16, 22, 24, 32, 48, 64, 128, 256, 512)
prefix = None


def path(*parts):
    return os.path.join(prefix, *parts)


def text(*parts):
    with open(path(*parts), encoding="utf-8") as file:
        return file.read()


def checked(*command):
    done = subprocess.run(command, text=True, capture_output=True, check=False)
    assert done.returncode == 0, done.stdout + done.stderr


def just_these_files_are_there():
    icons = "share/icons/hicolor"
    wanted = {"bin/kestrune", "share/doc/kestrune/changelog", "share/doc/kestrune/copyright",
              f"share/applications/{ID}.desktop", f"share/metainfo/{ID}.metainfo.xml",
              f"share/dbus-1/services/{ID}.service", "share/man/man1/kestrune.1",
              f"{icons}/scalable/apps/{ID}.svg", f"{icons}/symbolic/apps/{ID}-symbolic.svg"}
    wanted.update(f"{icons}/{size}x{size}/apps/{ID}.png" for size in SIZES)
    found = {os.path.relpath(os.path.join(folder, name), prefix)
             for folder, _, names in os.walk(prefix) for name in names}
    assert found == wanted, f"missing {sorted(wanted - found)}, too many {sorted(found - wanted)}"


def each_icon_has_its_size_and_shows_something():
    for size in SIZES:
        with open(path(f"share/icons/hicolor/{size}x{size}/apps/{ID}.png"), "rb") as file:
            content = file.read()
        assert struct.unpack(">II", content[16:24]) == (size, size)
        # What is all of one colour compresses to next to nothing.
        assert len(content) > 16 * size, f"{size}: {len(content)} bytes"


def desktop_entry_and_component_are_valid():
    checked("desktop-file-validate", path(f"share/applications/{ID}.desktop"))
    checked("appstreamcli", "validate", "--no-net", path(f"share/metainfo/{ID}.metainfo.xml"))


def the_licence_and_its_third_parties_are_told():
    told = text("share/doc/kestrune/copyright")
    with open(os.path.join(os.environ["KESTRUNE_SOURCE"], "LICENSE"), encoding="utf-8") as file:
        licence = file.read().split()
    begins = licence.index("Permission")
    assert " ".join(licence[begins:]) in " ".join(told.replace("\n .\n", "\n").split())
    for holder in ("The Kestrune developers", "The Bootstrap Authors", "Niels Lohmann"):
        assert holder in told, holder


def the_desktop_starts_it_with_its_settings_in_front():
    """As a launcher does for the action of the desktop entry: over the bus, with nothing running yet."""
    entry = configparser.ConfigParser(interpolation=None)
    entry.read(path(f"share/applications/{ID}.desktop"), encoding="utf-8")
    action = entry["Desktop Entry"]["Actions"].strip(";")
    with session.Session() as desktop:
        ask(desktop, "ActivateAction", f"'{action}'", "[]", "{}")
        owner = bus_call(desktop, "GetConnectionUnixProcessID", f"'{ID}'")
        pid = int(owner.strip("(),\n").split()[-1])
        try:
            assert os.readlink(f"/proc/{pid}/exe") == path("bin/kestrune")
            window = session.wait_for("the window", desktop.main_window)
            session.wait_for("the settings", lambda: desktop.xdotool("getwindowname", window) == "Settings")
            refused = subprocess.run(request("ActivateAction", "'else'", "[]", "{}"), env=desktop.environment,
                                     text=True, capture_output=True, check=False)
            assert refused.returncode != 0 and "InvalidArgs" in refused.stderr, refused.stderr
            # By which a desktop on X11 finds the entry that a window belongs to.
            window_class = subprocess.run(["xprop", "-id", window, "WM_CLASS"], env=desktop.environment, text=True,
                                          capture_output=True, check=True).stdout
            assert f'"{entry["Desktop Entry"]["StartupWMClass"]}"' in window_class, window_class
        finally:
            os.kill(pid, signal.SIGTERM)
        session.wait_for("its end", lambda: not os.path.exists(f"/proc/{pid}/exe"))


def it_runs_offscreen():
    with tempfile.TemporaryDirectory() as folder:
        environment = {"PATH": os.environ["PATH"], "HOME": folder, "XDG_RUNTIME_DIR": folder,
                       "QT_QPA_PLATFORM": "offscreen"}
        running = subprocess.Popen([path("bin/kestrune")], env=environment, stderr=subprocess.PIPE, text=True)
        try:
            running.wait(1)
            raise AssertionError(f"it ended at once: {running.stderr.read()}")
        except subprocess.TimeoutExpired:
            running.send_signal(signal.SIGTERM)
            assert running.wait(session.PATIENCE) == 0
            assert running.stderr.read() == ""
        finally:
            session.Session.end(running)


def request(method, *arguments):
    return ["gdbus", "call", "--session", "--dest", ID, "--object-path", "/org/kestrune/Kestrune", "--method",
            "org.freedesktop.Application." + method, *arguments]


def ask(desktop, method, *arguments):
    subprocess.run(request(method, *arguments), env=desktop.environment, check=True, timeout=session.PATIENCE,
                   stdout=subprocess.DEVNULL)


def bus_call(desktop, method, *arguments):
    return subprocess.run(["gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path",
                           "/org/freedesktop/DBus", "--method", "org.freedesktop.DBus." + method, *arguments],
                          env=desktop.environment, text=True, capture_output=True, check=True).stdout


with tempfile.TemporaryDirectory(prefix="kestrune prefix ") as prefix:
    subprocess.run(["cmake", "--install", os.environ["KESTRUNE_BUILD"], "--prefix", prefix], check=True,
                   stdout=subprocess.DEVNULL)
    os.environ["XDG_DATA_DIRS"] = path("share") + ":/usr/local/share:/usr/share"
    session.main([
        just_these_files_are_there,
        each_icon_has_its_size_and_shows_something,
        desktop_entry_and_component_are_valid,
        the_licence_and_its_third_parties_are_told,
        it_runs_offscreen,
        the_desktop_starts_it_with_its_settings_in_front,
    ])
