"""What columns cost in Python, beside what else reads them: medians of runs on one million values.

    scripts/bindings/python && build-python/environment/bin/python bench/python.py [ROWS [RUNS]]

Peers that are much slower read a part of the column, and are reckoned up. Times are the process's
own (CPU), so that neighbours matter less; ratios are of one run. Ends with 1 if a mark is missed.
"""

import gc
import io
import locale
import statistics
import sys
import time

import dateutil.parser
import icu
import numpy as np
import pandas as pd

import jwnls

ROWS = int(sys.argv[1]) if len(sys.argv) > 1 else 1_000_000
RUNS = int(sys.argv[2]) if len(sys.argv) > 2 else 5
POLISH_MONTHS = ["stycznia", "lutego", "marca", "kwietnia", "maja", "czerwca", "lipca", "sierpnia",
                 "września", "października", "listopada", "grudnia"]


def nanoseconds(work, count):
    times = []
    for _ in range(RUNS):
        gc.collect()
        start = time.process_time()
        work()
        times.append((time.process_time() - start) * 1e9 / count)
    return statistics.median(times)


def print_rows(title, rows):
    """rows: name, nanoseconds, mark or None; the first is jwnls. Gives whether all marks are met."""
    base, met = rows[0][1], True
    print(f"\n{title}")
    print(f"{'':44}{'ns/value':>10}{'times':>8}{'mark':>8}")
    for name, time_taken, mark in rows:
        ratio = time_taken / base
        missed = mark is not None and ratio < mark
        met = met and not missed
        print(f"{name:44}{time_taken:>10.1f}{ratio:>8.2f}{'' if mark is None else f'{mark}x':>8}"
              f"{'  missed' if missed else ''}")
    return met


def german_numbers():
    layout = jwnls.Layout("de_DE", "number")
    values = np.random.default_rng(1).integers(-10**8, 10**8, ROWS) / 100
    texts = layout.write_column(values)
    series, listed = pd.Series(texts), texts.tolist()
    part = series[: ROWS // 20].tolist()
    csv = "x\n" + "\n".join(listed) + "\n"

    def with_read_csv():
        return pd.read_csv(io.StringIO(csv), sep=";", thousands=".", decimal=",")["x"]

    def with_replace():
        plain = series.str.replace(".", "", regex=False).str.replace(",", ".", regex=False)
        return plain.astype(float)

    icu_format = icu.NumberFormat.createInstance(icu.Locale("de_DE"))

    def with_icu():
        return [icu_format.parse(text).getDouble() for text in part]

    # What localeconv() says after setlocale(LC_NUMERIC, "de_DE.UTF-8"), also on machines without
    # that locale; it costs updating a dictionary.
    locale._override_localeconv = {"decimal_point": ",", "thousands_sep": ".", "grouping": [3, 0]}

    def with_atof():
        return [locale.atof(text) for text in part]

    for work in (lambda: layout.read_column(series), with_read_csv, with_replace):
        np.testing.assert_array_equal(np.asarray(work()), values)
    for work in (with_icu, with_atof):
        np.testing.assert_array_equal(work(), values[: len(part)])
    encoded = texts.astype("S")
    rows = [
        ("jwnls, pandas Series", nanoseconds(lambda: layout.read_column(series), ROWS), None),
        ("jwnls, list", nanoseconds(lambda: layout.read_column(listed), ROWS), None),
        ("jwnls, NumPy objects", nanoseconds(lambda: layout.read_column(texts), ROWS), None),
        ("jwnls, NumPy bytes", nanoseconds(lambda: layout.read_column(encoded), ROWS), None),
        ("pandas.read_csv(thousands, decimal)", nanoseconds(with_read_csv, ROWS), 3),
        ("str.replace, str.replace, astype(float)", nanoseconds(with_replace, ROWS), 8),
        ("PyICU NumberFormat.parse", nanoseconds(with_icu, len(part)), 25),
        ("locale.atof", nanoseconds(with_atof, len(part)), 50),
    ]
    locale._override_localeconv = {}
    return print_rows(f"German numbers, {ROWS} values of pandas objects", rows)


class PolishNames(dateutil.parser.parserinfo):
    MONTHS = [(name,) for name in POLISH_MONTHS]


def polish_dates():
    layout = jwnls.Layout("pl_PL", "date", style="long")
    values = np.random.default_rng(2).integers(0, 20_000, ROWS).astype("M8[D]")
    texts = layout.write_column(values)
    series, listed = pd.Series(texts), texts.tolist()
    part = series[: ROWS // 50].tolist()
    icu_format = icu.DateFormat.createDateInstance(icu.DateFormat.kLong, icu.Locale("pl_PL"))
    icu_format.setTimeZone(icu.TimeZone.createTimeZone("UTC"))

    def with_icu():
        return [icu_format.parse(text) for text in part]

    names = {name: f"{number:02}" for number, name in enumerate(POLISH_MONTHS, 1)}

    def with_map():
        fields = series.str.split(" ", expand=True)
        iso = fields[2] + "-" + fields[1].map(names) + "-" + fields[0]
        return pd.to_datetime(iso, format="%Y-%m-%d")

    information = PolishNames()

    def with_dateutil():
        return [dateutil.parser.parse(text, information) for text in part]

    np.testing.assert_array_equal(layout.read_column(series), values)
    np.testing.assert_array_equal(with_map().to_numpy().astype("M8[D]"), values)
    expected = values[: len(part)]
    np.testing.assert_array_equal(np.array(with_dateutil(), "M8[D]"), expected)
    np.testing.assert_array_equal((np.array(with_icu()) / 86400).astype("M8[D]"), expected)
    return print_rows(f"Polish dates, {ROWS} values of pandas objects", [
        ("jwnls, pandas Series", nanoseconds(lambda: layout.read_column(series), ROWS), None),
        ("jwnls, list", nanoseconds(lambda: layout.read_column(listed), ROWS), None),
        ("PyICU DateFormat.parse", nanoseconds(with_icu, len(part)), 12),
        ("str.split, map, to_datetime", nanoseconds(with_map, ROWS), 20),
        ("dateutil, parserinfo of Polish names", nanoseconds(with_dateutil, len(part)), 100),
    ])


def writing():
    layout = jwnls.Layout("de_DE", "number", decimals=2)
    values = np.random.default_rng(3).integers(-10**8, 10**8, ROWS) / 100
    listed = values[: ROWS // 20].tolist()
    icu_format = icu.NumberFormat.createInstance(icu.Locale("de_DE"))
    return print_rows(f"German numbers out, {ROWS} values", [
        ("jwnls", nanoseconds(lambda: layout.write_column(values), ROWS), None),
        ("f'{value:,.2f}' and str.translate", nanoseconds(lambda: [
            f"{value:,.2f}".translate({44: ".", 46: ","}) for value in listed], len(listed)), None),
        ("PyICU NumberFormat.format", nanoseconds(
            lambda: [icu_format.format(value) for value in listed], len(listed)), None),
    ])


if __name__ == "__main__":
    print(f"Python {sys.version.split()[0]}, NumPy {np.__version__}, pandas {pd.__version__}, "
          f"ICU {icu.ICU_VERSION}; jwnls {jwnls.__version__}")
    results = [german_numbers(), polish_dates(), writing()]
    sys.exit(0 if all(results) else 1)
