"""folders.py INSTALLED DEMO_SITE: with HOME and the XDG variables moved, whole runs of the programs
write into the folders that they name and nowhere else, as strace sees it.
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

if shutil.which("strace") is None:
    print("skipped: no strace here")
    sys.exit(77)

PROGRAMS = pathlib.Path(sys.argv[1]).resolve() / "bin"
CHANGING = ("open,openat,creat,mkdir,mkdirat,rename,renameat,renameat2,link,linkat,symlink,symlinkat,"
            "unlink,unlinkat,rmdir,truncate,mknod,mknodat,chmod,fchmodat,utimensat,chdir")
NAMES = ["HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME",
         "XDG_RUNTIME_DIR"]
CLI = [PROGRAMS / "ostrova-cli"]
FOR_SECONDS = ["timeout", "4", PROGRAMS / "ostrova"]  # then its session ends
RUNS = [[*CLI, "results", "2006-03-04", "--all"], [*CLI, "guest", "2006-03-04"],
        [*CLI, "fetch", "--from", "1999-01-01", "--to", "1999-01-20"],
        [*CLI, "search", "--artist", "The Beatles"], [*FOR_SECONDS, "-A"]]
if PROGRAMS.parent.joinpath("libexec/ostrova/ostrova-window").exists():
    RUNS.append(FOR_SECONDS)


def written(trace):
    """The paths that a trace changes or opens for writing."""
    current = "/"
    for line in trace.splitlines():
        if moved := re.search(r'chdir\("([^"]*)"\) += 0', line):
            current = moved[1]
            continue
        if " = -1 " in line or ("open" in line and not re.search("O_WRONLY|O_RDWR|O_CREAT", line)):
            continue
        for folder, path in re.findall(r'(?:(?:AT_FDCWD|\d+)<([^>]*)>, )?"([^"]*)"', line):
            yield os.path.normpath(os.path.join(folder or current, path))


with tempfile.TemporaryDirectory() as base:
    homes = {name: os.path.join(os.path.realpath(base), name) for name in NAMES}
    for home in homes.values():
        os.mkdir(home, 0o700)
    site = subprocess.Popen([sys.argv[2]], stdout=subprocess.PIPE, text=True)
    try:
        address = site.stdout.readline().strip()
        environment = {"PATH": os.environ["PATH"], "QT_QPA_PLATFORM": "offscreen", **homes,
                       "OSTROVA_SITE_HOST": address, "OSTROVA_MAKER_HOST": address}
        places = set()
        for run in RUNS:
            trace = os.path.join(base, "trace")
            done = subprocess.run(
                ["strace", "-f", "-qq", "-y", "-o", trace, "-e", "trace=" + CHANGING, *run],
                env=environment, cwd="/", stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
            if "PTRACE" in done.stderr:
                print("skipped: nothing may be traced here")
                sys.exit(77)
            assert done.returncode in (0, 1, 124), (run, done)
            places.update(written(pathlib.Path(trace).read_text()))
    finally:
        site.kill()
        site.wait()
    # When root runs it, the font library may bring its cache for the whole system up to date.
    allowed = [home + "/" for home in list(homes.values())[1:]] + ["/var/cache/fontconfig/"]
    elsewhere = {path for path in places if not path.startswith(tuple(allowed))}
    assert elsewhere <= {"/dev/null", "/dev/tty"}, elsewhere
    assert any(path.endswith("20060303.htm") for path in places), places
    assert any(path.endswith("Ostrova.conf") for path in places), places
    assert os.listdir(homes["HOME"]) == []
    print(len(places), "paths were written, all of them where they belong")
