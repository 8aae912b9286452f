"""What each queue must show, from what its printer told and the rules alone, and whether it does.

It reads the queues by itself: nothing of velmoctl is used.
"""
import time

import cups

WANTED = ["marker-levels", "marker-message", "printer-state-reasons", "queued-job-count"]
KEYWORDS = {"00 00 00": "none", "06 02 02": "com.velmo-error0001", "03 01 01": "com.velmo-error0003",
            "08 01 01": "com.velmo-error0004", "0c 0f 00": "com.velmo-error0018"}
NO_RIBBON = "com.velmo-error0005"
OURS = "com.velmo-"
UNAVAILABLE = (-2, " ", ["com.velmo-error0023"])  # the filter's report when no printer answers
PATIENCE = 600  # seconds: far more than the filter waits for a printer that is off
PAUSE = 1  # seconds between two looks


def should_show(printer, total):
    """Level, message and reasons of a queue whose printer was asked."""
    reason = NO_RIBBON if printer.remaining == 0 else KEYWORDS[printer.error]
    return (printer.remaining * 100 // total,
            f"Prints Remaining = {printer.remaining} / {total}", [reason])


def _shown(attributes, is_on):
    """The same as the queue shows it."""
    reasons = attributes["printer-state-reasons"]
    if not is_on:  # of the backend, which cannot connect
        reasons = [reason for reason in reasons if reason.startswith(OURS)] or ["none"]
    return (attributes.get("marker-levels", [None])[0], attributes.get("marker-message"), reasons)


class Oracle:
    """Compares all queues with their printers, again and again; at first each has just been asked."""

    def __init__(self, printers, names, total):
        self._printers, self._names, self._total = printers, names, total
        # A printer that is off cannot be asked: its queue goes on showing what it showed.
        self._last = [should_show(printer, total) for printer in printers.all]
        self._connection = cups.Connection()

    def _look(self, number):
        """What the queue shows, and how many jobs wait there."""
        attributes = self._connection.getPrinterAttributes(self._names[number],
                                                           requested_attributes=WANTED)
        return (_shown(attributes, self._printers.all[number].is_on),
                attributes["queued-job-count"])

    def compare(self, when, blind):
        """What is wrong, a line for each queue. `blind` had a job that met no printer."""
        self._printers.catch_up()
        for number, printer in enumerate(self._printers.all):
            if printer.is_on:
                self._last[number] = should_show(printer, self._total)
            elif number in blind:
                self._last[number] = UNAVAILABLE
                self._wait_for(number)
        return [fault for number, name in enumerate(self._names)
                for fault in self._faults(number, f"{when}: {name}")]

    def _wait_for(self, number):
        deadline = time.monotonic() + PATIENCE
        while self._look(number)[0] != self._last[number] and time.monotonic() < deadline:
            time.sleep(PAUSE)

    def _faults(self, number, what):
        is_on = self._printers.all[number].is_on
        shown, waiting = self._look(number)
        if shown != self._last[number]:
            yield f"{what} shows {shown}, and should show {self._last[number]}"
        if (waiting == 0) != is_on:
            yield f"{what} has {waiting} jobs, and its printer is {'on' if is_on else 'off'}"
