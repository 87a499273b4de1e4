"""A fault at every call, and at every request for memory, of the deeds that use the user's files."""

from deeds import *


class FaultTest(Case):
    def torture(self, scenario):
        sweep = self.sweep(scenario)
        calls, faults = sweep.undisturbed.calls, sweep.faults()
        self.assertGreaterEqual(len(calls), scenario.least_calls, calls)
        chosen = faults if WHOLE else faults[: scenario.sample]
        for number, call, fault in chosen:
            with self.subTest(number=number, call=calls[number - 1], fault=fault):
                sweep.fault(number, fault)
        print(f"{scenario.name}: {len(calls)} calls, {len(chosen)} of {len(faults)} faults", flush=True)


class MemoryTest(Case):
    """The same with a request for memory that is refused."""

    def torture(self, scenario):
        if SANITIZED:
            self.skipTest("the sanitizer has an allocator of its own")
        sweep = self.sweep(scenario)
        requests = sweep.requests()
        self.assertGreater(requests, 10)
        numbers = range(1, requests + 1)
        if not WHOLE:
            numbers = random.Random(1).sample(numbers, min(requests, scenario.memory_sample))
        for number in numbers:
            with self.subTest(number=number, of=requests):
                sweep.starve(number)
        print(f"{scenario.name}: {len(numbers)} of {requests} requests for memory", flush=True)


class LeftoverTest(Case):
    def test_what_killed_runs_left_is_removed_by_the_next_start(self):
        write_settings(self.world)
        background = Background(self.world, WallClock(self.world, time.time()))
        folders = [self.world.data, self.world.cache, self.world.settings.parent,
                   self.world.runtime / "ostrova", background.folder]
        for start in (background.start, lambda: self.world.run(
                [CLI, "fetch", "--from", "1998-01-02", "--to", "1998-01-02", "--data-folder",
                 self.world.data])):
            leftovers = [folder / ".ostrova-0123456789abcdef.tmp" for folder in folders]
            for leftover in leftovers:
                write(leftover, b"half a fi")
                os.utime(leftover, (time.time() - 7200,) * 2)
            start()
            self.wait_for(lambda: not any(leftover.exists() for leftover in leftovers))
            folders = folders[:2]  # the program for the terminal knows these
        self.assertEqual(background.end(), 0)


class DiallingTest(Case):
    def test_an_end_in_the_middle_of_a_transfer_leaves_it_as_it_was(self):
        self.site("2026-07-19 11:00:00", "--fault", "silent")
        # A weekend is fetched, the check for upgrades is waited for, or both.
        for day, is_check_due in ((SUNDAY, 0), (SUNDAY, 1), (SUNDAY + 3 * 86400, 1)):
            with self.subTest(day=day, is_check_due=is_check_due):
                write_settings(self.world, CheckForUpgrades=is_check_due)
                write(self.world.internet, INTERNET)
                background = Background(self.world, WallClock(self.world, day)).start()
                self.wait_for(lambda: self.world.internet.read_bytes() == DIALLING)
                start = time.monotonic()
                self.assertEqual(background.end(), 0)
                self.assertLess(time.monotonic() - start, 2)
                self.assertEqual(self.world.internet.read_bytes(), INTERNET)
                self.assertEqual(background.lines(), [])


def add_tests(case, scenarios):
    for scenario in scenarios:
        name = "test_" + scenario.name.replace("-", "_")
        setattr(case, name, lambda self, scenario=scenario: self.torture(scenario))


add_tests(FaultTest, [*SCENARIOS, *WINDOW_SCENARIOS])
add_tests(MemoryTest, SCENARIOS)
if __name__ == "__main__":
    main()
