#!/usr/bin/python3
"""Whole programs at a desk, from start to end. Usage: scenarios.py PROGRAMS_FOLDER SCENARIO"""

import os
import shutil
import signal
import time

from desk import expect, find, has_focus, has_text, press, run, shows, texts, wait_for, walk

WEDNESDAY = "2026-11-25 12:00:00"
# A start never looks sooner than a quarter of an hour later: this one at 13:00:00.
FRIDAY_NOON = "2026-11-27 12:44:00 x120"
FRIDAY = "2026-11-27 13:00:05"
OFFER = "New Vantra playlists are now available!"


def open_tab(window, name):
    press(window, "page tab", name)
    wait_for(f"the page {name}", lambda: shows(find(window, "page tab", name)))


def songs_of(window):
    """The texts of the list in front, cell by cell."""
    for thing in walk(window):
        if thing.get_role_name() in ("tree", "tree table", "table") and shows(thing):
            return [cell.get_name() for cell in walk(thing) if "header" not in cell.get_role_name()]
    return []


def close(desk, program):
    desk.in_front("Ostrova")
    desk.key("Escape")
    expect(program.ended(), 0)


def first_start(desk):
    """An empty list; a favourite added by keys alone; found; still there at the next start."""
    desk.open_site(WEDNESDAY)
    program = desk.start(WEDNESDAY)
    window = desk.window("Ostrova")
    open_tab(window, "Friday")
    cells = wait_for("songs", lambda: songs_of(window))
    title = cells[1]
    open_tab(window, "Search List")
    edit = find(window, "text", "Song name")
    wait_for("the focus", lambda: edit.grab_focus() and has_focus(edit))
    desk.type(title)
    desk.key("Return")
    wait_for("the row", lambda: title in songs_of(window))
    press(window, "push button", "Search Now")
    wait_for("the match", lambda: "Friday night" in songs_of(window) and title in songs_of(window))
    close(desk, program)
    expect(desk.read_list(), [f'"{title}"\t""'])
    program = desk.start(WEDNESDAY)
    window = desk.window("Ostrova")
    wait_for("the match", lambda: title in songs_of(window))
    close(desk, program)


def answer(desk, title, text, button):
    """Reads a box and presses one of its buttons."""
    box = desk.window(title)
    has_text(box, text)
    press(box, "push button", button)
    desk.gone(title)


def choose_first_year(desk, *site_options):
    """A window in which the programme's first year has just been chosen."""
    desk.open_site(WEDNESDAY, *site_options)
    program = desk.start(WEDNESDAY)
    window = desk.window("Ostrova")
    open_tab(window, "Friday")
    press(window, "combo box", "2026")
    find(window, "list")
    desk.key("End", "Return")
    return program, window


def friday(desk, choice, shown):
    desk.write_list(("", "The Beatles"))
    desk.open_site(FRIDAY)
    program = desk.start(FRIDAY_NOON)
    window = desk.window("Ostrova")
    answer(desk, "Question", OFFER, choice)
    open_tab(window, "Friday")
    has_text(window, shown)
    close(desk, program)


def friday_yes(desk):
    """Friday 13:00 arrives; the user wants to see the new playlists."""
    friday(desk, "Yes", "Friday night, 27 November")


def friday_no(desk):
    """The user stays with the old ones."""
    friday(desk, "No", "Friday night, 20 November")


def retry(desk):
    """Playlists that come late are fetched a quarter of an hour later, without a word before."""
    desk.open_site(FRIDAY_NOON, "--release-delay", "10")
    program = desk.start(FRIDAY_NOON)
    answer(desk, "Question", OFFER, "Yes")
    open_tab(desk.window("Ostrova"), "Friday")
    has_text(desk.window("Ostrova"), "Friday night, 27 November")
    close(desk, program)


