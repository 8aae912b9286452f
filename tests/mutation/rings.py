"""Builds of a tree, held against the test rings. Each worker is a thread with a copy of the tree
and a build folder of its own, so that one mistake costs one compilation, one link and one run."""

import os
import shutil
import signal
import subprocess
import tempfile
import threading
from contextlib import contextmanager, suppress
from functools import cache
from pathlib import Path

# The test programs, the fastest to find a mistake first, and where a build puts them.
FILTER = {
    "unit_test": "tests/unit_test",
    "reason_slots_test": "tests/reason_slots_test",
    "program_test": "tests/program/program_test",
}
VELMOCTL = {
    "admin_test": "tests/admin/admin_test",
    "admin_requests_test": "tests/admin/admin_requests_test",
}
COMMON = [
    "-DCMAKE_BUILD_TYPE=Debug",
    "-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST",
    "-DCMAKE_CXX_FLAGS=-Werror=return-type -D_GLIBCXX_ASSERTIONS",
    "-DCMAKE_CXX_COMPILER_LAUNCHER=",  # no mistake is compiled twice: a cache only costs time
]
PLAIN = (*COMMON, "-DCMAKE_CXX_FLAGS_DEBUG=-O0")
# Sees what is wrong in memory only. It reserves far more memory than it uses.
SANITIZED = (
    *COMMON,
    "-DCMAKE_CXX_FLAGS_DEBUG=-O1 -fsanitize=address,undefined -fno-sanitize-recover=all",
    "-DCMAKE_EXE_LINKER_FLAGS=-static-libasan -static-libubsan",
)

BUILD_LIMIT = 1800  # seconds
TEST_LIMIT = 60  # seconds for one test program; a mistake that makes it take longer is found
CPU_LIMIT = 10  # of processor time, as a loop without end takes it
MEMORY_LIMIT = 4 << 30
FILE_LIMIT = 256 << 20

# A mistake may well fill the memory or the disk.
BOUND = ["prlimit", f"--fsize={FILE_LIMIT}", "--core=0"]
BOUND_MEMORY = [f"--as={MEMORY_LIMIT}", f"--cpu={CPU_LIMIT}"]

KILLED, SURVIVED, NOT_COMPILED = "killed", "survived", "not compiled"

lock = threading.Lock()  # over the two below
running = set()
interrupted = False


class Interrupted(Exception):
    """The trial is over; nothing more is started."""


def end(child):
    """Ends a command: politely, so that ninja ends its compilers, then for good."""
    for ending in (signal.SIGTERM, signal.SIGKILL):
        if child.poll() is None:
            os.killpg(child.pid, ending)
            with suppress(subprocess.TimeoutExpired):
                child.wait(5)


def interrupt():
    """Ends what runs, and lets nothing more start."""
    global interrupted
    with lock:
        interrupted = True
        for child in running:
            with suppress(ProcessLookupError):
                os.killpg(child.pid, signal.SIGTERM)


def start(command, errors):
    quiet = subprocess.DEVNULL
    with lock:
        if interrupted:
            raise Interrupted
        child = subprocess.Popen(command, stdin=quiet, stdout=quiet, stderr=errors,
                                 start_new_session=True)
        running.add(child)
        return child


def succeeds(command, seconds, errors=subprocess.DEVNULL):
    """Runs a command, and ends it when its time is up or the trial is interrupted."""
    child = start(command, errors)
    try:
        return child.wait(seconds) == 0
    except subprocess.TimeoutExpired:
        return False
    finally:
        end(child)
        with lock:
            running.remove(child)


class RedTree(Exception):
    """There is nothing to be learnt from mistakes in a tree that is red without them."""


class Build:
    def __init__(self, tree, options, rings):
        self.tree = tree
        self.rings = rings
        self.directory = tree / "build"
        self.bound = BOUND if options == SANITIZED else [*BOUND, *BOUND_MEMORY]
        configure = ["cmake", "-G", "Ninja", "-S", tree, "-B", self.directory, *options]
        if not succeeds(configure, BUILD_LIMIT, errors=None):
            raise RedTree("CMake does not take the tree")

    def verdict(self):
        """What the rings say of the tree as it is now; the first that is red ends it."""
        for target, path in self.rings.items():
            if not succeeds(["ninja", "-C", self.directory, "-j1", target], BUILD_LIMIT):
                return NOT_COMPILED
            test = [*self.bound, self.directory / path, "--gtest_brief=1", "--gtest_fail_fast"]
            if not succeeds(test, TEST_LIMIT):
                return KILLED
        return SURVIVED

    @contextmanager
    def made(self, mistake):
        path = self.tree / mistake.file
        original = path.read_text()
        path.write_text(mistake.text)
        yield
        path.write_text(original)


@cache
def own_build(folder, options, product, _worker):
    """The build of a worker, in a copy of the tree that no other one touches."""
    tree = Path(tempfile.mkdtemp(prefix=f"{product}-", dir=folder)) / "tree"
    shutil.copytree(folder / "tree", tree)
    build = Build(tree, options, VELMOCTL if product == "velmoctl" else FILTER)
    if build.verdict() != SURVIVED:
        raise RedTree("the tree does not build, or its tests are red, without a mistake")
    return build


def verdict_with(folder, options, mistake):
    product = "velmoctl" if mistake.file.startswith("admin/") else "filter"
    build = own_build(folder, options, product, threading.get_ident())
    with build.made(mistake):
        return build.verdict()
