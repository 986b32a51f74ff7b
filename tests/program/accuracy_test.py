"""What the program sees, compared with what the system's own tools say in the same seconds."""

import contextlib
import json
import os
import subprocess
import tempfile
import time

import session

MEBIBYTE = 1 << 20


@contextlib.contextmanager
def probing(seconds, *prefix):
    """A running probe, whose objects `take` yields one by one."""
    command = [*prefix, session.program("kestrune_probe"), "--seconds", str(seconds)]
    with subprocess.Popen(command, stdout=subprocess.PIPE, text=True) as running:
        try:
            yield running
        finally:
            running.kill()


def take(running):
    line = running.stdout.readline()
    assert line, "the probe ended early"
    return json.loads(line)


def meminfo():
    with open("/proc/meminfo") as lines:
        return {line.split(":")[0]: int(line.split()[1]) * 1024 for line in lines}


def memory_is_what_free_shows():
    # The program looks every 2 s, and memory moves in between: its figure lies between the lowest and the
    # highest of those seconds, give or take what a process of the test's own grabs and returns.
    slack = 64 * MEBIBYTE
    used = []
    with probing(6) as running:
        for _ in range(5):
            memory = take(running)["memory"]
            info = meminfo()
            used.append(info["MemTotal"] - info["MemAvailable"])
    assert memory["totalBytes"] == info["MemTotal"], memory
    assert min(used) - slack <= memory["usedBytes"] <= max(used) + slack, (memory, used)
    parts = memory["wiredBytes"] + memory["appBytes"] + memory["compressedBytes"]
    assert parts == memory["usedBytes"], memory
    assert memory["swapTotalBytes"] == info["SwapTotal"], memory
    swapped = info["SwapTotal"] - info["SwapFree"]
    assert abs(memory["swapUsedBytes"] - swapped) <= slack, (memory, info)


def the_volume_is_what_df_shows():
    # Other programs write meanwhile, so what is free may move by a little; the size can't.
    slack = 256 * MEBIBYTE
    with probing(2) as running:
        disk = [take(running)["disk"] for _ in range(2)][-1]
    shown = subprocess.run(["df", "-B1", "--output=size,avail", "/"], capture_output=True, text=True, check=True)
    size, available = (int(field) for field in shown.stdout.split("\n")[1].split())
    assert disk["volumeTotalBytes"] == size, (disk, size)
    assert abs(disk["volumeFreeBytes"] - available) <= slack, (disk, available)
    assert disk["volumeUsedBytes"] == disk["volumeTotalBytes"] - disk["volumeFreeBytes"], disk
    assert disk["volumeName"] not in ("", "Macintosh HD"), disk


def counted_bytes_written():
    """What the drives themselves have counted."""
    total = 0
    for name in os.listdir("/sys/block"):
        if os.path.exists(f"/sys/block/{name}/device"):
            with open(f"/sys/block/{name}/stat") as stat:
                total += int(stat.read().split()[6]) * 512
    return total


def written_bytes_come_out_as_rates():
    size = 96 * MEBIBYTE
    with tempfile.TemporaryDirectory(dir=os.getcwd()) as folder, probing(9) as running:
        take(running)
        before = counted_bytes_written()
        done = subprocess.run(["dd", "if=/dev/zero", f"of={folder}/zeros", "bs=1M", f"count={size // MEBIBYTE}",
                               "oflag=direct"], capture_output=True, text=True, check=False)
        written = counted_bytes_written() - before
        if done.returncode != 0 or written < size // 2:
            print("skipped: nothing here can be written past the cache to a drive that counts")
            return
        # Each rate holds for the second before it. Seconds are not exact, and others write too, so the sum is
        # compared with what the drives counted, by a tenth.
        rates = [take(running)["disk"]["writeBytesPerSec"] for _ in range(4)]
        counted = counted_bytes_written() - before
    assert 0.9 * written <= sum(rates) <= 1.1 * counted, (rates, written, counted)


NETWORK = """
set -e
ip link set lo up
ip link add eth0 type veth peer name peer0
ip link set peer0 netns "$OTHER"
ip addr add 10.9.8.1/24 dev eth0
ip link set eth0 up
ip link add name br0 type bridge
ip link set br0 up
"""


