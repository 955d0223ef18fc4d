"""The tables of tests/cases/, as single values, as columns, and as columns of bytes."""

import datetime
import decimal
import math
import os
import re
import unittest
from pathlib import Path

import numpy as np

import jwnls

CASES = Path(os.environ["JWNLS_SOURCE"]) / "tests" / "cases"
CODES = {"refuse": jwnls.Code.UNREAD, "range": jwnls.Code.RANGE}
EPOCH = datetime.datetime(1970, 1, 1)


def rows(table):
    for line in (CASES / table).read_text("utf-8").split("\n"):
        if not line or line.startswith("#"):
            continue
        fields = [
            re.sub(r"\\(s|u[0-9A-Fa-f]{4})",
                   lambda found: " " if found[1] == "s" else chr(int(found[1][1:], 16)), field)
            for field in line.split("\t")
        ]
        yield line, fields + [""] * (7 - len(fields))


def shown(value):
    """A value as the table has it."""
    return value.isoformat().replace("+00:00", "Z")


def column_value(kind, item):
    """An item of a column's array as the single value is."""
    item = item.item() if isinstance(item, np.generic) else item
    if kind == "time":
        return (EPOCH + item).time()
    return item.replace(tzinfo=datetime.timezone.utc) if kind == "instant" else item


class Cases(unittest.TestCase):
    def test_reading(self):
        count = 0
        for table in ("numbers.tsv", "dates.tsv"):
            for line, (locale, kind, options, action, given, expected, facts) in rows(table):
                if action != "read":
                    continue
                count += 1
                with self.subTest(line):
                    self.check_read(jwnls.Layout(locale, kind, options), given, expected, facts)
        self.assertGreater(count, 400)

    def check_read(self, layout, given, expected, facts):
        if expected == "missing":
            self.assertIsNone(layout.read(given))
        elif expected in CODES:
            with self.assertRaises(jwnls.Error) as caught:
                layout.read(given)
            self.assertEqual(caught.exception.code, CODES[expected])
            self.assertLessEqual(caught.exception.at, len(given))
            self.assertEqual(layout.explain(given).code, CODES[expected])
        else:
            self.check_value(layout, layout.read(given), expected)
            if facts != "*":
                found = [name for name, is_set in layout.facts(given)._asdict().items() if is_set]
                self.assertEqual(" ".join(found), facts.replace("-", "_"))
        self.check_columns(layout, given, expected)

    def check_value(self, layout, value, expected):
        if layout.kind == "amount":
            self.assertIsInstance(value, jwnls.Amount)
            self.assertEqual(float(value.value), float(expected))
        elif layout.kind in ("number", "percent"):
            self.assertEqual(value, float(expected))
            self.assertEqual(math.copysign(1, value), math.copysign(1, float(expected)))
        elif layout.kind == "integer":
            self.assertEqual(value, int(expected))
        else:
            self.assertEqual(shown(value), expected)

    def check_columns(self, layout, given, expected):
        is_read = expected not in CODES and expected != "missing"
        forms = [[given], np.array([given], object), [given.encode()]]
        if not given.endswith("\0"):
            forms += [np.array([given], "U"), np.array([given.encode()], "S")]
        for form in forms:
            array, report = layout.read_column(form, errors="report")
            self.assertEqual(report.codes[0], 0 if is_read else CODES.get(expected, 3), repr(form))
            if is_read:
                self.check_value(layout, column_value(layout.kind, array[0]), expected)
                self.assertEqual(column_value(layout.kind, array[0]), layout.read(given))
            elif layout.kind == "integer":
                self.assertTrue(array.mask[0])
            elif layout.kind != "amount":
                self.assertTrue(np.isnan(array[0]) if array.dtype == float else np.isnat(array[0]))

    def test_writing(self):
        for table in ("numbers.tsv", "dates.tsv"):
            for line, (locale, kind, options, action, given, expected, _) in rows(table):
                if not action.startswith("write"):
                    continue
                with self.subTest(line):
                    value = self.value_of(kind, given, exact=action == "write-decimal")
                    if value is not None:
                        self.check_written(jwnls.Layout(locale, kind, options), value, expected)

    def value_of(self, kind, given, exact):
        if kind == "integer" or exact:
            try:
                return int(given) if kind == "integer" else decimal.Decimal(given)
            except (ValueError, decimal.InvalidOperation):
                return None  # texts that are no Decimal do not come from Python
        if kind in ("number", "amount", "percent"):
            return float(given)
        if given.startswith("10000"):
            return None  # beyond Python's calendar, too
        if kind in ("date", "period"):
            return datetime.date.fromisoformat(given)
        if kind == "time":
            return datetime.time.fromisoformat(given)
        zone = datetime.timezone.utc if kind == "instant" else None
        return datetime.datetime.fromisoformat(given.rstrip("Z")).replace(tzinfo=zone)

    def check_written(self, layout, value, expected):
        if expected in ("range", "refuse"):
            with self.assertRaises(jwnls.Error) as caught:
                layout.write(value)
            self.assertEqual(caught.exception.code, CODES[expected])
        else:
            self.assertEqual(layout.write(value), "" if expected == "missing" else expected)
        texts, report = layout.write_column([value], errors="report")
        self.assertEqual(report.codes[0], CODES.get(expected, 3 if expected == "missing" else 0))
        self.assertEqual(texts[0], expected if report.read else None)


if __name__ == "__main__":
    unittest.main()
