"""The deeds that read and write the user's files, and what is right after a fault in each."""

import json

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
DIALLING = INTERNET.replace(b"1", b"0")  # while a page is fetched the system is kept from it
WEEKEND = ["2026-07-17", "--all", "--json"]
SUNDAY = 1784458800  # 2026-07-19 11:00:00 UTC


def write_settings(world, **values):
    text = SETTINGS.format(data=world.data)
    for name, value in values.items():
        text = re.sub(f"(?<={name}=).*", str(value), text)
    write(world.settings, text.encode())


class SaveList(Scenario):
    name = "save-list"
    others = []

    def prepare(self, world):
        write(world.list, OLD_LIST)

    def command(self, world):
        return [DRIVER, "save-list", world.data, world.program / "ostrova"]

    def may_change(self, name, old, new):
        versions = super().may_change(name, old, new)
        if name.endswith("SearchList.txt"):
            # The second place, the program's folder, serves when the first does not; what could
            # not be read leaves the new song alone.
            versions |= {None, NEW_SONG, new["data/SearchList.txt"], *self.others}
        return versions | {OLD_LIST, *self.others} if "(changed" in name else versions

    def judge(self, case, run, fault, world):
        found = world.files()[0]
        lists = b"".join(found.values())
        for line in self.others or OLD_LIST.splitlines():
            case.assertIn(line, lists, "a song is lost")
        if fault == "memory" and run.status != 0:
            return
        *before, last = run.out.splitlines()
        if last == "saved":
            case.assertIn(NEW_SONG, lists if before or self.others else found["data/SearchList.txt"])
        else:
            case.assertEqual(last, "given up")
        if before:
            said = "Warning: Couldn't save|Error: Couldn't load" if last == "saved" else \
                "Question: Error when saving"
            case.assertRegex(before[-1], f"^({said})")


class SaveChangedList(SaveList):
    name = "save-changed-list"
    others = [b'"Of Another Program"\t""\r\n']

    def command(self, world):
        write(world.root / "other", self.others[0])
        return [*super().command(world), world.root / "other"]


class SaveSettings(Scenario):
    name = "save-settings"
    is_repeatable = True
    kept = b"Unknown=kept"

    def prepare(self, world):
        write_settings(world)

    def command(self, world):
        return [DRIVER, "save-settings"]

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
        elsewhere = re.sub(rb"(?<=Folder=).*", b"/", new[name])
        return super().may_change(name, old, new) | {elsewhere}


class CachePage(Scenario):
    """A weekend of an indexed year, whose index and guest page are there in an older version."""

    name = "cache-page"
    least_calls = 80
    sample = 45
    is_repeatable = True
    is_cached = False  # whether every page is there
    saved = {}  # files as they are after an undisturbed run

    def prepare(self, world):
        if not self.saved:
            write(world.list, OLD_LIST)
            write(world.internet, INTERNET)
            assert self.fill(world).status == 0
            self.saved.update(world.files()[0])
            world.empty()
        for name, data in self.saved.items():
            if self.is_cached or "Cache" not in name:
                write(world.root / name, data)
            elif "Cache/lists" in name or "Cache/2026.htm" in name:
                write(world.root / name, data + b"<!-- older -->")

    def fill(self, world):
        return world.run(self.fetch(world))

    def fetch(self, world):
        return [CLI, "results", *WEEKEND, "--data-folder", world.data]

    command = fetch

    def may_change(self, name, old, new):
        versions = super().may_change(name, old, new)
        if "2026071" in name:  # without an index, the address is made from the date
            day = name.removeprefix("data/Cache/")[:8]
            for page in (f"archive/2026/{day}", "print/friday_print", "print/saturdayam_print",
                         "print/saturday_print"):
                versions.add(self.site.get(f"/vantra/playlist/{page}.htm"))
        return versions | {DIALLING} if "Internet.conf" in name else versions

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
    is_cached = True

    def command(self, world):
        return [*self.fetch(world), "--offline"]

    def may_change(self, name, old, new):
        return {old.get(name)}


class BulkFetch(Scenario):
    name = "bulk-fetch"
    least_calls = 15
    is_repeatable = True

    def command(self, world):
        return [CLI, "fetch", "--from", "2006-07-07", "--to", "2006-07-08", "--jobs", "1", "--json",
                "--data-folder", world.data]

    def judge(self, case, run, fault, world):
        for page in map(json.loads, run.out.splitlines()):
            there = (world.cache / page["page"]).exists()
            case.assertEqual(there, page["status"] == "fetched", page)
            if page["status"] == "failed":
                case.assertIn(page["page"], run.err)
        if run.status == 0:
            case.assertEqual(run.out, self.undisturbed.out)
        else:
            case.assertEqual(run.status, 2, run.err)
            case.assertIn("ostrova-cli: ", run.err)


