"""Plays a fleet of queues and printers before a running scheduler, and tells what it came to.

Usage: main.py SIMULATOR VELMOCTL PPD SCHEDULER_PID SCHEDULER_LOG QUEUES MINUTES SEED
Ends with status 1 when a level was wrong or a job was lost.
"""
import statistics
import sys
import time

import fleet as fleets
import keep_fresh
import lost
import played_minutes
import process
import table

IDLE_SECONDS = 35  # the scheduler writes what has changed every 30 seconds
SHOWN = 20  # faults


def time_of(fleet, *command):
    """Seconds of the fastest of three runs."""
    return min(fleets.measure(fleet.scheduler, lambda: fleets.run(*command)).seconds
               for _ in range(3))


def play(fleet, velmoctl, ppd, count, seed):
    """The whole run. Returns its figures and its faults."""
    pid, queues = fleet.scheduler, len(fleet.names)
    set_up = fleets.measure(pid, lambda: fleets.add_queues(fleet, ppd))
    attach = fleets.measure(pid, lambda: fleets.run(velmoctl, "attach", *fleet.names))
    time.sleep(IDLE_SECONDS)
    idle = fleets.measure(pid, lambda: time.sleep(IDLE_SECONDS))

    asked_before = [printer.asked for printer in fleet.printers.all]
    played, wrong = played_minutes.play(fleet, count, seed)
    fleet.printers.catch_up()
    memory = process.memory(pid)[1]
    gone = lost.lost_in_log(played.asks, fleet.log) + played.refused
    gone += lost.lost_at_printers(fleet, played, asked_before)
    times, late = lost.seconds_to_level(played.asks, fleet.log), lost.late(played.asks, fleet.log)

    status, listed = (time_of(fleet, velmoctl, command) for command in ("status", "list"))
    fresh = keep_fresh.keep_fresh(velmoctl, fleet)
    if fresh.asks != queues:
        gone.append(f"keep-fresh has {fresh.asks} of {queues} printers asked")
    jobs = len(played.asks) + sum(played.photos)
    of_jobs = (
        queues, count, played.spent.cpu / jobs * 1000, played.spent.children / jobs * 1000,
        played.spent.cpu / played.took * 100, idle.spent.cpu / idle.seconds * 100, memory,
        played.spent.written / played.took * 60, statistics.median(times), table.part(times, 0.95),
        times[-1], late, len(gone), len(wrong))
    of_tools = (
        queues, set_up.seconds, set_up.spent.cpu / queues * 1000, attach.seconds, status, listed,
        fresh.asks / fresh.seconds, fresh.cpu / max(1, fresh.asks) * 1000, fresh.memory)
    return (of_jobs, of_tools), wrong + gone


def main(simulator, velmoctl, ppd, pid, log, queues, count, seed):
    """Plays it and tells what came of it."""
    fleet = fleets.start(simulator, pid, log, queues)
    try:
        figures, faults = play(fleet, velmoctl, ppd, int(count), int(seed))
    finally:
        fleet.printers.end()
    print(table.for_people(*figures))
    for rows in figures:
        print(table.row(rows))
    for fault in faults[:SHOWN]:
        print(fault)
    print(f"{len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
