"""velmoctl keep-fresh for all queues in one process: what it takes, and how fast it has all asked."""
import dataclasses
import subprocess
import time

import process


@dataclasses.dataclass
class Fresh:
    """Of so many seconds from its start."""
    seconds: float
    asks: int
    cpu: float  # seconds
    memory: float  # megabytes
    scheduler_cpu: float  # seconds


def keep_fresh(velmoctl, fleet, seconds):
    """Runs it so long, or until it has had every printer asked that is on."""
    before, start = process.spent(fleet.scheduler), time.monotonic()
    keeper = subprocess.Popen([velmoctl, "keep-fresh", *fleet.names], stderr=subprocess.PIPE,
                              text=True)
    try:
        asks = _count_asks(keeper, len(fleet.names), start + seconds)
        took = time.monotonic() - start
        cpu, (memory, _) = process.spent(keeper.pid).cpu, process.memory(keeper.pid)
        return Fresh(took, asks, cpu, memory, (process.spent(fleet.scheduler) - before).cpu)
    finally:
        keeper.terminate()
        keeper.communicate()


def _count_asks(keeper, wanted, deadline):
    asks = 0
    while asks < wanted and time.monotonic() < deadline:
        asks += ": asks its printer, job " in keeper.stderr.readline()
    return asks