class CheckUpgrades(Scenario):
    name = "check-upgrades"
    kind = "manual"
    says = "(Question: New version available|Error: Checking for latest)"

    def prepare(self, world):
        write_settings(world)
        write(world.internet, INTERNET)

    def command(self, world):
        return [DRIVER, "check-upgrades", self.kind]

    def may_change(self, name, old, new):
        versions = super().may_change(name, old, new)
        if "Ostrova.conf" in name:  # an answer that did not come is asked for again tomorrow
            asked = re.sub(rb"(?<=LastCheckDay=).*", b"100", new[name])
            versions.add(asked.replace(b"=2.0", b"=1.9"))
        if "LatestVantra.txt" in name:  # one that can't be removed is replaced next time
            versions.add(self.site.get("/Ostrova/LatestVersion.txt"))
        return versions | {DIALLING} if "Internet.conf" in name else versions

    def judge(self, case, run, fault, world):
        if fault != "memory" or run.status == 0:
            case.assertRegex(run.out, f"^{self.says}")


class CheckUpgradesSilently(CheckUpgrades):
    name = "check-upgrades-silently"
    kind = "automatic"
    says = "(Question: New version available[^\n]*\n)?(not )?saved\n$"


class BackgroundFetch(CachePage):
    """The background process from its start, on a Sunday morning, until it waits."""

    name = "background"
    sample = 40
    memory_sample = 10
    is_repeatable = False

    def prepare(self, world):
        super().prepare(world)
        write_settings(world)

    def perform(self, world, preload, extra):
        background = Background(world, WallClock(world, SUNDAY), preload, extra).start()
        came = background.wait_for(lambda: any("weekend of" in line for line in background.lines()))
        # What follows is to be failed as well, and the check for upgrades to be over.
        came = came and background.wait_for(background.sleeps)
        status = background.end()
        return Run(status if came else None, "", "\n".join(background.lines()))

    def may_change(self, name, old, new):
        if "LatestVantra.txt" in name:
            return {None, self.site.get("/Ostrova/LatestVersion.txt")}
        if name.startswith("home/.local"):  # the data folder when the settings can't be read
            name = name.replace("home/.local/share/Ostrova", "data")
            return {None, self.saved.get(name), new.get(name)}
        return super().may_change(name, old, new)

    def judge(self, case, run, fault, world):
        if run.status == 0:
            case.assertIn("weekend of 2026-07-17: ", run.err)


class StartAndClose(BackgroundFetch):
    """The window from its start, on a Sunday morning, until its user closes it."""

    name = "window"
    hand = "close"
    statuses = {0}
    least_calls = 150
    boxes = ("^(shown$|New version available: |Error: Failed to download |Error: Couldn't open "
             "|Error: Couldn't load your search list from |Warning: Couldn't save your search list "
             "to |Error when saving song/artist list: Couldn't save your list )")
    errors = ("^(The window can't be locked against a second one: |The settings can't be read; "
              "|The search list |ostrova: This plugin does not support )")
    excuse = "Couldn't save your|The settings can't be read"  # for a list that is not in its place

    def prepare(self, world):
        super().prepare(world)
        write_settings(world, CheckForUpgrades=0)

    def perform(self, world, preload, extra):
        window = Window(world, WallClock(world, SUNDAY), self.hand, preload, extra).start()
        status = window.wait()
        return Run(status, "\n".join(window.said()), "\n".join(window.lines()))

    def is_ours(self, path):  # the toolkit looks for its own
        return not re.search("/runtime$|/home/.fontconfig|/program/[a-z]", path)

    def may_change(self, name, old, new):
        versions = super().may_change(name, old, new)
        if name.endswith("Ostrova.conf"):  # no folder, so that the next start looks for the list
            versions.add(re.sub(rb"(Folder=.*)", rb"\1/SearchList.txt", new[name]))
        if "SearchList" in name and not name.startswith("data/"):
            # The places that serve instead; with no song when none could be read.
            versions |= {None, b"", new["data/SearchList.txt"]}
        return versions

    def judge(self, case, run, fault, world):
        said, lists = run.out.splitlines(), world.files()[0]
        case.assertIn("shown", said)
        for box in said:
            case.assertRegex(box, self.boxes)
        for line in run.err.splitlines():
            case.assertRegex(line, self.errors)
        saved = [name for name, data in lists.items() if data == self.new["data/SearchList.txt"]]
        if saved[:1] != ["data/SearchList.txt"]:
            case.assertRegex(f"{run.out}\n{run.err}\n{saved}", self.excuse)


class SessionEnd(StartAndClose):
    """The same when every page is there, until the session ends: nobody is asked any more."""

    name = "session-end"
    hand = "end"
    excuse = (r"\[.+\]$|kept as|could not be saved anywhere|The settings can't be read"
              "|Couldn't load your")
    least_calls = 80
    is_cached = True
    saved = {}

    def fill(self, world):
        write_settings(world, CheckForUpgrades=0)
        return self.perform(world, (), {})

    def prepare(self, world):
        super().prepare(world)
        write(world.list, OLD_LIST)


WINDOW_SCENARIOS = [StartAndClose, SessionEnd]
SCENARIOS = [SaveList, SaveChangedList, SaveSettings, SaveFirstSettings, CachePage, ReadCache,
             BulkFetch, CheckUpgrades, CheckUpgradesSilently, BackgroundFetch]
