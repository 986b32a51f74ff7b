"""What a person lives through with the program: a first minute, a busy computer, an end and another start."""

import datetime
import json
import os
import random
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
    session.wait_for("the daemon", lambda: "org.freedesktop.Notifications" in own.call(
        "org.freedesktop.DBus", "/", "org.freedesktop.DBus.ListNames"))
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
        running = own.open_program()
        begun = datetime.datetime.now()
        burners = [own.start("sh", "-c", "while :; do :; done") for _ in range(os.cpu_count())]
        session.wait_for("the notification", lambda: high_load in lines_of(shown), 60)
        for burner in burners:
            own.end(burner)
        # A computer that has nothing to do may use no tick of a second.
        own.start("sh", "-c", "while :; do timeout 0.3 sh -c 'while :; do :; done'; sleep 0.7; done")
        time.sleep(max(0.0, 61 - (datetime.datetime.now() - begun).total_seconds()))
        # A busy core is told of every twenty seconds, the load once in half a minute.
        titles = lines_of(shown)
        assert titles.count(high_load) == 1 and set(titles) <= {high_load, "CPU Core Saturated"}, titles
        own.press_to_close(own.main_window(), "ctrl+q")
        session.ends_well(running)
        check_first_minute(own, begun)
        an_end_and_another_start_go_on(own)


def check_first_minute(own, begun):
    modes = [stat.S_IMODE(os.stat(path).st_mode) for path in (day_folder(own), day_file(own))]
    assert modes == [0o700, 0o600], modes
    record = day(own)
    epoch = datetime.datetime(2001, 1, 1, tzinfo=datetime.timezone.utc)
    midnight = datetime.datetime(begun.year, begun.month, begun.day).astimezone()
    assert record["date"] == (midnight - epoch).total_seconds(), record["date"]
    hours = record["hours"]
    assert len(hours) == 1 and hours[0]["cpu"]["count"] == 1, hours
    cpu, memory = hours[0]["cpu"], hours[0]["memoryGB"]
    assert 0 < cpu["sum"] / cpu["count"] <= 100 and cpu["peak"] <= 100, cpu
    assert abs(memory["sum"] / memory["count"] - memory_in_use()) < 1.5, (memory, memory_in_use())
    disk = os.statvfs("/")
    assert record["diskTotalBytes"] == disk.f_blocks * disk.f_frsize, (record["diskTotalBytes"], disk)
    assert record["processes"], record


def an_end_and_another_start_go_on(own):
    before = day(own)
    again = own.open_program()
    again.terminate()
    session.ends_well(again, 2)
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
