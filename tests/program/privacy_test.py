"""What the program asks of the kernel while all its pages are visited: nothing leaves the machine."""

import os
import re
import time

import session

# The desktop's own sockets, and the kernel's for facts about network interfaces.
LOCAL_FAMILIES = {"AF_UNIX", "AF_NETLINK"}
PAGES = ("Overview", "CPU", "Memory", "Disk", "Network", "Power", "Audio", "Folders", "Stats", "Settings")


def calls_of_a_session(own):
    """The system calls of the whole program, one a line, from its start to its end."""
    trace = os.path.join(own.environment["XDG_CACHE_HOME"], "calls")
    watch = own.start("strace", "-f", "-qq", "-o", trace, "-e",
                      "trace=socket,connect,bind,listen,sendto,execve,openat,open,creat,mkdir,mkdirat", session.program())
    window = session.wait_for("the window", own.main_window, 60)
    for digit, title in zip("1234567890", PAGES):
        own.press(window, "ctrl+" + digit)
        session.wait_for(title, lambda: own.title(window) == title)
        time.sleep(0.3)  # the page is painted and reads what it shows
    own.press_to_close(window, "ctrl+q")
    session.ends_well(watch)
    with open(trace) as file:
        return [line.split(maxsplit=1)[1] for line in file if " " in line]


def test_no_socket_reaches_beyond_the_machine_or_listens():
    families = {found[1] for found in (re.match(r"socket\((\w+)", call) for call in calls) if found}
    assert "AF_UNIX" in families and families <= LOCAL_FAMILIES, families
    assert not [call for call in calls if re.match(r"(connect|bind|sendto)\(.*AF_INET", call)]
    assert not [call for call in calls if call.startswith("listen(")]


def test_no_other_program_is_started():
    started = [call for call in calls if call.startswith("execve(")]
    assert len(started) == 1 and session.program() in started[0], started


def test_it_writes_only_in_its_folders_and_only_for_its_user():
    folders = [own.environment["XDG_" + name] for name in ("CONFIG_HOME", "DATA_HOME", "CACHE_HOME", "RUNTIME_DIR")]
    for call in calls:
        found = re.match(r'(?:openat|open|creat)\((?:AT_FDCWD, )?"([^"]+)", \S*O_(?:WRONLY|RDWR|CREAT)', call)
        if found and "ENOENT" not in call and not found[1].startswith(("/dev/", "/proc/self/")):
            assert any(found[1].startswith(folder + "/") for folder in folders), call
    history = os.path.join(own.environment["XDG_DATA_HOME"], "Kestrune")
    for folder, _, files in os.walk(history):
        for path in [folder] + [os.path.join(folder, name) for name in files]:
            assert os.stat(path).st_mode & 0o077 == 0, path
    assert os.path.exists(history)


with session.Session() as own:
    calls = calls_of_a_session(own)
    session.main()
