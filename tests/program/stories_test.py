"""What a person lives through with the program: a first minute, a busy computer, an end and another start."""

import datetime
import json
import os
import random
import signal
import stat
import subprocess
import tempfile
import time

import session


def day_folder(own):
    return os.path.join(own.environment["XDG_DATA_HOME"], "Kestrune", "history")


def day_file(own):
    return os.path.join(day_folder(own), datetime.date.today().isoformat() + ".json")


def day(own):
    with open(day_file(own)) as file:
        return json.load(file)


def memory_in_use():
    """In GB, as the kernel tells it."""
    with open("/proc/meminfo") as file:
        fields = {line.split(":")[0]: int(line.split()[1]) for line in file}
    return (fields["MemTotal"] - fields["MemAvailable"]) / 2**20


def start_notification_daemon(own, folder):
    """A real one, which notes each title that it shows."""
    script = os.path.join(folder, "note")
    shown = os.path.join(folder, "shown")
    with open(script, "w") as file:
        file.write(f'#!/bin/sh\necho "$2" >>"{shown}"\n')
    os.chmod(script, 0o700)
    config = os.path.join(folder, "dunstrc")
    with open(config, "w") as file:
        file.write(f'[global]\n[note]\nsummary = "*"\nscript = {script}\n')
    own.start("dunst", "-conf", config, stderr=subprocess.DEVNULL)
    session.wait_for("the daemon", lambda: "org.freedesktop.Notifications" in subprocess.run(
        ["gdbus", "call", "--session", "-d", "org.freedesktop.DBus", "-o", "/", "-m",
         "org.freedesktop.DBus.ListNames"], env=own.environment, capture_output=True, text=True, check=False).stdout)
    return shown


def lines_of(path):
    if not os.path.exists(path):
        return []
    with open(path) as file:
        return file.read().splitlines()


def a_minute_of_load_leaves_one_notification_and_a_record():
    with session.Session() as own, tempfile.TemporaryDirectory() as folder:
        high_load = "High CPU Usage"
        shown = start_notification_daemon(own, folder)
        begun = datetime.datetime.now()
        running = own.start(session.program())
        session.wait_for("the window", own.main_window)
        burners = [own.start("sh", "-c", "while :; do :; done") for _ in range(os.cpu_count())]
        session.wait_for("the notification", lambda: high_load in lines_of(shown), 60)
        for burner in burners:
            own.end(burner)
        time.sleep(max(0.0, 62 - (datetime.datetime.now() - begun).total_seconds()))
        # A busy core is told of every twenty seconds, the load once in half a minute.
        titles = lines_of(shown)
        assert titles.count(high_load) == 1 and set(titles) <= {high_load, "CPU Core Saturated"}, titles
        own.xdotool("key", "--window", own.main_window(), "ctrl+q")
        assert running.wait(session.PATIENCE) == 0
        check_first_minute(own, begun)
        an_end_and_another_start_go_on(own)


def check_first_minute(own, begun):
    assert stat.S_IMODE(os.stat(day_folder(own)).st_mode) == 0o700
    assert stat.S_IMODE(os.stat(day_file(own)).st_mode) == 0o600
    record = day(own)
    epoch = datetime.datetime(2001, 1, 1, tzinfo=datetime.timezone.utc)
    midnight = datetime.datetime(begun.year, begun.month, begun.day).astimezone()
    assert record["date"] == (midnight - epoch).total_seconds()
    hours = record["hours"]
    assert hours and all(hour["cpu"]["count"] >= 1 for hour in hours), hours
    assert begun.hour in [hour["hour"] for hour in hours] or len(hours) == 1
    cpu, memory = hours[-1]["cpu"], hours[-1]["memoryGB"]
    assert 0 < cpu["sum"] / cpu["count"] <= 100 and cpu["peak"] <= 100
    assert abs(memory["sum"] / memory["count"] - memory_in_use()) < 1.5, (memory, memory_in_use())
    disk = os.statvfs("/")
    assert record["diskTotalBytes"] == disk.f_blocks * disk.f_frsize
    assert record["processes"]


def an_end_and_another_start_go_on(own):
    before = day(own)
    again = own.start(session.program())
    session.wait_for("the window", own.main_window)
    again.terminate()
    assert again.wait(2) == 0
    assert day(own) == before, "less than a minute adds nothing, and nothing is lost"


def two_starts_at_the_same_moment_make_one_program():
    with session.Session() as own:
        starts = [own.start(session.program()) for _ in range(4)]
        session.wait_for("the others to give way", lambda: sum(each.poll() is None for each in starts) == 1)
        assert sorted(each.poll() for each in starts if each.poll() is not None) == [0, 0, 0]
        session.wait_for("the window", own.main_window)


def killed_at_any_moment_the_day_stays_whole():
    chance = random.Random(7)
    with session.Session() as own:
        own.environment.pop("DISPLAY")
        os.makedirs(day_folder(own), mode=0o700)
        record = json.loads(FULL_DAY)
        record["date"] = (datetime.datetime.combine(datetime.date.today(), datetime.time()).astimezone()
                          - datetime.datetime(2001, 1, 1, tzinfo=datetime.timezone.utc)).total_seconds()
        with open(day_file(own), "w") as file:
            json.dump(record, file)
        for _ in range(100):
            running = own.start(session.program(), stderr=subprocess.DEVNULL)
            session.wait_for("the sampling", lambda: len(os.listdir(f"/proc/{running.pid}/task")) > 2)
            running.terminate()  # it writes now, and is killed at some moment of that
            time.sleep(chance.uniform(0, 0.01))
            own.end(running)
            assert day(own)["processes"] == record["processes"]
        assert len(os.listdir(day_folder(own))) < 10, os.listdir(day_folder(own))


FULL_DAY = json.dumps({
    "date": 0, "hours": [], "networkSSIDs": {}, "diskTotalBytes": 1, "diskUsedBytes": 1, "diskFreeBytes": 0,
    "uptimeDays": 0, "uptimeHours": 0, "uptimeMinutes": 0, "batteryHealthPercent": 100,
    "processes": {f"process {i}": {"name": f"process {i}", "cpuSum": i / 3, "cpuCount": i + 1, "memorySum": i * 10**7}
                  for i in range(400)}})

session.main([
    a_minute_of_load_leaves_one_notification_and_a_record,
    two_starts_at_the_same_moment_make_one_program,
    killed_at_any_moment_the_day_stays_whole,
])
