"""Clocks that jump, zones that change, and days that are none, with the real programs."""

from datetime import datetime, timedelta
from zoneinfo import ZoneInfo

from deeds import *


def moment(text, zone="UTC"):
    """Epoch seconds of "YYYY-MM-DD HH:MM:SS" there."""
    return datetime.fromisoformat(text).replace(tzinfo=ZoneInfo(zone)).timestamp()


class ClockCase(Case):
    """A background process on a clock of the test's, and a site on the same."""

    def start(self, now, zone="UTC"):
        self.world.empty()
        self.world.env["TZ"] = self.zone = zone
        self.clock = WallClock(self.world, moment(now, zone))
        self.site(clock=self.clock, zone=zone)
        self.background = Background(self.world, self.clock).start()
        self.wait_for(self.background.waits)

    def set(self, now, zone=None):
        self.clock.set(moment(now, zone or self.zone))

    def finds(self, *weekends):
        """Waits until these, as "TIME DATE", are all that was found."""
        self.wait_for(lambda: len(self.background.found()) >= len(weekends))
        self.wait_for(self.background.waits)
        self.assertRegex("\n".join(self.background.found()), "^" + "\n".join(weekends) + "$")

    def stays_quiet(self, seconds=0.6):
        """Nothing is fetched, and the processor is not kept busy."""
        before = self.background.lines()
        used = self.background.processor_seconds()
        time.sleep(seconds)
        self.assertEqual(self.background.lines(), before)
        self.assertLess(self.background.processor_seconds() - used, seconds / 5)

    def end(self, windows):
        self.wait_for(lambda: self.background.windows() >= windows)
        self.assertEqual(self.background.windows(), windows)
        self.assertEqual(self.background.end(), 0)

    def pages(self):
        return {path.name for path in self.world.default_cache.iterdir()}


class JumpTest(ClockCase):
    def test_a_weekend_is_fetched_and_announced_once_however_the_clock_jumps(self):
        friday = "2026-07-17 13:00:0. 2026-07-17"
        for start, zone, jumps, windows in (
            # Asleep over a Friday, and over three.
            ("2026-07-16 23:00:00", "Europe/Berlin",
             [("2026-07-18 09:00:00", ["2026-07-18 09:00:0. 2026-07-17"])], 1),
            ("2026-07-16 23:00:00", "UTC",
             [("2026-08-01 09:00:00", [".* 2026-07-17", ".* 2026-07-24", ".* 2026-07-31"])], 1),
            # Set back by an hour, a day and ten years, and put right.
            ("2026-07-17 12:30:00", "UTC",
             [("2026-07-17 12:59:59.8", [friday]), ("2026-07-17 12:30:00", []),
              ("2026-07-17 13:31:00", []), ("2026-07-16 13:30:00", []), ("2026-07-17 13:31:00", []),
              ("2016-07-17 13:30:00", []), ("2026-07-17 13:31:00", []),
              ("2026-07-24 12:59:59.8", ["2026-07-24 13:00:0. 2026-07-24"])], 2),
            # A year ahead, and put right.
            ("2027-07-14 12:00:00", "UTC",
             [("2026-07-16 12:00:00", []), ("2026-07-17 12:59:59.8", [friday])], 1),
        ):
            with self.subTest(start=start, zone=zone):
                self.start(start, zone)
                found = []
                for now, more in jumps:
                    self.set(now)
                    found += more
                    self.finds(*found)
                    if not more:
                        self.stays_quiet()
                self.end(windows)


# The Sundays on which the clocks change.
CHANGES = {
    "Europe/Berlin": ("2026-03-29", "2026-10-25"),
    "Australia/Lord_Howe": ("2026-10-04", "2027-04-04"),
    "Australia/Sydney": ("2026-10-04", "2027-04-04"),
    "America/New_York": ("2026-03-08", "2026-11-01"),
}


