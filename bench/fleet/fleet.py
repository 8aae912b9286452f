"""What the parts of a run share: the scheduler, its queues, and a printer behind each."""
import dataclasses
import signal
import subprocess
import sys
import time

import cups
import job_log
import print_jobs
import printers
import process


SHOWN = 20  # faults


@dataclasses.dataclass
class Fleet:
    """Queue number i has the printer number i."""
    scheduler: int  # its process
    names: list
    printers: printers.Printers
    log: job_log.JobLog
    sender: print_jobs.JobSender


@dataclasses.dataclass
class Measured:
    """A step: seconds on the clock, and what the scheduler spent."""
    seconds: float
    spent: process.Spent


def measure(scheduler, step):
    """Runs it."""
    before, start = process.spent(scheduler), time.monotonic()
    step()
    return Measured(time.monotonic() - start, process.spent(scheduler) - before)


def add_queues(fleet, ppd):
    """As an installation script adds them."""
    connection = cups.Connection()
    for name, printer in zip(fleet.names, fleet.printers.all):
        connection.addPrinter(name, filename=ppd,
                              device=f"socket://127.0.0.1:{printer.port}/?snmp=false")
        connection.acceptJobs(name)
        connection.enablePrinter(name)


def start(simulator, scheduler, log, count):
    """So many printers, for queues that are to be added. A signal ends them, too."""
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    names = [f"photo{number}" for number in range(int(count))]
    return Fleet(int(scheduler), names, printers.Printers(simulator, len(names)),
                 job_log.JobLog(log), print_jobs.JobSender())


def run(*command):
    """Runs a program that has to end well; returns what it writes."""
    done = subprocess.run(command, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        raise RuntimeError(f"{command[:3]} ends with status {done.returncode}: "
                           f"{done.stderr[:2000]}")
    return done.stdout


def play(simulator, velmoctl, ppd, scheduler, log, count, scenes):
    """Sets up a fleet, and plays `scenes` with it, which returns what was wrong. The exit status."""
    fleet = start(simulator, scheduler, log, count)
    try:
        add_queues(fleet, ppd)
        run(velmoctl, "attach", *fleet.names)
        faults = scenes(fleet)
    finally:
        fleet.printers.end()
    for fault in faults[:SHOWN]:
        print(fault, file=sys.stderr)
    return 1 if faults else 0