def fallback(desk):
    """On a Friday whose pages are not out yet the weekend before is shown, without a message."""
    desk.write_list(("", "The Beatles"))
    desk.open_site(FRIDAY, "--release-delay", "600")
    program = desk.start(FRIDAY)
    window = desk.window("Ostrova")
    open_tab(window, "Friday")
    has_text(window, "Friday night, 20 November")
    has_no_box(desk)
    close(desk, program)


def has_no_box(desk):
    expect([title for title, _ in desk.windows() if title != "Ostrova"], [])


def no_site(desk):
    """Without a network the window opens all the same, after one message."""
    program = desk.start(WEDNESDAY)
    answer(desk, "Error", "Failed to download Vantra playlists.", "OK")
    desk.window("Ostrova")
    close(desk, program)


def old_weekend(desk):
    """Back to the first year of the programme."""
    desk.write_list(("", "The Beatles"))
    program, window = choose_first_year(desk)
    wait_for("the page of 1998", lambda: any(name.startswith("1998")
                                             for name in os.listdir(desk.data("Cache"))))
    wait_for("its songs", lambda: len(songs_of(window)) > 20)
    close(desk, program)


def upgrade(desk):
    """A newer version is told once, with the link to it."""
    desk.settings({"CheckForUpgrades": 1})
    desk.open_site(WEDNESDAY, "--latest-version", "1.10")
    program = desk.start(WEDNESDAY)
    box = desk.window("New version available")
    has_text(box, "Click here to upgrade now.")
    time.sleep(1)  # a key that comes at once was meant for something else
    desk.key("Tab")  # to the link, whose target is read out then
    target = desk.environment["OSTROVA_MAKER_HOST"] + "/Ostrova/Download.php"
    wait_for("the target", lambda: any(thing.get_description() == f"Link to {target}"
                                       for thing in walk(box)))
    answer(desk, "New version available", "A new version of Ostrova is available!", "OK")
    close(desk, program)
    expect(desk.setting("LatestKnownVersion"), "1.10")


def second_instance(desk):
    """A second copy says so and ends; the first does not notice."""
    desk.open_site(WEDNESDAY)
    first = desk.start(WEDNESDAY)
    desk.window("Ostrova")
    second = desk.start(WEDNESDAY)
    answer(desk, "Error", "Ostrova is already running.", "OK")
    expect(second.ended(), 0)
    close(desk, first)


def kill_and_restart(desk):
    """A killed program's record blocks nobody, and its list is whole."""
    desk.write_list(("", "The Beatles"))
    desk.open_site(WEDNESDAY)
    first = desk.start(WEDNESDAY)
    desk.window("Ostrova")
    wait_for("the record", lambda: desk.setting("MainWndHwnd") not in (None, "0"))
    first.process.send_signal(signal.SIGKILL)
    first.ended()
    desk.gone("Ostrova")
    close(desk, desk.start(WEDNESDAY))
    expect(desk.read_list(), ['""\t"The Beatles"'])


def session_end(desk):
    """SIGTERM closes like the close box, without questions."""
    desk.write_list(("", "The Beatles"))
    desk.open_site(WEDNESDAY)
    for how in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
        program = desk.start(WEDNESDAY)
        window = desk.window("Ostrova")
        open_tab(window, "Options/About")
        expect(program.stop(how), 0)
        expect(desk.setting("WhenToOpen"), "-1")
    expect(desk.read_list(), ['""\t"The Beatles"'])


def pause(desk):
    progress = desk.window("Processing...")
    press(progress, "push button", "Pause")
    find(progress, "push button", "Resume")


def end_while_paused(desk):
    """A fetch that the user has paused keeps nobody from ending the program, window or none."""
    desk.write_list(("", "The Beatles"))
    desk.open_site(WEDNESDAY, "--fault", "drip")
    program = desk.start(WEDNESDAY)
    pause(desk)
    expect(program.stop(), 0)
    program, window = choose_first_year(desk, "--fault", "drip", "--fault-on",
                                        "/vantra/playlist/archive/1998")
    pause(desk)
    press(window, "push button", "Exit")
    expect(program.ended(), 0)


