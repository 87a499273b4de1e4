"""A desk at which the real programs are used: a display with a window manager, a session bus with its
accessibility, a home of its own, the demonstration site, a date. What is on the screen is read as a
screen reader reads it; keys and clicks are real ones."""

import glob
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402  (the version has to be named first)

PATIENCE = 40  # seconds; nothing takes so long


class Failure(Exception):
    """What was expected did not come."""


def wait_for(what, condition):
    """What `condition` gives, as soon as that is something."""
    end = time.monotonic() + PATIENCE
    while True:
        found = condition()
        if found:
            return found
        if time.monotonic() > end:
            raise Failure(f"{what} did not come")
        time.sleep(0.05)


def expect(actual, wanted):
    if actual != wanted:
        raise Failure(f"{actual!r} instead of {wanted!r}")


class Program:
    """A process with windows, seen from outside."""

    def __init__(self, process, errors):
        self.process = process
        self.errors = errors

    def ended(self):
        """Its exit status, once it has ended by itself."""
        try:
            return self.process.wait(PATIENCE)
        except subprocess.TimeoutExpired as late:
            raise Failure("the program did not end") from late

    def said(self):
        with open(self.errors, encoding="utf-8") as file:
            return file.read()

    def stop(self, how=signal.SIGTERM):
        self.process.send_signal(how)
        return self.ended()


class Desk:
    def __init__(self, programs):
        self.programs = programs
        self.root = tempfile.mkdtemp(prefix="ostrova-desk-")
        self.children = []
        self.environment = {
            "HOME": self.root, "PATH": os.environ["PATH"], "LANG": "C.UTF-8", "TZ": "Europe/Berlin",
            "DBUS_SESSION_BUS_ADDRESS": os.environ["DBUS_SESSION_BUS_ADDRESS"],
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "QT_QPA_PLATFORM": "xcb",
            "OSTROVA_MAKER_HOST": "http://127.0.0.1:9",
            "TSAN_OPTIONS": os.environ.get("TSAN_OPTIONS", "")}
        for name in ("config", "data", "runtime"):
            os.makedirs(self.path(name), mode=0o700)
        self.environment.update(XDG_CONFIG_HOME=self.path("config"), XDG_DATA_HOME=self.path("data"),
                                XDG_RUNTIME_DIR=self.path("runtime"))

    def open(self):
        self._open_display()
        self.settings({"CheckForUpgrades": 0})

    def close(self):
        for child in reversed(self.children):
            try:
                os.killpg(child.pid, signal.SIGKILL)  # and whatever it has started
            except ProcessLookupError:
                pass
            child.wait()
        shutil.rmtree(self.root, ignore_errors=True)

    # --- The home ---

    def path(self, *names):
        return os.path.join(self.root, *names)

    def data(self, *names):
        return self.path("data", "Ostrova", *names)

    def write_list(self, *pairs):
        os.makedirs(self.data(), exist_ok=True)
        with open(self.data("SearchList.txt"), "w", encoding="cp1252", newline="") as file:
            file.writelines(f'"{song}"\t"{artist}"\r\n' for song, artist in pairs)

    def read_list(self):
        with open(self.data("SearchList.txt"), encoding="cp1252", newline="") as file:
            return file.read().splitlines()

    def settings(self, values):
        os.makedirs(self.path("config", "Kelvane"), exist_ok=True)
        with open(self.path("config", "Kelvane", "Ostrova.conf"), "w", encoding="ascii") as file:
            file.write("[Settings]\n" + "".join(f"{k} = {v}\n" for k, v in values.items()))

    def setting(self, name):
        path = self.path("config", "Kelvane", "Ostrova.conf")
        if not os.path.exists(path):
            return None
        with open(path, encoding="ascii") as file:
            for line in file:
                key, _, value = line.partition("=")
                if key.strip() == name:
                    return value.strip()
        return None

    # --- Programs ---

    def _spawn(self, command, **more):
        child = subprocess.Popen(command, start_new_session=True, **more)
        self.children.append(child)
        return child

    def _open_display(self):
        reader, writer = os.pipe()
        # A server that starts over when its last client leaves turns away who comes meanwhile.
        self._spawn(["Xvfb", "-noreset", "-displayfd", str(writer), "-screen", "0", "1280x1024x24",
                     "-nolisten", "tcp"], pass_fds=[writer], stderr=subprocess.DEVNULL)
        os.close(writer)
        with os.fdopen(reader) as file:
            self.environment["DISPLAY"] = ":" + file.readline().strip()
        self._spawn(["openbox", "--sm-disable"], env=self.environment, stderr=subprocess.DEVNULL)
        # A window that comes before the manager never gets the focus.
        wait_for("the window manager", lambda: subprocess.run(
            ["xdotool", "get_desktop"], env=self.environment, capture_output=True,
            check=False).returncode == 0)

    def _at(self, moment):
        """The environment of a process that starts at `moment`, from where its clock goes on."""
        # A sanitizer minds that something comes before it; this something does no harm.
        library = glob.glob("/usr/lib/*/faketime/libfaketimeMT.so.1")
        return dict(self.environment, LD_PRELOAD=library[0], FAKETIME="@" + moment,
                    FAKETIME_DONT_FAKE_MONOTONIC="1", ASAN_OPTIONS="verify_asan_link_order=0")

    def open_site(self, moment, *options):
        """The demonstration site as it is at `moment` ("2026-11-27 12:59:50"), which goes on."""
        site = self._spawn([os.path.join(self.programs, "ostrova-demo-site"), *options],
                           stdout=subprocess.PIPE, text=True, env=self._at(moment))
        address = site.stdout.readline().strip()
        self.environment.update(OSTROVA_SITE_HOST=address, OSTROVA_MAKER_HOST=address)
        return site

    def start(self, moment, *options):
        """`ostrova` with `options`, at `moment`; with " x60" behind it, an hour takes a minute."""
        errors = self.path(f"errors-{len(self.children)}")
        with open(errors, "wb") as file:
            child = self._spawn([os.path.join(self.programs, "ostrova"), *options],
                                env=self._at(moment), stdout=file, stderr=file)
        return Program(child, errors)

    # --- The screen ---

    @staticmethod
    def windows():
        """The windows and boxes of every program, as (title, accessible)."""
        found = []
        desktop = Atspi.get_desktop(0)
        desktop.clear_cache()
        for i in range(desktop.get_child_count()):
            program = desktop.get_child_at_index(i)
            if program is None:
                continue  # it has just gone
            try:
                program.clear_cache()
                for j in range(program.get_child_count()):
                    window = program.get_child_at_index(j)
                    if window and window.get_state_set().contains(Atspi.StateType.VISIBLE):
                        found.append((window.get_name(), window))
            except gi.repository.GLib.Error:
                continue  # it is going away
        return found

    def window(self, title):
        return wait_for(f"a window '{title}'",
                        lambda: next((w for t, w in self.windows() if t == title), None))

    def in_front(self, title):
        """The same, once keys go there."""
        return wait_for(f"'{title}' in front", lambda: next(
            (w for t, w in self.windows()
             if t == title and w.get_state_set().contains(Atspi.StateType.ACTIVE)), None))

    def gone(self, title):
        wait_for(f"the end of '{title}'", lambda: all(t != title for t, _ in self.windows()))

    def act(self, *words):
        subprocess.run(["xdotool", *words], env=self.environment, check=True)

    def key(self, *names):
        self.act("key", "--clearmodifiers", *names)

    def type(self, text):
        self.act("type", "--delay", "20", text)


