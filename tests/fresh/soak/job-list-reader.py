#!/usr/bin/python3
"""Reads the scheduler's list of jobs again and again, until a signal ends it, and then tells how
many command jobs of one queue stood there at the same time.

It knows nothing of velmoctl: all command jobs count, whoever sent them.
"""
import collections
import signal
import sys
import time

import cups

PAUSE = 0.2  # seconds between two looks
WANTED = ["document-format", "job-id", "job-printer-uri"]
COMMAND = "application/vnd.cups-command"


def look(connection):
    """The highest count of command jobs that any one queue has now."""
    jobs = connection.getJobs(which_jobs="not-completed", requested_attributes=WANTED)
    queues = collections.Counter(
        job["job-printer-uri"] for job in jobs.values() if job.get("document-format") == COMMAND)
    return max(queues.values(), default=0)


def main():
    looks = most = seen = 0
    connection = None
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(0))
    try:
        while True:
            try:
                connection = connection or cups.Connection()
                count = look(connection)
                looks += 1
                seen += count > 0
                most = max(most, count)
            except (RuntimeError, cups.IPPError):  # the scheduler is being restarted
                connection = None
            time.sleep(PAUSE)
    finally:
        print(looks, seen, most)


main()
