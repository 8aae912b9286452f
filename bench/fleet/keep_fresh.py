"""velmoctl keep-fresh for all queues in one process: what it takes, and how fast it has all asked."""
import dataclasses
import os
import select
import subprocess
import time

import process

PATIENCE = 60  # seconds, and one more for each queue


@dataclasses.dataclass
class Fresh:
    """From its start until it has had every printer asked, or has run out of time."""
    seconds: float
    asks: int
    cpu: float  # seconds
    memory: float  # megabytes


def keep_fresh(velmoctl, fleet):
    """Runs it until it has had every printer asked."""
    start = time.monotonic()
    keeper = subprocess.Popen([velmoctl, "keep-fresh", *fleet.names], stderr=subprocess.PIPE)
    try:
        asks = _count_asks(keeper.stderr.fileno(), len(fleet.names),
                           start + PATIENCE + len(fleet.names))
        cpu, (memory, _) = process.spent(keeper.pid).cpu, process.memory(keeper.pid)
        return Fresh(time.monotonic() - start, asks, cpu, memory)
    finally:
        keeper.terminate()
        keeper.communicate()


def _count_asks(log, wanted, deadline):
    asks, rest = 0, b""
    while asks < wanted:
        readable, _, _ = select.select([log], [], [], max(0.0, deadline - time.monotonic()))
        piece = os.read(log, 65536) if readable else b""
        if not piece:
            break
        lines = (rest + piece).split(b"\n")
        rest = lines.pop()
        asks += sum(b": asks its printer, job " in line for line in lines)
    return asks
