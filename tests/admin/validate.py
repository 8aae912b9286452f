"""Holds JSON, on standard input, against a schema, and writes what of it does not fit. With
--members it writes the names of the schema's members instead, in their order, with --verdicts
the verdicts that it knows."""

import json
import sys

from jsonschema import Draft202012Validator


def members(schema):
    for name, member in schema.get("properties", {}).items():
        yield name
        yield from members(member.get("items", {}))


schema = json.load(open(sys.argv[-1], encoding="utf-8"))
Draft202012Validator.check_schema(schema)
if sys.argv[1] == "--members":
    print(*members(schema["items"]), sep="\n")
elif sys.argv[1] == "--verdicts":
    print(*sorted(schema["items"]["properties"]["verdict"]["enum"]), sep="\n")
else:
    faults = [f"{'/'.join(map(str, fault.absolute_path))}: {fault.message}"
              for fault in Draft202012Validator(schema).iter_errors(json.load(sys.stdin))]
    print(*faults, sep="\n")
    sys.exit(len(faults) > 0)
