"""Day files as the program leaves them: `days.py FOLDER COUNT` writes some below a data folder."""

import datetime
import json
import math
import os
import random
import sys

EPOCH = datetime.datetime(2001, 1, 1, tzinfo=datetime.timezone.utc)
NAMES = ["firefox", "code", "gnome-shell", "Xorg", "clang", "thunderbird", "indexer", "python3"]


def stat(values, when):
    peak = max(values)
    return {"sum": sum(values), "count": len(values), "peak": peak, "peakTime": when}


def hour_of(chance, hour, begin):
    busy = 12 + 30 * max(0, math.sin((hour - 6) / 24 * 2 * math.pi)) + chance.uniform(0, 12)
    minutes = [min(100, max(1, chance.gauss(busy, 9))) for _ in range(60)]
    when = begin + hour * 3600 + 1800
    return {"hour": hour, "cpu": stat(minutes, when), "memoryGB": stat([5 + m / 14 for m in minutes], when),
            "batteryPercent": stat([max(20, 96 - hour * 3) for _ in minutes], when),
            "networkUpBytes": chance.uniform(1e6, 2.2e7), "networkDownBytes": chance.uniform(1e7, 2.4e8),
            "diskReadBytes": chance.uniform(1e7, 6e8), "diskWriteBytes": chance.uniform(1e7, 4e8)}


def midnight(date):
    """The start of a local day as the program counts time."""
    return (datetime.datetime(date.year, date.month, date.day).astimezone() - EPOCH).total_seconds()


def day(date):
    """The record of a local day, with figures that depend only on the date."""
    chance = random.Random(date.isoformat())
    begin = midnight(date)
    hours = [hour_of(chance, hour, begin) for hour in range(7, 24)]
    up, down = (sum(hour[key] for hour in hours) for key in ("networkUpBytes", "networkDownBytes"))
    processes = {name: {"name": name, "cpuSum": chance.uniform(50, 9000), "cpuCount": chance.randint(30, 900),
                        "memorySum": chance.randint(30, 900) * chance.randint(10**8, 10**9)} for name in NAMES}
    return {"date": begin, "hours": hours, "processes": processes,
            "networkSSIDs": {"Ethernet": {"uploadBytes": up * 0.7, "downloadBytes": down * 0.6},
                             "Home": {"uploadBytes": up * 0.3, "downloadBytes": down * 0.4}},
            "diskTotalBytes": 494 * 10**9, "diskUsedBytes": 318 * 10**9, "diskFreeBytes": 176 * 10**9,
            "uptimeDays": 3, "uptimeHours": 4, "uptimeMinutes": 12,
            "batteryHealthPercent": 91 + (date.toordinal() // 3) % 3}


def write_day(data_folder, date):
    """Writes the file of that day below a data folder."""
    folder = os.path.join(data_folder, "Kestrune", "history")
    os.makedirs(folder, mode=0o700, exist_ok=True)
    with open(os.path.join(folder, date.isoformat() + ".json"), "w") as file:
        json.dump(day(date), file)


def write_days(data_folder, count, gaps=()):
    """Writes the files of the `count` days before today, except those whose distance in days is in `gaps`."""
    for ago in range(1, count + 1):
        if ago not in gaps:
            write_day(data_folder, datetime.date.today() - datetime.timedelta(days=ago))


if __name__ == "__main__":
    write_days(sys.argv[1], int(sys.argv[2]), gaps=(11, 12, 40))
