"""promises.py SOURCES: every test that SECURITY.md names is there."""
import pathlib
import re
import sys

sources = pathlib.Path(sys.argv[1])
tests = {f"{suite}.{name}" for path in sources.glob("tests/**/*.cpp")
         for suite, name in re.findall(r"TEST(?:_F|_P)?\((\w+), (\w+)\)", path.read_text())}
tests |= {f"packaging.{name}" for name in re.findall(
    r"ostrova_packaging_test\((\w+)", (sources / "tests/packaging/CMakeLists.txt").read_text())}
named = re.findall(r"`([A-Za-z]\w*(?:\.[A-Z*]\w*|\*|\.[a-z]+))`", (sources / "SECURITY.md").read_text())
lost = [name for name in named if not any(test.startswith(name[:-1]) if name.endswith("*")
                                          else test == name for test in tests)]
sys.exit(f"not there: {lost}" if lost or len(named) < 10 else 0)
