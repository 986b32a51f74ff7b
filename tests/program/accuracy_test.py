"""What the program sees, compared with the output of the system's own tools in the same seconds."""

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
    """A running probe; `take` returns its objects one by one."""
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


def test_memory_is_what_free_shows():
    # The program reads every 2 s, and memory use varies in between: its figure is between the lowest and the highest of
    # those seconds, give or take what a process of the test allocates and frees.
    slack = 64 * MEBIBYTE
    used = []
    with probing(6) as running:
        for _ in range(5):
            memory = take(running)["memory"]
            info = session.meminfo()
            used.append(info["MemTotal"] - info["MemAvailable"])
    assert memory["totalBytes"] == info["MemTotal"], memory
    assert min(used) - slack <= memory["usedBytes"] <= max(used) + slack, (memory, used)
    assert memory["wiredBytes"] + memory["appBytes"] + memory["compressedBytes"] == memory["usedBytes"], memory
    assert memory["swapTotalBytes"] == info["SwapTotal"], memory
    assert abs(memory["swapUsedBytes"] - (info["SwapTotal"] - info["SwapFree"])) <= slack, (memory, info)


def test_the_volume_is_what_df_shows():
    # Other programs write meanwhile, so the free space may change a little; the size can't.
    slack = 256 * MEBIBYTE
    with probing(2) as running:
        disk = [take(running)["disk"] for _ in range(2)][-1]
    size, available = map(int, session.output("df", "-B1", "--output=size,avail", "/").split("\n")[1].split())
    assert disk["volumeTotalBytes"] == size, (disk, size)
    assert abs(disk["volumeFreeBytes"] - available) <= slack, (disk, available)
    assert disk["volumeUsedBytes"] == disk["volumeTotalBytes"] - disk["volumeFreeBytes"], disk
    assert disk["volumeName"] not in ("", "Macintosh HD"), disk


def counted_bytes_written():
    """The bytes written according to the drives' own counters."""
    fields = [session.output("cat", f"/sys/block/{name}/stat").split() for name in os.listdir("/sys/block")
              if os.path.exists(f"/sys/block/{name}/device")]
    return sum(int(stat[6]) * 512 for stat in fields)


def test_written_bytes_come_out_as_rates():
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
        # Each rate covers the second before it. Seconds are not exact and others write too, so the sum may differ from the
        # drives' count by a tenth.
        rates = [take(running)["disk"]["writeBytesPerSec"] for _ in range(4)]
        counted = counted_bytes_written() - before
    assert 0.9 * written <= sum(rates) <= 1.1 * counted, (rates, written, counted)


NETWORK = """
set -e
ip link set lo up
ip link add eth0 type veth peer name peer0
ip link set peer0 netns {other}
ip addr add 10.9.8.1/24 dev eth0
ip link set eth0 up
ip link add name br0 type bridge
ip link set br0 up
"""


def test_transferred_bytes_come_out_as_rates_and_count_once():
    size = 64 * MEBIBYTE
    if subprocess.run(["unshare", "-n", "true"], stderr=subprocess.DEVNULL, check=False).returncode != 0:
        print("skipped: no network namespaces here")
        return
    with session.Session(size=None, has_bus=False) as own:
        def namespace():
            holder = own.start("unshare", "-n", "sleep", "120")
            here = os.readlink("/proc/self/ns/net")
            session.wait_for("a namespace", lambda: os.readlink(f"/proc/{holder.pid}/ns/net") != here)
            return str(holder.pid)

        ours, other = namespace(), namespace()
        inside, outside = (["nsenter", "-n", "-t", holder] for holder in (ours, other))
        session.output(*inside, "sh", "-c", NETWORK.format(other=other))
        session.output(*outside, "sh", "-c", "ip addr add 10.9.8.2/24 dev peer0 && ip link set peer0 up")

        # A port counts as connected once it has received something.
        first = "import socket; socket.socket(socket.AF_INET, socket.SOCK_DGRAM).sendto(b'x', ('10.9.8.1', 9))"
        session.output(*outside, "python3", "-c", first)
        with probing(8, *inside) as running:
            take(running)
            receiver = own.start(*outside, "python3", "-c",
                                 "import socket; c = socket.create_server(('10.9.8.2', 5001)).accept()[0]\n"
                                 "while c.recv(1 << 20): pass")
            sender = ("import socket, time\n"
                      "for _ in range(100):\n"
                      "  try: s = socket.create_connection(('10.9.8.2', 5001)); break\n"
                      "  except OSError: time.sleep(0.05)\n"
                      f"s.sendall(bytes({size}))")
            session.output(*inside, "python3", "-c", sender)
            receiver.wait(session.TIMEOUT)
            networks = [take(running)["network"] for _ in range(5)]
    # Headers add at most a tenth, with the smallest packets that such a link sends.
    sent = sum(network["uploadBytesPerSec"] for network in networks)
    assert 0.95 * size <= sent <= 1.1 * size, (sent, size)
    assert networks[-1]["interfaceName"] == "Ethernet", networks[-1]
    assert networks[-1]["ipAddress"] == "10.9.8.1", networks[-1]
    assert [row["id"] for row in networks[-1]["interfaces"]] == ["eth0"], networks[-1]


def test_processes_are_those_of_ps():
    with probing(8) as running:
        listed = [take(running) for _ in range(8)][-1]["memory"]["topProcesses"]
    rows = [map(int, line.split()) for line in session.output("ps", "-eo", "pid=,rss=,etimes=").splitlines()]
    shown = {pid: (kibibytes * 1024, age) for pid, kibibytes, age in rows}
    assert listed, "no process has more than 1 MiB?"
    alive = [(row["memoryBytes"], shown[row["id"]][0]) for row in listed if row["id"] in shown]
    assert len(alive) >= len(listed) / 2, (listed, shown)
    for seen, resident in alive:
        # The list is up to 6 s old, so a process may have grown; both count resident pages.
        assert resident / 2 - MEBIBYTE <= seen <= 2 * resident + MEBIBYTE, (seen, resident)
    # A process that started after the list was made can't be in it.
    largest = max(resident for resident, age in shown.values() if age > 10)
    assert listed[0]["memoryBytes"] >= largest / 2, (listed[0], largest)


def held_at_rest(process):
    """The fewest descriptors and threads seen in half a second; during a reading there is one more."""
    held = {"fd": set(), "task": set()}
    for _ in range(25):
        for kind, counts in held.items():
            counts.add(len(os.listdir(f"/proc/{process.pid}/{kind}")))
        time.sleep(0.02)
    return [min(counts) for counts in held.values()]


def test_descriptors_and_threads_do_not_grow():
    with probing(16) as running:
        for _ in range(5):
            take(running)
        before = held_at_rest(running)
        for _ in range(7):
            take(running)
        after = held_at_rest(running)
    assert after[0] <= before[0] and after[1] <= before[1], (before, after)


session.main()
