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
    import jsonschema
except ImportError:
    print("skipped: python3-jsonschema is not installed")
    sys.exit(77)

HERE = pathlib.Path(__file__).resolve().parent
SCHEMAS = HERE.parents[1] / "docs/schema/json"
TOOL, SAMPLES = sys.argv[1:]
scratch = tempfile.TemporaryDirectory()
SCRATCH = scratch.name

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
    "exception": "</tarnmanifest><!--",
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
        write(f"{name}/a.tmfx", f'<tarnmanifest version="1">{content}</tarnmanifest>')
    write("exception/a.tmfx", '<?xml version="1.  "?><tarnmanifest version="1"/>')
    write("missing/a b.tmfx", """<tarnmanifest version="1"><runnable moduleref="m"/>
      <!-- tarnmf: allow runnable-module-unknown (by plan) --><runnable moduleref="none"/></tarnmanifest>""")
    write("missing/.installed", 'layout += 64 { "x" | "y" | "lib" }\n')
    write("missing/linux-x64/libr.so", "no library")
    scan = f"scan --json --loadpoint {SCRATCH}/changed"
    module = '<tarnmanifest version="1"><module id="{0}" name="r"/>{1}</tarnmanifest>'
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
    ("read --json", "read", [f"{SCRATCH}/{name}/a.tmfx" for name in BROKEN]
     + [f"{SAMPLES}/platform/{name}.tmfx" for name in ("classes", "modules", "services")]),
    ("scan --json", "scan", SCANS),
    ("scan --json --preload", "scan", SCANS),
    ("find class --json Render", "find-class", SCANS),
    ("find class --json ImageStore", "find-class", SCANS),
    (f"find service --json {HOST}", "find-service", SCANS),
    ("list loadpoints --json", "list-loadpoints", SCANS),
    ("list classes --json", "list-classes", SCANS),
    ("list services --json", "list-services", SCANS),
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


def parts(schema, path=""):
    yield path, schema
    for key, value in schema.items() if isinstance(schema, dict) else enumerate(schema):
        if isinstance(value, (dict, list)):
            yield from parts(value, f"{path}/{key}")


seen = set()


def noting_keys(validator, properties, instance, schema):
    if isinstance(instance, dict):
        seen.update((id(properties), key) for key in properties if key in instance)
    yield from jsonschema.Draft202012Validator.VALIDATORS["properties"](
        validator, properties, instance, schema)


def main():
    write_installations()
    files = {path.as_uri(): json.loads(path.read_text()) for path in SCHEMAS.iterdir()}
    forms = {re.sub(r".*/tarnmf-(.*)-\d+\.schema\.json", r"\1", uri): uri for uri in files}
    assert len(forms) == len(files), "one file a form"
    NotingValidator = jsonschema.validators.extend(
        jsonschema.Draft202012Validator, {"properties": noting_keys})

    # Who has --json has a schema, and who has not is known.
    with_json = {words for words, text in commands() if re.search(r"^ +--json\b", text, re.MULTILINE)}
    assert {words for words, _ in commands()} - with_json == {"lsp"}
    tested = {command for command, _, _ in ROWS}
    for words in with_json | {"--version"}:
        assert words.replace(" ", "-").lstrip("-") in forms, f"{words} has no schema"
        assert any(f"{command} ".startswith(f"{words} --json ") for command in tested), words

    for uri, schema in files.items():
        jsonschema.Draft202012Validator.check_schema(schema)
        if "format" in schema.get("properties", {}):
            number = schema["properties"]["format"]["const"]
            assert uri.endswith(f"-{number}.schema.json"), uri

    failures = []
    for command, form, lines in ROWS:
        if form == "sarif":
            schema = json.loads((HERE / "sarif/sarif-2.1.0.json").read_text())
            validator = jsonschema.Draft4Validator(schema)
        else:
            schema = files[forms[form]]
            validator = NotingValidator(
                schema, resolver=jsonschema.RefResolver(forms[form], schema, store=files))
        for line in lines:
            output = json.loads(run(f"{command} {line}"))
            if "format" in schema.get("properties", {}):
                assert next(iter(output)) == "format", command
            failures += [f"{command} {line}: {error.json_path}: {error.message[:300]}"
                         for error in validator.iter_errors(output)]

    # No object may have more keys, none is without a word, and each is printed by some row.
    for uri, schema in files.items():
        resolver = jsonschema.RefResolver(uri, schema, store=files)
        for path, part in parts(schema):
            if not isinstance(part, dict) or not isinstance(part.get("properties"), dict):
                continue
            where = f"{uri}#{path}"
            if part.get("additionalProperties") is not False:
                failures.append(f"{where}: more keys are admitted")
            for key, value in part["properties"].items():
                target = resolver.resolve(value["$ref"])[1] if "$ref" in value else {}
                if "description" not in {**target, **value}:
                    failures.append(f"{where}/{key}: no description")
                if (id(part["properties"]), key) not in seen:
                    failures.append(f"{where}/{key}: no row prints it")
    print("\n".join(failures))
    return 1 if failures else 0


sys.exit(main())
