"""What all torture tests share: the sweep of one fault over every call of a scenario, and the
questions asked after each."""

import ctypes
import errno
import os
import random
import signal
import subprocess
import sys
import time
import unittest
from pathlib import Path

from world import *

CRASHES = {-signal.SIGSEGV, -signal.SIGABRT, -signal.SIGBUS, -signal.SIGFPE, -signal.SIGILL, 99}

# What each call can fail with. A kill comes before the call: together they stop everywhere.
DISK_FULL = [errno.EIO, errno.ENOSPC, errno.EDQUOT]
STAYS_FULL = f"{errno.ENOSPC}+"
FAULTS = {
    "open": [errno.EIO, errno.EMFILE, errno.ENOENT, "kill"],
    "create": [*DISK_FULL, errno.EMFILE, STAYS_FULL, "kill"],
    "read": [errno.EIO, "short", "kill"],
    "write": [*DISK_FULL, "short", STAYS_FULL, "kill"],
    "writev": [*DISK_FULL, "short", STAYS_FULL, "kill"],
    "fsync": [*DISK_FULL, STAYS_FULL, "kill"],
    "syncfs": [*DISK_FULL, STAYS_FULL, "kill"],
    "rename": [*DISK_FULL, "kill"],
    "unlink": [errno.EIO, "kill"],
    "mkdir": [*DISK_FULL, STAYS_FULL, "kill"],
    "close": [*DISK_FULL, "kill"],
    "fchmod": [errno.EIO, "kill"],
}


class Scenario:
    """One deed of the program that is done again and again, with a fault at each of its calls."""

    name = ""
    least_calls = 10  # fewer, and the library does not see what the program does
    sample = 30  # runs of the short form
    memory_sample = 15
    statuses = {0, 1, 2}

    def prepare(self, world):
        """Makes what is there before."""

    def perform(self, world, extra):
        """Does the deed; `extra` goes into its environment."""
        return world.run(self.command(world), extra)

    def command(self, world):
        raise NotImplementedError

    def judge(self, case, run, fault, world):
        """Asserts what is right for this deed; general questions have been asked."""

    def may_change(self, name, old, new):
        """The versions of a file that may be found after a fault, None for no file."""
        return {old.get(name), new.get(name)}


def faults_of(calls):
    """Every (number, call, fault), in an order whose beginning holds every kind."""
    everything = []
    for number, (call, path) in enumerate(calls, 1):
        for fault in FAULTS[call]:
            # Only in the cache do others remove files between a look and the opening.
            if fault != errno.ENOENT or "/Cache/" in path:
                everything.append((number, call, fault))
    random.Random(1).shuffle(everything)
    seen, first, rest = set(), [], []
    for number, call, fault in everything:
        kind = (call, fault)
        (rest if kind in seen else first).append((number, call, fault))
        seen.add(kind)
    return first + rest


