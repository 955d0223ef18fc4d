#!/usr/bin/env python3
"""Makes calls of the system fail, one after the other, under the functions of the extension, in a
server of its own each: every statement gives what it always gives or an error, and works the next
time; the server ends as it always does.

    postgresql_failing_calls.py SERVER DATA DATABASE FAILING_CALLS

The server's program, the folder of a cluster that is stopped, and the library that makes calls fail:
those of the extension and of the libraries that it has."""

import collections
import re
import subprocess
import sys

CALLS = ["memory", "open", "read", "mmap", "thread"]
STATEMENTS = [
    "select 1 q, jwnls_read_number('1.234,5', 'de_DE') a, jwnls_write_number(1234.5, 'de_CH', 'decimals=2') b",
    "select 2 q, jwnls_read_amount('1.234,50 €', 'de_DE', 'currency=any') a",
    "select 3 q, jwnls_read_date('15 marca 2024', 'pl_PL') a, jwnls_write_date('2024-03-15', 'sw', 'style=full') b",
    "select 4 q, jwnls_read_timestamp('2024-07-01T12:00:00Z', 'de_DE', '', zone) a from (values ('Asia/Tokyo')) v(zone)",
    "select 5 q, jwnls_explain('date', '31. Februar', 'de_DE') a, jwnls_version() b",
    "select 6 q, string_agg(jwnls_write_number(n, l), ' ') a from (select n, (array['de', 'en_IN', 'fr'])[1 + n % 3] l "
    "from generate_series(990, 1010) n) v",
    "select 7 q, count(*) a from jwnls_detect('days', 'day', 'date', 'de_DE en_US')",
]


class Server:
    def __init__(self, program, data, database, library):
        self.command = [program, "--single", "-D", data, database]
        self.library = library

    def answers(self, **environment):
        """The rows, each with how often it was given, and the errors."""
        script = "".join(f"{each}\n{each}\n" for each in STATEMENTS)
        run = subprocess.run(self.command, input=script.encode(), stdout=subprocess.PIPE,
                             stderr=subprocess.STDOUT, env={"LC_ALL": "C.UTF-8", **environment})
        told = run.stdout.decode()
        if run.returncode != 0:
            sys.exit(f"{environment}: the server ends with {run.returncode}\n{told[-2000:]}")
        rows = re.findall(r"q = \"(\d)\".*\n((?:.*: [ab] = .*\n)*)", told)
        errors = re.findall(r"(?:ERROR|FATAL|PANIC): .*", told)
        return collections.Counter(rows), errors

    def refused(self, usual, call, number, for_ever):
        """How many of the statements are errors."""
        words = {"LD_PRELOAD": self.library, "FAILING_CALL": call, "FAILING_NUMBER": str(number),
                 "FAILING_FROM": "jwnls libstdc++ libcctz",}
        if for_ever:
            words["FAILING_FOR_EVER"] = "1"
        rows, errors = self.answers(**words)
        strange = rows - usual
        lost = (usual - rows).total()
        trial = f"{call} {number}{' for ever' * for_ever}"
        if strange:
            sys.exit(f"{trial}: gives {strange}")
        if lost != len(errors) or (lost > 1 and not for_ever):
            sys.exit(f"{trial}: {lost} rows lost, errors: {errors}")
        if call == "memory" and not all("memory" in error for error in errors):
            sys.exit(f"{trial}: errors not for want of memory: {errors}")
        return lost


def main():
    server = Server(*sys.argv[1:])
    usual, errors = server.answers()
    if errors or usual.total() != 2 * len(STATEMENTS):
        sys.exit(f"without failing calls: {usual} {errors}")
    refused = dict.fromkeys(CALLS, 0)
    for call in CALLS:
        most = 30000 if call == "memory" else 40
        for for_ever in (False, True):
            number = 0
            while number < most:
                refused[call] += server.refused(usual, call, number, for_ever)
                number += 1 + number // 6
    print("postgresql: statements refused:", *(f"{call} {count}" for call, count in refused.items()))
    # The test sees what it should.
    sys.exit(0 if refused["memory"] > 50 else "too few statements are refused")


main()
