"""Builds of a tree, held against the test rings."""

import os
import resource
import signal
import subprocess
from contextlib import suppress

# The test programs, the fastest to find a mistake first, and where a build puts them.
RINGS = {
    "unit_test": "tests/unit_test",
    "reason_slots_test": "tests/reason_slots_test",
    "program_test": "tests/program/program_test",
}
COMMON = [
    "-DCMAKE_BUILD_TYPE=Debug",
    "-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST",
    "-DCMAKE_CXX_FLAGS=-Werror=return-type",
    "-DVELMO_SIMULATOR=OFF",
]
PLAIN = [*COMMON, "-DCMAKE_CXX_FLAGS_DEBUG=-O0"]
# Sees what is wrong in memory only. It reserves far more memory than it uses.
SANITIZED = [
    *COMMON,
    "-DCMAKE_CXX_FLAGS_DEBUG=-O1 -fsanitize=address,undefined -fno-sanitize-recover=all",
    "-DCMAKE_EXE_LINKER_FLAGS=-static-libasan -static-libubsan",
]

BUILD_LIMIT = 1800  # seconds
TEST_LIMIT = 60  # seconds for one test program; a mistake that makes it take longer is found
MEMORY_LIMIT = 4 << 30
FILE_LIMIT = 256 << 20

KILLED, SURVIVED, NOT_COMPILED = "killed", "survived", "not compiled"


def end(child):
    """Ends a command: politely, so that ninja ends its compilers, then for good."""
    for ending in (signal.SIGTERM, signal.SIGKILL):
        if child.poll() is None:
            os.killpg(child.pid, ending)
            with suppress(subprocess.TimeoutExpired):
                child.wait(5)


def succeeds(command, seconds, prepare=None):
    """Runs a command, and ends it when its time is up or the trial is interrupted."""
    quiet = subprocess.DEVNULL
    child = subprocess.Popen(command, stdin=quiet, stdout=quiet, stderr=quiet,
                             start_new_session=True, preexec_fn=prepare)
    try:
        return child.wait(seconds) == 0
    except subprocess.TimeoutExpired:
        return False
    finally:
        end(child)


class Build:
    def __init__(self, tree, name, options):
        self.directory = tree / name
        self.reserves_memory = options is SANITIZED
        subprocess.run(["cmake", "-G", "Ninja", "-S", tree, "-B", self.directory, *options],
                       check=True, stdout=subprocess.DEVNULL)

    def bound(self):
        """A mistake may well fill the memory or the disk."""
        resource.setrlimit(resource.RLIMIT_FSIZE, (FILE_LIMIT, FILE_LIMIT))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        if not self.reserves_memory:
            resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT))

    def verdict(self):
        """What the rings say of the tree as it is now; the first that is red ends it."""
        for target, path in RINGS.items():
            if not succeeds(["ninja", "-C", self.directory, "-j2", target], BUILD_LIMIT):
                return NOT_COMPILED
            test = [self.directory / path, "--gtest_brief=1", "--gtest_fail_fast"]
            if not succeeds(test, TEST_LIMIT, self.bound):
                return KILLED
        return SURVIVED
