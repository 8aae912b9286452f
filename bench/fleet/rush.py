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


def rushes(fleet, seed):
    """All rates. Returns what was wrong."""
    all_faults = []
    print(table.head(HEAD))
    for rate in JOBS_A_SECOND:
        figures, faults = rush(fleet, rate, seed)
        print(table.row(figures), flush=True)
        all_faults += faults
    return all_faults


if __name__ == "__main__":
    *FLEET, SEED = sys.argv[1:]
    sys.exit(fleets.play(*FLEET, lambda fleet: rushes(fleet, int(SEED))))
