"""The figures of a run, as a table that a person reads and as a row of the one in docs/."""
HEAD = ("queues", "set-up, s", "CPU of it, ms a queue", "attach, s", "idle CPU, %",
        "CPU a job, ms", "of its programs, ms", "CPU, %", "memory, MB", "written a minute, MB",
        "to the level, s: median", "95 %", "longest", "late", "lost", "wrong", "status, s",
        "list, s", "keep-fresh: asks a second", "its CPU an ask, ms", "its memory, MB")


def _cell(value):
    return f"{value:.2f}" if isinstance(value, float) else f"{value:,}"


def for_people(figures):
    """A line for each figure."""
    width = max(map(len, HEAD))
    return "\n".join(f"{name:{width}}  {_cell(value):>10}" for name, value in zip(HEAD, figures))


def row(figures):
    """One row of Markdown."""
    return "| " + " | ".join(map(_cell, figures)) + " |"
