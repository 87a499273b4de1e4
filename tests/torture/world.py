"""What the programs run in: folders of their own, a demonstration site, a wall clock; and the two
that stay, the background process and the window."""

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
CLI = PROGRAMS / "ostrova-cli"
SHIMS = BUILD / "tests/torture"
DRIVER = SHIMS / "torture_driver"
WHOLE = os.environ.get("OSTROVA_TORTURE") == "whole"
SANITIZED = bool(os.environ.get("OSTROVA_SANITIZE"))
PATIENCE = 60 if SANITIZED else 20  # seconds after which a program counts as hanging
LEFTOVER = re.compile(r"\.ostrova-[0-9a-f]{16}\.tmp")
WINDOW_RECORD = re.compile(rb"(?<=MainWndHwnd=)\d+")
SANITIZERS = {
    "ASAN_OPTIONS": "verify_asan_link_order=0:exitcode=99",
    "UBSAN_OPTIONS": "halt_on_error=1:exitcode=99",
}
NOBODY = "http://127.0.0.1:9"
FOLDERS = ("home", "data", "runtime", "program")  # that the program writes into


def shims(*names):
    return {"LD_PRELOAD": " ".join(str(SHIMS / f"libtorture_{name}.so") for name in names)}


def write(path, data):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(data)


def remove(path):
    """Whatever lies there goes; nothing is opened, as it may be a FIFO."""
    if path.is_dir() and not path.is_symlink():
        shutil.rmtree(path, ignore_errors=True)
    else:
        path.unlink(missing_ok=True)


def lines_of(path):
    return path.read_text(errors="replace").splitlines() if path.exists() else []


def wait_for(what, process=None):
    """Waits until `what()`, or until `process` has ended; false when neither comes."""
    end = time.monotonic() + PATIENCE
    while not what() and (process is None or process.poll() is None):
        if time.monotonic() > end:
            return False
        time.sleep(0.005)
    return True


@dataclass
class Run:
    """How a program ended. `calls` are (name, path) as the file library counted them."""

    status: int | None  # None: it hung; -n: signal n ended it
    out: str
    err: str
    calls: list = field(default_factory=list)
    left: list = field(default_factory=list)  # descriptors that it never closed


class World:
    """A folder for everything that a program reads and writes; emptied before each run."""

    def __init__(self):
        # In memory where there is such a place: thousands of syncs would wait for a disk.
        memory = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None
        self.root = Path(tempfile.mkdtemp(prefix="ostrova-torture-", dir=memory))
        self.home, self.data, self.runtime, self.program = (self.root / name for name in FOLDERS)
        self.cache = self.data / "Cache"
        self.list = self.data / "SearchList.txt"
        self.settings = self.home / ".config/Kelvane/Ostrova.conf"
        self.internet = self.home / ".config/Kelvane/Internet.conf"
        self.default_cache = self.home / ".local/share/Ostrova/Cache"
        self.log = self.root / "log"
        self.env = {}
        self.options = {}  # for each process: its limits
        self.processes = []

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

    def watched(self):
        return ":".join(str(self.root / name) for name in FOLDERS)

    def files(self):
        """The bytes of every file, by its path below the root; and the leftovers. Programs are no
        files of the user's, and the number of a window is any."""
        found, leftovers = {}, []
        paths = [path for name in FOLDERS for path in (self.root / name).rglob("*")]
        for path in sorted(paths):
            if not path.is_file() or path.is_symlink() or os.access(path, os.X_OK):
                continue
            if LEFTOVER.fullmatch(path.name):
                leftovers.append(path)
            else:
                name = str(path.relative_to(self.root))
                found[name] = WINDOW_RECORD.sub(b"0", path.read_bytes())
        return found, leftovers

    def start(self, words, extra=None, **options):
        environment = {
            "PATH": os.environ.get("PATH", "/usr/bin:/bin"), "TZ": "UTC", **SANITIZERS,
            "HOME": str(self.home), "XDG_RUNTIME_DIR": str(self.runtime), "TMPDIR": str(self.root),
            "OSTROVA_SITE_HOST": NOBODY, "OSTROVA_MAKER_HOST": NOBODY,
            "TORTURE_LOG": str(self.log), "TORTURE_WATCH": self.watched(),
            **self.env, **(extra or {}),
        }
        options = {"stdin": subprocess.DEVNULL, "stdout": subprocess.PIPE,
                   "stderr": subprocess.PIPE, "cwd": self.root, **self.options, **options}
        process = subprocess.Popen([str(word) for word in words], env=environment, **options)
        self.processes = [old for old in self.processes if old.poll() is None] + [process]
        return process

    def finish(self, process):
        try:
            out, err = process.communicate(timeout=PATIENCE)
            status = process.returncode
        except subprocess.TimeoutExpired:
            process.kill()
            out, err = process.communicate()
            status = None
        return Run(status, *((data or b"").decode(errors="replace") for data in (out, err)))

    def run(self, words, extra=None, **options):
        return self.finish(self.start(words, extra, **options))


class WallClock:
    """The wall clock of the programs that are started with `env`."""

    def __init__(self, world, now):
        path = world.root / "clock"
        path.write_bytes(bytes(16))
        with path.open("r+b") as file:
            self.control = mmap.mmap(file.fileno(), 16)
        self.env = {"TORTURE_CLOCK": str(path), **shims("clock_shim")}
        self.set(now)

    def set(self, now):
        """Sets it to epoch seconds."""
        settings = struct.unpack_from("q", self.control, 8)[0]
        struct.pack_into("q", self.control, 0, round(now * 1e9) - time.time_ns())
        struct.pack_into("q", self.control, 8, settings + 1)


