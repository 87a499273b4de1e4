"""Standard streams that are closed, full, or read no further."""

from deeds import *

PROGRAM = PROGRAMS / "ostrova"
CLOSED = "<&- >&- 2>&-"


class StreamTest(Case):
    def calls(self):
        """Every call, with an output that no buffer or pipe holds where the call has that much."""
        data = ["--data-folder", self.world.data]
        page = self.world.cache / "20050107.htm"
        fetch = ["fetch", "--from", "2005-01-01", "--to", "2005-03-31", "--json", *data]
        self.assertEqual(self.world.run([CLI, *fetch]).status, 0)
        song = json.loads(self.world.run([CLI, "parse", "--json", page]).out.splitlines()[0])
        write(self.world.list, f'"{song["title"]}"\t""\r\n'.encode())
        return [[PROGRAM, "--help"], [PROGRAM, "--version"], *([CLI, *words] for words in (
            ["--help"], ["--version"], ["results", "--help"], ["key", *["x" * 2000] * 100],
            ["parse", *[page] * 50], ["match", "--json", *[page] * 50, *data],
            ["weekend", "--json", "--offline", *data], ["guest", "--json", "2005-01-07", *data],
            ["results", "2005-01-07", "--all", "--csv", *data], ["search", "--json", *data], fetch))]

    def test_what_can_not_be_printed_is_trouble_and_goes_nowhere_else(self):
        self.site()
        calls = self.calls()
        before = self.world.files()[0]
        for words in calls:
            whole = self.world.run(words)
            for redirection, wanted in (
                *((lost, (2, "")) for lost in (">&-", ">/dev/full", ">&- 2>&-", CLOSED)),
                *((mute, (whole.status, whole.out)) for mute in ("2>&-", "2>/dev/full", "<&- 2>&-")),
            ):
                with self.subTest(call=[str(word)[:30] for word in words[:3]], to=redirection):
                    run = self.world.run(["sh", "-c", f'exec "$@" {redirection}', "sh", *words])
                    self.assertEqual((run.status, run.out), wanted, run.err)
            self.end_early(words)
        self.assertTrue(before.items() <= self.world.files()[0].items(), "it went into a file")

    def end_early(self, words):
        reader, writer = os.pipe()
        os.close(reader)
        run = self.world.run(words, stdout=writer)
        os.close(writer)
        # The small front door has no more to say of it than of any other failure.
        self.assertEnds(run, {128 + signal.SIGPIPE} if words[0] == CLI else {2})
        self.assertNotIn("write", run.err)

    def test_the_background_process_goes_on_without_streams(self):
        self.site("2026-07-19 11:00:00")
        background = Background(self.world, WallClock(self.world, SUNDAY))
        background.start(prefix=["sh", "-c", f'exec "$@" {CLOSED}', "sh"])
        page = self.world.default_cache / "20260718.htm"
        self.wait_for(lambda: page.exists() and background.waits())
        self.assertEqual(background.end(), 0)
        self.assertTrue(page.read_bytes().rstrip().endswith(b"</html>"))


class WindowStreamTest(Case):
    def test_the_window_stays_without_streams(self):
        for closed in (CLOSED, "2>&-"):
            with self.subTest(closed=closed):
                window = Window(self.world, WallClock(self.world, SUNDAY), "stays")
                window.start(prefix=["sh", "-c", f'exec "$@" {closed}', "sh"])
                self.assertTrue(window.wait_for(lambda: "shown" in window.said()))
                # Nothing of its own that the toolkit's words would go into.
                self.assertEqual(os.readlink(f"/proc/{window.process.pid}/fd/2"), "/dev/null")
                self.assertEqual(window.end(), 0)


if __name__ == "__main__":
    main()
