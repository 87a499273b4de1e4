"""Standard streams that are closed, full, or read no further."""

import json
import os
import signal

from harness import *

CLI = PROGRAMS / "ostrova-cli"
PROGRAM = PROGRAMS / "ostrova"


class StreamTest(Case):
    def setUp(self):
        super().setUp()
        self.site()
        data = ["--data-folder", self.world.data]
        self.assertEqual(self.world.run([CLI, "fetch", "--from", "2005-01-01", "--to",
                                         "2005-03-31", *data]).status, 0)
        page = self.world.cache / "20050107.htm"
        song = json.loads(self.world.run([CLI, "parse", "--json", page]).out.splitlines()[0])
        list_ = f'"{song["title"]}"\t""\r\n'
        (self.world.data / "SearchList.txt").write_text(list_)
        # Every call, with an output that no buffer or pipe holds where the call has that much.
        self.calls = [
            [CLI, "--help"],
            [CLI, "--version"],
            [CLI, "results", "--help"],
            [CLI, "key", *["x" * 2000] * 100],
            [CLI, "parse", *[page] * 50],
            [CLI, "match", "--json", *[page] * 50, *data],
            [CLI, "weekend", "--json", "--offline", *data],
            [CLI, "guest", "--json", "2005-01-07", *data],
            [CLI, "results", "2005-01-07", "--all", "--csv", *data],
            [CLI, "search", "--json", *data],
            [CLI, "fetch", "--from", "2005-01-01", "--to", "2005-03-31", "--json", *data],
            [PROGRAM, "--help"],
            [PROGRAM, "--version"],
        ]

    def shell(self, words, redirection):
        return self.world.run(["sh", "-c", f'exec "$@" {redirection}', "sh", *words])

    def test_a_closed_or_a_full_output_is_trouble(self):
        for words in self.calls:
            for redirection in (">&-", ">/dev/full", ">&- 2>&-", ">/dev/full 2>/dev/full",
                                "<&- >&- 2>&-"):
                with self.subTest(call=[str(word)[:30] for word in words[:3]], to=redirection):
                    run = self.shell(words, redirection)
                    self.assertEqual(run.status, 2, run.err)

    def test_a_closed_or_full_error_stream_changes_nothing(self):
        for words in self.calls:
            with self.subTest(call=[str(word)[:30] for word in words[:3]]):
                whole = self.world.run(words)
                for redirection in ("2>&-", "2>/dev/full", "<&- 2>&-"):
                    run = self.shell(words, redirection)
                    self.assertEqual((run.status, run.out), (whole.status, whole.out))

    def test_a_pipe_that_ends_early_is_a_quiet_end(self):
        for words in self.calls:
            with self.subTest(call=[str(word)[:30] for word in words[:3]]):
                reader, writer = os.pipe()
                os.close(reader)
                process = self.world.start(words, stdout=writer)
                os.close(writer)
                err = process.communicate(timeout=PATIENCE)[1]
                # The small front door has no more to say of it than of any other failure.
                ends = (128 + signal.SIGPIPE,) if words[0] == CLI else (2,)
                self.assertIn(process.returncode, ends)
                self.assertNotIn("write", text(err))

    def test_nothing_of_it_touches_the_cache(self):
        for words in self.calls:
            self.world.run(words)
        before = self.world.files()[0]
        for words in self.calls:
            self.shell(words, "<&- >&- 2>&-")
        self.assertTrue(self.world.files()[0] == before)

    def test_the_background_process_goes_on_without_streams(self):
        for redirection in ("<&- >&- 2>&-", ">/dev/full 2>&1"):
            self.world.empty()
            self.site("2026-07-19 11:00:00")
            background = Background(self.world, WallClock(self.world, 1784458800), start=False)
            preload = background.extra.pop("LD_PRELOAD")
            inside = f'LD_PRELOAD="{preload}" exec "$@" {redirection}'
            background.start(prefix=["sh", "-c", inside, "sh"])
            page = self.world.home / ".local/share/Ostrova/Cache/20260718.htm"
            self.wait_for(page.exists)
            self.wait_for(background.waits)
            self.assertEqual(background.end(), 0)
            self.assertTrue(page.read_bytes().rstrip().endswith(b"</html>"))


if __name__ == "__main__":
    main()
