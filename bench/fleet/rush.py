"""How many jobs a second a scheduler and the machine bear: the same queues, asked ever more often.

Usage: rush.py SIMULATOR VELMOCTL PPD SCHEDULER_PID SCHEDULER_LOG QUEUES SEED
"""
import os
import statistics
import sys

import fleet as fleets
import lost
import played_minutes
import table

HEAD = ("jobs a second", "sent a second", "CPU of the scheduler, %", "of its programs, %",
        "of all processors idle, %", "to the level, s: median", "95 %", "late", "lost", "wrong")
JOBS_A_SECOND = (50, 100, 125, 150, 200)
ROUNDS = 2
SHOWN = 20  # faults


def rush(fleet, rate, seed):
    """Each queue is asked twice, so many of them a second. Returns a row, and what was wrong."""
    played, wrong = played_minutes.play(fleet, ROUNDS, seed, len(fleet.names) / rate)
    times = lost.seconds_to_level(played.asks, fleet.log)
    gone = lost.lost_in_log(played.asks, fleet.log) + played.refused
    sending, sent = played.sending, len(fleet.names) * ROUNDS
    return (rate, sent / sending.seconds, sending.spent.cpu / sending.seconds * 100,
            sending.spent.children / sending.seconds * 100,
            sending.idle / sending.seconds / os.cpu_count() * 100, statistics.median(times),
            table.part(times, 0.95), lost.late(played.asks, fleet.log), len(gone),
            len(wrong)), gone + wrong


def main(simulator, velmoctl, ppd, pid, log, queues, seed):
    """Plays all."""
    fleet = fleets.start(simulator, pid, log, queues)
    all_faults = []
    try:
        fleets.add_queues(fleet, ppd)
        fleets.run(velmoctl, "attach", *fleet.names)
        print(table.head(HEAD))
        for rate in JOBS_A_SECOND:
            figures, faults = rush(fleet, rate, int(seed))
            print(table.row(figures), flush=True)
            all_faults += faults
    finally:
        fleet.printers.end()
    for fault in all_faults[:SHOWN]:
        print(fault, file=sys.stderr)
    return 1 if all_faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
