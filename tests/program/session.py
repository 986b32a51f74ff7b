"""A desktop of the tests' own: a display, a session bus and folders that nobody else uses."""

import contextlib
import os
import signal
import struct
import subprocess
import sys
import tempfile
import time

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

    def main_window(self):
        """The id of the program's main window if it is on screen; the tray's item is smaller."""
        for window in self.xdotool("search", "--onlyvisible", "--class", "kestrune").split():
            geometry = self.xdotool("getwindowgeometry", "--shell", window).split()
            width = next((int(line[6:]) for line in geometry if line.startswith("WIDTH=")), 0)
            if width >= 800:
                return window
        return None


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
            print(f"FAILED  {test.__name__}: {type(error).__name__}: {error}", flush=True)
    sys.exit(1 if failed else 0)
