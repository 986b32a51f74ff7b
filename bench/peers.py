"""Kestrune beside the other monitors that are installed: CPU, memory and start, in one run."""

import fcntl
import os
import pty
import statistics
import struct
import subprocess
import sys
import termios
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "tests", "program"))
import measured  # noqa: E402
import session  # noqa: E402

WINDOWS = 5  # the median counts, since other programs run too
SECONDS = 10  # per window
STARTS = 5
# Each shows its own first page in a window of its own size.
PEERS = ("gnome-system-monitor", "plasma-systemmonitor", "xfce4-taskmanager", "btop")


def family(pid):
    """The process and all its descendants."""
    found = [pid]
    for parent in found:
        for thread in os.listdir(f"/proc/{parent}/task"):
            with open(f"/proc/{parent}/task/{thread}/children") as children:
                found += [int(child) for child in children.read().split()]
    return found


def load(pid):
    """CPU in percent of one core, the median of several time windows."""
    return statistics.median(measured.load(family(pid), SECONDS) for _ in range(WINDOWS))


def memory(pid):
    """PSS in MB."""
    return sum(measured.memory(each)[0] for each in family(pid))


class InTerminal:
    """A program on a terminal of 120 by 40 cells, whose output is read at once."""

    def __init__(self, own, command):
        begun = time.monotonic()
        pid, self.terminal = pty.fork()
        if pid == 0:
            fcntl.ioctl(0, termios.TIOCSWINSZ, struct.pack("4H", 40, 120, 0, 0))
            os.environ.update(own.environment, TERM="xterm-256color", LC_ALL="C.UTF-8")
            os.execvp(command, [command])
        self.pid = pid
        os.read(self.terminal, 1)
        self.start = time.monotonic() - begun
        self.drain = subprocess.Popen(["cat"], stdin=self.terminal, stdout=subprocess.DEVNULL)

    def end(self):
        os.kill(self.pid, 9)
        os.waitpid(self.pid, 0)
        self.drain.kill()
        self.drain.wait()
        os.close(self.terminal)


class InWindow:
    """A program with a window."""

    def __init__(self, own, command):
        before = self.windows(own)
        begun = time.monotonic()
        self.process = own.start(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.pid = self.process.pid
        while not self.windows(own) - before:
            if self.process.poll() is not None or time.monotonic() - begun > 30:
                raise RuntimeError("shows no window here")
        self.start = time.monotonic() - begun

    @staticmethod
    def windows(own):
        return set(own.xdotool("search", "--onlyvisible", "--name", ".").split())

    def end(self):
        session.end(self.process)


def measure(command, kind):
    with session.Session() as own:
        # As on a desktop without assistive tools, for our program too.
        own.environment.pop("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", None)
        measured.fill(own)
        starts = []
        for i in range(STARTS):
            shown = kind(own, command)
            starts.append(shown.start * 1000)
            if i + 1 < STARTS:
                shown.end()
                time.sleep(0.5)
        time.sleep(10)
        figures = load(shown.pid), memory(shown.pid), statistics.median(starts)
        shown.end()
        return figures


def main(build):
    print(f"{'':<24}{'CPU':>9}{'PSS':>11}{'start':>11}", flush=True)
    missing = []
    for name in (os.path.join(build, "kestrune"), *PEERS):
        label = os.path.basename(name)
        if subprocess.run(["which", name], capture_output=True, check=False).returncode != 0:
            missing.append(label)
            continue
        try:
            cpu, pss, start = measure(name, InTerminal if label == "btop" else InWindow)
            print(f"{label:<24}{cpu:>7.2f} %{pss:>8.1f} MB{start:>8.0f} ms", flush=True)
        except (RuntimeError, OSError) as error:
            print(f"{label:<24} {error}", flush=True)
    if missing:
        print("not installed: " + ", ".join(missing))


main(sys.argv[1])
