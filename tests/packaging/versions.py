"""versions.py INSTALLED SOURCES VERSION: whatever names the version names the same one."""
import pathlib
import re
import subprocess
import sys

place, sources, version = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3]


def first(pattern, text):
    found = re.search(pattern, text)
    return found[1] if found else None


named = {program: first(r"(\S+)$", subprocess.check_output(
    [place / "bin" / program, "--version"], text=True).strip())
    for program in ["ostrova", "ostrova-cli"]}
packaging = sources / "packaging"
named["metainfo"] = first(r'<release version="([^"]*)"',
                          (packaging / "example.kelvane.ostrova.metainfo.xml").read_text())
named["changelog"] = first(r"\(([^)-]*)-", (packaging / "debian/changelog").read_text())
named["changes"] = first(r"(?m)^## ([^,\s]+)", (sources / "CHANGELOG.md").read_text())
wrong = {name: said for name, said in named.items() if said != version}
print("all are", version) if not wrong else sys.exit(f"not {version}: {wrong}")
