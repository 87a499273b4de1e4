#!/usr/bin/env python3
"""Times whole programs against their baselines and prints a table of ratios.

  fetch    the archive over one connection, against curl -K that only downloads the same pages (wall)
  search   over the whole cached archive, against cat of the same files (CPU, warm)
  waiting  memory, threads and wake-ups of `ostrova -A`

Usage: whole_programs.py PROGRAMS_FOLDER ARCHIVE_FOLDER WORK_FOLDER
"""

import os
import shutil
import statistics
import subprocess
import sys
import time

from process_figures import pss_mib, wake_ups

ROUNDS = 5
SAMPLE_LIST = os.path.join(os.path.dirname(__file__), "..", "demo", "data", "SampleSearchList.txt")


def run(command, environment=None):
    """Wall and CPU seconds of one run of `command`, its output thrown away."""
    start = time.monotonic()
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                               env=environment)
    _, status, usage = os.wait4(process.pid, 0)
    wall = time.monotonic() - start
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode not in (0, 1):
        sys.exit(f"{command[0]} ended with status {process.returncode}")
    return wall, usage.ru_utime + usage.ru_stime


def compare(ours, baseline, which, before_each=lambda: None):
    """Medians of both, and the median of their ratios, run in turn."""
    pairs = []
    for _ in range(ROUNDS):
        before_each()
        a = run(*ours)[which]
        before_each()
        b = run(*baseline)[which]
        pairs.append((a, b, a / b))
    return [statistics.median(column) for column in zip(*pairs)]


def row(name, values, limit):
    ours, baseline, ratio = values
    print(f"{name:<44} {ours:9.3f} s {baseline:9.3f} s {ratio:8.2f} {limit:>8}")


def page_addresses(archive, address):
    """The address of every page of the archive folder, as the site has it."""
    result = []
    for name in sorted(os.listdir(archive)):
        if not (name.endswith(".htm") and name[:8].isdigit()):
            continue
        year = name[:4]
        page = name if int(year) >= 2007 else name[:8] + ".htm"
        result.append((name, f"{address}/vantra/playlist/archive/{year}/{page}"))
    return result


def bench_fetch(programs, archive, work):
    site = subprocess.Popen([os.path.join(programs, "ostrova-demo-site")], stdout=subprocess.PIPE,
                            text=True)
    try:
        address = site.stdout.readline().strip()
        folder = os.path.join(work, "fetched")
        config = os.path.join(work, "curl.cfg")
        with open(config, "w", encoding="ascii") as file:
            for name, url in page_addresses(archive, address):
                file.write(f'url = "{url}"\noutput = "{folder}/Cache/{name}"\n')

        def empty():
            shutil.rmtree(folder, ignore_errors=True)
            os.makedirs(os.path.join(folder, "Cache"))

        ours = [os.path.join(programs, "ostrova-cli"), "fetch", "--site-host", address,
                "--data-folder", folder, "--jobs", "1", "--from", "1998-01-02", "--to",
                "2025-12-27"]
        row("fetch the archive / curl -K (wall)",
            compare((ours,), (["curl", "-s", "-K", config],), 0, empty), 1.2)
    finally:
        site.terminate()
        site.wait()


def bench_search(programs, archive, work):
    folder = os.path.join(work, "searched")
    os.makedirs(folder, exist_ok=True)
    cache = os.path.join(folder, "Cache")
    if not os.path.exists(cache):
        os.symlink(os.path.abspath(archive), cache)
    shutil.copy(SAMPLE_LIST, os.path.join(folder, "SearchList.txt"))
    pages = [os.path.join(archive, name) for name, _ in page_addresses(archive, "")]
    ours = [os.path.join(programs, "ostrova-cli"), "search", "--data-folder", folder]
    for which, kind in ((1, "CPU"), (0, "wall")):
        row(f"search the archive / cat ({kind})", compare((ours,), (["cat", *pages],), which), 8)


def bench_waiting(programs, work):
    home = os.path.join(work, "home")
    shutil.rmtree(home, ignore_errors=True)
    os.makedirs(home)
    site = subprocess.Popen([os.path.join(programs, "ostrova-demo-site")], stdout=subprocess.PIPE,
                            text=True)
    environment = {"HOME": home, "OSTROVA_SITE_HOST": site.stdout.readline().strip(),
                   "OSTROVA_MAKER_HOST": "http://127.0.0.1:9", "PATH": os.environ["PATH"]}
    waiting = subprocess.Popen([os.path.join(programs, "ostrova"), "-A"], env=environment,
                               stderr=subprocess.DEVNULL)
    try:
        time.sleep(5)  # it has started and settled
        before = wake_ups(waiting.pid)
        time.sleep(60)
        after = wake_ups(waiting.pid)
        threads = len(os.listdir(f"/proc/{waiting.pid}/task"))
        print(f"ostrova -A while it waits: {pss_mib(waiting.pid):.1f} MiB of PSS (at most 8), {threads} "
              f"thread (1), {after - before} wake-ups in 60 s (0)")
    finally:
        waiting.terminate()
        waiting.wait()
        site.terminate()
        site.wait()


def main():
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    programs, archive, work = sys.argv[1:]
    os.makedirs(work, exist_ok=True)
    print(f"{'whole programs':<44} {'ours':>11} {'baseline':>11} {'ratio':>8} {'at most':>8}")
    bench_search(programs, archive, work)
    bench_fetch(programs, archive, work)
    bench_waiting(programs, work)


if __name__ == "__main__":
    main()