class Resident:
    """A program that stays until it is ended, on a wall clock; what it says goes into a file."""

    def __init__(self, world, clock, words, extra=None):
        self.world = world
        self.words = words
        self.err = world.root / f"err-{time.monotonic_ns()}"
        self.env = {**clock.env, **(extra or {})}

    def start(self, prefix=()):
        with self.err.open("wb") as err:
            self.process = self.world.start([*prefix, *self.words], self.env, stdout=err, stderr=err)
        return self

    def lines(self):
        return lines_of(self.err)

    def wait_for(self, what):
        return wait_for(what, self.process)

    def wait(self):
        """Its status, once it has ended; None when it does not."""
        return self.world.finish(self.process).status

    def end(self):
        """Ends it as a session manager does; its status."""
        self.process.send_signal(signal.SIGTERM)
        return self.wait()


class Background(Resident):
    """The background process, from a copy of the program that has a window beside it, which does
    nothing but write a line into a file."""

    def __init__(self, world, clock, preload=(), extra=None):
        self.folder = world.root / "bin"
        # Of its own: a window that the last one opened may be slow to come.
        self.opened = world.root / f"opened-{time.monotonic_ns()}"
        if not self.folder.exists():
            self.folder.mkdir()
            shutil.copy(PROGRAMS / "ostrova", self.folder)
            window = self.folder / "ostrova-window"
            window.write_text('#!/bin/sh\necho >>"$TORTURE_OPENED"\n')
            window.chmod(0o700)
        super().__init__(world, clock, [self.folder / "ostrova", "-A"],
                         {**shims("clock_shim", *preload), "TORTURE_OPENED": str(self.opened),
                          **(extra or {})})

    def windows(self):
        return len(lines_of(self.opened))

    def found(self):
        """The weekends that were found, as "TIME DATE"."""
        lines = [line.split() for line in self.lines() if line.endswith(": found")]
        return [f"{words[0]} {words[1]} {words[4].rstrip(':')}" for words in lines]

    def descriptors(self):
        """What each of its open descriptors is for."""
        try:
            return [os.readlink(name) for name in Path(f"/proc/{self.process.pid}/fd").iterdir()]
        except OSError:
            return []

    def rest(self):
        """Equal at two moments when it has slept all the time between them; None while it works."""
        lines = lines_of(Path(f"/proc/{self.process.pid}/status"))
        if not any(line.startswith("State:\tS") for line in lines):
            return None
        return [line for line in lines if "ctxt_switches" in line]

    def sleeps(self):
        """Whether it sleeps and has let go of the network, as it does when all that it had to do is
        done."""
        before = self.rest()
        descriptors = " ".join(self.descriptors())
        return before is not None and before == self.rest() and "socket" not in descriptors

    def waits(self):
        """Whether it sleeps until its time: it has a timer, which is an eventfd of the clock
        library's."""
        return "eventfd" in " ".join(self.descriptors()) and self.sleeps()

    def processor_seconds(self):
        words = Path(f"/proc/{self.process.pid}/stat").read_text().rpartition(")")[2].split()
        return (int(words[11]) + int(words[12])) / os.sysconf("SC_CLK_TCK")


class Window(Resident):
    """The program with the window, on a display that nobody sees, in the hand of a user who closes
    it ("close"), ends his session ("end") or leaves it open once it waits for him."""

    def __init__(self, world, clock, hand, preload=(), extra=None, program="ostrova-window"):
        for name in ("ostrova", "ostrova-window", "ostrova-http.so"):
            if not (world.program / name).exists():
                shutil.copy(PROGRAMS / name, world.program)
        self.said_in = world.root / f"said-{time.monotonic_ns()}"
        fonts = world.root / "fonts"  # the toolkit's own files are no part of this
        fonts.mkdir(exist_ok=True)
        super().__init__(world, clock, [world.program / program], {
            **shims("window_hand", "clock_shim", *preload), "TORTURE_HAND": hand,
            "TORTURE_SAID": str(self.said_in), "QT_QPA_PLATFORM": "offscreen", "QT_NO_GLIB": "1",
            "XDG_CACHE_HOME": str(fonts), **(extra or {})})

    def said(self):
        """The boxes that it showed, and "shown" for the window itself."""
        return lines_of(self.said_in)


class Site:
    """The demonstration site, on a clock that stands still, or on the programs' wall clock."""

    def __init__(self, now="2026-07-20 12:00:00", *options, clock=None, zone="UTC"):
        self.process = subprocess.Popen(
            [PROGRAMS / "ostrova-demo-site", *(["--now", now] if clock is None else []), *options],
            env={**os.environ, **(clock.env if clock else {}), **SANITIZERS, "TZ": zone},
            stdout=subprocess.PIPE, text=True)
        self.address = self.process.stdout.readline().strip()
        self.env = {"OSTROVA_SITE_HOST": self.address, "OSTROVA_MAKER_HOST": self.address}

    def get(self, target):
        with urllib.request.urlopen(self.address + target, timeout=PATIENCE) as answer:
            return answer.read()

    def close(self):
        self.process.kill()
        self.process.wait()
        self.process.stdout.close()
