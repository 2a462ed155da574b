#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Holds what every command prints as JSON against its schema: json_forms.py TOOL SAMPLES."""
import json
import pathlib
import re
import subprocess
import sys
import tempfile

try:
    from jsonschema import Draft4Validator, Draft202012Validator, RefResolver, validators
except ImportError:
    print("skipped: python3-jsonschema is not installed")
    sys.exit(77)

HERE = pathlib.Path(__file__).resolve().parent
SARIF = HERE / "sarif/sarif-2.1.0.json"
SCHEMAS = HERE.parents[1] / "docs/schema/json"
TOOL, SAMPLES = sys.argv[1:]
SCRATCH = (scratch := tempfile.TemporaryDirectory()).name

ROOT = "<tarnmanifest version='1'>{}</tarnmanifest>"
HOST = "00000000-0000-0000-0000-0000000000e1"
CLASS = f"""<class id="{HOST[:-1]}2" affinity="service" commonname="Render"><serviceside svcid="{HOST}"
  xsid="{HOST}" exposed="yes"><module name="r"/></serviceside></class>
  <runnable moduleref="m"><service id="{HOST}" commonname="Host"/></runnable>"""
BROKEN = {
    "missing": f"""<module id="m" name="gone" path="../x"><preload by="anyone"/></module>{CLASS}
      <class id="{HOST[:-1]}3" affinity="service" commonname="Lost">
      <serviceside moduleref="m" xsname="Nobody"/></class>""",
    "malformed": '<module id="m" name="m"/><',
    "refused": f'{CLASS}<class id="{HOST}" commonname="A"><clientside moduleref="none"/></class>',
    "exception": '<?xml version="1.  "?><tarnmanifest version="1"/>',
    "misspelt": '<module id="m" nmae="m"/><module id="m" name="m"/><module id="m" name="n"/>',
}


def run(arguments):
    outcome = subprocess.run([TOOL, *arguments.split()], stdout=subprocess.PIPE,
                             stderr=subprocess.DEVNULL, text=True, check=False)
    assert outcome.returncode in (0, 1), (arguments, outcome.returncode)
    return outcome.stdout


def write(path, content):
    file = pathlib.Path(SCRATCH, path)
    file.parent.mkdir(parents=True, exist_ok=True)
    file.write_text(content)


def write_installations():
    for name, content in BROKEN.items():
        write(f"{name}/a.tmfx", content if content[1] == "?" else ROOT.format(content))
    write("missing/a b.tmfx", ROOT.format("""<runnable moduleref="m"/>
      <!-- tarnmf: allow runnable-module-unknown (by plan) --><runnable moduleref="none"/>"""))
    write("missing/.installed", 'layout += 64 { "x" | "y" | "lib" }\n')
    write("missing/linux-x64/libr.so", "no library")
    scan = f"scan --json --loadpoint {SCRATCH}/changed"
    module = ROOT.format('<module id="{}" name="r"/>{}')
    write("changed/a.tmfx", module.format("m", CLASS))
    write("old.json", run(scan))
    write("changed/libr.so", "")
    write("changed/b.tmfx", module.format("n", ""))
    write("changed/a.tmfx", module.format("m", CLASS.replace("id=", "displayname='x' id=", 1)))
    write("new.json", run(scan))
    write("none.json", run("scan --json"))


PROCESSES = [f"--loadpoint {SAMPLES}/platform {{0}}{SAMPLES}/imaging-pack {{0}}{SAMPLES}/site-overrides/manifests",
             f"--loadpoint {SAMPLES}/platform" + "".join(f" {{0}}{SCRATCH}/{name}" for name in BROKEN),
             *(f"--loadpoint {SCRATCH}/{name} {{0}}{SAMPLES}/imaging-pack" for name in BROKEN)]
