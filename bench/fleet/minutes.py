"""The minutes of the fleet: a command job for each queue in each of them, and photos in between."""
import dataclasses
import time

import process

PATIENCE = 600  # seconds behind a minute, for the slowest machine


@dataclasses.dataclass
class Sending:
    """The time in which jobs were sent: seconds, and what was spent of the processors' time."""
    seconds: float = 0.0
    idle: float = 0.0  # seconds of all processors
    spent: process.Spent = dataclasses.field(default_factory=lambda: process.Spent(0, 0, 0))


@dataclasses.dataclass
class Ask:
    """A command job that the scheduler took."""
    queue: int
    job: int
    sent: float
    printer_was_on: bool


class Minutes:
    """Plays minutes one by one, and keeps what was sent."""

    def __init__(self, fleet, seconds):
        self._fleet = fleet
        self._seconds = seconds
        self._open = []  # (queue, job) of all that have not ended
        self._busy = set()  # queues with a job in front of what is sent
        self.blind = set()  # queues whose job runs in this minute, while the printer is off
        self.asks = []
        self.photos = [0] * len(fleet.names)
        self.refused = []
        self.spent = process.Spent(0, 0, 0)  # by the scheduler, from first to last job
        self.took = 0.0
        self.sending = Sending()

    def play(self, printing):
        """Sends the jobs evenly, and waits until those have ended whose printers are on."""
        self.blind.clear()
        self._busy = {number for number, _ in self._open}
        before, start = process.spent(self._fleet.scheduler), time.monotonic()
        idle = process.idle()
        for number in range(len(self._fleet.names)):
            due = start + number * self._seconds / len(self._fleet.names)
            time.sleep(max(0.0, due - time.monotonic()))
            self._send_to(number, number in printing)
        time.sleep(max(0.0, start + self._seconds - time.monotonic()))
        self.sending.seconds += time.monotonic() - start
        self.sending.idle += process.idle() - idle
        self.sending.spent += process.spent(self._fleet.scheduler) - before
        self.settle()
        self.spent += process.spent(self._fleet.scheduler) - before
        self.took += time.monotonic() - start

    def end(self):
        """With all printers on, asks those once more whose last job met none."""
        self.settle()
        for number in self.blind:
            self._send_to(number, False)
        self.settle()
        self.blind.clear()

    def settle(self):
        """Waits for the jobs whose printers are on. Returns those that have not ended."""
        printers = self._fleet.printers.all
        left = self._fleet.log.wait_for(
            [job for number, job in self._open if printers[number].is_on], PATIENCE)
        self._open = [(number, job) for number, job in self._open
                      if job in left or not printers[number].is_on]
        return left

    def _send_to(self, number, is_printing):
        name = self._fleet.names[number]
        try:
            if is_printing:
                self._open.append((number, self._fleet.sender.print(name)))
                self._busy.add(number)
                self.photos[number] += 1
            is_on, sent = self._fleet.printers.all[number].is_on, time.time()
            job = self._fleet.sender.ask(name)
            self._open.append((number, job))
            self.asks.append(Ask(number, job, sent, is_on))
            if not is_on and number not in self._busy:
                self.blind.add(number)
        except RuntimeError as error:
            self.refused.append(f"{name}: {error}")
