"""options.py INSTALLED page|bash|zsh|fish: the manual page of ostrova, or the completions of a shell,
know the options of --help and no others. (The page of ostrova-cli is made from --help.)
"""
import gzip
import pathlib
import re
import shutil
import subprocess
import sys

PLACE = pathlib.Path(sys.argv[1])
SHARE = PLACE / "share"
CALLS = ["results", "search", "fetch", "weekend", "guest", "parse", "match", "key"]
EVERY_LINE = [["ostrova"], ["ostrova-cli"], *(["ostrova-cli", call] for call in CALLS)]


def said(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def helped(program, *call):
    page = said(PLACE / "bin" / program, *call, "--help").split("\nEXAMPLES")[0]
    return set(re.findall(r"^ +(?:-h, )?(--?[A-Za-z][a-z-]*)", page, re.MULTILINE))


def offered_by_bash(program, *call):
    line = " ".join([program, *call])
    script = (f"source {SHARE}/bash-completion/completions/{program}; COMP_WORDS=({line} -);"
              f"COMP_CWORD=$((${{#COMP_WORDS[@]}} - 1)); _{program.replace('-', '_')};"
              'echo "${COMPREPLY[@]}"')
    return set(said("bash", "--norc", "-c", script).split())


def offered_by_fish(program, *call):
    line = " ".join([program, *call])
    script = f"source {SHARE}/fish/vendor_completions.d/{program}.fish; complete -C '{line} -'"
    return set(re.findall(r"^(\S+)", said("fish", "--no-config", "-c", script), re.MULTILINE)) - {"-h"}


def compare(what, named, wanted):
    if named != wanted:
        sys.exit(f"{what}: {sorted(named - wanted)} not in --help, {sorted(wanted - named)} missing")


def check_page():
    page = gzip.open(SHARE / "man/man1/ostrova.1.gz", "rt").read()
    named = re.findall(r"^\.It Fl (\S+)", page, re.MULTILINE)
    compare("ostrova.1", {"-" + name for name in named}, helped("ostrova"))


def check_zsh():  # by its text: it completes only in a terminal
    for program in ["ostrova", "ostrova-cli"]:
        text = (SHARE / "zsh/site-functions" / f"_{program}").read_text()
        named = re.findall(r"'(?:\([^)]*\))?(--?[A-Za-z][a-z-]*)\[|\{-h,(--help)\}", text)
        lines = [line for line in EVERY_LINE if line[0] == program]
        compare(f"_{program}", {name or brace for name, brace in named},
                set().union(*(helped(*line) for line in lines)))


def check_shell(offered):
    for line in EVERY_LINE:
        compare(line, offered(*line), helped(*line))


what = sys.argv[2]
if what in ("bash", "fish") and shutil.which(what) is None:
    print("skipped: no", what, "here")
    sys.exit(77)
{"page": check_page, "zsh": check_zsh, "bash": lambda: check_shell(offered_by_bash),
 "fish": lambda: check_shell(offered_by_fish)}[what]()
