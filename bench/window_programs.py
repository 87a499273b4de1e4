#!/usr/bin/env python3
"""Measures the program with the window against a bare label, in turn, on a display of its own (Xvfb).

  start    from a full cache (a weekend's songs, 1,000 favourites) to the first picture
  memory   PSS, 2 s later
  idle     wake-ups in 20 s

Usage: window_programs.py BUILD_FOLDER WORK_FOLDER
"""

import ctypes
import os
import shutil
import statistics
import subprocess
import sys
import time

from process_figures import pss_mib, wake_ups

ROUNDS = 11
DISPLAY = ":87"
FAVOURITES = 1000


class Screen:
    """The display, as far as it tells when a window has its first picture."""

    def __init__(self):
        self.x = ctypes.CDLL("libX11.so.6")
        self.x.XOpenDisplay.restype = ctypes.c_void_p
        self.x.XDefaultRootWindow.restype = ctypes.c_ulong
        self.x.XGetImage.restype = ctypes.c_void_p
        self.x.XGetPixel.restype = ctypes.c_ulong
        self.display = ctypes.c_void_p(self.x.XOpenDisplay(DISPLAY.encode()))
        self.root = ctypes.c_ulong(self.x.XDefaultRootWindow(self.display))

    def is_drawn(self):
        """Whether anything but the black root shows along the middle of the screen."""
        image = ctypes.c_void_p(self.x.XGetImage(self.display, self.root, 0, 400, 1280, 1,
                                                 ctypes.c_ulong(0xFFFFFFFF), 2))
        drawn = any(self.x.XGetPixel(image, column, 0) & 0xFFFFFF for column in range(0, 1280, 40))
        self.x.XDestroyImage(image)
        return drawn


def cpu_seconds(pid):
    """Processor time of all threads of the process, to the nanosecond."""
    total = 0
    for thread in os.listdir(f"/proc/{pid}/task"):
        with open(f"/proc/{pid}/task/{thread}/schedstat", encoding="ascii") as file:
            total += int(file.read().split()[0])
    return total / 1e9


def wait_until(condition, what):
    end = time.monotonic() + 20
    while not condition():
        if time.monotonic() > end:
            sys.exit(f"{what} did not come")
        time.sleep(0.0005)


def measure(screen, command, environment, idle=False):
    """Wall and CPU seconds to the first picture, PSS in MiB, wake-ups in 20 s (when asked for)."""
    wait_until(lambda: not screen.is_drawn(), "an empty screen")
    start = time.monotonic()
    process = subprocess.Popen(command, env=environment, stderr=subprocess.DEVNULL)
    wait_until(screen.is_drawn, f"the picture of {command[0]}")
    wall, cpu = time.monotonic() - start, cpu_seconds(process.pid)
    time.sleep(2)
    pss = pss_mib(process.pid)
    woken = wake_ups(process.pid)
    if idle:
        time.sleep(20)
    woken = wake_ups(process.pid) - woken
    process.terminate()
    process.wait()
    return wall, cpu, pss, woken


def prepare(build, work):
    """A home with the current weekend in its cache and a long list; returns the environment."""
    shutil.rmtree(work, ignore_errors=True)
    home = os.path.join(work, "home")
    for folder in ("data/Ostrova", "config", "run"):
        os.makedirs(os.path.join(home, folder), mode=0o700)
    programs = os.path.join(build, "src/programs")
    site = subprocess.Popen([os.path.join(programs, "ostrova-demo-site")], stdout=subprocess.PIPE,
                            text=True)
    address = site.stdout.readline().strip()
    environment = {"HOME": home, "PATH": os.environ["PATH"], "DISPLAY": DISPLAY,
                   "XDG_DATA_HOME": os.path.join(home, "data"), "QT_QPA_PLATFORM": "xcb",
                   "XDG_CONFIG_HOME": os.path.join(home, "config"), "LANG": "C.UTF-8",
                   "XDG_RUNTIME_DIR": os.path.join(home, "run"), "NO_AT_BRIDGE": "1",
                   "OSTROVA_SITE_HOST": address, "OSTROVA_MAKER_HOST": address}
    with open(os.path.join(home, "data/Ostrova/SearchList.txt"), "w", encoding="ascii") as list_file:
        for i in range(FAVOURITES):
            list_file.write(f'"Favourite {i}"\t"Artist {i * 3}"\r\n')
    os.makedirs(os.path.join(home, "config/Kelvane"))
    with open(os.path.join(home, "config/Kelvane/Ostrova.conf"), "w", encoding="ascii") as settings:
        settings.write("[Settings]\nCheckForUpgrades = 0\n")
    cli = os.path.join(programs, "ostrova-cli")
    subprocess.run([cli, "guest"], env=environment, capture_output=True, check=False)
    songs = subprocess.run([cli, "results", "--all", "--json"],
                           env=environment, capture_output=True, check=False)
    print(f"{len(songs.stdout.splitlines())} songs, {FAVOURITES} favourites, {ROUNDS} pairs")
    site.terminate()
    site.wait()
    return environment


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    build, work = (os.path.abspath(argument) for argument in sys.argv[1:])
    environment = prepare(build, work)
    server = subprocess.Popen(["Xvfb", DISPLAY, "-screen", "0", "1280x1024x24", "-nolisten", "tcp"],
                              stderr=subprocess.DEVNULL)
    try:
        wait_until(lambda: os.path.exists("/tmp/.X11-unix/X" + DISPLAY[1:]), "the display")
        time.sleep(0.5)
        screen = Screen()
        window = [os.path.join(build, "src/programs/ostrova-window")]
        label = [os.path.join(build, "bench/label")]
        measure(screen, label, environment)
        measure(screen, window, environment)
        pairs = [(measure(screen, window, environment), measure(screen, label, environment))
                 for _ in range(ROUNDS)]
        for name, column in (("time to the first picture", 0), ("CPU to the first picture", 1)):
            ours = statistics.median(pair[0][column] for pair in pairs)
            bare = statistics.median(pair[1][column] for pair in pairs)
            ratio = statistics.median(pair[0][column] / pair[1][column] for pair in pairs)
            print(f"{name}: {ours * 1000:.0f} ms, bare label {bare * 1000:.0f} ms, "
                  f"ratio {ratio:.2f} (at most 1.3)")
        more = statistics.median(pair[0][2] - pair[1][2] for pair in pairs)
        print(f"memory: {statistics.median(p[0][2] for p in pairs):.1f} MiB of PSS, "
              f"{more:.1f} MiB more than the label (at most 6)")
        woken = measure(screen, window, environment, idle=True)[3]
        print(f"open and idle: {woken} wake-ups in 20 s (at most 0)")
    finally:
        server.terminate()
        server.wait()


if __name__ == "__main__":
    main()
