"""What a running process has taken so far, as the kernel counts it."""
import dataclasses
import os
import pathlib


def _table(pid, name):
    text = pathlib.Path(f"/proc/{pid}/{name}").read_text(encoding="ascii")
    return dict(line.split(":", 1) for line in text.splitlines())


def memory(pid):
    """Its memory now and at most, in megabytes."""
    status = _table(pid, "status")
    return tuple(int(status[name].split()[0]) / 1024 for name in ("VmRSS", "VmHWM"))


@dataclasses.dataclass
class Spent:
    """Seconds of CPU, of its own and of its ended children, and megabytes written to files."""
    cpu: float
    children: float
    written: float

    def __add__(self, other):
        return Spent(self.cpu + other.cpu, self.children + other.children,
                     self.written + other.written)

    def __sub__(self, earlier):
        return Spent(self.cpu - earlier.cpu, self.children - earlier.children,
                     self.written - earlier.written)


def spent(pid):
    """All since it began."""
    tasks = pathlib.Path(f"/proc/{pid}/task").glob("*/schedstat")
    cpu = sum(int(task.read_text(encoding="ascii").split()[0]) for task in tasks) / 1e9
    fields = pathlib.Path(f"/proc/{pid}/stat").read_text(encoding="utf-8").rpartition(")")[2].split()
    children = (int(fields[13]) + int(fields[14])) / os.sysconf("SC_CLK_TCK")
    return Spent(cpu, children, int(_table(pid, "io")["write_bytes"]) / 2**20)


def idle():
    """Seconds for which processors had nothing to do, all together, since the system started."""
    fields = pathlib.Path("/proc/stat").read_text(encoding="ascii").split("\n", 1)[0].split()
    return (int(fields[4]) + int(fields[5])) / os.sysconf("SC_CLK_TCK")
