#!/usr/bin/python3
"""Checks docs/configuration-file.schema.json: it is a sound schema, it takes the example, and of the inputs of the
fuzz target it takes and refuses those whose names say so, as the reader of the tool does (tests/core/document_test.cpp)."""
import json
import pathlib
import sys

import jsonschema

project = pathlib.Path(__file__).resolve().parent.parent
schema = json.loads((project / "docs/configuration-file.schema.json").read_text())
jsonschema.Draft202012Validator.check_schema(schema)
validator = jsonschema.Draft202012Validator(schema)


def fault(path):
    try:
        text = path.read_bytes().decode("utf-8")
        found = json.loads(text)
        json.dumps(found, ensure_ascii=False).encode("utf-8")
    except ValueError as error:
        return str(error)
    return "; ".join(error.message for error in validator.iter_errors(found))


files = sorted((project / "fuzz/seeds/configuration_file").glob("*"))
wrong = 0
for path in [project / "docs/example.kvtarn", *(path for path in files if not path.name.startswith("refused-"))]:
    said = fault(path)
    if bool(said) != path.name.startswith("broken-"):
        print(f"{path}: {said or 'is taken'}")
        wrong += 1
print(f"{1 + len(files)} files, {wrong} wrong")
sys.exit(wrong > 0 or not files)
