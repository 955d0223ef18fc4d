#!/usr/bin/env python3
"""Makes calls of the system fail, one after the other, under every function of a binding: each gives
what it always gives or an error, and the next call works.

    LD_PRELOAD=build/failing_calls.so failing_calls.py sqlite|python

Memory, open, read, mmap and threads, once and for ever; of the binding, its libraries and SQLite,
not of the interpreter. First in a process of its own each, which has no locale and no zone yet, then
in one process, which is not to lose a block."""

import ctypes
import datetime
import gc
import os
import pickle
import sqlite3
import sys

FEW_BLOCKS = 16  # that the interpreter may have more
CALLS = ["memory", "open", "read", "mmap", "thread"]
control = ctypes.CDLL(None)
control.failing_calls_begin.argtypes = [ctypes.c_char_p, ctypes.c_long, ctypes.c_int, ctypes.c_char_p]
control.failing_calls_end.restype = control.failing_calls_blocks.restype = ctypes.c_long

STATEMENTS = [
    "select jwnls_read_number('1.234,5', 'de_DE'), jwnls_read_integer('1,234', 'en_US')",
    "select jwnls_read_amount('1.234,50 €', 'de_DE'), jwnls_read_currency('5 USD', 'fr_FR', 'currency=any')",
    "select jwnls_read_date('15 marca 2024', 'pl_PL'), jwnls_read_period('Q2, 2024', 'en_US')",
    "select jwnls_read_datetime('2024-07-01T12:00:00Z', 'de_DE', '', 'Europe/Berlin')",
    "select jwnls_write_amount(1234.5, 'kea_CV'), jwnls_write_number(-1234567.25, 'hi_IN', 'digits=own')",
    "select jwnls_write_instant('2024-07-01 12:00:00', 'ja_JP', '', 'Asia/Tokyo')",
    "with recursive c(n) as (select 1 union all select n + 1 from c where n < 40) select jwnls_write_date("
    "19000 + n, case n % 3 when 0 then 'de_DE' when 1 then 'pl' else 'sw' end, 'as=days style=full') from c",
    "select jwnls_explain('date', '31. Februar', 'de_DE'), jwnls_version()",
    "select * from jwnls_detect('days', 'day', 'date', 'de_DE en_US')",
    "select count(*), min(own_name) from jwnls_locales where name like 'de%'",
    "select count(*) > 300 from jwnls_zones",
]


def sqlite_works():
    def run(statement):
        connection = sqlite3.connect(":memory:")
        try:
            connection.enable_load_extension(True)
            connection.load_extension("build/jwnls_sqlite")
            connection.execute("create table days(day)")
            connection.executemany("insert into days values (?)", [("01.02.2024",), ("3/4/2024",), (None,)])
            return lambda: connection.execute(statement).fetchall()
        finally:
            connection.enable_load_extension(False)

    def reconnected():
        """The extension is loaded while calls fail, too. (Not by the interpreter's own function, which
        takes SQLite's message for granted.)"""
        connection = sqlite3.connect(":memory:")
        connection.enable_load_extension(True)
        connection.execute("select load_extension('build/jwnls_sqlite')").fetchall()
        return connection.execute(STATEMENTS[0]).fetchall()

    return [*(lambda statement=each: run(statement) for each in STATEMENTS), lambda: reconnected]


def python_works():
    import jwnls

    def why_unread(layout, text):
        try:
            return layout.read(text)
        except jwnls.Error as error:
            return str(error)

    column = ["1.234,5", "x", None, "7"] * 200
    moment = datetime.datetime(2024, 7, 1, 12, tzinfo=datetime.timezone.utc)
    works = [
        lambda: jwnls.Layout("de_DE", "number").read("1.234,5"),
        lambda: jwnls.Layout("de_DE", "amount", "currency=any").read("5 USD"),
        lambda: jwnls.Layout("pl_PL", "date", "style=long").write(moment.date()),
        lambda: jwnls.Layout("en_US", "instant", "zone=Europe/Berlin").write(moment),
        lambda: jwnls.Layout("de_DE", "date").read_column(["1.2.2024", "x"], errors="report"),
        lambda: jwnls.Layout("de_DE", "number").read_column(column, errors="coerce"),
        lambda: jwnls.Layout("hi_IN", "number", "digits=own").write_column([1.5, -1e9] * 50),
        lambda: pickle.loads(pickle.dumps(jwnls.Layout("sv_SE", "time"))),
        lambda: jwnls.detect(["01/02/2024", "25/12/2024"], "date", "de_DE en_GB"),
        lambda: (len(jwnls.locales()), jwnls.match_locale("german"), len(jwnls.zones()) > 300),
        lambda: why_unread(jwnls.Layout("de_DE", "date"), "30.2.2024"),
    ]
    return [lambda work=each: lambda: repr(work()) for each in works]