def end_before_the_window(desk):
    """The session may end while the start tells of a list that it can't read, which stays."""
    desk.settings({"CheckForUpgrades": 0})
    desk.write_list()
    too_long = 70 << 20
    os.truncate(desk.data("SearchList.txt"), too_long)
    desk.open_site(WEDNESDAY)
    program = desk.start(WEDNESDAY)
    has_text(desk.window("Error"), "Couldn't load your search list")
    expect(program.stop(), 0)
    expect(os.path.getsize(desk.data("SearchList.txt")), too_long)
    expect(desk.setting("MainWndHwnd"), "0")


def place(desk):
    """The window stands where it stood, start after start; maximised, it keeps its smaller place,
    and minimised, its last one."""
    desk.open_site(WEDNESDAY)
    stood = {"WindowPosLeft": "200", "WindowPosTop": "150", "WindowPosRight": "800",
             "WindowPosBottom": "600"}
    for maximised in ("0", "0", "1", "1"):
        desk.settings({**stood, "WindowIsMaximised": maximised})
        close(desk, desk.start(WEDNESDAY))
        expect({name: desk.setting(name) for name in stood}, stood)
        expect(desk.setting("WindowIsMaximised"), maximised)
    desk.settings({**stood, "WindowIsMaximised": "0"})
    program = desk.start(WEDNESDAY)
    desk.window("Ostrova")
    desk.act("search", "--sync", "--onlyvisible", "--name", "^Ostrova$",
             "windowsize", "--sync", "640", "480", "windowminimize", "--sync")
    expect(program.stop(), 0)
    expect((desk.setting("WindowPosRight"), desk.setting("WindowPosBottom")), ("840", "630"))


def background(desk, when_to_open, favourite, opens):
    desk.settings({"CheckForUpgrades": 0, "WhenToOpen": when_to_open})
    desk.write_list(("", favourite))
    desk.open_site(FRIDAY)
    waiting = desk.start(FRIDAY_NOON, "-A")
    wait_for("the weekend", lambda: os.path.exists(desk.data("Cache", "20261127.htm")))
    if opens:
        desk.window("Ostrova")
        desk.key("Escape")
        desk.gone("Ostrova")
    else:
        wait_for("its word", lambda: "found" in waiting.said())
        expect(desk.windows(), [])
    expect(waiting.stop(), 0)


def background_always(desk):
    """In the background every new weekend opens a window."""
    background(desk, 0, "Nobody Ever Played", opens=True)


def background_on_match(desk):
    """Only one with a favourite does."""
    background(desk, 1, "Nobody Ever Played", opens=False)


def background_never(desk):
    """None does, but the pages are fetched."""
    background(desk, 2, "The Beatles", opens=False)


def read_only_data(desk):
    """A list that finds no place is offered elsewhere, and lost only when the user says so: when the
    session ends while he is asked, it is kept aside."""
    desk.open_site(WEDNESDAY)
    kept = desk.path("config", "Kelvane", "SearchList (not saved).txt")
    usual = desk.data("SearchList.txt")
    beside = os.path.join(desk.programs, "SearchList.txt")
    shutil.rmtree(beside, ignore_errors=True)
    os.makedirs(os.path.join(beside, "in the way"))
    try:
        for discards in (True, False):
            desk.write_list(("", "The Beatles"))
            program = desk.start(WEDNESDAY)
            desk.window("Ostrova")
            os.remove(usual)
            os.makedirs(os.path.join(usual, "in the way"))
            desk.key("Escape")
            box = desk.window("Error when saving song/artist list")
            has_text(box, "SearchList.txt")
            if discards:
                press(box, "push button", "Discard my changes")
                expect(program.ended(), 0)
            else:
                expect(program.stop(), 0)
            expect(os.path.exists(kept), not discards)
            shutil.rmtree(usual)
    finally:
        shutil.rmtree(beside)


if __name__ == "__main__":
    run({name: scenario for name, scenario in globals().items() if callable(scenario)})
