"""Whether the program was built so that a flaw in it is hard to exploit."""

import os
import re

import session


def readelf(*options):
    return session.output("readelf", "-W", *options, session.program())


def test_is_position_independent_and_searches_no_library_path():
    dynamic = readelf("-d")
    assert re.search(r"Type:\s+DYN", readelf("-h"))
    assert re.search(r"FLAGS_1.*\bPIE\b", dynamic)
    assert not re.search(r"\((RPATH|RUNPATH)\)", dynamic)


def test_relocations_are_read_only():
    assert re.search(r"GNU_RELRO", readelf("-l"))
    dynamic = readelf("-d")
    assert re.search(r"\(FLAGS\).*BIND_NOW", dynamic) and re.search(r"FLAGS_1.*\bNOW\b", dynamic), dynamic
    assert "TEXTREL" not in dynamic


def test_no_memory_is_writable_and_executable():
    segments = re.findall(r"^ +(GNU_STACK|LOAD) +(?:0x\w+ +){5}([RWE ]{3})", readelf("-l"), re.MULTILINE)
    assert [name for name, _ in segments].count("GNU_STACK") == 1 and len(segments) > 2, segments
    assert all(not ("W" in rights and "E" in rights) for _, rights in segments), segments
    assert dict(segments)["GNU_STACK"] == "RW ", segments


def test_contains_the_checks_of_compiler_and_libraries():
    imported = set(re.findall(r"UND (\w+)", readelf("--dyn-syms")))
    assert "__stack_chk_fail" in imported, "stack protector"
    assert imported & {"__memcpy_chk", "__read_chk", "__snprintf_chk"}, "buffer sizes"
    assert any("glibcxx_assert_fail" in name for name in imported), "indices out of range"


def test_indirect_calls_reach_only_functions():
    if os.uname().machine == "x86_64":
        with open(session.program(), "rb") as program:
            landings = program.read().count(b"\xf3\x0f\x1e\xfa")
        assert landings > 1000, landings


session.main()
