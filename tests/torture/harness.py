"""What all torture tests share: the sweep of one fault over every call of a scenario, and the
questions asked after each."""

import errno
import os
import random
import re
import signal
import subprocess
import sys
import unittest

from world import *

CRASHES = {-signal.SIGSEGV, -signal.SIGABRT, -signal.SIGBUS, -signal.SIGFPE, -signal.SIGILL, 99}

# What each call can fail with. A kill comes before the call: together they stop everywhere.
FULL = [errno.EIO, errno.ENOSPC, errno.EDQUOT, "kill"]
STAYS_FULL = f"{errno.ENOSPC}+"
WRITES = [*FULL, "short", STAYS_FULL]
FAULTS = {
    "open": [errno.EIO, errno.EMFILE, errno.ENOENT, "kill"],
    "create": [*FULL, errno.EMFILE, STAYS_FULL],
    "read": [errno.EIO, "short", "kill"],
    "write": WRITES, "writev": WRITES, "pwrite": WRITES,
    "fsync": [*FULL, STAYS_FULL], "fdatasync": [*FULL, STAYS_FULL], "syncfs": [*FULL, STAYS_FULL],
    "ftruncate": FULL, "rename": FULL, "link": FULL, "close": FULL,
    "unlink": [errno.EIO, "kill"], "fchmod": [errno.EIO, "kill"],
    "mkdir": [*FULL, STAYS_FULL],
}


class Scenario:
    """One deed of the program that is done again and again, with a fault at each of its calls."""

    name = ""
    least_calls = 10  # fewer, and the library does not see what the program does
    sample = 30  # runs of the short form
    memory_sample = 15
    statuses = {0, 1, 2}
    is_repeatable = False

    def prepare(self, world):
        """Makes what is there before."""

    def command(self, world):
        raise NotImplementedError

    def perform(self, world, preload, extra):
        """Does the deed, with libraries before it and more in its environment."""
        return world.run(self.command(world), {**shims(*preload), **extra})

    def judge(self, case, run, fault, world):
        """Asserts what is right for this deed; general questions have been asked."""

    def may_change(self, name, old, new):
        """The versions of a file that may be found after a fault, None for no file."""
        return {old.get(name), new.get(name)}

    def is_ours(self, path):
        """Whether the program, not a library on its own behalf, uses that file."""
        return True


