"""Disks, folders and files that are not as a program expects them."""

import os
import resource
import shutil
import socket
import subprocess
import time

import fault_test
from fault_test import (INTERNET, OLD_LIST, SETTINGS, BulkFetch, CachePage, CheckUpgrades,
                        IndexedBulkFetch, ReadCache, SaveChangedList, SaveList, SaveSettings,
                        Search, write)
from harness import *

CLI = PROGRAMS / "ostrova-cli"
DRIVER = SHIMS / "torture_driver"
PAGE = 4096
NOBODY = 65534


class DiskCase(Case):
    """Scenarios in a world that is made worse before each deed."""

    def sweep(self, scenario, worsen, levels, statuses=(0, 1, 2)):
        scenario.site = self.site("2026-07-20 12:00:00", "--latest-version", "2.0")
        sweep = Sweep(self, scenario(), self.world)
        sweep.scenario.statuses = set(statuses)
        for level in levels:
            with self.subTest(scenario=scenario.name, level=level):
                sweep.set_up()
                undo = worsen(level)
                run = sweep.perform({})
                if undo:
                    undo()
                sweep.ask(run, "disk", killed=False)


class DescriptorTest(DiskCase):
    """Descriptors run out at every number that is left."""

    def setUp(self):
        super().setUp()
        if SANITIZED:
            self.skipTest("the sanitizer needs descriptors itself")

    def limit(self, count):
        self.world.options["preexec_fn"] = lambda: resource.setrlimit(
            resource.RLIMIT_NOFILE, (count, count))
        return self.world.options.clear

    def test_nothing_is_lost_when_descriptors_run_out(self):
        counts = range(4, 24) if WHOLE else (4, 5, 6, 8, 16)
        for scenario in fault_test.SCENARIOS:
            if scenario not in (fault_test.BackgroundFetch, SaveChangedList):
                self.sweep(scenario, self.limit, counts)

    def test_the_background_process_waits_and_goes_on(self):
        self.site("2026-07-19 11:00:00")
        for count in range(5, 24) if WHOLE else (5, 9, 16):
            with self.subTest(count=count):
                self.world.empty()
                self.limit(count)
                background = Background(self.world, WallClock(self.world, 1784458800))
                self.world.options.clear()
                came = background.wait_for(lambda: "weekend of 2026-07-17" in
                                           "".join(background.lines()))
                time.sleep(0.2)
                self.assertTrue(came)
                self.assertLess(background.processor_seconds(), 1)
                self.assertEqual(background.end(), 0)


class FullDiskTest(DiskCase):
    """A file system that is full, but for so many pages."""

    def setUp(self):
        super().setUp()
        enter_namespace(self)
        mount("-t", "tmpfs", "-o", "size=2m,mode=700", "none", self.world.root)
        self.addCleanup(subprocess.run, ["umount", self.world.root])

    def fill(self, free):
        filler = self.world.root / "filler"
        with filler.open("wb", buffering=0) as file:
            try:
                while file.write(bytes(PAGE)):
                    pass
            except OSError:
                pass
            size = file.tell()
            file.truncate(max(size - free * PAGE, 0))
        return filler.unlink

    def test_nothing_is_lost_on_a_full_disk(self):
        for scenario, most in ((SaveList, 4), (SaveChangedList, 4), (SaveSettings, 4),
                               (CheckUpgrades, 5), (BulkFetch, 24), (CachePage, 40),
                               (ReadCache, 2), (IndexedBulkFetch, 30)):
            self.sweep(scenario, self.fill, range(0, most, 1 if WHOLE or most < 6 else 7))


class ReadOnlyTest(DiskCase):
    """A file system that can't be written to: everything is read as before, nothing changes."""

    def setUp(self):
        super().setUp()
        enter_namespace(self)
        mount("-t", "tmpfs", "-o", "mode=700", "none", self.world.root)
        self.addCleanup(subprocess.run, ["umount", self.world.root])

    def lock(self, _):
        mount("-o", "remount,bind,ro", self.world.root)
        return lambda: mount("-o", "remount,bind,rw", self.world.root)

    def test_what_can_be_read_is_shown_and_what_can_not_be_saved_is_said(self):
        for scenario in (SaveList, SaveSettings, CheckUpgrades, BulkFetch, CachePage):
            unchanging = {"may_change": lambda self, name, old, new: {old.get(name)}}
            self.sweep(type(scenario.name, (scenario,), unchanging), self.lock, ["read-only"])
        self.sweep(ReadCache, self.lock, ["read-only"], statuses=[0])


