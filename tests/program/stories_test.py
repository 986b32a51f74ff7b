"""Longer stretches of use: a first minute on a busy computer, several starts at once, kills while it saves."""

import datetime
import os
import random
import subprocess
import tempfile
import time

import days
import session


def start_notification_daemon(own, folder):
    """A real daemon, which appends the title of each notification to a file."""
    script, shown, config = (os.path.join(folder, name) for name in ("note", "shown", "dunstrc"))
    with open(script, "w") as file:
        file.write(f'#!/bin/sh\necho "$2" >>"{shown}"\n')
    os.chmod(script, 0o700)
    os.mknod(shown)
    with open(config, "w") as file:
        file.write(f'[global]\n[note]\nsummary = "*"\nscript = {script}\n')
    own.start("dunst", "-conf", config, stderr=subprocess.DEVNULL)
    own.wait_for_name("org.freedesktop.Notifications")
    return shown


def lines_of(path):
    with open(path) as file:
        return file.read().splitlines()


def test_a_minute_of_load_leaves_one_notification_and_a_record():
    with session.Session() as own, tempfile.TemporaryDirectory() as folder:
        high_load = "High CPU Usage"
        shown = start_notification_daemon(own, folder)
        running = own.open_program()
        begun = datetime.datetime.now()
        burners = [own.start("sh", "-c", "while :; do :; done") for _ in range(os.cpu_count())]
        session.wait_for("the notification", lambda: high_load in lines_of(shown), 60)
        for burner in burners:
            session.end(burner)
        # An idle computer may use no tick in a second.
        own.start("sh", "-c", "while :; do timeout 0.3 sh -c 'while :; do :; done'; sleep 0.7; done")
        time.sleep(max(0.0, 61 - (datetime.datetime.now() - begun).total_seconds()))
        # A busy core is reported every twenty seconds, the load once in half a minute.
        titles = lines_of(shown)
        assert titles.count(high_load) == 1 and set(titles) <= {high_load, "CPU Core Saturated"}, titles
        own.press_to_close(own.main_window(), "ctrl+q")
        session.ends_well(running)
        check_first_minute(own, begun)


def check_first_minute(own, begun):
    record = own.day()
    assert record["date"] == days.midnight(begun.date()), record["date"]
    hours = record["hours"]
    assert len(hours) == 1 and hours[0]["cpu"]["count"] == 1, hours
    cpu, memory, now = hours[0]["cpu"], hours[0]["memoryGB"], session.meminfo()
    assert 0 < cpu["sum"] / cpu["count"] <= 100 and cpu["peak"] <= 100, cpu
    assert abs(memory["sum"] / memory["count"] - (now["MemTotal"] - now["MemAvailable"]) / 2**30) < 1.5, (memory, now)
    disk = os.statvfs("/")
    assert record["diskTotalBytes"] == disk.f_blocks * disk.f_frsize, (record["diskTotalBytes"], disk)
    assert record["processes"], record


def test_several_starts_at_once_leave_one_program():
    with session.Session() as own:
        starts = [own.start(session.program()) for _ in range(4)]
        session.wait_for("the others to give way", lambda: sum(each.poll() is None for each in starts) == 1)
        assert sorted(each.poll() for each in starts if each.poll() is not None) == [0, 0, 0]
        session.wait_for("the window", own.main_window)


def test_killed_while_saving_the_day_stays_whole():
    chance = random.Random(7)
    with session.Session(size=None) as own:
        days.write_day(own.environment["XDG_DATA_HOME"], datetime.date.today())
        record = own.day()
        for _ in range(5):
            running = own.start(session.program(), stderr=subprocess.DEVNULL)
            session.wait_for("the sampling", lambda: len(os.listdir(f"/proc/{running.pid}/task")) > 2)
            running.terminate()  # starts to save, and is killed meanwhile
            time.sleep(chance.uniform(0, 0.01))
            session.end(running)
            assert own.day()["processes"] == record["processes"]
        assert len(os.listdir(os.path.dirname(own.day_file()))) < 7


session.main()
