"""Makes one mistake after the other in a copy of the tree and tells which ones survive the
test rings. Arguments: the copy, the file of equivalent mistakes, the sources."""

import signal
import sys
from collections import Counter
from contextlib import contextmanager
from pathlib import Path

from mistakes import mistakes_in
from rings import KILLED, NOT_COMPILED, PLAIN, SANITIZED, SURVIVED, Build

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


@contextmanager
def made(mistake, tree):
    path = tree / mistake.file
    original = path.read_text()
    path.write_text(mistake.text)
    yield
    path.write_text(original)


def verdicts(build, mistakes, tree):
    if build.verdict() != SURVIVED:
        sys.exit("mutate: the tree does not build, or its tests are red, without a mistake")
    for mistake in mistakes:
        with made(mistake, tree):
            yield mistake, build.verdict()


def table(results):
    counts = Counter((mistake.kind, verdict) for mistake, verdict in results.items())
    yield f"{'':20}" + "".join(f"{column:>14}" for column in COLUMNS)
    for kind in [*sorted({kind for kind, _ in counts}), "all"]:
        row = [sum(n for (k, v), n in counts.items() if v == column and kind in (k, "all"))
               for column in COLUMNS]
        yield f"{kind:20}" + "".join(f"{n:>14}" for n in row)


def main(tree, equivalent_file, *sources):
    tree, known = Path(tree), equivalents(Path(equivalent_file))
    mistakes = [one for source in sources for one in mistakes_in(source, tree)]
    print(f"{len(mistakes)} mistakes", flush=True)

    results = {}
    for mistake, verdict in verdicts(Build(tree, "plain", PLAIN), mistakes, tree):
        if verdict == SURVIVED and (mistake.file, mistake.old, mistake.new) in known:
            verdict = EQUIVALENT
        results[mistake] = verdict
        print(f"{verdict}: {mistake}", flush=True)

    # The sanitizers are slow and see nothing that a red test has seen already.
    survivors = [mistake for mistake, verdict in results.items() if verdict == SURVIVED]
    if survivors:
        results |= verdicts(Build(tree, "sanitized", SANITIZED), survivors, tree)

    print(*table(results), sep="\n")
    killed = [*results.values()].count(KILLED)
    survivors = [mistake for mistake, verdict in results.items() if verdict == SURVIVED]
    print(f"score: {killed} of {killed + len(survivors)} mistakes that make a difference")
    print(*(f"survived: {mistake}" for mistake in survivors), sep="\n")
    sys.exit(len(survivors) > 0)


signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))  # so that what runs is ended as well
main(*sys.argv[1:])
