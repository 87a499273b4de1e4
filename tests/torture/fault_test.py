"""A fault at every call, and at every request for memory, of the deeds that write the user's files."""

import json
import os
import time

from harness import *

OLD_LIST = b'"Old Song"\t"Old Artist"\r\n"If Heaven"\t""\r\n'
NEW_SONG = b'"New Song"\t"New Artist"\r\n'
SETTINGS = """[Settings]
LatestKnownVersion=1.9
CheckForUpgrades=1
LastCheckDay=100
WhenToOpen=1
Unknown=kept
Folder={data}
[Control]
MainWndHwnd=0
"""
INTERNET = b"[Internet Settings]\nEnableAutodial=1\n"


def write(path, data):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(data)


class SaveList(Scenario):
    name = "save-list"

    def prepare(self, world):
        write(world.data / "SearchList.txt", OLD_LIST)

    def command(self, world):
        program = world.program / "ostrova"
        return [SHIMS / "torture_driver", "save-list", world.data, program]

    def may_change(self, name, old, new):
        versions = super().may_change(name, old, new)
        if name.endswith("SearchList.txt"):
            # The second place, the program's folder, serves when the first does not; what could
            # not be read leaves the new song alone.
            versions |= {None, NEW_SONG, new["data/SearchList.txt"], *self.others()}
        return versions | {OLD_LIST, *self.others()} if "(changed" in name else versions

    def others(self):
        return []

    def judge(self, case, run, fault, world):
        found = world.files()[0]
        lists = b"".join(found.values())
        for line in OLD_LIST.splitlines():
            case.assertIn(line, lists, "a song is lost")
        said = run.out.splitlines()
        if fault == "memory" and run.status != 0:
            return
        if said[-1] == "saved":
            case.assertIn(NEW_SONG, lists)
            if said[:-1] == []:
                case.assertIn(NEW_SONG, found["data/SearchList.txt"])
            else:
                case.assertRegex(said[-2], "^(Warning: Couldn't save|Error: Couldn't load)")
        else:
            case.assertEqual(said[-1], "given up")
            case.assertRegex(said[-2], "^Question: Error when saving")


class SaveChangedList(SaveList):
    name = "save-changed-list"
    other = b'"Of Another Program"\t""\r\n'

    def command(self, world):
        write(world.root / "other", self.other)
        return [*super().command(world), world.root / "other"]

    def others(self):
        return [self.other]

    def judge(self, case, run, fault, world):
        if fault == "memory" and run.status != 0:
            return
        lists = b"".join(world.files()[0].values())
        case.assertIn(self.other, lists, "the other program's version is lost")
        if run.out.splitlines()[-1:] == ["saved"]:
            case.assertIn(NEW_SONG, lists)


class SaveSettings(Scenario):
    name = "save-settings"
    is_repeatable = True
    kept = b"Unknown=kept"

    def prepare(self, world):
        write(world.settings, SETTINGS.format(data=world.data).encode())

    def command(self, world):
        return [SHIMS / "torture_driver", "save-settings"]

    def judge(self, case, run, fault, world):
        if " saved" in run.out and "not saved" not in run.out:
            settings = world.settings.read_bytes()
            case.assertIn(b"LatestKnownVersion=9.9", settings)
            case.assertIn(self.kept, settings)


class SaveFirstSettings(SaveSettings):
    name = "save-first-settings"
    kept = b""

    def prepare(self, world):
        pass

    def may_change(self, name, old, new):
        # A folder for data that can't be made is the program's own.
        data = next(line for line in new[name].splitlines() if line.startswith(b"Folder="))
        return super().may_change(name, old, new) | {new[name].replace(data, b"Folder=/")}


