#!/usr/bin/env python3
"""Runs tests/cases/ through a database's functions:  sql_cases.py sqlite|postgresql"""

import math
import pathlib
import re
import sys
from decimal import Decimal, InvalidOperation

from sql_shell import run

CASES = pathlib.Path(__file__).parent.parent / "cases"

# Kind -> the functions that read it, and the argument and the function that write it.
FUNCTIONS = {
    "sqlite": {
        "number": (["number", "decimal"], "{}", "number"),
        "integer": (["integer"], "{}", "integer"),
        "amount": (["amount"], "{}", "amount"),
        "percent": (["percent"], "{}", "percent"),
        "date": (["date"], "'{}'", "date"),
        "time": (["time"], "'{}'", "time"),
        "datetime": (["datetime"], "'{}'", "datetime"),
        "instant": (["instant"], "'{}'", "instant"),
        "period": (["period"], "'{}'", None),
    },
    "postgresql": {
        "number": (["number", "float8"], "float8 '{}'", "float8"),
        "integer": (["integer"], "'{}'", "integer"),
        "amount": (["amount"], "'{}'", "amount"),
        "percent": (["percent"], "'{}'", "percent"),
        "date": (["date"], "'{}'", "date"),
        "time": (["time"], "'{}'", "time"),
        "datetime": (["timestamp"], "'{}'", "timestamp"),
        "instant": (["timestamptz"], "'{}'", "timestamptz"),
        "period": (["period"], "'{}'", None),
    },
}
# Values of the tables that the database's types do not have.
LACKING = {
    "sqlite": {("number", "nan"), ("integer", str(2**64 - 1))},
    "postgresql": {("integer", str(2**64 - 1)), ("integer", "1234.000"), ("integer", "1.5"),
                   ("number", ""), ("percent", "-0.0")},
}
DECIMAL_ARGUMENT = {"sqlite": "'{}'", "postgresql": "numeric '{}'"}
SETUP = {"sqlite": [".load build/jwnls_sqlite\n.nullvalue NULL"],
         "postgresql": ["\\pset null NULL\n\\pset tuples_only on\n\\pset format unaligned\nset timezone = 'UTC';"]}


def rows():
    for name in ("numbers.tsv", "dates.tsv"):
        for line in (CASES / name).read_text().splitlines():
            if line and not line.startswith("#"):
                fields = [re.sub(r"\\u([0-9A-Fa-f]{4})", lambda m: chr(int(m[1], 16)),
                                 field.replace("\\s", " ")) for field in line.split("\t")]
                yield line, (fields + [""] * 6)[:6]


def statements_of(database, fields):
    """The statements of a case, and whether each is one that raises."""
    locale, kind, options, action, given, expected = fields
    readers, argument, writer = FUNCTIONS[database][kind]
    zone = ""
    if kind == "datetime":  # deterministic without the zone, which is the fourth argument
        words = options.split()
        zone = "".join(f", '{word[5:]}'" for word in words if word.startswith("zone="))
        options = " ".join(word for word in words if not word.startswith("zone="))
    words = f"'{locale}', '{options}'{zone}"
    if action != "read":
        if action == "write-decimal":
            argument = DECIMAL_ARGUMENT[database]
        elif database == "sqlite" and "inf" in given:
            given = given.replace("inf", "9e999")
        if (kind, given) in LACKING[database]:
            return
        if action == "write-decimal":
            writer = "number" if writer == "float8" else writer
        yield f"select jwnls_write_{writer}({argument.format(given)}, {words});", database == "postgresql"
        return
    given = given.replace("'", "''")
    for reader in readers:
        if expected == "range" and reader in ("decimal", "number") and kind == "number":
            if (database, reader) != ("sqlite", "number"):
                continue  # a decimal has no range that a double's text could leave
        for ending in [""] if database == "sqlite" else ["", "_or_null"]:
            call = f"jwnls_read_{reader}{ending}('{given}', {words})"
            if (database, reader) == ("postgresql", "amount"):
                call = f"({call}).amount"
            if database == "sqlite" and reader in ("number", "percent"):
                call = f"iif({call} is null, null, printf('%!.17g', {call}))"
            yield f"select {call};", database == "postgresql" and ending == ""


def same(got, expected, raises):
    got = got.rstrip("\n")
    if expected in ("refuse", "range"):
        return got.startswith("ERROR") if raises else got == "NULL"
    if expected == "missing":
        return got == "NULL"
    if got == expected:
        return True
    try:
        # Of what exceeds a double, the tables have what a double makes of it.
        return Decimal(got) == Decimal(expected) or (
            (len(got) > 15 or "e-" in got) and math.isclose(float(got), float(expected), rel_tol=3e-16))
    except InvalidOperation:
        pass
    plain = expected.replace("T", " ").removesuffix("Z")
    return got.removesuffix("+00") in (plain, plain.rstrip("0")) and ":" in plain


def main():
    database = sys.argv[1]
    asked = [(line, fields[5], statement, raises) for line, fields in rows()
             for statement, raises in statements_of(database, fields)]
    answers = run(database, SETUP[database] + [each[2] for each in asked])
    answers = answers[len(SETUP[database]):]
    faults = [(statement, answer.strip(), line)
              for (line, expected, statement, raises), answer in zip(asked, answers)
              if not same(answer, expected, raises)]
    for statement, answer, line in faults:
        print(f"{line}\n  {statement}\n  {answer}", file=sys.stderr)
    print(f"{database}: {len(asked)} statements of tests/cases, {len(faults)} faults")
    return 1 if faults or len(asked) < 700 else 0


if __name__ == "__main__":
    sys.exit(main())
