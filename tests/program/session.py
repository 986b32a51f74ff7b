"""A desktop of the tests' own: a display, a session bus and folders that nobody else uses."""

import contextlib
import os
import signal
import struct
import subprocess
import sys
import tempfile
import time
import traceback

PATIENCE = 20  # seconds until something that should happen counts as failed


def wait_for(what, condition, patience=PATIENCE):
    """Waits until `condition` yields something true and returns that."""
    end = time.monotonic() + patience
    while time.monotonic() < end:
        found = condition()
        if found:
            return found
        time.sleep(0.05)
    raise AssertionError(f"waited {patience} s in vain for {what}")


class Session:
    """Runs below `with`; ends everything that was started in it."""

    def __init__(self, size="1400x1000"):
        self.stack = contextlib.ExitStack()
        self.size = size

    def __enter__(self):
        folder = self.stack.enter_context(tempfile.TemporaryDirectory(prefix="kestrune-"))
        self.environment = dict(os.environ)
        for name in ("WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "AT_SPI_BUS_ADDRESS", "QT_QPA_PLATFORM"):
            self.environment.pop(name, None)
        for name in ("RUNTIME_DIR", "CONFIG_HOME", "DATA_HOME", "CACHE_HOME"):
            path = os.path.join(folder, name.lower())
            os.mkdir(path, 0o700)
            self.environment["XDG_" + name] = path
        self.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        self.environment["LC_ALL"] = "C.UTF-8"
        self.screen_file = os.path.join(folder, "Xvfb_screen0")
        self.display = self.start_display(folder)
        self.bus = self.start_bus()
        os.environ.clear()
        os.environ.update(self.environment)
        return self

    def __exit__(self, *error):
        return self.stack.__exit__(*error)

    def start(self, *command, **options):
        process = subprocess.Popen(command, env=self.environment, **options)
        self.stack.callback(self.end, process)
        return process

    @staticmethod
    def end(process):
        if process.poll() is None:
            process.send_signal(signal.SIGKILL)
        process.wait()

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

    def xdotool(self, *arguments):
        done = subprocess.run(["xdotool", *arguments], env=self.environment, text=True, capture_output=True, check=False)
        return done.stdout.strip()

    def press(self, window, keys):
        self.xdotool("windowfocus", window, "key", "--window", window, keys)

    def press_to_close(self, window, keys):
        """Presses keys that make the window go. They must be lifted by themselves: the request that would have done so
        fails with the window, and a key that stays down repeats in the next window."""
        self.press(window, keys)
        for key in keys.split("+"):
            self.xdotool("keyup", key)

    def tray_icons(self):
        """The program's windows that a tray has room for."""
        tree = subprocess.run(["xwininfo", "-root", "-tree"], env=self.environment, text=True, capture_output=True,
                              check=True).stdout
        lines = [line for line in tree.splitlines() if '"kestrune"' in line]
        return [line.split()[0] for line in lines if any(f" {side}x{side}+" in line for side in (16, 22, 24, 32))]

    def call(self, service, path, method, *arguments):
        """What a call on the session bus yields, as text; empty where it fails."""
        done = subprocess.run(["gdbus", "call", "--session", "-d", service, "-o", path, "-m", method, *arguments],
                              env=self.environment, capture_output=True, text=True, check=False)
        return done.stdout

    def screen(self):
        """What is on the screen: its pixels as blue, green, red and nothing, and how many bytes a row takes."""
        with open(self.screen_file, "rb") as file:
            picture = file.read()
        header, *_ = fields = struct.unpack(">25I", picture[:100])
        return picture[header + 12 * fields[19]:], fields[12]

    def pixel(self, x, y):
        pixels, row = self.screen()
        blue, green, red = pixels[y * row + 4 * x:y * row + 4 * x + 3]
        return red, green, blue

    def shows(self, color):
        """Whether the colour is anywhere on the screen."""
        red, green, blue = color
        return bytes([blue, green, red]) in self.screen()[0]

    def open_program(self, **options):
        """The program, with its window on screen."""
        running = self.start(program(), **options)
        wait_for("the window", lambda: self.main_window(running))
        return running

    def main_window(self, process=None):
        """The id of the program's main window if it is on screen; the tray's item is smaller. A window may outlast
        its process for a moment, so with several processes in a row it matters whose it is."""
        owner = ["--all", "--pid", str(process.pid)] if process else []
        for window in self.xdotool("search", "--onlyvisible", *owner, "--class", "kestrune").split():
            if self.geometry(window).get("WIDTH", 0) >= 800:
                return window
        return None

    def geometry(self, window):
        """X, Y, WIDTH and HEIGHT by name; nothing for a window that is gone."""
        said = self.xdotool("getwindowgeometry", "--shell", window).split()
        return {name: int(value) for name, value in (line.split("=") for line in said)}


def ends_well(process, patience=PATIENCE):
    code = process.wait(patience)
    assert code == 0, f"exit code {code}"


def program(name="kestrune"):
    return os.path.join(os.environ["KESTRUNE_BUILD"], name)


def main(tests):
    """Runs the functions one after the other, each by its name."""
    failed = 0
    for test in tests:
        try:
            test()
            print(f"ok      {test.__name__}", flush=True)
        except Exception as error:  # whatever goes wrong in one must not hide the others
            failed += 1
            print(f"FAILED  {test.__name__}", flush=True)
            traceback.print_exception(error, file=sys.stdout)
    sys.exit(1 if failed else 0)