class ModesTest(DiskCase):
    """Files and folders that their modes protect, for a user who is not root."""

    def setUp(self):
        super().setUp()
        if os.getuid() == 0:
            self.world.options["user"] = NOBODY
            try:
                self.give_away()
                self.world.run([CLI, "--version"])
            except (PermissionError, subprocess.CalledProcessError):
                self.skipTest("no other user can run the programs here")

    def give_away(self):
        subprocess.run(["chown", "-R", str(NOBODY), self.world.root], check=True)

    def save(self, folder_mode, file_mode):
        self.world.empty()
        path = self.world.data / "SearchList.txt"
        write(path, OLD_LIST)
        path.chmod(file_mode)
        if os.getuid() == 0:
            self.give_away()
        self.world.data.chmod(folder_mode)
        run = self.world.run([DRIVER, "save-list", self.world.data, self.world.program / "ostrova"])
        self.world.data.chmod(0o700)
        path.chmod(0o600)
        self.assertEqual(path.read_bytes(), OLD_LIST)
        self.assertEqual(run.status, 0, run.err)
        beside = self.world.program / "SearchList.txt"
        return run.out.splitlines(), beside.read_bytes() if beside.exists() else b""

    def test_a_list_that_is_protected_goes_beside_the_program(self):
        for folder_mode, file_mode in ((0o555, 0o644), (0o755, 0o444)):
            said, beside = self.save(folder_mode, file_mode)
            self.assertRegex(said[0], "^Warning: Couldn't save your search list to")
            self.assertIn(b"New Song", beside)
            self.assertIn(b"Old Song", beside)

    def test_a_list_that_can_not_be_read_is_never_saved_over(self):
        said, beside = self.save(0o755, 0o000)
        self.assertRegex(said[0], "^Error: Couldn't load your search list from")
        self.assertRegex(said[1], "^Warning: Couldn't save your search list to")
        self.assertNotIn(b"Old Song", beside)

    def test_one_that_is_too_large_neither(self):
        self.world.options.clear()
        self.world.empty()
        path = self.world.data / "SearchList.txt"
        with path.open("wb") as file:
            file.truncate((64 << 20) + 1)
        run = self.world.run([DRIVER, "save-list", self.world.data, self.world.program / "ostrova"])
        self.assertRegex(run.out, "^Error: Couldn't load your search list from")
        self.assertEqual(path.stat().st_size, (64 << 20) + 1)


def make_special(path, kind):
    remove(path)
    path.parent.mkdir(parents=True, exist_ok=True)
    if kind == "fifo":
        os.mkfifo(path, 0o600)
    elif kind == "folder":
        (path / "inside").mkdir(parents=True)
    elif kind == "socket":
        folder = os.open(path.parent, os.O_RDONLY)  # the path may be too long for a socket
        with socket.socket(socket.AF_UNIX) as made:
            made.bind(f"/proc/self/fd/{folder}/{path.name}")
        os.close(folder)
    else:
        path.symlink_to({"circle": path.name, "dangling": "nowhere"}.get(kind, kind))


class SpecialFileTest(Case):
    """A FIFO, a device, a folder, where a file or a folder is expected: no hang, nothing lost."""

    KINDS = ("fifo", "/dev/zero", "/dev/full", "folder", "socket", "circle", "dangling")

    def places(self):
        world = self.world
        return {
            "list": world.data / "SearchList.txt",
            "settings": world.settings,
            "internet": world.internet,
            "page": world.cache / "20260717.htm",
            "index": world.cache / "lists2026.htm",
            "guest": world.cache / "2026.htm",
            "current guest": world.data / "guestDefault.htm",
            "version file": world.runtime / "ostrova/LatestVantra.txt",
            "window lock": world.runtime / "ostrova/window.lock",
            "cache": world.cache,
            "data": world.data,
            "runtime": world.runtime / "ostrova",
        }

    def deeds(self, path):
        data = ["--data-folder", self.world.data]
        weekend = ["2026-07-17", *data]
        return (
            [CLI, "results", *weekend],
            [CLI, "results", "--offline", *weekend],
            [CLI, "guest", *weekend],
            [CLI, "search", *data],
            [CLI, "fetch", "--from", "2026-07-17", "--to", "2026-07-18", *data],
            [CLI, "search"],  # the settings' data folder
            [CLI, "parse", path],
            [CLI, "match", "--list", path, path],
            [CLI, "guest", "2026-07-17", "--year-page", path, "--address", "http://h.test/g"],
            [DRIVER, "save-list", self.world.data, self.world.program / "ostrova"],
            [DRIVER, "save-settings"],
            [DRIVER, "check-upgrades", "manual"],
        )

    def test_no_kind_of_file_makes_any_call_hang(self):
        self.site("2026-07-20 12:00:00", "--latest-version", "2.0")
        for name, path in self.places().items():
            for kind in self.KINDS if WHOLE else self.KINDS[:1]:
                self.lay_out(path, kind)
                before = path.lstat()
                for words in self.deeds(path):
                    with self.subTest(place=name, kind=kind, call=[str(word) for word in words]):
                        run = self.world.run(words)
                        self.assertQuietEnd(run, (0, 1, 2))
                        self.assertEqual(self.world.files()[1], [])
                        # The program's own answer file it may remove, whatever it is.
                        if kind in ("fifo", "socket") and name != "version file":
                            self.assertEqual(path.lstat().st_ino, before.st_ino)

    def lay_out(self, path, kind):
        self.world.empty()
        write(self.world.settings, SETTINGS.format(data=self.world.data).encode())
        write(self.world.internet, INTERNET)
        write(self.world.data / "SearchList.txt", OLD_LIST)
        (self.world.runtime / "ostrova").mkdir(mode=0o700)
        make_special(path, kind)

    def test_the_background_process_neither(self):
        self.site("2026-07-19 11:00:00")
        for name, path in self.places().items():
            for kind in self.KINDS if WHOLE else self.KINDS[:1]:
                with self.subTest(place=name, kind=kind):
                    self.lay_out(path, kind)
                    background = Background(self.world, WallClock(self.world, 1784458800))
                    came = background.wait_for(lambda: "weekend of 2026-07-17" in
                                               "".join(background.lines()))
                    self.assertTrue(came, background.lines())
                    self.assertEqual(background.end(), 0)


