"""Standard streams that are closed, full, or read no further."""

from deeds import *

PROGRAM = PROGRAMS / "ostrova"
CLOSED = "<&- >&- 2>&-"


class StreamTest(Case):
    def setUp(self):
        super().setUp()
        self.site()
        data = ["--data-folder", self.world.data]
        fetch = ["fetch", "--from", "2005-01-01", "--to", "2005-03-31", "--json", *data]
        self.assertEqual(self.world.run([CLI, *fetch]).status, 0)
        page = self.world.cache / "20050107.htm"
        song = json.loads(self.world.run([CLI, "parse", "--json", page]).out.splitlines()[0])
        write(self.world.list, f'"{song["title"]}"\t""\r\n'.encode())
        # Every call, with an output that no buffer or pipe holds where the call has that much.
        self.calls = [[PROGRAM, "--help"], [PROGRAM, "--version"], *([CLI, *words] for words in (
            ["--help"], ["--version"], ["results", "--help"], ["key", *["x" * 2000] * 100],
            ["parse", *[page] * 50], ["match", "--json", *[page] * 50, *data],
            ["weekend", "--json", "--offline", *data], ["guest", "--json", "2005-01-07", *data],
            ["results", "2005-01-07", "--all", "--csv", *data], ["search", "--json", *data], fetch))]

    def each_call(self):
        for words in self.calls:
            with self.subTest(call=[str(word)[:30] for word in words[:3]]):
                yield words

    def shell(self, words, redirection):
        return self.world.run(["sh", "-c", f'exec "$@" {redirection}', "sh", *words])

    def test_a_closed_or_a_full_output_is_trouble(self):
        before = self.world.files()[0]
        for words in self.each_call():
            for redirection in (">&-", ">/dev/full", ">&- 2>&-", ">/dev/full 2>/dev/full", CLOSED):
                run = self.shell(words, redirection)
                self.assertEqual(run.status, 2, f"{redirection} {run.err}")
        after = {name: data for name, data in self.world.files()[0].items() if name in before}
        self.assertTrue(after == before, "what was printed went into a file")

    def test_a_closed_or_full_error_stream_changes_nothing(self):
        for words in self.each_call():
            whole = self.world.run(words)
            for redirection in ("2>&-", "2>/dev/full", "<&- 2>&-"):
                run = self.shell(words, redirection)
                self.assertEqual((run.status, run.out), (whole.status, whole.out))

    def test_a_pipe_that_ends_early_is_a_quiet_end(self):
        for words in self.each_call():
            reader, writer = os.pipe()
            os.close(reader)
            process = self.world.start(words, stdout=writer)
            os.close(writer)
            run = self.world.finish(process)
            # The small front door has no more to say of it than of any other failure.
            self.assertEnds(run, {128 + signal.SIGPIPE} if words[0] == CLI else {2})
            self.assertNotIn("write", run.err)

    def test_the_background_process_goes_on_without_streams(self):
        self.site("2026-07-19 11:00:00")
        for redirection in (CLOSED, ">/dev/full 2>&1"):
            self.world.empty()
            background = Background(self.world, WallClock(self.world, SUNDAY))
            background.start(prefix=["sh", "-c", f'exec "$@" {redirection}', "sh"])
            page = self.world.default_cache / "20260718.htm"
            self.wait_for(lambda: page.exists() and background.waits())
            self.assertEqual(background.end(), 0)
            self.assertTrue(page.read_bytes().rstrip().endswith(b"</html>"))


if __name__ == "__main__":
    main()
