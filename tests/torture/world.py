"""What the programs run in: folders of their own, a demonstration site, a wall clock, and the
background process."""

import mmap
import os
import re
import shutil
import signal
import struct
import subprocess
import tempfile
import time
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