BINDINGS = {
    "sqlite": (sqlite_works, b"jwnls_sqlite libsqlite3 libstdc++ libcctz",
               (MemoryError, sqlite3.Error)),
    "python": (python_works, b"_jwnls libstdc++ libcctz", (MemoryError, OSError, ValueError)),
}


class Trials:
    def __init__(self, make, libraries, errors):
        self.make, self.libraries, self.errors = make, libraries, errors
        self.failed = dict.fromkeys(CALLS, 0)

    def attempt(self, work, usual, call, number, for_ever):
        """What is wrong, or "", and whether so many calls were asked for."""
        control.failing_calls_begin(call.encode(), number, for_ever, self.libraries)
        try:
            given, error = work(), None
        except self.errors as raised:
            given, error = None, raised
        asked = control.failing_calls_end()
        if error is None and given != usual:
            return f"gives {given}", True
        if error is not None and asked <= number:
            return f"no call failed: {error!r}", True
        if call == "memory" and error is not None and not is_of_memory(error):
            return f"not for want of memory: {error!r}", True
        error = None
        again = self.make()()
        return ("" if again == usual else f"the next call gives {again}"), number < asked

    def in_processes(self, usual):
        """Each attempt in a child of this process, which has asked the binding for nothing."""
        for call, for_ever in ((call, for_ever) for call in CALLS for for_ever in (0, 1)):
            number, more = 0, True
            while more:
                child = os.fork()
                if child == 0:
                    fault, failed = "raises", True
                    try:
                        fault, failed = self.attempt(self.make(), usual, call, number, for_ever)
                    except BaseException as error:
                        fault = f"raises {error!r}"
                    if fault:
                        print(f"{call} {number}{' for ever' * for_ever}: {fault}", flush=True)
                    os._exit(2 if fault else 0 if failed else 1)
                status = os.waitpid(child, 0)[1]
                if status != 0 and status != 1 << 8:
                    sys.exit(f"{call} {number}{' for ever' * for_ever}: status {status}")
                more = status == 0
                self.failed[call] += more
                number += 1 + number // 4

    def in_one(self, usual):
        self.make()()
        before = None
        for call, for_ever in ((call, for_ever) for call in CALLS for for_ever in (0, 1)):
            number, more = 0, True
            while more:
                fault, more = self.attempt(self.make(), usual, call, number, for_ever)
                gc.collect()
                now = control.failing_calls_blocks()
                if before is not None and now > before + FEW_BLOCKS:
                    fault = fault or f"{now - before} blocks lost"
                before = now if before is None else before
                if fault:
                    sys.exit(f"{call} {number}{' for ever' * for_ever}: {fault}")
                self.failed[call] += more
                number += 1 + number // 16


def is_of_memory(error):
    # What SQLite says of an extension that could not say more.
    return isinstance(error, MemoryError) or "memory" in str(error) or "initialization" in str(error)


def main():
    works, libraries, errors = BINDINGS[sys.argv[1]]
    failed = dict.fromkeys(CALLS, 0)
    for make in works():
        reading, writing = os.pipe()
        if os.fork() == 0:
            os.write(writing, pickle.dumps(make()()))
            os._exit(0)
        os.close(writing)
        with open(reading, "rb") as answer:
            usual = pickle.loads(answer.read())
        os.wait()
        trials = Trials(make, libraries, errors)
        trials.in_processes(usual)
        child = os.fork()  # the process of the next one has asked for nothing
        if child == 0:
            trials.in_one(usual)
            os._exit(0)
        if os.waitpid(child, 0)[1] != 0:
            sys.exit(1)
        for call, count in trials.failed.items():
            failed[call] += count
    print(f"{sys.argv[1]}: calls failed:", *(f"{call} {count}" for call, count in failed.items()))
    # The test sees what it should.
    sys.exit(0 if failed["memory"] > 100 and failed["open"] > 0 else "too few calls fail")


main()
