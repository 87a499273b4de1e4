"""What all torture tests share: a world for a program to run in, the preloaded libraries, the
demonstration site, and the sweep of one fault over every call of a scenario."""

import ctypes
import errno
import mmap
import os
import random
import re
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import time
import unittest
import urllib.request
from dataclasses import dataclass, field
from pathlib import Path

BUILD = Path(os.environ.get("OSTROVA_BUILD", "build/dev")).resolve()
PROGRAMS = BUILD / "src/programs"
SHIMS = BUILD / "tests/torture"
WHOLE = os.environ.get("OSTROVA_TORTURE") == "whole"
SANITIZED = bool(os.environ.get("OSTROVA_SANITIZE"))
PATIENCE = 60 if SANITIZED else 20  # seconds after which a program counts as hanging
LEFTOVER = re.compile(r"\.ostrova-[0-9a-f]{16}\.tmp")
CRASHES = {-signal.SIGSEGV, -signal.SIGABRT, -signal.SIGBUS, -signal.SIGFPE, -signal.SIGILL, 99}


def shim(name):
    return str(SHIMS / f"libtorture_{name}_shim.so")


def remove(path):
    """Whatever lies there goes; nothing is opened, as it may be a FIFO."""
    if path.is_dir() and not path.is_symlink():
        shutil.rmtree(path, ignore_errors=True)
    else:
        path.unlink(missing_ok=True)


@dataclass
class Run:
    """How a program ended. `calls` are (name, path) as the file library counted them."""

    status: int | None  # None: it hung; -n: signal n ended it
    out: str
    err: str
    calls: list = field(default_factory=list)
    left: list = field(default_factory=list)  # descriptors that it never closed


SANITIZERS = {
    "ASAN_OPTIONS": "verify_asan_link_order=0:exitcode=99",
    "UBSAN_OPTIONS": "halt_on_error=1:exitcode=99",
}
FOLDERS = ("home", "data", "runtime", "program")  # that the program writes into


class World:
    """A folder for everything that a program reads and writes; emptied before each run."""

    def __init__(self):
        # In memory where there is such a place: thousands of syncs would wait for a disk.
        memory = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None
        self.root = Path(tempfile.mkdtemp(prefix="ostrova-torture-", dir=memory))
        self.log = self.root / "log"
        self.env = {"TORTURE_LOG": str(self.log)}
        self.options = {}  # for each process: its limits, its user
        self.processes = []

    def __getattr__(self, name):
        if name not in FOLDERS:
            raise AttributeError(name)
        return self.root / name

    @property
    def cache(self):
        return self.data / "Cache"

    @property
    def settings(self):
        return self.home / ".config/Kelvane/Ostrova.conf"

    @property
    def internet(self):
        return self.home / ".config/Kelvane/Internet.conf"

    def empty(self):
        for name in FOLDERS:
            remove(self.root / name)
            (self.root / name).mkdir(mode=0o700)

    def close(self):
        for process in self.processes:
            if process.poll() is None:  # its test has failed
                process.kill()
                process.wait()
        shutil.rmtree(self.root, ignore_errors=True)

    def environment(self, extra=None):
        return {
            "PATH": os.environ.get("PATH", "/usr/bin:/bin"),
            "HOME": str(self.home),
            "XDG_RUNTIME_DIR": str(self.runtime),
            "TZ": "UTC",
            **SANITIZERS,
            "OSTROVA_SITE_HOST": "http://127.0.0.1:9",
            "OSTROVA_MAKER_HOST": "http://127.0.0.1:9",
            **self.env,
            **(extra or {}),
        }

    def watched(self):
        return ":".join(str(self.root / name) for name in FOLDERS)

    def files(self):
        """The bytes of every file, by its path below the root; leftovers apart."""
        found, leftovers = {}, []
        paths = [path for name in FOLDERS for path in (self.root / name).rglob("*")]
        for path in sorted(paths):
            if not path.is_file() or path.is_symlink():
                continue
            if LEFTOVER.fullmatch(path.name):
                leftovers.append(path)
            else:
                found[str(path.relative_to(self.root))] = path.read_bytes()
        return found, leftovers

    def start(self, words, extra=None, **options):
        options = {
            "stdin": subprocess.DEVNULL,
            "stdout": subprocess.PIPE,
            "stderr": subprocess.PIPE,
            "cwd": self.root,
            **self.options,
            **options,
        }
        words = [str(word) for word in words]
        process = subprocess.Popen(words, env=self.environment(extra), **options)
        self.processes = [old for old in self.processes if old.poll() is None] + [process]
        return process

    def finish(self, process):
        try:
            out, err = process.communicate(timeout=PATIENCE)
        except subprocess.TimeoutExpired:
            process.kill()
            out, err = process.communicate()
            return Run(None, text(out), text(err))
        return Run(process.returncode, text(out), text(err))

    def run(self, words, extra=None, **options):
        return self.finish(self.start(words, extra, **options))

    def log_lines(self):
        if not self.log.exists():
            return []
        lines = self.log.read_text(errors="replace").splitlines()
        self.log.unlink()
        return lines


