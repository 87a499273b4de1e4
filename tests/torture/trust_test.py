"""That the library before the file calls sees what it is believed to: all that the kernel sees."""

from collections import Counter

from deeds import *

TRACED = ("open openat creat rename renameat renameat2 link linkat unlink unlinkat mkdir mkdirat "
          "rmdir read pread64 write writev pwrite64 fsync fdatasync syncfs ftruncate fchmod close")
SAME_CALL = {"openat": "open", "renameat2": "rename", "unlinkat": "unlink", "mkdirat": "mkdir",
             "pread64": "pread", "pwrite64": "pwrite", "linkat": "link"}


class FileLibraryTest(Case):
    def traced(self, trace):
        """The calls below the watched folders; of two paths in a call the second counts."""
        calls = Counter()
        for line in "".join(file.read_text() for file in trace.iterdir()).splitlines():
            name = line.split("(")[0]
            paths = re.findall(r'(?:(?:AT_FDCWD|\d+)(?:<([^>]*)>)?, )?"([^"]*)"', line)
            if name in ("read", "write", "pread64", "pwrite64", "writev") or not paths:
                paths = [("", path) for path in re.findall(r"\(\d+<([^>]*)>", line)]
            if paths and os.path.join(*paths[-1]).startswith(tuple(self.world.watched().split(":"))):
                calls["create" if "O_CREAT" in line else SAME_CALL.get(name, name)] += 1
        return calls

    def test_every_call_that_the_kernel_sees_is_counted(self):
        if shutil.which("strace") is None or SANITIZED:
            self.skipTest("there is no strace, or there are sanitizers")
        trace = self.world.root / "trace"
        for scenario in SCENARIOS:
            if scenario in (BackgroundFetch, SaveChangedList):
                continue  # one is ended by a signal, the other starts another program
            with self.subTest(scenario=scenario.name):
                sweep = self.sweep(scenario)
                counted = Counter(call for call, _ in sweep.undisturbed.calls)
                sweep.set_up()
                remove(trace)
                trace.mkdir()
                self.world.run(["strace", "-ff", "-y", "-e", f"trace={TRACED.replace(' ', ',')}",
                                "-o", trace / "t", *sweep.scenario.command(self.world)])
                self.assertEqual(self.traced(trace), counted)


if __name__ == "__main__":
    main()