def transferred_bytes_come_out_as_rates_and_count_once():
    size = 64 * MEBIBYTE
    if subprocess.run(["unshare", "-n", "true"], stderr=subprocess.DEVNULL, check=False).returncode != 0:
        print("skipped: no network namespaces here")
        return
    with contextlib.ExitStack() as stack:
        def namespace():
            holder = subprocess.Popen(["unshare", "-n", "sleep", "120"])
            stack.callback(holder.wait)
            stack.callback(holder.kill)
            here = os.readlink("/proc/self/ns/net")
            session.wait_for("a namespace", lambda: os.readlink(f"/proc/{holder.pid}/ns/net") != here)
            return str(holder.pid)

        ours, other = namespace(), namespace()
        inside = ["nsenter", "-n", "-t", ours]
        outside = ["nsenter", "-n", "-t", other]
        subprocess.run([*inside, "sh", "-c", NETWORK], env={**os.environ, "OTHER": other}, check=True)
        for command in (["addr", "add", "10.9.8.2/24", "dev", "peer0"], ["link", "set", "peer0", "up"]):
            subprocess.run([*outside, "ip", *command], check=True)

        # A port that has received something is what counts as connected.
        first = "import socket; socket.socket(socket.AF_INET, socket.SOCK_DGRAM).sendto(b'x', ('10.9.8.1', 9))"
        subprocess.run([*outside, "python3", "-c", first], check=True)
        with probing(8, *inside) as running:
            take(running)
            receiver = stack.enter_context(subprocess.Popen(
                [*outside, "python3", "-c", "import socket; s = socket.create_server(('10.9.8.2', 5001)); c = s.accept()[0]\n"
                 "while c.recv(1 << 20): pass"]))
            sender = ("import socket, time\n"
                      "for _ in range(100):\n"
                      "  try: s = socket.create_connection(('10.9.8.2', 5001)); break\n"
                      "  except OSError: time.sleep(0.05)\n"
                      f"s.sendall(bytes({size}))")
            subprocess.run([*inside, "python3", "-c", sender], check=True)
            receiver.wait(session.PATIENCE)
            networks = [take(running)["network"] for _ in range(5)]
    # Headers come on top of the bytes, at most a tenth with the smallest packets that such a link makes.
    sent = sum(network["uploadBytesPerSec"] for network in networks)
    assert 0.95 * size <= sent <= 1.1 * size, (sent, size)
    assert networks[-1]["interfaceName"] == "Ethernet", networks[-1]
    assert networks[-1]["ipAddress"] == "10.9.8.1", networks[-1]
    assert [row["id"] for row in networks[-1]["interfaces"]] == ["eth0"], networks[-1]


def processes_are_those_of_ps():
    with probing(8) as running:
        seen = [take(running) for _ in range(8)][-1]
    shown = subprocess.run(["ps", "-eo", "pid=,rss=,etimes="], capture_output=True, text=True, check=True)
    resident = {int(line.split()[0]): int(line.split()[1]) * 1024 for line in shown.stdout.splitlines()}
    listed = seen["memory"]["topProcesses"]
    assert listed, "no process has more than 1 MiB?"
    alive = [row for row in listed if row["id"] in resident]
    assert len(alive) >= len(listed) / 2, (listed, resident)
    for row in alive:
        # The list is up to 6 s old, so a process may have grown; both count resident pages.
        assert row["memoryBytes"] <= 2 * resident[row["id"]] + MEBIBYTE, (row, resident[row["id"]])
        assert row["memoryBytes"] >= resident[row["id"]] / 2 - MEBIBYTE, (row, resident[row["id"]])
    # One that has come since the list was made can't be in it.
    ages = {int(line.split()[0]): int(line.split()[2]) for line in shown.stdout.splitlines()}
    largest = max(size for pid, size in resident.items() if ages[pid] > 10)
    assert listed[0]["memoryBytes"] >= largest / 2, (listed[0], largest)


def held_at_rest(process):
    """The fewest descriptors and threads seen in half a second: a look may fall into a reading, which holds a file."""
    def held(kind):
        return len(os.listdir(f"/proc/{process.pid}/{kind}"))
    looks = []
    for _ in range(25):
        looks.append((held("fd"), held("task")))
        time.sleep(0.02)
    return min(fds for fds, _ in looks), min(threads for _, threads in looks)


def nothing_grows():
    """Neither descriptors nor threads pile up while the probe runs."""
    with probing(16) as running:
        for _ in range(5):
            take(running)
        before = held_at_rest(running)
        for _ in range(7):
            take(running)
        after = held_at_rest(running)
    assert after[0] <= before[0] and after[1] <= before[1], (before, after)


session.main([memory_is_what_free_shows, the_volume_is_what_df_shows, written_bytes_come_out_as_rates,
              transferred_bytes_come_out_as_rates_and_count_once, processes_are_those_of_ps, nothing_grows])
