"""What the program leaves on the disk when it ends, whatever ends it."""

import json
import os
import signal
import socket
import stat
import subprocess
import tempfile
import time

import session

KEYS = {"date", "hours", "processes", "networkSSIDs", "diskTotalBytes", "diskUsedBytes", "diskFreeBytes", "uptimeDays",
        "uptimeHours", "uptimeMinutes", "batteryHealthPercent"}


class Run:
    """The program without a display, in folders of its own."""

    def __init__(self, folder, **variables):
        self.data = os.path.join(folder, "data")
        environment = {name: value for name, value in os.environ.items()
                       if name not in ("DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "QT_QPA_PLATFORM")}
        environment.update(XDG_RUNTIME_DIR=folder, XDG_CONFIG_HOME=folder, XDG_DATA_HOME=self.data, TZ="UTC",
                           **variables)
        self.process = subprocess.Popen([session.program()], env=environment, stdout=subprocess.PIPE,
                                        stderr=subprocess.PIPE, text=True)
        assert "no display" in self.process.stderr.readline()
        session.wait_for("the sampling", lambda: len(os.listdir(f"/proc/{self.process.pid}/task")) > 2)

    def day_file(self):
        today = time.strftime("%Y-%m-%d", time.gmtime())
        return os.path.join(self.data, "Kestrune", "history", today + ".json")

    def end(self, *signals):
        begun = time.monotonic()
        for number in signals:
            self.process.send_signal(number)
        session.ends_well(self.process)
        assert time.monotonic() - begun < 2, "it must end at once"
        return self.process.stdout.read()


def every_signal_saves_the_day_once():
    for signals in ((signal.SIGTERM,), (signal.SIGINT,), (signal.SIGHUP,), (signal.SIGTERM, signal.SIGTERM, signal.SIGINT)):
        with tempfile.TemporaryDirectory() as folder:
            run = Run(folder)
            assert not os.path.exists(run.day_file()), "there is nothing to keep yet"
            assert run.end(*signals) == ""
            with open(run.day_file()) as day:
                text = day.read()
            assert KEYS == set(json.loads(text)), text
            assert "\n" not in text
            assert stat.S_IMODE(os.stat(run.day_file()).st_mode) == 0o600
            assert stat.S_IMODE(os.stat(os.path.dirname(run.day_file())).st_mode) == 0o700
            assert os.listdir(os.path.dirname(run.day_file())) == [os.path.basename(run.day_file())]


def a_day_goes_on_where_it_was():
    with tempfile.TemporaryDirectory() as folder:
        run = Run(folder)
        run.end(signal.SIGTERM)
        with open(run.day_file()) as day:
            record = json.load(day)
        bucket = {"sum": 34.5, "count": 17, "peak": 9007199254740993.0, "peakTime": 800000000.123}
        record["hours"] = [{"hour": 0, "cpu": bucket, "memoryGB": bucket, "batteryPercent": bucket, "networkUpBytes": 0.1,
                            "networkDownBytes": 2, "diskReadBytes": 3, "diskWriteBytes": 4}]
        record["processes"] = {"größe": {"name": "größe", "cpuSum": 1.5, "cpuCount": 1, "memorySum": 2**64 - 1}}
        with open(run.day_file(), "w") as day:
            json.dump(record, day)
        run = Run(folder)
        run.end(signal.SIGTERM)
        with open(run.day_file()) as day:
            again = json.load(day)
        assert again == record, (again, record)


def a_folder_that_cannot_be_written_costs_one_line():
    with tempfile.TemporaryDirectory() as folder:
        with open(os.path.join(folder, "data"), "w"):
            pass
        lines = Run(folder).end(signal.SIGTERM).splitlines()
        assert len(lines) == 1 and lines[0].startswith("[HistoryRecorder] save failed: "), lines


def a_sound_server_that_hangs_does_not_delay_the_end():
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "sound")
        with socket.socket(socket.AF_UNIX) as silent:
            silent.bind(path)
            silent.listen()
            run = Run(folder, PULSE_SERVER="unix:" + path)
            silent.accept()
            run.end(signal.SIGTERM)
            assert os.path.exists(run.day_file())


session.main([every_signal_saves_the_day_once, a_day_goes_on_where_it_was,
              a_folder_that_cannot_be_written_costs_one_line, a_sound_server_that_hangs_does_not_delay_the_end])
