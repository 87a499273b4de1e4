"""What the kernel says of a process that runs."""

import os


def wake_ups(pid):
    """How often the kernel has put a thread of the process on a processor again."""
    total = 0
    for thread in os.listdir(f"/proc/{pid}/task"):
        with open(f"/proc/{pid}/task/{thread}/status", encoding="ascii") as file:
            total += sum(int(line.split()[1]) for line in file if "ctxt_switches" in line)
    return total


def pss_mib(pid):
    """Its memory in MiB, what it shares with others divided among them."""
    with open(f"/proc/{pid}/smaps_rollup", encoding="ascii") as file:
        return next(int(line.split()[1]) for line in file if line.startswith("Pss:")) / 1024