class VanishingTest(Case):
    """Folders that are deleted while the programs run."""

    def test_a_cache_that_is_deleted_between_two_weekends_is_made_again(self):
        write(self.world.settings, SETTINGS.format(data=self.world.data).encode())
        clock = WallClock(self.world, 1784458800)  # Sunday 2026-07-19 11:00:00
        self.site(clock=clock)
        background = Background(self.world, clock)
        for number, folder in enumerate((self.world.cache, self.world.data, None), 1):
            self.wait_for(lambda: len(background.lines()) >= number)
            self.wait_for(background.waits)
            if folder is not None:
                shutil.rmtree(folder)
            clock.set(1784458800 + number * 7 * 86400)
        self.assertEqual(background.end(), 0)
        self.assertEqual([line.split()[-1] for line in background.lines()], ["found"] * 3)
        self.assertTrue((self.world.home / ".local/share/Ostrova/Cache/20260731.htm").exists())

    def test_a_cache_that_is_deleted_under_a_bulk_fetch_costs_pages_and_no_more(self):
        self.site("2026-07-20 12:00:00")
        words = ["fetch", "--from", "1998-01-01", "--to", "2003-12-31", "--json"]
        process = self.world.start([CLI, *words, "--data-folder", self.world.data])
        while process.poll() is None:
            shutil.rmtree(self.world.cache, ignore_errors=True)
            time.sleep(0.05)
        self.assertQuietEnd(self.world.finish(process), (0, 2))
        for page in self.world.cache.glob("*.htm"):
            self.assertTrue(page.read_bytes().rstrip().endswith(b"</html>"), page)
        again = self.world.run([CLI, *words, "--data-folder", self.world.data])
        self.assertEqual(again.status, 0, again.err)


class TogetherTest(Case):
    """The background process and a bulk fetch on one cache at once."""

    def test_no_page_is_torn_and_nothing_announced_twice(self):
        self.site("2026-07-19 11:00:00")
        range_ = ["--from", "2026-07-17", "--to", "2026-07-18"]
        words = [CLI, "fetch", *range_, "--json", "--data-folder", self.world.data]
        whole = None
        for number in range(200 if WHOLE else 5):
            with self.subTest(round=number):
                self.world.empty()
                write(self.world.settings, SETTINGS.format(data=self.world.data).encode()
                      .replace(b"WhenToOpen=1", b"WhenToOpen=0"))
                background = Background(self.world, WallClock(self.world, 1784458800))
                time.sleep(number % 10 * 0.003)
                run = self.world.run(words, {"TORTURE_CLOCK": str(self.world.root / "clock"),
                                             "LD_PRELOAD": shim("clock")})
                self.assertEqual(run.status, 0, run.err)
                self.wait_for(background.waits)
                # Pages that were there before it looked are no news.
                found = [line for line in background.lines() if line.endswith(": found")]
                self.wait_for(lambda: background.windows() >= len(found))
                self.assertEqual(background.end(), 0)
                self.assertEqual(background.lines(), found)
                self.assertLessEqual(len(found), 1)
                self.assertEqual(background.windows(), len(found))
                files, leftovers = self.world.files()
                pages = {name: data for name, data in files.items() if "Cache/2026071" in name}
                whole = whole or pages
                self.assertEqual(leftovers, [])
                self.assertEqual(len(pages), 3)
                self.assertTrue(pages == whole, "a page is torn")


if __name__ == "__main__":
    main()
