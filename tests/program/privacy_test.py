"""What the program asks of the kernel while all its pages are looked at: nothing of it leaves the machine."""

import os
import re
import time

import session

# The desktop's own sockets, and the kernel's for facts about network interfaces.
LOCAL_FAMILIES = {"AF_UNIX", "AF_NETLINK"}


def calls_of_a_session(own):
    """The system calls of the whole program, one a line, from its start to its end."""
    trace = os.path.join(own.environment["XDG_CACHE_HOME"], "calls")
    watch = own.start("strace", "-f", "-qq", "-o", trace, "-e",
                      "trace=socket,connect,bind,listen,sendto,execve,openat,open,creat,mkdir,mkdirat", session.program())
    window = session.wait_for("the window", own.main_window, 60)
    for digit in "1234567890":
        title = own.xdotool("getwindowname", window)
        own.press(window, "ctrl+" + digit)
        session.wait_for("another page", lambda: digit == "1" or own.xdotool("getwindowname", window) != title)
        time.sleep(0.3)  # the page is painted and asks for what it shows
    own.press_to_close(window, "ctrl+q")
    session.ends_well(watch)
    with open(trace) as file:
        return [line.split(maxsplit=1)[1] for line in file if " " in line]


def no_socket_reaches_beyond_the_machine():
    families = {found[1] for found in (re.match(r"socket\((\w+)", call) for call in calls) if found}
    assert "AF_UNIX" in families and families <= LOCAL_FAMILIES, families
    assert not [call for call in calls if re.match(r"(connect|bind|sendto)\(.*AF_INET", call)]


def nobody_is_listened_to():
    assert not [call for call in calls if call.startswith("listen(")]


def no_other_program_is_started():
    started = [call for call in calls if call.startswith("execve(")]
    assert len(started) == 1 and session.program() in started[0], started


def it_writes_in_its_own_folders_only_and_for_its_user_only():
    own_folders = [under_test.environment["XDG_" + name] for name in
                   ("CONFIG_HOME", "DATA_HOME", "CACHE_HOME", "RUNTIME_DIR")]
    for call in calls:
        found = re.match(r'(?:openat|open|creat)\((?:AT_FDCWD, )?"([^"]+)", \S*O_(?:WRONLY|RDWR|CREAT)', call)
        if found and "ENOENT" not in call and not found[1].startswith(("/dev/", "/proc/self/")):
            assert any(found[1].startswith(folder + "/") for folder in own_folders), call
    history = os.path.join(under_test.environment["XDG_DATA_HOME"], "Kestrune")
    for folder, _, files in os.walk(history):
        for path in [folder] + [os.path.join(folder, name) for name in files]:
            assert os.stat(path).st_mode & 0o077 == 0, path
    assert os.path.exists(history)


with session.Session() as under_test:
    calls = calls_of_a_session(under_test)
    session.main([
        no_socket_reaches_beyond_the_machine,
        nobody_is_listened_to,
        no_other_program_is_started,
        it_writes_in_its_own_folders_only_and_for_its_user_only,
    ])
