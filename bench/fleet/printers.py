"""The simulated printers of the fleet: one process, and what each printer tells of itself.

A printer's state is known from its own words only, so that an order which went astray is not
taken for what the printer shows.
"""
import re
import subprocess
import threading

FIRST_PORTS = range(2000, 32768, 997)  # below those that are given to whoever asks for any
TOTAL = 700
PATIENCE = 600  # seconds for orders, on the slowest machine

_EVENT = re.compile(r"(\d+): (heard wake-up|printed, (\d+) prints left)")
_ORDER = re.compile(r"now: (\d+) (remaining|error|asleep|off|on|memory) ?(.*)")


class Printer:
    """What one printer has told of itself."""

    def __init__(self, port):
        self.port = port
        self.remaining = TOTAL
        self.error = "00 00 00"
        self.is_on = True
        self.asked = 0    # wake-ups, of which each command job brings one
        self.printed = 0

    def obey(self, word, value):
        """An order has been carried out."""
        if word == "remaining":
            self.remaining = int(value)
        elif word == "error":
            self.error = value
        elif word in ("on", "off"):
            self.is_on = word == "on"

    def happen(self, what, left):
        """Something has happened on a connection."""
        if what.startswith("heard"):
            self.asked += 1
        else:
            self.printed += 1
            self.remaining = int(left)


class Printers:
    """So many simulated printers, numbered from 0."""

    def __init__(self, simulator, count):
        self._process, ports = _start(simulator, count)
        self.all = [Printer(port) for port in ports]
        self._done = threading.Condition()
        self._orders_done = self._orders_given = 0
        threading.Thread(target=self._listen, daemon=True).start()

    @property
    def pid(self):
        return self._process.pid

    def _listen(self):
        for line in self._process.stdout:
            if event := _EVENT.match(line):
                self.all[int(event[1]) - 1].happen(event[2], event[3])
            elif order := _ORDER.match(line):
                self.all[int(order[1]) - 1].obey(order[2], order[3].strip())
                with self._done:
                    self._orders_done += 1
                    self._done.notify()

    def tell(self, orders):
        """Gives (number, order) to printers and returns when they have obeyed."""
        for number, order in orders:
            self._process.stdin.write(f"{number + 1} {order}\n")
            self._orders_given += 1
        self._process.stdin.flush()
        with self._done:
            if not self._done.wait_for(lambda: self._orders_done == self._orders_given, PATIENCE):
                raise RuntimeError(f"of {self._orders_given} orders the printers carried out "
                                   f"{self._orders_done}")

    def catch_up(self):
        """Returns when all has been heard that was told up to now."""
        self.tell([(0, "memory 00")])

    def end(self):
        """Ends the process. What it had to say has been heard then."""
        self._process.terminate()
        self._process.wait()


def _start(simulator, count):
    """The process and its ports, the first that are free and follow each other."""
    for port in FIRST_PORTS:
        process = subprocess.Popen(
            [simulator, "--printers", str(count), "--port", str(port), "--count-prints",
             "--total", str(TOTAL), "--remaining", str(TOTAL)],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        if all(process.stdout.readline().startswith("listening on ") for _ in range(count)):
            return process, range(port, port + count)
        process.wait()
    raise RuntimeError(f"{simulator} finds no {count} free ports that follow each other")
