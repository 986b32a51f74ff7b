"""The resource use of processes, according to the kernel."""

import os
import time

PROCESSES = 300  # on the machine during a measurement


def fill(own):
    """Starts idle processes until the machine has PROCESSES."""
    for _ in range(PROCESSES - sum(name.isdigit() for name in os.listdir("/proc"))):
        own.start("sleep", "100000")


def run_time(pids):
    """The run time of all threads in seconds, to the nanosecond."""
    total = 0
    for pid in pids:
        for thread in os.listdir(f"/proc/{pid}/task"):
            with open(f"/proc/{pid}/task/{thread}/schedstat") as stat:
                total += int(stat.read().split()[0])
    return total / 1e9


def load(pids, seconds):
    """CPU in percent of one core."""
    before, begun = run_time(pids), time.monotonic()
    time.sleep(seconds)
    return (run_time(pids) - before) / (time.monotonic() - begun) * 100


def memory(pid):
    """PSS and private dirty memory in MB."""
    with open(f"/proc/{pid}/smaps_rollup") as rollup:
        fields = {line.split(":")[0]: int(line.split()[1]) for line in rollup if line.endswith("kB\n")}
    return fields["Pss"] / 1024, fields["Private_Dirty"] / 1024
