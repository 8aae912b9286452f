"""When jobs ended and how, from the scheduler's log. Asking the scheduler would be measured."""
import datetime
import re
import time

_END = re.compile(r". \[(\S+ \S+)\] \[Job (\d+)\] "
                  r"(Job completed\.|(?:Job (?:aborted|canceled|stopped)|Aborting|Canceling|Stopping).*)")
_TIME = "%d/%b/%Y:%H:%M:%S.%f %z"
PAUSE = 0.2  # seconds between two looks


class JobLog:
    """The ends of jobs, as the log grows."""

    def __init__(self, path):
        self.path = path
        self._log = open(path, encoding="utf-8", errors="replace")
        self._rest = ""
        self.completed = {}  # job: when
        self.failed = {}     # job: what the log says

    def read_on(self):
        """Takes what has come since."""
        lines = (self._rest + self._log.read()).split("\n")
        self._rest = lines.pop()
        for line in lines:
            if end := _END.match(line):
                self._note(end)

    def _note(self, end):
        job = int(end[2])
        if end[3] == "Job completed.":
            self.completed[job] = datetime.datetime.strptime(end[1], _TIME).timestamp()
        else:
            self.failed[job] = end[3]

    def wait_for(self, jobs, seconds):
        """Waits until these have ended; returns those that have not after so long."""
        deadline = time.monotonic() + seconds
        while True:
            self.read_on()
            jobs = [job for job in jobs if job not in self.completed and job not in self.failed]
            if not jobs or time.monotonic() > deadline:
                return jobs
            time.sleep(PAUSE)
