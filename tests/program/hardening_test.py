"""Whether the program was built so that a flaw in it is hard to use."""

import os
import re
import subprocess

import session


def readelf(*options):
    return subprocess.run(["readelf", "-W", *options, session.program()], capture_output=True, text=True, check=True).stdout


def its_place_in_memory_can_be_chosen_at_each_start():
    assert re.search(r"Type:\s+DYN", readelf("-h"))
    assert re.search(r"FLAGS_1.*\bPIE\b", readelf("-d"))


def its_tables_cannot_be_written_to():
    assert re.search(r"GNU_RELRO", readelf("-l"))
    dynamic = readelf("-d")
    assert re.search(r"\(FLAGS\).*BIND_NOW", dynamic) and re.search(r"FLAGS_1.*\bNOW\b", dynamic), dynamic
    assert "TEXTREL" not in dynamic


def nothing_that_can_be_written_can_be_run():
    segments = re.findall(r"^ +(GNU_STACK|LOAD) +(?:0x\w+ +){5}([RWE ]{3})", readelf("-l"), re.MULTILINE)
    assert [name for name, _ in segments].count("GNU_STACK") == 1 and len(segments) > 2, segments
    assert all(not ("W" in rights and "E" in rights) for _, rights in segments), segments
    assert dict(segments)["GNU_STACK"] == "RW ", segments


def the_checks_of_compiler_and_libraries_are_in_it():
    imported = set(re.findall(r"UND (\w+)", readelf("--dyn-syms")))
    assert "__stack_chk_fail" in imported, "a smashed stack is noticed"
    assert imported & {"__memcpy_chk", "__read_chk", "__snprintf_chk"}, "so is a buffer that is too small"
    assert any("glibcxx_assert_fail" in name for name in imported), "so is an index out of its range"


def calls_by_pointer_arrive_at_functions_only():
    if os.uname().machine == "x86_64":
        with open(session.program(), "rb") as program:
            landings = program.read().count(b"\xf3\x0f\x1e\xfa")
        assert landings > 1000, landings


def it_looks_for_libraries_where_the_system_has_them():
    assert not re.search(r"\((RPATH|RUNPATH)\)", readelf("-d"))


session.main([
    its_place_in_memory_can_be_chosen_at_each_start,
    its_tables_cannot_be_written_to,
    nothing_that_can_be_written_can_be_run,
    the_checks_of_compiler_and_libraries_are_in_it,
    calls_by_pointer_arrive_at_functions_only,
    it_looks_for_libraries_where_the_system_has_them,
])