def walk(accessible):
    """Everything below `accessible`, whatever can be seen."""
    try:
        accessible.clear_cache()
        count = accessible.get_child_count()
    except gi.repository.GLib.Error:
        return
    for i in range(count):
        child = accessible.get_child_at_index(i)
        if child is None:
            continue
        yield child
        yield from walk(child)


def shows(accessible):
    states = accessible.get_state_set()
    return states.contains(Atspi.StateType.SHOWING)


def has_focus(accessible):
    accessible.clear_cache()  # nobody here listens to changes
    return accessible.get_state_set().contains(Atspi.StateType.FOCUSED)


def find(window, role, name=None):
    """The first thing of that role (and name) that shows in the window."""
    def look():
        for thing in walk(window):
            if thing.get_role_name() == role and shows(thing) and name in (None, thing.get_name()):
                return thing
        return None
    return wait_for(f"a {role} '{name}'", look)


def press(window, role, name):
    find(window, role, name).do_action(0)


def text_of(thing):
    """What a screen reader reads of one thing: its name, and the text in it."""
    name = thing.get_name()
    if thing.get_role_name() == "text" and thing.get_text_iface():
        return name + " " + Atspi.Text.get_text(thing, 0, -1)
    return name


def texts(window):
    """All that shows in the window, in order."""
    return [text for text in (text_of(thing) for thing in walk(window) if shows(thing)) if text]


def has_text(window, text):
    wait_for(f"'{text}' in the window", lambda: any(text in t for t in texts(window)))


def run(scenarios):
    """Runs the scenario that the command line names at a desk of its own."""
    programs, name = sys.argv[1:]
    desk = Desk(os.path.abspath(programs))
    try:
        desk.open()
        scenarios[name](desk)
    except Failure as failure:
        for title, window in desk.windows():
            print(f"'{title}' shows", texts(window))
        for errors in sorted(os.listdir(desk.root)):
            if errors.startswith("errors-"):
                with open(desk.path(errors), encoding="utf-8") as file:
                    print(errors, file.read())
        sys.exit(f"{name}: {failure}")
    finally:
        desk.close()