class CalendarTest(ClockCase):
    def test_friday_13_00_stays_friday_13_00_across_a_change_of_summer_time(self):
        for zone in list(CHANGES) if WHOLE else list(CHANGES)[:2]:
            for sunday in CHANGES[zone]:
                with self.subTest(zone=zone, change=sunday):
                    change = datetime.fromisoformat(sunday)
                    before, friday = (f"{change + timedelta(days=days):%Y-%m-%d}" for days in (-1, 5))
                    self.start(f"{before} 20:00:00", zone)
                    self.finds(".*")
                    self.set(f"{friday} 12:59:59.7")
                    self.finds(".*", f"{friday} 13:00:0[0-2] {friday}")
                    self.end(windows=2)
                    days = [change + timedelta(days=days) for days in (-2, -1, 5, 6)]
                    self.assertLessEqual({f"{day:%Y%m%d}.htm" for day in days}, self.pages())

    def test_days_on_which_calendars_break(self):
        for friday, pages in (
            # The Saturday has its own year's index and folder.
            ("2010-12-31", {"20101231.htm", "20110101.htm"}),
            ("2021-12-31", {"20211231.htm", "20220101am.htm", "lists2021.htm"}),
            ("1999-12-31", {"19991231.htm", "20000101.htm"}),
            ("2038-01-22", {"20380122.htm", "20380123.htm"}),
        ):
            with self.subTest(friday=friday):
                self.start(f"{friday} 12:40:00")
                self.set(f"{friday} 12:59:59.8")
                self.finds(f"{friday} 13:00:0[0-2] {friday}")
                # The pages of the nights are out by Sunday.
                self.clock.set(moment(f"{friday} 12:00:00") + 2 * 86400)
                self.end(windows=1)
                run = self.world.run([CLI, "results", friday, "--all"], self.clock.env)
                self.assertEnds(run, {0, 1})
                self.assertLessEqual(pages, self.pages())

    def test_a_friday_that_does_not_exist(self):
        self.start("2011-12-28 12:00:00", "Pacific/Apia")
        for now in ("2011-12-29 23:59:59.8", "2011-12-31 09:00:00", "2012-01-01 13:00:00",
                    "2012-01-06 12:59:59.8"):
            self.set(now)
            time.sleep(0.3)
            self.wait_for(self.background.waits)
        self.wait_for(lambda: "2012-01-06 13:00" in "".join(self.background.found()))
        self.assertEqual(self.background.end(), 0)
        self.set("2012-01-10 12:00:00")
        for weekend in ("2011-12-23", "2011-12-30", "2011-12-31", "2012-01-06"):
            run = self.world.run([CLI, "results", weekend, "--all", "--json"], self.clock.env)
            self.assertEnds(run, {0, 1, 2})
        self.assertLessEqual({"20111223.htm", "20111224.htm", "20120106.htm", "20120107.htm"},
                             self.pages())


class ZoneChangeTest(ClockCase):
    """The system's zone is changed as an administrator does it, on mounts of the test's."""

    def setUp(self):
        super().setUp()
        need_mounts(self)
        self.etc = self.world.root / "etc"
        subprocess.run(["cp", "-a", "/etc", self.etc], capture_output=True)

    def enter(self, zone):
        (self.etc / "new").symlink_to(f"/usr/share/zoneinfo/{zone}")
        os.replace(self.etc / "new", self.etc / "localtime")
        self.zone = zone

    def test_the_moment_goes_and_comes_with_the_zone(self):
        self.enter("Europe/Berlin")
        self.clock = WallClock(self.world, moment("2026-07-17 12:40:00", self.zone))
        self.site(clock=self.clock, zone=self.zone)
        self.background = Background(self.world, self.clock)
        inside = f'mount --bind {self.etc} /etc && unset TZ && exec "$@"'
        self.background.start(prefix=["unshare", "--mount", "sh", "-c", inside, "sh"])
        self.wait_for(self.background.waits)
        self.enter("America/New_York")
        time.sleep(0.2)
        self.set("2026-07-17 13:00:05", "Europe/Berlin")
        self.stays_quiet()
        self.enter("Europe/Berlin")
        self.finds("2026-07-17 13:00:.. 2026-07-17")
        self.enter("America/New_York")
        self.set("2026-07-24 12:59:59.8")
        self.finds(".*", "2026-07-24 13:00:.. 2026-07-24")
        self.end(windows=2)


if __name__ == "__main__":
    give_mounts()
    main()