class CachePage(Scenario):
    """A weekend of an indexed year, whose index and guest page are there in an older version."""

    saved = {}  # files as they are after an undisturbed run

    name = "cache-page"
    least_calls = 80
    sample = 45
    is_repeatable = True

    def save(self, world):
        if self.saved:
            return
        write(world.data / "SearchList.txt", OLD_LIST)
        write(world.internet, INTERNET)
        assert world.run(self.fetch(world)).status == 0
        self.saved = world.files()[0]
        world.empty()

    def prepare(self, world):
        self.save(world)
        for name, data in self.saved.items():
            if "Cache/lists" in name or "Cache/2026.htm" in name:
                write(world.root / name, data + b"<!-- older -->")
            elif "Cache" not in name:
                write(world.root / name, data)

    def fetch(self, world):
        return [PROGRAMS / "ostrova-cli", "results", "2026-07-17", "--all", "--json",
                "--data-folder", world.data]

    def command(self, world):
        return self.fetch(world)

    def may_change(self, name, old, new):
        versions = super().may_change(name, old, new)
        if "2026071" in name:  # without an index, the address is made from the date
            day = name.removeprefix("data/Cache/")[:8]
            for page in (f"archive/2026/{day}", "print/friday_print", "print/saturdayam_print",
                         "print/saturday_print"):
                versions.add(self.site.get(f"/vantra/playlist/{page}.htm"))
        # While a page is fetched the system is kept from dialling.
        return versions | {INTERNET.replace(b"1", b"0")} if "Internet.conf" in name else versions

    def judge(self, case, run, fault, world):
        if run.status == 2:
            case.assertIn("ostrova-cli: ", run.err)
            return
        case.assertEqual(run.status, self.undisturbed.status)
        if all(world.files()[0].get(name) == self.new[name] for name in self.new if "2026071" in name):
            case.assertEqual(run.out, self.undisturbed.out)


class ReadCache(CachePage):
    """The same weekend when every page is there: nothing may change, least of all go."""

    name = "read-cache"
    least_calls = 10
    sample = 30
    def prepare(self, world):
        self.save(world)
        for name, data in self.saved.items():
            write(world.root / name, data)

    def command(self, world):
        return [*self.fetch(world), "--offline"]

    def may_change(self, name, old, new):
        return {old.get(name)}


class Search(ReadCache):
    """A search of the whole archive says which pages it could not read."""

    name = "search"

    def command(self, world):
        return [PROGRAMS / "ostrova-cli", "search", "--title", "love", "--json",
                "--data-folder", world.data]


class BulkFetch(Scenario):
    name = "bulk-fetch"
    least_calls = 15
    is_repeatable = True

    def command(self, world):
        return [PROGRAMS / "ostrova-cli", "fetch", "--from", "2006-07-07", "--to", "2006-07-08",
                "--jobs", "1", "--json", "--data-folder", world.data]

    def judge(self, case, run, fault, world):
        pages = [json.loads(line) for line in run.out.splitlines()]
        for page in pages:
            there = (world.cache / page["page"]).exists()
            case.assertEqual(there, page["status"] == "fetched", page)
            if page["status"] == "failed":
                case.assertIn(page["page"], run.err)
        if run.status == 0:
            case.assertEqual(run.out, self.undisturbed.out)
        else:
            case.assertEqual(run.status, 2, run.err)
            case.assertIn("ostrova-cli: ", run.err)


class IndexedBulkFetch(BulkFetch):
    name = "indexed-bulk-fetch"
    least_calls = 25
    sample = 20

    def command(self, world):
        words = super().command(world)
        words[words.index("2006-07-07")] = "2026-07-10"
        words[words.index("2006-07-08")] = "2026-07-11"
        return words


class CheckUpgrades(Scenario):
    name = "check-upgrades"
    kind = "manual"

    def prepare(self, world):
        write(world.settings, SETTINGS.format(data=world.data).encode())
        write(world.internet, INTERNET)

    def command(self, world):
        return [SHIMS / "torture_driver", "check-upgrades", self.kind]

    def may_change(self, name, old, new):
        versions = super().may_change(name, old, new)
        if "Ostrova.conf" in name:  # an answer that did not come is asked for again tomorrow
            versions.add(self.not_checked(new[name]))
        if "LatestVantra.txt" in name:  # one that can't be removed is replaced next time
            versions.add(self.site.get("/Ostrova/LatestVersion.txt"))
        return versions | {INTERNET.replace(b"1", b"0")} if "Internet.conf" in name else versions

    @staticmethod
    def not_checked(settings):
        lines = settings.splitlines(keepends=True)
        day = [line for line in lines if line.startswith(b"LastCheckDay=")]
        return b"".join(lines).replace(day[0], b"LastCheckDay=100\n").replace(b"=2.0", b"=1.9")

    def judge(self, case, run, fault, world):
        if fault == "memory" and run.status != 0:
            return
        said = [line for line in run.out.splitlines() if "saved" not in line]
        case.assertGreaterEqual(len(said), 1, run.out)
        case.assertRegex(said[0], "^(Question: New version available|Error: Checking for latest)")


class CheckUpgradesSilently(CheckUpgrades):
    name = "check-upgrades-silently"
    kind = "automatic"

    def judge(self, case, run, fault, world):
        for line in run.out.splitlines():
            case.assertRegex(line, "^(Question: New version available|saved|not saved)")


