"""Clocks that jump, zones that change, and days that are none, with the real programs."""

import json
import os
import subprocess
import time
from datetime import datetime, timedelta
from zoneinfo import ZoneInfo

from harness import *


def moment(text, zone="UTC"):
    """Epoch seconds of "YYYY-MM-DD HH:MM:SS" there."""
    return datetime.fromisoformat(text).replace(tzinfo=ZoneInfo(zone)).timestamp()


class ClockCase(Case):
    """A background process on a clock of the test's, and a site on the same."""

    def start(self, now, zone="UTC"):
        self.world.env["TZ"] = zone
        self.clock = WallClock(self.world, moment(now, zone))
        self.site(clock=self.clock, zone=zone)
        self.background = Background(self.world, self.clock)
        self.zone = zone
        self.wait_until_it_waits()

    def wait_until_it_waits(self):
        self.wait_for(self.background.waits)

    def set(self, now):
        self.clock.set(moment(now, self.zone))

    def found(self):
        """The weekends that were found, as "TIME DATE"."""
        lines = [line.split() for line in self.background.lines() if line.endswith(": found")]
        return [f"{words[0]} {words[1]} {words[4].rstrip(':')}" for words in lines]

    def wait_for_weekends(self, count):
        self.wait_for(lambda: len(self.found()) >= count)
        self.wait_until_it_waits()
        self.assertEqual(len(self.found()), count)

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


class SuspendTest(ClockCase):
    def test_a_machine_that_slept_over_friday_fetches_on_waking(self):
        self.start("2026-07-16 23:00:00", "Europe/Berlin")
        self.stays_quiet()
        self.set("2026-07-18 09:00:00")
        self.wait_for_weekends(1)
        self.assertRegex(self.found()[0], "2026-07-18 09:00:0. 2026-07-17")
        self.stays_quiet()
        self.end(windows=1)

    def test_three_weeks_of_sleep_are_caught_up_and_announced_once(self):
        self.start("2026-07-16 23:00:00")
        self.set("2026-08-01 09:00:00")
        self.wait_for_weekends(3)
        self.assertEqual([line.split()[2] for line in self.found()],
                         ["2026-07-17", "2026-07-24", "2026-07-31"])
        self.end(windows=1)

    def test_a_clock_that_is_set_back_brings_nothing_a_second_time(self):
        self.start("2026-07-17 12:30:00")
        self.set("2026-07-17 13:30:00")
        self.wait_for_weekends(1)
        for back in ("2026-07-17 12:30:00", "2026-07-16 13:30:00", "2016-07-17 13:30:00"):
            with self.subTest(back=back):
                self.set(back)
                self.stays_quiet()
                self.set("2026-07-17 13:31:00")
                self.stays_quiet()
        self.set("2026-07-24 12:59:59.8")
        self.wait_for_weekends(2)
        self.assertRegex(self.found()[1], "2026-07-24 13:00:0. 2026-07-24")
        self.end(windows=2)

    def test_a_clock_a_year_ahead_that_is_put_right_harms_nothing(self):
        self.start("2027-07-14 12:00:00")
        self.set("2026-07-16 12:00:00")
        self.stays_quiet()
        self.set("2026-07-17 12:59:59.8")
        self.wait_for_weekends(1)
        self.assertRegex(self.found()[0], "2026-07-17 13:00:0. 2026-07-17")
        self.end(windows=1)


# The Sundays on which the clocks change.
CHANGES = {
    "Europe/Berlin": ("2026-03-29", "2026-10-25"),
    "Australia/Lord_Howe": ("2026-10-04", "2027-04-04"),
    "Australia/Sydney": ("2026-10-04", "2027-04-04"),
    "America/New_York": ("2026-03-08", "2026-11-01"),
}


class SummerTimeTest(ClockCase):
    def test_friday_13_00_stays_friday_13_00_across_a_change(self):
        for zone in list(CHANGES) if WHOLE else list(CHANGES)[:2]:
            for sunday in CHANGES[zone]:
                with self.subTest(zone=zone, change=sunday):
                    change = datetime.fromisoformat(sunday)
                    friday = f"{change + timedelta(days=5):%Y-%m-%d}"
                    self.world.empty()
                    self.start(f"{change - timedelta(days=1):%Y-%m-%d} 20:00:00", zone)
                    self.wait_for_weekends(1)
                    self.set(f"{friday} 12:59:59.7")
                    self.wait_for_weekends(2)
                    self.assertRegex(self.found()[1], f"{friday} 13:00:0[0-2] {friday}")
                    self.end(windows=2)
                    names = {path.name for path in self.pages()}
                    days = [change + timedelta(days=days) for days in (-2, -1, 5, 6)]
                    shows = {f"{day:%Y%m%d}.htm" for day in days}
                    self.assertLessEqual(shows, names)

    def pages(self):
        return (self.world.home / ".local/share/Ostrova/Cache").iterdir()


