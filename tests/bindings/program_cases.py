#!/usr/bin/env python3
"""Runs the rows of tests/cases/ that read through the program:  program_cases.py build/jwnls

Each text is a line of standard input; with --invalid=empty every line keeps its place. Codes that
the program does not tell apart (refused, out of range, missing) are an empty line; it reads decimals,
to which no range is set, and names the currency where a column could have several."""

import subprocess
import sys
from decimal import Decimal

from sql_cases import rows

CODES = {"refuse", "range", "missing"}


NUMERIC = ("number", "integer", "amount", "percent")


def same(kind, got, expected):
    if kind in NUMERIC and expected == "range":
        return got == "" or Decimal(got).is_finite()
    if expected in CODES:
        return got == ""
    if kind in NUMERIC:
        return float(Decimal(got.split(" ")[0])) == float(expected)
    return plain(got) == plain(expected)


def plain(text):
    """ISO 8601 without the zone and without zeros at the end of a fraction."""
    text = text.removesuffix("Z")
    return text.rstrip("0").rstrip(".") if "." in text else text


def main():
    program = sys.argv[1]
    groups = {}
    for line, (locale, kind, options, action, given, expected) in rows():
        # A line of input holds no line end, and the program takes the blanks around it away.
        if action == "read" and "\n" not in given:
            groups.setdefault((locale, kind, options), []).append((line, given, expected))
    faults = count = 0
    for (locale, kind, options), cases in groups.items():
        words = [argument for word in options.split() for argument in ("-O", word)]
        run = subprocess.run([program, "read", kind, "-l", locale, *words, "--invalid=empty", "-q"],
                             input="".join(given + "\n" for _, given, _ in cases),
                             capture_output=True, text=True)
        answers = run.stdout.split("\n")[:-1]
        if len(answers) != len(cases):
            print(f"{locale} {kind} {options}: {len(answers)} lines for {len(cases)}: {run.stderr}")
            faults += 1
            continue
        for (line, _, expected), got in zip(cases, answers):
            count += 1
            if not same(kind, got, expected):
                print(f"{line}\n  gives {got!r}")
                faults += 1
    print(f"program: {count} texts of tests/cases, {faults} faults")
    return faults > 0


sys.exit(main())