class BackgroundFetch(CachePage):
    """The background process from its start, on a Sunday morning, until it waits."""

    name = "background"
    now = 1784458800  # 2026-07-19 11:00:00
    sample = 40
    memory_sample = 10
    is_repeatable = False

    def prepare(self, world):
        super().prepare(world)
        write(world.settings, SETTINGS.format(data=world.data).encode())

    def perform(self, world, extra):
        background = Background(world, WallClock(world, self.now), extra)
        came = background.wait_for(lambda: any("weekend of" in line for line in background.lines()))
        time.sleep(0.02)  # what follows is to be failed as well
        status = background.end()
        return Run(status if came else None, "", "\n".join(background.lines()))

    def may_change(self, name, old, new):
        if "LatestVantra.txt" in name:
            return {None, self.site.get("/Ostrova/LatestVersion.txt")}
        if name.startswith("home/.local"):  # the data folder when the settings can't be read
            return {None, new.get(name.replace("home/.local/share/Ostrova", "data"))}
        return super().may_change(name, old, new)

    def judge(self, case, run, fault, world):
        if run.status == 0:
            case.assertIn("weekend of 2026-07-17: ", run.err)


SCENARIOS = [SaveList, SaveChangedList, SaveSettings, SaveFirstSettings, CachePage, ReadCache,
             Search, BulkFetch, IndexedBulkFetch, CheckUpgrades, CheckUpgradesSilently, BackgroundFetch]


class FaultTest(Case):
    """A test for each scenario; made below."""

    def sweep(self, scenario):
        scenario.site = self.site("2026-07-20 12:00:00", "--latest-version", "2.0")
        sweep = Sweep(self, scenario(), self.world)
        calls = sweep.undisturbed.calls
        self.assertGreaterEqual(len(calls), scenario.least_calls, calls)
        faults = faults_of(calls)
        for number, call, fault in faults if WHOLE else faults[: scenario.sample]:
            with self.subTest(number=number, of=len(calls), call=call, fault=fault):
                sweep.fault(number, call, fault)
        done = len(faults) if WHOLE else min(len(faults), scenario.sample)
        print(f"{scenario.name}: {len(calls)} calls, {done} of {len(faults)} faults", flush=True)


class MemoryTest(Case):
    """The same with a request for memory that is refused."""

    def sweep(self, scenario):
        if SANITIZED:
            self.skipTest("the sanitizer has an allocator of its own")
        scenario.site = self.site("2026-07-20 12:00:00", "--latest-version", "2.0")
        sweep = Sweep(self, scenario(), self.world)
        requests = requests_of(sweep)
        numbers = list(range(1, requests + 1))
        if not WHOLE:
            self.assertGreater(requests, 10)
            numbers = random.Random(1).sample(numbers, min(len(numbers), scenario.memory_sample))
        for number in numbers:
            which = "all" if number % 5 == 0 else "one"
            with self.subTest(number=number, of=requests, which=which):
                sweep.starve(number, which)
        print(f"{scenario.name}: {len(numbers)} of {requests} requests for memory", flush=True)


class LeftoverTest(Case):
    """What killed runs left is removed by the next start, wherever they were writing."""

    def leave(self, folders):
        for folder in folders:
            leftover = folder / ".ostrova-0123456789abcdef.tmp"
            write(leftover, b"half a fi")
            os.utime(leftover, (time.time() - 7200,) * 2)

    def test_the_background_process_sweeps_every_folder(self):
        write(self.world.settings, SETTINGS.format(data=self.world.data).encode())
        background = Background(self.world, WallClock(self.world, time.time()), start=False)
        self.leave([self.world.data, self.world.cache, self.world.settings.parent,
                    self.world.runtime / "ostrova", background.folder])
        background.start()
        self.wait_for(lambda: not self.world.files()[1])
        self.wait_for(lambda: not list(background.folder.glob(".*")))
        self.assertEqual(background.end(), 0)

    def test_the_terminal_program_sweeps_the_data_folder(self):
        self.leave([self.world.data, self.world.cache])
        words = ["fetch", "--from", "1998-01-02", "--to", "1998-01-02"]
        self.world.run([PROGRAMS / "ostrova-cli", *words, "--data-folder", self.world.data])
        self.assertEqual(self.world.files()[1], [])


for made in SCENARIOS:
    method = "test_" + made.name.replace("-", "_")
    setattr(FaultTest, method, lambda self, made=made: self.sweep(made))
    setattr(MemoryTest, method, lambda self, made=made: self.sweep(made))

if __name__ == "__main__":
    main()