class Sweep:
    """A scenario under faults: what was before, what comes of it undisturbed, and the questions."""

    def __init__(self, case, scenario, world):
        self.case, self.scenario, self.world = case, scenario, world
        self.old = self.set_up()
        self.undisturbed = self.perform({"LD_PRELOAD": shim("file"), "TORTURE_AT": "0"})
        self.new, leftovers = world.files()
        case.assertEqual((self.undisturbed.left, leftovers), ([], []))
        case.assertIn(self.undisturbed.status, scenario.statuses, self.undisturbed.err)
        scenario.undisturbed = self.undisturbed
        scenario.new = self.new

    def set_up(self):
        self.world.empty()
        self.world.env["TORTURE_WATCH"] = self.world.watched()
        self.scenario.prepare(self.world)
        self.world.log.unlink(missing_ok=True)
        return self.world.files()[0]

    def perform(self, extra):
        run = self.scenario.perform(self.world, extra)
        for line in self.world.log_lines():
            head, _, rest = line.partition(" ")
            if head == "left":
                run.left.append(rest)
            elif " " in rest:
                run.calls.append(tuple(rest.split(" ", 1)))
            else:
                run.calls.append((head, ""))
        return run

    def fault(self, number, call, fault):
        self.set_up()
        run = self.perform(
            {"LD_PRELOAD": shim("file"), "TORTURE_AT": str(number), "TORTURE_FAULT": str(fault)}
        )
        killed = fault == "kill" and run.status == -signal.SIGKILL
        self.ask(run, fault, killed)
        if not killed:
            self.case.assertEqual(run.left, [], "descriptors that were never closed")
        self.go_on()

    def starve(self, number, which):
        self.set_up()
        run = self.perform(
            {"LD_PRELOAD": shim("memory"), "TORTURE_AT": str(number), "TORTURE_FAULT": which}
        )
        # The process ends at once: what it was writing is left for the next start to sweep.
        self.ask(run, "memory", killed="Out of memory" in run.err)

    def ask(self, run, fault, killed):
        """It did not crash or hang; it left every file as it was or as it was to be; and it said
        what there was to be said."""
        case = self.case
        case.assertIsNotNone(run.status, f"hangs; it said: {run.err}")
        case.assertNotIn(run.status, CRASHES, run.err)
        if not killed:
            case.assertIn(run.status, self.scenario.statuses, run.err)
        found, leftovers = self.world.files()
        for name in sorted(set(found) | set(self.old)):
            versions = self.scenario.may_change(name, self.old, self.new)
            if found.get(name) not in versions:
                case.fail(f"{name} is neither old nor new: {(found.get(name) or b'gone')[:500]}")
        if not killed:
            case.assertEqual(leftovers, [], "nobody sweeps these before an hour has passed")
            self.scenario.judge(case, run, fault, self.world)

    def go_on(self):
        """The same again without a fault does what it would have done at first."""
        if not getattr(self.scenario, "is_repeatable", False):
            return
        before = self.world.files()[0]
        run = self.perform({})
        self.case.assertEqual(run.status, self.undisturbed.status, run.err)
        for name, data in self.world.files()[0].items():
            versions = self.scenario.may_change(name, before, self.new)
            self.case.assertTrue(data == self.new[name] or data in versions, name)


def enter_namespace(case):
    """Gives this process mounts of its own; skips the test where that is not permitted."""
    if os.environ.get("TORTURE_NAMESPACE"):
        return
    own_mounts, own_users = 0x20000, 0x10000000
    libc = ctypes.CDLL(None, use_errno=True)
    user, group = os.getuid(), os.getgid()
    if libc.unshare(own_mounts | (own_users if user != 0 else 0)) != 0:
        case.skipTest("namespaces are not permitted here")
    if user != 0:
        Path("/proc/self/setgroups").write_text("deny")
        Path("/proc/self/uid_map").write_text(f"0 {user} 1")
        Path("/proc/self/gid_map").write_text(f"0 {group} 1")
    mount("--make-rprivate", "/")
    os.environ["TORTURE_NAMESPACE"] = "entered"


def mount(*words):
    subprocess.run(["mount", *map(str, words)], check=True)


def requests_of(sweep):
    """How many requests for memory the scenario makes."""
    sweep.set_up()
    run = sweep.perform({"LD_PRELOAD": shim("memory"), "TORTURE_AT": "0"})
    return int(run.calls[-1][0])


class Case(unittest.TestCase):
    """A test with a world of its own."""

    def setUp(self):
        self.world = World()
        self.addCleanup(self.world.close)
        self.world.empty()

    def site(self, *arguments, **options):
        site = Site(*arguments, **options)
        self.addCleanup(site.close)
        self.world.env.update(site.env())
        return site

    def wait_for(self, what, seconds=PATIENCE):
        """Waits until `what()` is true."""
        end = time.monotonic() + seconds
        while not what():
            if time.monotonic() > end:
                self.fail("it does not come")
            time.sleep(0.01)

    def assertQuietEnd(self, run, statuses):
        self.assertIsNotNone(run.status, f"hangs; it said: {run.err}")
        self.assertIn(run.status, statuses, run.err)


def main():
    """Runs the tests named on the command line; 77, which ctest shows as skipped, when all were."""
    program = unittest.main(exit=False, verbosity=2, argv=sys.argv, module="__main__")
    result = program.result
    if result.wasSuccessful() and result.testsRun == len(result.skipped):
        sys.exit(77)
    sys.exit(not result.wasSuccessful())
