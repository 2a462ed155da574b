# SPDX-License-Identifier: Apache-2.0
"""Validates a SARIF log against the schema beside this file."""
import json
import pathlib
import sys

import jsonschema

schema = json.loads((pathlib.Path(__file__).parent / "sarif-2.1.0.json").read_text())
jsonschema.Draft4Validator(schema).validate(json.loads(pathlib.Path(sys.argv[1]).read_text()))
