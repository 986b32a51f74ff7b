"""What an installation puts below its prefix, and whether the desktop can start the program from there."""

import configparser
import os
import signal
import struct
import subprocess
import tempfile
import time

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


def test_exactly_these_files_are_installed():
    icons = "share/icons/hicolor"
    wanted = {"bin/kestrune", "share/doc/kestrune/changelog", "share/doc/kestrune/copyright",
              f"share/applications/{ID}.desktop", f"share/metainfo/{ID}.metainfo.xml",
              f"share/dbus-1/services/{ID}.service", "share/man/man1/kestrune.1",
              f"{icons}/scalable/apps/{ID}.svg", f"{icons}/symbolic/apps/{ID}-symbolic.svg"}
    wanted.update(f"{icons}/{size}x{size}/apps/{ID}.png" for size in SIZES)
    found = {os.path.relpath(os.path.join(folder, name), prefix)
             for folder, _, names in os.walk(prefix) for name in names}
    assert found == wanted, f"missing {sorted(wanted - found)}, too many {sorted(found - wanted)}"


def test_each_icon_has_its_size_and_is_not_blank():
    for size in SIZES:
        with open(path(f"share/icons/hicolor/{size}x{size}/apps/{ID}.png"), "rb") as file:
            content = file.read()
        assert struct.unpack(">II", content[16:24]) == (size, size)
        # A picture of one colour compresses to almost nothing.
        assert len(content) > 16 * size, f"{size}: {len(content)} bytes"


def test_desktop_entry_and_component_are_valid():
    checked("desktop-file-validate", path(f"share/applications/{ID}.desktop"))
    checked("appstreamcli", "validate", "--no-net", path(f"share/metainfo/{ID}.metainfo.xml"))


def test_licence_and_third_parties_are_named():
    told = text("share/doc/kestrune/copyright")
    with open(os.path.join(os.environ["KESTRUNE_SOURCE"], "LICENSE"), encoding="utf-8") as file:
        licence = file.read().split()
    begins = licence.index("Permission")
    assert " ".join(licence[begins:]) in " ".join(told.replace("\n .\n", "\n").split())
    for holder in ("The Kestrune developers", "The Bootstrap Authors", "Niels Lohmann"):
        assert holder in told, holder


def test_the_desktop_starts_it_with_its_settings_in_front():
    """As a launcher does for the action of the desktop entry: over the bus, with nothing running yet."""
    entry = configparser.ConfigParser(interpolation=None)
    entry.read(path(f"share/applications/{ID}.desktop"), encoding="utf-8")
    action = entry["Desktop Entry"]["Actions"].strip(";")
    activate = (ID, "/org/kestrune/Kestrune", "org.freedesktop.Application.ActivateAction")
    with session.Session() as own:
        own.call(*activate, f"'{action}'", "[]", "{}")
        pid = int(own.call_bus("GetConnectionUnixProcessID", f"'{ID}'").strip("(),\n").split()[-1])
        try:
            assert os.readlink(f"/proc/{pid}/exe") == path("bin/kestrune")
            window = session.wait_for("the window", own.main_window)
            session.wait_for("the settings", lambda: own.title(window) == "Settings")
            refusal = own.run("gdbus", "call", "--session", "-d", ID, "-o", activate[1], "-m", activate[2], "'else'", "[]",
                              "{}").stderr
            assert "InvalidArgs" in refusal, refusal
            # A desktop on X11 uses the class to find the entry of a window.
            window_class = own.run("xprop", "-id", window, "WM_CLASS").stdout
            assert f'"{entry["Desktop Entry"]["StartupWMClass"]}"' in window_class, window_class
        finally:
            os.kill(pid, signal.SIGTERM)
        session.wait_for("its end", lambda: not os.path.exists(f"/proc/{pid}/exe"))


def test_it_runs_offscreen_in_an_empty_home():
    with session.Session(size=None, has_bus=False) as own:
        bare = {"PATH": os.environ["PATH"], "QT_QPA_PLATFORM": "offscreen"}
        bare.update(dict.fromkeys(("HOME", "XDG_RUNTIME_DIR"), own.environment["XDG_CACHE_HOME"]))
        running = own.start(path("bin/kestrune"), env=bare, stderr=subprocess.PIPE, text=True)
        time.sleep(1)
        running.terminate()
        session.ends_well(running)
        assert running.stderr.read() == ""


with tempfile.TemporaryDirectory(prefix="kestrune prefix ") as prefix:
    subprocess.run(["cmake", "--install", os.environ["KESTRUNE_BUILD"], "--prefix", prefix], check=True,
                   stdout=subprocess.DEVNULL)
    os.environ["XDG_DATA_DIRS"] = path("share") + ":/usr/local/share:/usr/share"
    session.main()