SCANS = [line.format("--add ") for line in PROCESSES] + ["--loadpoint /nowhere", ""]
CHECKS = [line.format("") for line in PROCESSES]
# A command, the name of its schema, and what follows in one run each.
ROWS = [
    ("check --json", "check", CHECKS),
    ("check --sarif", "sarif", CHECKS),
    ("explain --json", "explain", ["class-hidden", "unreadable", "bad-id", "42", "0", "tarnmanifest",
                                   "preload", "clientside", "preload/by", "clientside/multiplicity"]),
    ("read --json", "read", [f"{SCRATCH}/{name}/a.tmfx {SAMPLES}/platform/services.tmfx" for name in BROKEN]),
    ("scan --json", "scan", SCANS),
    ("scan --json --preload", "scan", SCANS),
    ("find class --json Render", "find-class", SCANS),
    ("find class --json ImageStore", "find-class", SCANS),
    (f"find service --json {HOST}", "find-service", SCANS),
    *((f"list {what} --json", f"list-{what}", SCANS) for what in ("loadpoints", "classes", "services")),
    ("diff --json", "diff", [f"{SCRATCH}/{old}.json {SCRATCH}/{new}.json" for old, new in
                             (("old", "new"), ("new", "old"), ("none", "new"), ("old", "old"))]),
    ("why class --json Render", "why-class", CHECKS),
    ("why class --json ImageStore --version 3", "why-class", CHECKS),
    ("why preload --json m", "why-preload", CHECKS),
    ("why preload --json ws.diagnostics", "why-preload", CHECKS),
    ("graph --json", "graph", CHECKS),
    ("graph --json --focus nothing", "graph", CHECKS),
    ("schema --json", "schema", [""]),
    ("--version --json", "version", [""]),
]


def commands(words=""):
    """All commands with what their help says."""
    text = run(f"{words} --help")
    inner = re.findall(r"^  (\S+)", text.partition("Subcommands:")[2], re.MULTILINE)
    return [found for name in inner for found in commands(f"{words} {name}".strip())] or [(words, text)]


def objects(schema, where):
    """All schemas of objects within a schema, with where they stand."""
    for key, value in schema.items() if isinstance(schema, dict) else enumerate(schema):
        if isinstance(value, (dict, list)):
            yield from objects(value, f"{where}/{key}")
    if isinstance(schema, dict) and isinstance(schema.get("properties"), dict):
        yield where, schema


seen = set()


def noting_keys(validator, properties, instance, schema):
    if isinstance(instance, dict):
        seen.update((id(properties), key) for key in properties if key in instance)
    yield from Draft202012Validator.VALIDATORS["properties"](validator, properties, instance, schema)


NotingValidator = validators.extend(Draft202012Validator, {"properties": noting_keys})


def main():
    write_installations()
    files = {path.as_uri(): json.loads(path.read_text()) for path in SCHEMAS.iterdir()}
    forms = {name: (uri, int(number)) for uri in files
             for name, number in re.findall(r"/tarnmf-([a-z-]+)-(\d+)\.schema\.json$", uri)}
    assert len(forms) == len(files), "one file a form"

    # Who has --json has a schema and a row, and who has not is known.
    with_json = {words for words, text in commands() if re.search(r"^ +--json\b", text, re.MULTILINE)}
    assert {words for words, _ in commands()} - with_json == {"lsp"}
    for words in with_json | {"--version"}:
        form = words.replace(" ", "-").lstrip("-")
        assert any(f"{command} ".startswith(f"{words} --json ") and name == form
                   for command, name, _ in ROWS) and form in forms, f"{words} has no schema"

    failures = []
    for command, form, lines in ROWS:
        uri, number = forms.get(form, (None, None))
        validator = (NotingValidator(files[uri], resolver=RefResolver(uri, files[uri], store=files))
                     if uri else Draft4Validator(json.loads(SARIF.read_text())))
        for line in lines:
            output = json.loads(run(f"{command} {line}"))
            if form not in ("check", "read", "sarif"):
                assert next(iter(output.items())) == ("format", number), command
            failures += [f"{command} {line}: {error.json_path}: {error.message[:300]}"
                         for error in validator.iter_errors(output)]

    # No object may have more keys, none is without a word, and each is printed by some row.
    for uri, schema in files.items():
        NotingValidator.check_schema(schema)
        resolver = RefResolver(uri, schema, store=files)
        for where, part in objects(schema, uri):
            if part.get("additionalProperties") is not False:
                failures.append(f"{where}: more keys are admitted")
            for key, value in part["properties"].items():
                target = resolver.resolve(value["$ref"])[1] if "$ref" in value else {}
                if "description" not in {**target, **value}:
                    failures.append(f"{where}/{key}: no description")
                if (id(part["properties"]), key) not in seen:
                    failures.append(f"{where}/{key}: no row prints it")
    sys.exit("\n".join(failures) or 0)


main()
