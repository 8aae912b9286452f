"""What the settings of cupsd.conf do to a fleet: the same minute with each of them.

Usage: settings.py SIMULATOR VELMOCTL PPD SCHEDULER_PID SCHEDULER_LOG QUEUES SEED
"""
import os
import pathlib
import signal
import statistics
import subprocess
import sys
import time

import cups
import fleet as fleets
import lost
import played_minutes
import table

# What a minute is played with; the first is what the others are compared with.
MINUTES = ("", "LogLevel debug", "LogLevel debug2", "PreserveJobHistory No", "MaxJobs 0",
           "DirtyCleanInterval 0", "DirtyCleanInterval 300")
CLIENTS = ("", "MaxClients 10")
NIGHTS = ("", "MaxJobs 0", "MaxJobs 0\nFilterLimit 1000")
CANCELS = ("", "JobKillDelay 1", "JobKillDelay 300")
MINUTE_HEAD = ("setting", "reloading, s", "CPU a job, ms", "written a minute, MB",
               "log of the minute, MB", "to the level, s: median", "95 %", "late", "lost", "wrong")
NIGHT_HEAD = ("setting", "printers off", "their jobs refused", "printers on", "their jobs refused",
              "asked within a minute")
CANCEL_HEAD = ("setting", "jobs cancelled", "s until their queues are idle")
CLIENTS_HEAD = ("setting", "velmoctl status at once", "did not end well", "s until the last ended")
OFF_AT_NIGHT = 0.6  # of the printers
NIGHT_SECONDS = 60
PATIENCE = 600
PAUSE = 0.2
IDLE = 3  # printer-state
CROWD = 30
RELOADED = "Full reload complete"


def _is_answered():
    """Whether the scheduler takes connections, and answers."""
    try:
        cups.Connection().getDefault()
    except RuntimeError:
        return False
    return True


class Settings:
    """The scheduler's configuration file, to which one line can be added."""

    def __init__(self, fleet):
        self._fleet = fleet
        self._path = pathlib.Path(os.environ["CUPS_SERVERROOT"], "cupsd.conf")
        self._text = self._path.read_text(encoding="utf-8")

    def use(self, line):
        """Has the scheduler read it. Returns for how many seconds it answered nobody.

        It ends its connections for that.
        """
        self._fleet.sender.hang_up()
        self._path.write_text(f"{self._text}{line}\n", encoding="utf-8")
        with open(self._fleet.log.path, encoding="utf-8", errors="replace") as log:
            log.seek(0, os.SEEK_END)
            os.kill(self._fleet.scheduler, signal.SIGHUP)
            time.sleep(PAUSE)
            start = time.monotonic()
            deadline = start + PATIENCE
            while not _is_answered() and time.monotonic() < deadline:
                time.sleep(PAUSE)
            waited = time.monotonic() - start
            while RELOADED not in log.read():
                if time.monotonic() > deadline:
                    raise RuntimeError(f"the scheduler does not take {line!r}")
                time.sleep(PAUSE)
        return waited


def shown(line):
    """The first cell of a row."""
    return line.replace("\n", ", ") or "(as it is)"


def minute(fleet, line, reloading, seed):
    """A minute: the figures of one row, and what was wrong."""
    log_before = os.path.getsize(fleet.log.path)
    played, wrong = played_minutes.play(fleet, 1, seed)
    times = lost.seconds_to_level(played.asks, fleet.log)
    gone = lost.lost_in_log(played.asks, fleet.log) + played.refused
    jobs = len(played.asks) + sum(played.photos)
    figures = (
        shown(line), reloading, played.spent.cpu / jobs * 1000,
        played.spent.written / played.took * 60,
        (os.path.getsize(fleet.log.path) - log_before) / 2**20, statistics.median(times),
        table.part(times, 0.95), lost.late(played.asks, fleet.log), len(gone), len(wrong))
    return figures, gone + wrong


def switch(fleet, word, numbers):
    """Switches these printers on or off."""
    fleet.printers.tell([(number, word) for number in numbers])


def ask_each(fleet, numbers):
    """Asks these printers; the jobs that the scheduler took, and how many it refused."""
    jobs, refused = [], 0
    for number in numbers:
        try:
            jobs.append(fleet.sender.ask(fleet.names[number]))
        except RuntimeError:
            refused += 1
    return jobs, refused


def night(fleet, line):
    """Most printers are off, and all are asked. A row: off, of their jobs refused, on, of theirs
    refused, and ended after a minute."""
    count = len(fleet.names)
    off, on = (range(round(count * OFF_AT_NIGHT)), range(round(count * OFF_AT_NIGHT), count))
    switch(fleet, "off", off)
    jobs, refused = ask_each(fleet, off)
    jobs_of_on, refused_of_on = ask_each(fleet, on)
    left = fleet.log.wait_for(jobs_of_on, NIGHT_SECONDS)
    switch(fleet, "on", off)
    if still := fleet.log.wait_for(jobs + jobs_of_on, PATIENCE):
        raise RuntimeError(f"{line!r}: {len(still)} jobs do not end with all printers on")
    return (shown(line), len(off), refused, len(on), refused_of_on, len(jobs_of_on) - len(left))


def cancel(fleet, line):
    """Cancels the jobs of printers that are asleep for long; how long the queues stay busy."""
    names = fleet.names[:100]
    fleet.printers.tell([(number, "asleep 1000") for number in range(len(names))])
    jobs, _ = ask_each(fleet, range(len(names)))
    time.sleep(10)
    start = time.monotonic()
    connection = cups.Connection()
    for job in jobs:
        connection.cancelJob(job)
    for name in names:
        while connection.getPrinterAttributes(name)["printer-state"] != IDLE:
            if time.monotonic() > start + PATIENCE:
                raise RuntimeError(f"{line!r}: {name} does not become idle")
            time.sleep(PAUSE)
    took = time.monotonic() - start
    fleet.printers.tell([(number, "asleep 0") for number in range(len(names))])
    return shown(line), len(jobs), took


def crowd(velmoctl, line):
    """Many clients at the same time."""
    start = time.monotonic()
    clients = [subprocess.Popen([velmoctl, "status"], stdout=subprocess.DEVNULL)
               for _ in range(CROWD)]
    failed = sum(client.wait() != 0 for client in clients)
    return shown(line), CROWD, failed, time.monotonic() - start


def scenes(fleet, velmoctl, seed):
    """Plays all. Returns what was wrong in the minutes."""
    settings = Settings(fleet)
    all_faults = []
    print(table.head(MINUTE_HEAD))
    for line in MINUTES:
        reloading = settings.use(line)
        figures, faults = minute(fleet, line, reloading, seed)
        print(table.row(figures), flush=True)
        all_faults += faults
    for title, lines, scene in ((NIGHT_HEAD, NIGHTS, night), (CANCEL_HEAD, CANCELS, cancel),
                                (CLIENTS_HEAD, CLIENTS, lambda _, line: crowd(velmoctl, line))):
        print("\n" + table.head(title))
        for line in lines:
            settings.use(line)
            print(table.row(scene(fleet, line)), flush=True)
    return all_faults


if __name__ == "__main__":
    *FLEET, SEED = sys.argv[1:]
    sys.exit(fleets.play(*FLEET, lambda fleet: scenes(fleet, FLEET[1], int(SEED))))
