#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
# Validates documents against a JSON Schema (draft 2020-12) with python3-jsonschema and prints
# one line per failure: the file, the JSON Pointer of the failing value and the reason.
# Exit 0 when every document is valid, 1 when one is not, 2 when the schema itself is broken.
# Usage: validate.py SCHEMA DOCUMENT...
import json
import sys

import jsonschema


def pointer(path):
    return "".join("/" + str(p).replace("~", "~0").replace("/", "~1") for p in path)


def leaves(error):
    """The failures inside an anyOf, from the branch the value's shape chose."""
    if not error.context:
        yield error
        return
    chosen = [e for e in error.context if not (e.validator == "type" and not e.relative_path)]
    if not chosen:
        yield error
        return
    for sub in chosen:
        yield from leaves(sub)


def main():
    with open(sys.argv[1], encoding="utf-8") as f:
        schema = json.load(f)
    try:
        jsonschema.Draft202012Validator.check_schema(schema)
    except jsonschema.exceptions.SchemaError as e:
        print(f"schema: {e.message}")
        return 2
    validator = jsonschema.Draft202012Validator(schema)
    failed = False
    for name in sys.argv[2:]:
        with open(name, encoding="utf-8") as f:
            document = json.load(f)
        # One line per failing value: the branches of an anyOf may each fail at it.
        reasons = {}
        for error in validator.iter_errors(document):
            for leaf in leaves(error):
                reasons.setdefault(pointer(leaf.absolute_path), []).append(leaf.message)
        for at, messages in reasons.items():
            failed = True
            print(f"{name}: {at}: {'; '.join(messages)}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
