"""schemas.py INSTALLED DEMO_SITE: every line that ostrova-cli writes with --json is as the installed
schema says, and the schema knows no field that a page of --help doesn't name, nor the other way round.
"""
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

try:
    import jsonschema
except ImportError:
    print("skipped: no jsonschema for python3 here")
    sys.exit(77)

PLACE = pathlib.Path(sys.argv[1]).resolve()
CLI = PLACE / "bin/ostrova-cli"
SCHEMA = json.loads((PLACE / "share/ostrova/ostrova-cli.schema.json").read_text())
PAGE = "data/Ostrova/Cache/20060303.htm"
RUNS = [["results", "2006-03-04", "--all"], ["guest", "2006-03-04"], ["guest", "1998-01-10"],
        ["fetch", "--from", "2006-02-20", "--to", "2006-03-10"], ["search", "--artist", "The B-52s"],
        ["weekend"], ["parse", PAGE], ["match", PAGE], ["key", "The Me&You", "", "\u00e9t\u00e9 \u2603"]]


def fields(schema):
    """The names of all properties, those of songs and shows included."""
    names = set(fields(SCHEMA["$defs"]["song"])) if schema.get("$ref") == "#/$defs/song" else set()
    for name, more in schema.get("properties", {}).items():
        names |= {name} | fields(more.get("items", {}))
    return names


def helped(call):
    page = subprocess.check_output([CLI, call, "--help"], text=True)
    return set(re.findall(r'"(\w+)"(?=[],:}])', page.split("OUTPUT OF --json")[1].split("}:")[0] + "}"))


def validator(call):
    return jsonschema.Draft202012Validator({**SCHEMA, "anyOf": [{"$ref": "#/$defs/" + call}]})


jsonschema.Draft202012Validator.check_schema(SCHEMA)
with tempfile.TemporaryDirectory() as home:
    site = subprocess.Popen([sys.argv[2]], stdout=subprocess.PIPE, text=True)
    try:
        environment = {"PATH": os.environ["PATH"], "HOME": home, "XDG_DATA_HOME": home + "/data",
                       "OSTROVA_SITE_HOST": site.stdout.readline().strip()}
        for call, *arguments in RUNS:
            done = subprocess.run([CLI, call, *arguments, "--json"], env=environment, cwd=home,
                                  capture_output=True, text=True, check=False)
            lines = done.stdout.splitlines()
            assert lines and done.returncode in (0, 1), (call, done)
            for line in lines:
                validator(call).validate(json.loads(line))
            assert fields(SCHEMA["$defs"][call]) == helped(call), call
    finally:
        site.kill()
        site.wait()
    assert not validator("key").is_valid({"text": "", "key": None, "more": 1})
    assert not validator("results").is_valid({"show": "friday"})
