"""icons.py INSTALLED: each icon of the theme has the size of its folder, and colours with alpha."""
import pathlib
import struct
import sys

theme = pathlib.Path(sys.argv[1]) / "share/icons/hicolor"
wanted = {size: (size, size, 8, 6) for size in (16, 22, 24, 32, 48, 64, 128, 256)}
found = {}
for path in theme.glob("*x*/apps/ostrova.png"):
    header = path.read_bytes()[:26]
    assert header[:8] == b"\x89PNG\r\n\x1a\n", path
    found[int(path.parts[-3].split("x")[0])] = struct.unpack(">IIBB", header[16:26])
assert found == wanted, found
assert (theme / "scalable/apps/ostrova.svg").read_text().startswith("<?xml")