def text(data):
    return (data or b"").decode(errors="replace")


class WallClock:
    """The wall clock of the programs that are started with `env`."""

    def __init__(self, world, now):
        self.path = world.root / "clock"
        self.path.write_bytes(bytes(16))
        with self.path.open("r+b") as file:
            self.control = mmap.mmap(file.fileno(), 16)
        self.env = {"TORTURE_CLOCK": str(self.path), "LD_PRELOAD": shim("clock")}
        self.set(now)

    def set(self, now):
        """Sets it to epoch seconds."""
        self._write(round(now * 1e9) - time.time_ns())

    def move(self, seconds):
        """Sets it forward, or back, by that much."""
        self._write(struct.unpack_from("q", self.control, 0)[0] + round(seconds * 1e9))

    def now(self):
        return (struct.unpack_from("q", self.control, 0)[0] + time.time_ns()) / 1e9

    def _write(self, ahead):
        settings = struct.unpack_from("q", self.control, 8)[0]
        struct.pack_into("q", self.control, 0, ahead)
        struct.pack_into("q", self.control, 8, settings + 1)


class Background:
    """The background process, from a copy of the program that has a window beside it, which does
    nothing but write a line into a file."""

    def __init__(self, world, clock, extra=None, start=True):
        self.world = world
        self.folder = world.root / "bin"
        self.opened = world.root / "opened"
        self.err = world.root / "err"
        if not self.folder.exists():
            self.folder.mkdir()
            shutil.copy(PROGRAMS / "ostrova", self.folder)
            window = self.folder / "ostrova-window"
            window.write_text(f"#!/bin/sh\necho >>'{self.opened}'\n")
            window.chmod(0o700)
        self.extra = {**clock.env, **(extra or {})}
        self.extra["LD_PRELOAD"] = " ".join(
            [clock.env["LD_PRELOAD"], (extra or {}).get("LD_PRELOAD", "")]
        )
        if start:
            self.start()

    def start(self, prefix=(), **options):
        self.opened.unlink(missing_ok=True)
        with self.err.open("wb") as err:
            self.process = self.world.start(
                [*prefix, self.folder / "ostrova", "-A"], self.extra, stdout=err, stderr=err, **options
            )

    def lines(self):
        return self.err.read_text(errors="replace").splitlines()

    def windows(self):
        return len(self.opened.read_text().splitlines()) if self.opened.exists() else 0

    def waits(self):
        """Whether it waits on a timer; the clock library's are of this kind, and nothing else."""
        try:
            folder = f"/proc/{self.process.pid}/fd"
            return any("eventfd" in os.readlink(f"{folder}/{name}") for name in os.listdir(folder))
        except OSError:
            return False

    def processor_seconds(self):
        words = Path(f"/proc/{self.process.pid}/stat").read_text().rpartition(")")[2].split()
        return (int(words[11]) + int(words[12])) / os.sysconf("SC_CLK_TCK")

    def wait_for(self, what):
        """Waits until `what()`, or until it has ended; false when neither comes."""
        end = time.monotonic() + PATIENCE
        while not what() and self.process.poll() is None:
            if time.monotonic() > end:
                return False
            time.sleep(0.005)
        return True

    def end(self):
        """Ends it as a session manager does; its status, None when it does not end."""
        self.process.send_signal(signal.SIGTERM)
        try:
            return self.process.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
            return None


class Site:
    """The demonstration site, on a clock that stands still, or on the programs' wall clock."""

    def __init__(self, now="2026-07-20 12:00:00", *options, clock=None, zone="UTC"):
        self.process = subprocess.Popen(
            [PROGRAMS / "ostrova-demo-site", *(["--now", now] if clock is None else []), *options],
            env={**os.environ, **(clock.env if clock else {}), **SANITIZERS, "TZ": zone},
            stdout=subprocess.PIPE,
            text=True,
        )
        self.address = self.process.stdout.readline().strip()

    def env(self):
        return {"OSTROVA_SITE_HOST": self.address, "OSTROVA_MAKER_HOST": self.address}

    def get(self, target):
        with urllib.request.urlopen(self.address + target, timeout=PATIENCE) as answer:
            return answer.read()

    def close(self):
        self.process.kill()
        self.process.wait()
        self.process.stdout.close()


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
