"""The program without a display, and what it leaves on disk when it ends."""

import json
import os
import signal
import socket
import subprocess

import days
import session

KEYS = set(days.day(days.datetime.date.today()))


def thread_names(process):
    return session.output("ps", "-L", "-o", "comm=", "-p", str(process.pid)).split()


def start(own):
    """Starts the program and waits until it samples."""
    process = own.start(session.program(), stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    assert process.stderr.readline() == "kestrune: no display; running without a window\n"
    session.wait_for("the sampling", lambda: len(thread_names(process)) > 2)
    return process


def run(own, *signals):
    """Ends a run with the signals and returns its output."""
    process = start(own)
    for number in signals:
        process.send_signal(number)
    session.ends_well(process, 2)
    assert process.stderr.read() == ""
    return process.stdout.read()


def headless():
    return session.Session(size=None, has_bus=False)


def test_every_signal_saves_the_day_once():
    for signals in ((signal.SIGTERM,), (signal.SIGINT,), (signal.SIGHUP,), (signal.SIGTERM, signal.SIGTERM, signal.SIGINT)):
        with headless() as own:
            assert run(own, *signals) == ""
            with open(own.day_file()) as file:
                text = file.read()
            assert KEYS == set(json.loads(text)), text
            assert "\n" not in text
            assert os.listdir(os.path.dirname(own.day_file())) == [os.path.basename(own.day_file())]


def test_a_restart_continues_the_day():
    with headless() as own:
        run(own, signal.SIGTERM)
        record = own.day()
        bucket = {"sum": 34.5, "count": 17, "peak": 9007199254740993.0, "peakTime": 800000000.123}
        record["hours"] = [{"hour": 0, "cpu": bucket, "memoryGB": bucket, "batteryPercent": bucket, "networkUpBytes": 0.1,
                            "networkDownBytes": 2, "diskReadBytes": 3, "diskWriteBytes": 4}]
        record["processes"] = {"größe": {"name": "größe", "cpuSum": 1.5, "cpuCount": 1, "memorySum": 2**64 - 1}}
        with open(own.day_file(), "w") as file:
            json.dump(record, file)
        run(own, signal.SIGTERM)
        assert own.day() == record, (own.day(), record)


def test_an_unwritable_folder_costs_one_line():
    with headless() as own:
        with open(os.path.join(own.environment["XDG_CACHE_HOME"], "file"), "w") as file:
            own.environment["XDG_DATA_HOME"] = file.name
        lines = run(own, signal.SIGTERM).splitlines()
        assert len(lines) == 1 and lines[0].startswith("[HistoryRecorder] save failed: "), lines


def test_a_hanging_sound_server_delays_neither_sampling_nor_the_end():
    with headless() as own, socket.socket(socket.AF_UNIX) as silent:
        path = os.path.join(own.environment["XDG_CACHE_HOME"], "sound")
        silent.bind(path)
        silent.listen()
        own.environment["PULSE_SERVER"] = "unix:" + path
        process = start(own)
        silent.accept()
        session.wait_for("the process walk", lambda: "kestrune-scan" in thread_names(process))
        process.terminate()
        session.ends_well(process, 2)
        assert os.path.exists(own.day_file())


session.main()
