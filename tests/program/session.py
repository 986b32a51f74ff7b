"""A desktop for one test: a display, a session bus and folders of its own."""

import contextlib
import datetime
import json
import os
import signal
import struct
import subprocess
import sys
import tempfile
import time
import traceback

TIMEOUT = 20  # seconds until something that should happen counts as failed
NAME = "org.kestrune.Kestrune"  # the program's name on the session bus


def wait_for(what, condition, timeout=TIMEOUT):
    """Waits until `condition` returns something true and returns that."""
    end = time.monotonic() + timeout
    while time.monotonic() < end:
        found = condition()
        if found:
            return found
        time.sleep(0.05)
    raise AssertionError(f"timed out after {timeout} s: {what}")


class Session:
    """A context manager; leaving it kills everything that was started in it. Without a size there is no display."""

    def __init__(self, size="1400x1000", has_bus=True):
        self.stack = contextlib.ExitStack()
        self.size = size
        self.has_bus = has_bus

    def __enter__(self):
        folder = self.stack.enter_context(tempfile.TemporaryDirectory(prefix="kestrune-"))
        self.environment = dict(os.environ)
        for name in ("DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "AT_SPI_BUS_ADDRESS", "QT_QPA_PLATFORM"):
            self.environment.pop(name, None)
        for name in ("RUNTIME_DIR", "CONFIG_HOME", "DATA_HOME", "CACHE_HOME"):
            path = os.path.join(folder, name.lower())
            os.mkdir(path, 0o700)
            self.environment["XDG_" + name] = path
        self.environment.update(QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", LC_ALL="C.UTF-8")
        self.screen_file = os.path.join(folder, "Xvfb_screen0")
        if self.size:
            self.display = self.start_display(folder)
        if self.has_bus:
            self.bus = self.start_bus()
        os.environ.clear()
        os.environ.update(self.environment)
        return self

    def __exit__(self, *error):
        return self.stack.__exit__(*error)

    def start(self, *command, **options):
        process = subprocess.Popen(command, **{"env": self.environment, **options})
        self.stack.callback(end, process)
        return process

    def start_display(self, folder):
        read, write = os.pipe()
        display = self.start("Xvfb", "-displayfd", str(write), "-screen", "0", f"{self.size}x24", "-nolisten", "tcp",
                             "-noreset", "-fbdir", folder, pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as number:
            self.environment["DISPLAY"] = ":" + number.readline().strip()
        return display

    def start_bus(self):
        bus = self.start("dbus-daemon", "--session", "--nofork", "--print-address", stdout=subprocess.PIPE,
                         stderr=subprocess.DEVNULL, text=True)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()
        return bus

    def start_tray(self):
        return self.start("trayer", "--edge", "bottom", "--widthtype", "request", "--height", "24",
                          stderr=subprocess.DEVNULL)

    def start_script(self, name, **options):
        """A Python program from beside the tests, whose output can be read."""
        return self.start(sys.executable, os.path.join(os.path.dirname(__file__), name), stdout=subprocess.PIPE, text=True,
                          **options)

    def run(self, *command):
        return subprocess.run(command, env=self.environment, text=True, capture_output=True, check=False, timeout=TIMEOUT)

    def xdotool(self, *arguments):
        return self.run("xdotool", *arguments).stdout.strip()

    def press(self, window, keys):
        self.xdotool("windowfocus", window, "key", "--window", window, keys)

    def press_to_close(self, window, keys):
        """Presses keys that close the window. The request that would release them fails with the window, and a key that
        stays down repeats in the next one, so they are released separately."""
        self.press(window, keys)
        for key in keys.split("+"):
            self.xdotool("keyup", key)

    def close_main_window(self):
        self.press_to_close(self.main_window(), "ctrl+w")
        wait_for("the window to close", lambda: not self.main_window())

    def tray_icons(self):
        """The program's windows that are the size of a tray icon."""
        lines = [line for line in self.run("xwininfo", "-root", "-tree").stdout.splitlines() if '"kestrune"' in line]
        return [line.split()[0] for line in lines if any(f" {side}x{side}+" in line for side in (16, 22, 24, 32))]

    def call(self, service, path, method, *arguments):
        """The reply of a call on the session bus, as text; empty if it fails."""
        return self.run("gdbus", "call", "--session", "-d", service, "-o", path, "-m", method, *arguments).stdout

    def call_bus(self, method, *arguments):
        return self.call("org.freedesktop.DBus", "/", "org.freedesktop.DBus." + method, *arguments)

    def wait_for_name(self, name):
        wait_for(f"{name} on the bus", lambda: name in self.call_bus("ListNames"))

    def screen(self):
        """The pixels on the screen, four bytes each (blue, green, red, unused), and the bytes per row."""
        with open(self.screen_file, "rb") as file:
            picture = file.read()
        header, *_ = fields = struct.unpack(">25I", picture[:100])
        return picture[header + 12 * fields[19]:], fields[12]

    def brightness(self, x, y):
        pixels, row = self.screen()
        return sum(pixels[y * row + 4 * x:y * row + 4 * x + 3])

    def shows(self, red, green, blue):
        """True if any pixel has the colour."""
        return bytes([blue, green, red]) in self.screen()[0]

    def open_program(self, **options):
        """Starts the program and waits for its window."""
        running = self.start(program(), **options)
        wait_for("the window", lambda: self.main_window(running))
        return running

    def windows(self, *criteria):
        return self.xdotool("search", "--onlyvisible", *criteria).split()

    def main_window(self, process=None):
        """The id of the program's main window if it is on screen; other windows are smaller. A window may outlast its
        process for a moment; pass the process where there were several."""
        owner = ["--all", "--pid", str(process.pid)] if process else []
        return next((window for window in self.windows(*owner, "--class", "kestrune")
                     if self.geometry(window).get("WIDTH", 0) >= 800), None)

    def popover(self):
        """The id of the popover if it is on screen."""
        return next(iter(self.windows("--name", "^Kestrune$")), None)

    def title(self, window):
        return self.xdotool("getwindowname", window)

    def geometry(self, window):
        """X, Y, WIDTH and HEIGHT by name; empty if the window is gone."""
        fields = self.xdotool("getwindowgeometry", "--shell", window).split()
        return {name: int(value) for name, value in (field.split("=") for field in fields)}

    def day_file(self):
        """The path of today's record."""
        return os.path.join(self.environment["XDG_DATA_HOME"], "Kestrune", "history",
                            datetime.date.today().isoformat() + ".json")

    def day(self):
        with open(self.day_file()) as file:
            return json.load(file)


def end(process):
    if process.poll() is None:
        process.send_signal(signal.SIGKILL)
    process.wait()


def ends_well(process, timeout=TIMEOUT):
    code = process.wait(timeout)
    assert code == 0, f"exit code {code}"


def program(name="kestrune"):
    return os.path.join(os.environ["KESTRUNE_BUILD"], name)


def output(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def meminfo():
    """The fields of /proc/meminfo, in bytes."""
    with open("/proc/meminfo") as lines:
        return {line.split(":")[0]: int(line.split()[1]) * 1024 for line in lines}


def main():
    """Runs the functions of the script that are named test_…, in the order in which they are defined."""
    tests = [value for name, value in vars(sys.modules["__main__"]).items() if name.startswith("test_")]
    failed = 0
    for test in tests:
        try:
            test()
            print(f"ok      {test.__name__}", flush=True)
        except Exception as error:  # the other tests run all the same
            failed += 1
            print(f"FAILED  {test.__name__}", flush=True)
            traceback.print_exception(error, file=sys.stdout)
    sys.exit(1 if failed or not tests else 0)
