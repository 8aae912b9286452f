"""The figures of a run: lines for a person, and a row for each of the two tables in docs/."""
JOBS = ("queues", "minutes", "CPU a job, ms", "of its programs, ms", "CPU of the scheduler, %", "idle, %",
        "memory, MB", "written a minute, MB", "to the level, s: median", "95 %", "longest", "late",
        "lost", "wrong")
TOOLS = ("queues", "adding them, s", "CPU of it, ms a queue", "attach, s", "status, s", "list, s",
         "keep-fresh: asks a second", "its CPU an ask, ms", "its memory, MB")


def part(sorted_values, share):
    """The value below which this share of them lies."""
    return sorted_values[min(len(sorted_values) - 1, int(share * len(sorted_values)))]


def _cell(value):
    if isinstance(value, str):
        return value
    return f"{value:.2f}" if isinstance(value, float) else f"{value:,}"


def for_people(jobs, tools):
    """A line for each figure."""
    rows = list(zip(JOBS, jobs)) + list(zip(TOOLS, tools))[1:]
    width = max(len(name) for name, _ in rows)
    return "\n".join(f"{name:{width}}  {_cell(value):>10}" for name, value in rows)


def row(figures):
    """One row of Markdown."""
    return "| " + " | ".join(map(_cell, figures)) + " |"


def head(names):
    """The two lines above the rows."""
    return row(names) + "\n" + row(["---"] * len(names))
