"""What the whole program costs on a display of its own: CPU, memory, start. Prints a table."""

import os
import statistics
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "tests", "program"))
import session  # noqa: E402

PROCESSES = 300
SECONDS = int(os.environ.get("KESTRUNE_BENCH_SECONDS", "30"))
STARTS = 15


def cpu_seconds(pid):
    """What all threads have run for, to the nanosecond."""
    total = 0
    for thread in os.listdir(f"/proc/{pid}/task"):
        with open(f"/proc/{pid}/task/{thread}/schedstat") as stat:
            total += int(stat.read().split()[0])
    return total / 1e9


def memory(pid):
    """PSS and private dirty memory in MB."""
    with open(f"/proc/{pid}/smaps_rollup") as rollup:
        fields = {line.split(":")[0]: int(line.split()[1]) for line in rollup if line.endswith("kB\n")}
    return fields["Pss"] / 1024, fields["Private_Dirty"] / 1024


def load(pid):
    """CPU in percent of one core."""
    before, begun = cpu_seconds(pid), time.monotonic()
    time.sleep(SECONDS)
    return (cpu_seconds(pid) - before) / (time.monotonic() - begun) * 100


def report(what, figure, budget):
    print(f"{what:<44} {figure:>10}   {budget}", flush=True)


def start_times(build):
    times = []
    for _ in range(STARTS):
        begun = time.clock_gettime_ns(time.CLOCK_BOOTTIME)
        done = subprocess.run([os.path.join(build, "kestrune_start_bench"), str(begun)], capture_output=True, text=True,
                              check=True)
        times.append(int(done.stdout) / 1000)
    return times


def main(build):
    with session.Session() as own:
        fill = PROCESSES - sum(name.isdigit() for name in os.listdir("/proc"))
        for _ in range(max(fill, 0)):
            own.start("sleep", "100000")
        times = start_times(build)
        report(f"start to first painted frame, median of {STARTS}", f"{statistics.median(times):.0f} ms", "≤ 120 ms")
        report("… slowest", f"{max(times):.0f} ms", "")

        running = own.start(os.path.join(build, "kestrune"))
        window = session.wait_for("the window", own.main_window)
        time.sleep(2)
        for tab, shortcut in (("overview", "ctrl+1"), ("CPU tab", "ctrl+2")):
            own.xdotool("windowfocus", window, "key", "--window", window, shortcut)
            time.sleep(8)
            report(f"CPU, {tab} visible", f"{load(running.pid):.2f} %", "≤ 0.5 %")
        pss, dirty = memory(running.pid)
        report("PSS", f"{pss:.1f} MB", "≤ 42 MB")
        report("… private dirty", f"{dirty:.1f} MB", "")
        own.xdotool("windowfocus", window, "key", "--window", window, "ctrl+w")
        session.wait_for("the window to close", lambda: not own.main_window())
        time.sleep(2)
        report("CPU, window hidden", f"{load(running.pid):.2f} %", "≤ 0.2 %")


main(sys.argv[1])
