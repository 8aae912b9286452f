"""What happens to the printers of the fleet before each minute, by chance."""
import random

OFF, ASLEEP, FAULTY, PRINTING = 0.02, 0.05, 0.03, 0.10  # of the queues, at least one each
LONGEST_SLEEP = 5  # answers that say "not awake", one a second
ERRORS = ("06 02 02", "03 01 01", "08 01 01", "0c 0f 00")
NO_ERROR = "00 00 00"


def _share(count, part):
    return max(1, round(count * part))


class Chance:
    """Changes the printers, and says which queues print."""

    def __init__(self, printers, seed):
        self._printers = printers
        self._random = random.Random(seed)
        self._count = len(printers.all)

    def _some(self, part):
        return set(self._random.sample(range(self._count), _share(self._count, part)))

    def _other_ribbon(self, printer, total):
        """Another level than the queue shows, so that a job that is lost leaves a wrong one."""
        while True:
            remaining = self._random.randint(0, total)
            if remaining * 100 // total != printer.remaining * 100 // total:
                return remaining

    def new_minute(self, total):
        """Off are others than before, and so are those with an error; every ribbon is another."""
        off, asleep, faulty = self._some(OFF), self._some(ASLEEP), self._some(FAULTY)
        orders = []
        for number, printer in enumerate(self._printers.all):
            orders.append((number, f"remaining {self._other_ribbon(printer, total)}"))
            error = self._random.choice(ERRORS) if number in faulty else NO_ERROR
            if error != printer.error:
                orders.append((number, f"error {error}"))
            if number in asleep and number not in off:
                orders.append((number, f"asleep {self._random.randint(1, LONGEST_SLEEP)}"))
            if (number in off) == printer.is_on:
                orders.append((number, "off" if number in off else "on"))
        self._printers.tell(orders)
        return self._some(PRINTING)

    def all_on(self):
        """The end: whoever is off is switched on."""
        self._printers.tell([(number, "on") for number, printer in enumerate(self._printers.all)
                             if not printer.is_on])
