"""Makes one mistake at a time in copies of the tree, one copy for each processor, and tells
which ones survive the test rings. Arguments: a folder for the copies, the file of equivalent
mistakes, the sources."""

import os
import signal
import sys
from collections import Counter
from concurrent.futures import ThreadPoolExecutor
from functools import partial
from pathlib import Path

from mistakes import mistakes_in
from rings import (KILLED, NOT_COMPILED, PLAIN, SANITIZED, SURVIVED, RedTree, interrupt,
                   verdict_with)

EQUIVALENT = "equivalent"
COLUMNS = [KILLED, SURVIVED, EQUIVALENT, NOT_COMPILED]


def equivalents(path):
    """Blocks of a file's name, "- " the lines as they are, "+ " the lines with the mistake."""
    found, file, old = set(), "", ""
    for line in path.read_text().splitlines():
        if line.startswith("- "):
            old = line[2:]
        elif line.startswith("+ "):
            found.add((file, old, line[2:]))
        elif line and not line.startswith("#"):
            file = line
    return found


def verdicts(folder, options, mistakes):
    """Each mistake with its verdict, in their order, whichever processor is done first."""
    with ThreadPoolExecutor(min(len(os.sched_getaffinity(0)), len(mistakes)) or 1) as workers:
        yield from zip(mistakes, workers.map(partial(verdict_with, folder, options), mistakes))


def table(results):
    counts = Counter((mistake.kind, verdict) for mistake, verdict in results.items())
    yield f"{'':20}" + "".join(f"{column:>14}" for column in COLUMNS)
    for kind in [*sorted({kind for kind, _ in counts}), "all"]:
        row = [sum(n for (k, v), n in counts.items() if v == column and kind in (k, "all"))
               for column in COLUMNS]
        yield f"{kind:20}" + "".join(f"{n:>14}" for n in row)


def main(folder, equivalent_file, *sources):
    folder, known = Path(folder), equivalents(Path(equivalent_file))
    mistakes = [one for source in sources for one in mistakes_in(source, folder / "tree")]
    print(f"{len(mistakes)} mistakes", flush=True)

    results = {}
    for mistake, verdict in verdicts(folder, PLAIN, mistakes):
        if verdict == SURVIVED and (mistake.file, mistake.old, mistake.new) in known:
            verdict = EQUIVALENT
        results[mistake] = verdict
        print(f"{verdict}: {mistake}", flush=True)

    # The sanitizers are slow and see nothing that a red test has seen already.
    survivors = [mistake for mistake, verdict in results.items() if verdict == SURVIVED]
    if survivors:
        results |= verdicts(folder, SANITIZED, survivors)

    print(*table(results), sep="\n")
    killed = [*results.values()].count(KILLED)
    survivors = [mistake for mistake, verdict in results.items() if verdict == SURVIVED]
    print(f"score: {killed} of {killed + len(survivors)} mistakes that make a difference")
    print(*(f"survived: {mistake}" for mistake in survivors), sep="\n")
    sys.exit(len(survivors) > 0)


def stop(*_):
    # A second one would wait for the lock that the first one holds.
    signal.signal(signal.SIGTERM, signal.SIG_IGN)
    interrupt()
    sys.exit(1)


signal.signal(signal.SIGTERM, stop)
try:
    main(*sys.argv[1:])
except RedTree as red:
    sys.exit(f"mutate: {red}")
