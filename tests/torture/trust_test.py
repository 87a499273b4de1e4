"""That the preloaded libraries see and show what they are believed to: against the kernel's account
of the calls, and against another library's clock."""

import re
import shutil
from collections import Counter

import fault_test
from harness import *

SAME_CALL = {"openat": "open", "renameat2": "rename", "rename": "rename", "unlinkat": "unlink",
             "mkdirat": "mkdir", "pread64": "pread", "pwrite64": "pwrite", "linkat": "link"}
BY_PATH = re.compile(r'(\w+)\((?:(?:AT_FDCWD|\d+)(?:<([^>]*)>)?, )?"([^"]*)"')
BY_DESCRIPTOR = re.compile(r"(\w+)\(\d+<([^>]*)>")
CALLS = ("open openat creat rename renameat renameat2 link linkat unlink unlinkat mkdir mkdirat "
         "rmdir read pread64 write writev pwrite64 fsync fdatasync syncfs ftruncate fchmod close")


class FileLibraryTest(Case):
    def setUp(self):
        super().setUp()
        if shutil.which("strace") is None or SANITIZED:
            self.skipTest("there is no strace, or there are sanitizers")

    def traced(self, folder):
        """The calls below the watched folders that the kernel saw."""
        calls = Counter()
        roots = tuple(self.world.watched().split(":"))
        for line in "".join(file.read_text() for file in folder.iterdir()).splitlines():
            by_path, by_descriptor = BY_PATH.match(line), BY_DESCRIPTOR.match(line)
            if by_path:
                name, at, path = by_path.groups()
                path = path if path.startswith("/") else f"{at}/{path}"
                if name.startswith("rename"):  # the library notes the new name
                    path = re.findall(r'"([^"]*)"', line)[1]
            elif by_descriptor:
                name, path = by_descriptor.groups()
            else:
                continue
            if path.startswith(roots):
                calls["create" if "O_CREAT" in line else SAME_CALL.get(name, name)] += 1
        return calls

    def test_every_call_that_the_kernel_sees_is_counted(self):
        site = self.site("2026-07-20 12:00:00", "--latest-version", "2.0")
        for made in fault_test.SCENARIOS:
            if made in (fault_test.BackgroundFetch, fault_test.SaveChangedList):
                continue  # one is ended by a signal, the other starts another program
            with self.subTest(scenario=made.name):
                scenario = made()
                scenario.site = site
                sweep = Sweep(self, scenario, self.world)
                counted = Counter(call for call, _ in sweep.undisturbed.calls)
                sweep.set_up()
                trace = self.world.root / "trace"
                shutil.rmtree(trace, ignore_errors=True)
                trace.mkdir()
                self.world.run(["strace", "-ff", "-y", "-e", f"trace={CALLS.replace(' ', ',')}",
                                "-o", trace / "t", *scenario.command(self.world)])
                self.assertEqual(self.traced(trace), counted)


class ClockLibraryTest(Case):
    def test_another_librarys_clock_shows_the_same(self):
        if shutil.which("faketime") is None or SANITIZED:
            self.skipTest("there is no faketime, or there are sanitizers")
        clock = WallClock(self.world, 0)
        for zone in ("UTC", "Australia/Lord_Howe", "Pacific/Apia"):
            for seconds in (946609200, 1325203200, 1784379600, 2147515200):
                with self.subTest(zone=zone, seconds=seconds):
                    clock.set(seconds)
                    words = [PROGRAMS / "ostrova-cli", "weekend", "--offline", "--json"]
                    ours = self.world.run(words, {"TZ": zone, **clock.env})
                    theirs = self.world.run(["faketime", f"@{seconds}", *words], {"TZ": zone})
                    self.assertEqual(ours.status, 0, ours.err)
                    self.assertEqual(ours.out, theirs.out)


if __name__ == "__main__":
    main()
