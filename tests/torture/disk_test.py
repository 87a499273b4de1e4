"""Disks, folders and files that are not as a program expects them."""

import resource

from deeds import *


class DiskCase(Case):
    """Scenarios in a world that is made worse before each deed."""

    def worsen(self, scenario, worsen, levels):
        sweep = self.sweep(scenario)
        for level in levels:
            with self.subTest(scenario=scenario.name, level=level):
                sweep.set_up()
                undo = worsen(level)
                try:
                    run = sweep.perform()
                finally:
                    undo()
                sweep.ask(run, "disk")


class DescriptorTest(DiskCase):
    def limit(self, count):
        self.world.options["preexec_fn"] = lambda: resource.setrlimit(
            resource.RLIMIT_NOFILE, (count, count))
        return self.world.options.clear

    def test_nothing_is_lost_when_descriptors_run_out(self):
        if SANITIZED:
            self.skipTest("the sanitizer needs descriptors itself")
        for scenario in SCENARIOS:
            if scenario is SaveChangedList:
                continue  # starts another program
            least = 5 if scenario is BackgroundFetch else 4  # what the libraries before it need
            self.worsen(scenario, self.limit, range(least, 24) if WHOLE else (least, 6, 9, 16))


class ReadOnlyTest(DiskCase):
    def lock(self, _):
        mount("-o", "remount,bind,ro", self.world.root)
        return lambda: mount("-o", "remount,bind,rw", self.world.root)

    def test_what_can_be_read_is_shown_and_what_can_not_be_saved_is_said(self):
        need_mounts(self)
        mount("--bind", self.world.root, self.world.root)
        self.addCleanup(subprocess.run, ["umount", self.world.root])
        for scenario in (SaveList, SaveSettings, CheckUpgrades, BulkFetch, CachePage, ReadCache):
            unchanging = {"may_change": lambda self, name, old, new: {old.get(name)}}
            self.worsen(type(scenario.name, (scenario,), unchanging), self.lock, ["read-only"])


class SpecialFileTest(Case):
    """A FIFO, or a device, where a file or a folder is expected: no hang, nothing lost."""

    def each_place(self):
        """Makes every kind of thing at every place, one after the other."""
        world = self.world
        cache = [world.cache / name for name in ("20260717.htm", "lists2026.htm", "2026.htm")]
        own = [world.runtime / "ostrova" / name for name in ("LatestVantra.txt", "window.lock", "")]
        for path in (world.list, world.settings, world.internet, world.data / "guestDefault.htm",
                     world.cache, world.data, *cache, *own):
            for kind in ("fifo", "/dev/zero", "/dev/full")[:3 if WHOLE else 1]:
                world.empty()
                write_settings(world)
                write(world.internet, INTERNET)
                write(world.list, OLD_LIST)
                own[-1].mkdir(mode=0o700)
                remove(path)
                path.parent.mkdir(exist_ok=True)
                if kind == "fifo":
                    os.mkfifo(path, 0o600)
                else:
                    path.symlink_to(kind)
                yield path, kind

    def calls(self, path):
        data = ["--data-folder", self.world.data]
        weekend = ["2026-07-17", *data]
        address = ["--year-page", path, "--address", "http://h.test/g"]
        return [
            *([CLI, *words] for words in (
                ["results", *weekend], ["results", "--offline", *weekend], ["guest", *weekend],
                ["search", *data], ["fetch", "--from", "2026-07-17", "--to", "2026-07-18", *data],
                ["search"], ["parse", path], ["match", "--list", path, path],
                ["guest", "2026-07-17", *address])),
            *([DRIVER, *words] for words in (
                ["save-list", self.world.data, self.world.program / "ostrova"], ["save-settings"],
                ["check-upgrades", "manual"])),
        ]

    def test_no_kind_of_file_makes_any_call_hang(self):
        self.site("2026-07-19 11:00:00", "--latest-version", "2.0")
        clock = WallClock(self.world, SUNDAY)
        for path, kind in self.each_place():
            before = path.lstat()
            for words in self.calls(path):
                with self.subTest(place=path, kind=kind, call=[str(word) for word in words]):
                    self.assertEnds(self.world.run(words, clock.env), {0, 1, 2})
                    self.assertEqual(self.world.files()[1], [])
                    # The program's own answer file it may remove, whatever it is.
                    if kind == "fifo" and path.name != "LatestVantra.txt":
                        self.assertEqual(path.lstat().st_ino, before.st_ino)
            with self.subTest(place=path, kind=kind):
                background = Background(self.world, clock).start()
                self.wait_for(background.waits)
                self.assertEqual(background.end(), 0)


class VanishingTest(Case):
    """Folders that are deleted while the programs run."""

    def test_a_cache_that_is_deleted_between_two_weekends_is_made_again(self):
        write_settings(self.world)
        clock = WallClock(self.world, SUNDAY)
        self.site(clock=clock)
        background = Background(self.world, clock).start()
        for number, folder in enumerate((self.world.cache, self.world.data, None), 1):
            self.wait_for(lambda: len(background.lines()) >= number and background.waits())
            if folder is not None:
                shutil.rmtree(folder)
            clock.set(SUNDAY + number * 7 * 86400)
        self.assertEqual(background.end(), 0)
        self.assertEqual([line.split()[-1] for line in background.lines()], ["found"] * 3)
        self.assertTrue((self.world.default_cache / "20260731.htm").exists())

    def test_a_cache_that_is_deleted_under_a_bulk_fetch_costs_pages_and_no_more(self):
        self.site()
        words = [CLI, "fetch", "--from", "1998-01-01", "--to", "2003-12-31", "--json",
                 "--data-folder", self.world.data]
        process = self.world.start(words)
        while process.poll() is None:
            shutil.rmtree(self.world.cache, ignore_errors=True)
            time.sleep(0.05)
        self.assertEnds(self.world.finish(process), {0, 2})
        survivors = {page: page.read_bytes() for page in self.world.cache.glob("*.htm")}
        shutil.rmtree(self.world.cache, ignore_errors=True)
        self.assertEnds(self.world.run(words), {0})
        for page, data in survivors.items():
            self.assertTrue(page.read_bytes() == data, f"{page} is torn")


if __name__ == "__main__":
    give_mounts()
    main()