class Sweep:
    """A scenario under faults: what was before, what comes of it undisturbed, and the questions."""

    def __init__(self, case, scenario, world):
        self.case, self.scenario, self.world = case, scenario, world
        self.old = self.set_up()
        self.undisturbed = scenario.undisturbed = self.perform(["file_shim"], 0)
        self.new, leftovers = world.files()
        scenario.new = self.new
        case.assertEqual((self.undisturbed.left, leftovers), ([], []))
        case.assertIn(self.undisturbed.status, scenario.statuses, self.undisturbed.err)

    def set_up(self):
        self.world.empty()
        self.scenario.prepare(self.world)
        self.world.log.unlink(missing_ok=True)
        return self.world.files()[0]

    def perform(self, preload=(), at=0, fault=""):
        extra = {"TORTURE_AT": str(at), "TORTURE_FAULT": str(fault)}
        run = self.scenario.perform(self.world, preload, extra)
        for line in lines_of(self.world.log):
            number, call, path = (line + "  ").split(" ", 2)
            if number == "left":
                run.left.append(call)
            else:
                run.calls.append((call or number, path.strip()))
        return run

    def faults(self):
        """Every (number, call, fault), in an order whose beginning holds every kind."""
        everything = [
            (number, call, fault)
            for number, (call, path) in enumerate(self.undisturbed.calls, 1)
            for fault in FAULTS[call] if self.scenario.is_ours(path)
            # Only in the cache do others remove files between a look and the opening.
            if fault != errno.ENOENT or "/Cache/" in path
        ]
        random.Random(1).shuffle(everything)
        first = {fault[1:]: fault for fault in reversed(everything)}
        return sorted(everything, key=lambda fault: first[fault[1:]] is not fault)

    def requests(self):
        """How many requests for memory the scenario makes."""
        self.set_up()
        return int(self.perform(["memory_shim"]).calls[-1][0])

    def fault(self, number, fault):
        self.set_up()
        run = self.perform(["file_shim"], number, fault)
        killed = fault == "kill" and run.status == -signal.SIGKILL
        self.ask(run, fault, killed)
        if not killed:
            self.case.assertEqual(run.left, [], "descriptors that were never closed")
        if self.scenario.is_repeatable:
            self.go_on()

    def starve(self, number):
        self.set_up()
        run = self.perform(["memory_shim"], number, "all" if number % 5 == 0 else "one")
        # The process ends at once: what it was writing is left for the next start to sweep.
        self.ask(run, "memory", killed="Out of memory" in run.err)

    def ask(self, run, fault, killed=False):
        """It did not crash or hang; it left every file as it was or as it was to be; and it said
        what there was to be said."""
        case = self.case
        case.assertEnds(run, {-signal.SIGKILL, 2} if killed else self.scenario.statuses)
        found, leftovers = self.world.files()
        for name in sorted(set(found) | set(self.old)):
            versions = self.scenario.may_change(name, self.old, self.new)
            if found.get(name) not in versions:
                case.fail(f"{name} is neither old nor new: {(found.get(name) or b'gone')[:500]}\n"
                          f"{run.out}\n{run.err}")
        if not killed:
            case.assertEqual(leftovers, [], "nobody sweeps these before an hour has passed")
            self.scenario.judge(case, run, fault, self.world)

    def go_on(self):
        """The same again without a fault does what it would have done at first."""
        before = self.world.files()[0]
        run = self.perform()
        self.case.assertEqual(run.status, self.undisturbed.status, run.err)
        for name, data in self.world.files()[0].items():
            versions = self.scenario.may_change(name, before, self.new)
            self.case.assertTrue(data == self.new[name] or data in versions, name)


class Case(unittest.TestCase):
    """A test with a world of its own."""

    def setUp(self):
        self.world = World()
        self.addCleanup(self.world.close)
        self.world.empty()

    def site(self, *arguments, **options):
        site = Site(*arguments, **options)
        self.addCleanup(site.close)
        self.world.env.update(site.env)
        return site

    def sweep(self, scenario):
        scenario = scenario()
        scenario.site = self.site("2026-07-20 12:00:00", "--latest-version", "2.0")
        return Sweep(self, scenario, self.world)

    def wait_for(self, what):
        self.assertTrue(wait_for(what), "it does not come")

    def assertEnds(self, run, statuses):
        self.assertIsNotNone(run.status, f"hangs; it said: {run.err}")
        self.assertNotIn(run.status, CRASHES, run.err)
        self.assertIn(run.status, statuses, run.err)


def give_mounts():
    """Runs this program again with mounts of its own, where that is permitted."""
    words = ["unshare", "--mount", "--map-root-user"]
    if "TORTURE_MOUNTS" in os.environ or subprocess.run([*words, "true"]).returncode != 0:
        return
    os.environ["TORTURE_MOUNTS"] = "own"
    os.execvp(words[0], [*words, sys.executable, *sys.argv])


def need_mounts(case):
    if "TORTURE_MOUNTS" not in os.environ:
        case.skipTest("namespaces are not permitted here")


def mount(*words):
    subprocess.run(["mount", *map(str, words)], check=True)


def main():
    """Runs the tests named on the command line; 77, which ctest shows as skipped, when all were."""
    result = unittest.main(exit=False, verbosity=2, argv=sys.argv, module="__main__").result
    if result.wasSuccessful() and result.testsRun == len(result.skipped):
        sys.exit(77)
    sys.exit(not result.wasSuccessful())