class CalendarTest(ClockCase):
    def folder(self):
        return self.world.home / ".local/share/Ostrova/Cache"

    def test_days_on_which_calendars_break(self):
        for start, friday, pages in (
            # The Saturday has its own year's index and folder.
            ("2010-12-31 12:40:00", "2010-12-31", ["20101231.htm", "20110101.htm"]),
            ("2021-12-31 12:40:00", "2021-12-31", ["20211231.htm", "20220101am.htm",
                                                   "lists2021.htm"]),
            ("2027-12-31 12:40:00", "2027-12-31", ["20271231.htm", "20280101am.htm"]),
            ("1999-12-31 12:40:00", "1999-12-31", ["19991231.htm", "20000101.htm"]),
            ("2038-01-22 12:40:00", "2038-01-22", ["20380122.htm", "20380123.htm"]),
        ):
            with self.subTest(start=start):
                self.world.empty()
                self.start(start)
                self.set(f"{friday} 12:59:59.8")
                self.wait_for_weekends(1)
                self.assertRegex(self.found()[0], f"{friday} 13:00:0[0-2] {friday}")
                # The pages of the nights are out by Sunday.
                self.clock.set(moment(f"{friday} 12:00:00") + 2 * 86400)
                self.end(windows=1)
                run = self.world.run([PROGRAMS / "ostrova-cli", "results", friday, "--all"],
                                     self.clock.env)
                self.assertIn(run.status, (0, 1), run.err)
                self.assertLessEqual(set(pages), {path.name for path in self.folder().iterdir()})

    def test_a_friday_that_does_not_exist(self):
        zone = "Pacific/Apia"
        self.start("2011-12-28 12:00:00", zone)
        for now in ("2011-12-29 23:59:59.8", "2011-12-31 09:00:00", "2012-01-01 13:00:00",
                    "2012-01-06 12:59:59.8"):
            self.set(now)
            time.sleep(0.3)
            self.wait_until_it_waits()
            self.assertIsNone(self.background.process.poll(), now)
        self.wait_for(lambda: any("2012-01-06 13:00" in line for line in self.found()))
        self.end(windows=self.background.windows())
        self.set("2012-01-10 12:00:00")
        for weekend in ("2011-12-23", "2011-12-30", "2011-12-31", "2012-01-06"):
            run = self.world.run([PROGRAMS / "ostrova-cli", "results", weekend, "--all", "--json"],
                                 self.clock.env)
            self.assertQuietEnd(run, (0, 1, 2))
        names = {path.name for path in self.folder().iterdir()}
        self.assertLessEqual({"20111223.htm", "20111224.htm", "20120106.htm", "20120107.htm"},
                             names)

    def test_a_weekend_is_named_by_its_dates_in_every_zone(self):
        for zone in (*CHANGES, "Pacific/Apia", "Asia/Jerusalem", "Africa/Cairo", "America/Nuuk"):
            run = self.world.run(
                [PROGRAMS / "ostrova-cli", "weekend", "--at", "2027-10-30 20:00:00", "--json",
                 "--offline"],
                {"TZ": zone})
            self.assertEqual(run.status, 0, run.err)
            self.assertEqual([show["cacheName"] for show in json.loads(run.out)["shows"]],
                             ["20271029.htm", "20271030am.htm", "20271030.htm"], zone)


class ZoneChangeTest(ClockCase):
    """The system's zone is changed as an administrator does it, in a namespace of the test's."""

    def setUp(self):
        super().setUp()
        if subprocess.run(["unshare", "-rm", "true"], capture_output=True).returncode != 0:
            self.skipTest("namespaces are not permitted here")
        self.etc = self.world.root / "etc"
        subprocess.run(["cp", "-a", "/etc", self.etc], capture_output=True)

    def enter(self, zone):
        (self.etc / "new").symlink_to(f"/usr/share/zoneinfo/{zone}")
        os.replace(self.etc / "new", self.etc / "localtime")

    def start_in(self, zone, now):
        self.enter(zone)
        self.clock = WallClock(self.world, moment(now, zone))
        self.site(clock=self.clock, zone="Europe/Berlin")
        self.background = Background(self.world, self.clock, start=False)
        preload = self.background.extra.pop("LD_PRELOAD")
        inside = f'mount --bind {self.etc} /etc && unset TZ && LD_PRELOAD="{preload}" exec "$@"'
        self.background.start(prefix=["unshare", "-rm", "sh", "-c", inside, "sh"])
        self.wait_until_it_waits()

    def test_westwards_the_moment_moves_away(self):
        self.start_in("Europe/Berlin", "2026-07-17 12:40:00")
        self.enter("America/New_York")
        self.zone = "America/New_York"
        time.sleep(0.2)
        self.clock.set(moment("2026-07-17 13:00:05", "Europe/Berlin"))
        self.stays_quiet()
        self.set("2026-07-17 12:59:59.8")
        self.wait_for_weekends(1)
        self.assertRegex(self.found()[0], "2026-07-17 13:00:0. 2026-07-17")
        self.end(windows=1)

    def test_eastwards_it_has_come(self):
        self.start_in("America/New_York", "2026-07-17 12:40:00")
        self.enter("Europe/Berlin")
        self.wait_for_weekends(1)
        self.assertRegex(self.found()[0], "2026-07-17 18:40:.. 2026-07-17")
        self.end(windows=1)


if __name__ == "__main__":
    main()
