"""Prints what the whole program costs on a display of its own: CPU, memory, start."""

import os
import statistics
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "tests", "program"))
import measured  # noqa: E402
import session  # noqa: E402

SECONDS = int(os.environ.get("KESTRUNE_BENCH_SECONDS", "30"))
STARTS = 15


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


def start_sound_server(own):
    own.start("pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
              "--load=module-native-protocol-unix", "--load=module-null-sink", stderr=subprocess.DEVNULL)
    session.wait_for("the sound server", lambda: own.run("pactl", "info").returncode == 0)


def start_playing(own):
    return own.start("pacat", "--playback", "--raw", "/dev/zero", stderr=subprocess.DEVNULL)


def main(build):
    with session.Session() as own:
        measured.fill(own)
        times = start_times(build)
        report(f"start to first painted frame, median of {STARTS}", f"{statistics.median(times):.0f} ms", "≤ 120 ms")
        report("… slowest", f"{max(times):.0f} ms", "")

        start_sound_server(own)
        running = own.start(os.path.join(build, "kestrune"))
        window = session.wait_for("the window", own.main_window)

        def report_load(what, budget):
            report(f"CPU, {what}", f"{measured.load([running.pid], SECONDS):.2f} %", budget)

        time.sleep(10)
        report_load("overview visible", "≤ 0.5 %")
        player = start_playing(own)
        time.sleep(8)
        report_load("… while something plays", "≤ 0.5 %")
        session.end(player)
        own.press(window, "ctrl+2")
        time.sleep(8)
        report_load("CPU page visible", "≤ 0.5 %")
        pss, dirty = measured.memory(running.pid)
        report("PSS", f"{pss:.1f} MB", "≤ 42 MB")
        report("… private dirty", f"{dirty:.1f} MB", "")
        own.close_main_window()
        time.sleep(2)
        report_load("window hidden", "≤ 0.2 %")


main(sys.argv[1])
