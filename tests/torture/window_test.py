"""The window beside others of its kind: a second one, the background process, the terminal."""

from datetime import datetime, timezone

from deeds import *

ROUNDS = 200 if WHOLE else 10
FRIDAY = int(datetime(2026, 7, 17, 12, 40, tzinfo=timezone.utc).timestamp())
RELEASE = FRIDAY + 20 * 60
OFFER = "Question: New Vantra playlists are now available!"


class PairTest(Case):
    """Two starts in the same moment."""

    def test_exactly_one_window_opens_and_the_other_says_why(self):
        self.site()
        clock = WallClock(self.world, SUNDAY)
        for number in range(100 if WHOLE else 10):
            with self.subTest(pair=number):
                if number % 2 == 0:  # without and with all that a first start makes
                    self.world.empty()
                pair = [Window(self.world, clock, "stays", program="ostrova") for _ in range(2)]
                for window in pair:
                    window.start()
                self.wait_for(lambda: any(window.process.poll() is not None for window in pair))
                pair.sort(key=lambda window: window.process.poll() is None)
                self.assertEqual(pair[0].wait(), 0)
                self.assertEqual(pair[0].said(), [
                    "Error: Ostrova is already running. You may not run two at once."])
                self.wait_for(pair[1].said)
                self.assertEqual(pair[1].end(), 0)
                self.assertEqual(pair[1].said(), ["shown"])


class TogetherTest(Case):
    """The window, the background process and a bulk fetch on one cache, when a weekend comes out."""

    def test_no_page_is_torn_and_nothing_announced_twice(self):
        clock = WallClock(self.world, RELEASE)
        self.site(clock=clock)
        self.fetch(clock)
        whole = self.pages()
        self.assertEqual(len(whole), 3)
        rounds = []
        for number in range(ROUNDS):
            with self.subTest(round=number):
                self.world.empty()
                write_settings(self.world, CheckForUpgrades=0, WhenToOpen=0)
                clock.set(FRIDAY)
                window = Window(self.world, clock, "stays")
                background = Background(self.world, clock).start()
                if number % 2 == 0:  # it waits already, or is opened in this moment
                    window.start()
                    self.wait_for(window.said)
                self.wait_for(background.waits)
                clock.set(RELEASE)
                if number % 2 == 1:
                    window.start()
                time.sleep(number % 10 * 0.003)
                self.fetch(clock)
                self.wait_for(lambda: background.found() and background.waits() and window.said())
                if number % 2 == 0:
                    self.wait_for(lambda: len(window.said()) > 1)
                self.assertEqual((window.end(), background.end()), (0, 0))
                self.assertEqual(len(background.found()), 1, background.lines())
                questions = [said for said in window.said() if said.startswith(OFFER)]
                self.assertEqual(len(window.said()), 1 + len(questions), window.said())
                rounds.append((background, len(questions)))
                self.assertEqual(self.world.files()[1], [])
                self.assertTrue(self.pages() == whole, "a page is torn")
        # At the end, as a window that is opened is not waited for.
        announced = [background.windows() + questions for background, questions in rounds]
        self.assertLessEqual(max(announced), 1, announced)

    def pages(self):
        return {path.name: path.read_bytes() for path in self.world.cache.glob("2026071[78]*")}

    def fetch(self, clock):
        run = self.world.run([CLI, "fetch", "--from", "2026-07-17", "--to", "2026-07-18",
                              "--data-folder", self.world.data], clock.env)
        self.assertEnds(run, {0})


if __name__ == "__main__":
    main()
