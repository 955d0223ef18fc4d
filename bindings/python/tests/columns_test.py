"""Columns: every form that holds texts, what has no value, other threads, other processes."""

import multiprocessing
import os
import resource
import sys
import threading
import time
import unittest

import numpy as np
import pandas as pd

import jwnls

TEXTS = ["1.234,5", "-7", "１.２３４,５", "0,001", "", "12.345.678,9"]
VALUES = [1234.5, -7.0, 1234.5, 0.001, float("nan"), 12345678.9]
NUMBERS = jwnls.Layout("de_DE", "number")


def read_in_child(texts):
    return NUMBERS.read_column(texts).tolist()


class Columns(unittest.TestCase):
    def test_every_form_gives_the_same(self):
        objects = np.array(TEXTS, object)
        encoded = np.array([text.encode() for text in TEXTS])
        doubled = np.repeat(objects, 2)
        forms = {
            "list": TEXTS, "tuple": tuple(TEXTS), "iterator": iter(TEXTS), "objects": objects,
            "bytes": encoded, "U": np.array(TEXTS), "byte order": np.array(TEXTS, ">U20"),
            "strided": doubled[::2], "strided U": np.array(doubled, "U")[::2],
            "Series": pd.Series(TEXTS), "string": pd.Series(TEXTS, dtype="string"),
            "Categorical": pd.Categorical(TEXTS), "category": pd.Series(TEXTS, dtype="category"),
            "Index": pd.Index(TEXTS), "shuffled": pd.Series(TEXTS, index=[5, 4, 3, 2, 1, 0]),
            "str of a class": [type("Text", (str,), {})(text) for text in TEXTS],
            "masked": np.ma.masked_array(np.where(objects == "", "x", objects), objects == ""),
        }
        for name, form in forms.items():
            with self.subTest(name):
                np.testing.assert_array_equal(NUMBERS.read_column(form), VALUES)
        for empty in ([], np.array([], object), np.array([], "U"), pd.Series([], dtype=object),
                      pd.Series([], dtype="category")):
            self.assertEqual(len(NUMBERS.read_column(empty)), 0)

    def test_what_is_no_column_of_texts_is_refused(self):
        for form in ("1", b"1", np.array([1.5]), np.array([["1"]]), pd.Series([1, 2]), 5):
            with self.subTest(repr(form)), self.assertRaises((TypeError, ValueError)):
                NUMBERS.read_column(form)

    def test_missing_values_and_refused_ones_are_told_apart(self):
        rows = [None, float("nan"), pd.NA, pd.NaT, " ", "x", 5, "\ud800", b"\xff", "9" * 10**7, "1"]
        for form in (rows, np.array(rows, object), pd.Series(rows, dtype=object)):
            array, report = NUMBERS.read_column(form, errors="report")
            self.assertEqual((report.read, report.missing, report.refused), (1, 5, 5))
            self.assertEqual([row.index for row in report.refusals()], [5, 6, 7, 8, 9])
            self.assertEqual(report.first_refused, 5)
            self.assertIsNone(report.why(0))
            self.assertIn("int", str(report.why(6)))
            self.assertEqual(np.isnan(array).sum(), 10)
            with self.assertRaises(jwnls.Error) as caught:
                NUMBERS.read_column(form)
            self.assertEqual(caught.exception.index, 5)
        integers = jwnls.Layout("de_DE", "integer").read_column(["9.007.199.254.740.993", None])
        self.assertEqual(integers.tolist(), [9007199254740993, None])
        all_missing = pd.Series([None, None], dtype=float)
        self.assertTrue(np.isnan(NUMBERS.read_column(all_missing)).all())

    def test_categories_are_read_once_and_counted_by_rows(self):
        column = pd.Series(["1,5", "x", None, "1,5", "1.234", "1,5"], dtype="category")
        array, report = NUMBERS.read_column(column, errors="report")
        plain, of_plain = NUMBERS.read_column(column.astype(object), errors="report")
        np.testing.assert_array_equal(array, plain)
        self.assertEqual(report, of_plain)
        self.assertEqual(str(report.why(1)), str(of_plain.why(1)))

    def test_arrays_of_every_type_are_written(self):
        rows = [("number", np.array([1.5, np.nan], ">f8"), ["1,5", None]),
                ("number", np.array([0.1, 2.5], "f4"), ["0,1", "2,5"]),
                ("number", np.arange(4)[::2], ["0", "2"]),
                ("integer", np.array([2**64 - 1, 7], "u8"), ["18.446.744.073.709.551.615", "7"]),
                ("integer", np.ma.masked_array([1, 2], [True, False]), [None, "2"]),
                ("integer", pd.Series([1.0, None]), ["1", None]),
                ("date", np.array(["2024-03-15", "NaT"], ">M8[ns]"), ["15.03.2024", None]),
                ("time", pd.Series([pd.Timedelta(hours=1), pd.NaT]), ["01:00:00", None])]
        for kind, values, expected in rows:
            with self.subTest(kind=kind, values=values):
                written = jwnls.Layout("de_DE", kind).write_column(values)
                self.assertEqual(written.tolist(), expected)

    def test_a_column_is_to_be_proved(self):
        for layout in (jwnls.Layout("en_US", "date", "proved"), jwnls.Layout("en_US", "date")):
            for form in (list, pd.Categorical):
                self.assertEqual(len(layout.read_column(form(["01/02/2024", "01/13/2024"]))), 2)
                undecided = form(["", "01/02/2024"])
                if layout.options:
                    with self.assertRaises(jwnls.Error) as caught:
                        layout.read_column(undecided)
                    self.assertEqual(caught.exception.index, 1)
                else:
                    self.assertEqual(len(layout.read_column(undecided)), 2)

    def test_the_accessor_keeps_the_index_and_pandas_types(self):
        texts = pd.Series(["1.234", None], index=["a", "b"], name="n")
        rows = {"number": "float64", "integer": "Int64", "percent": "float64", "amount": "object"}
        for kind, dtype in rows.items():
            given = texts + " %" if kind == "percent" else texts
            read = given.jwnls.read("de_DE", kind)
            self.assertEqual((str(read.dtype), read.name), (dtype, "n"))
            self.assertEqual(list(read.index), ["a", "b"])
            self.assertTrue(read.isna()["b"])
            written = read.jwnls.write("de_DE", kind)
            self.assertEqual(written.jwnls.read("de_DE", kind)["a"], read["a"])
        moments = pd.Series(["15.03.2024 14:30 +01:00", None]).jwnls.read("de_DE", "instant")
        self.assertEqual(str(moments[0]), "2024-03-15 13:30:00+00:00")
        self.assertEqual(moments.dt.tz_convert("Asia/Tokyo").jwnls.write("de_DE", "instant")[0],
                         "15.03.2024, 13:30:00")
        series, report = texts.jwnls.read("de_DE", "date", errors="report")
        self.assertEqual((series.isna().sum(), report.refused), (2, 1))
        found = pd.Series(["1.234,5"]).jwnls.detect("number", "de_DE en_US")
        self.assertEqual(found.kind, "number")

    def test_all_days_are_written_and_read_back(self):
        days = np.arange("1582-01-01", "4000-01-01", dtype="M8[D]")
        layout = jwnls.Layout("pl_PL", "date", style="long")
        np.testing.assert_array_equal(layout.read_column(layout.write_column(days)), days)
        far = np.array([2**62], "M8[D]")
        self.assertEqual(layout.write_column(far, errors="report")[1].refused, 1)
        with self.assertRaises(jwnls.Error):  # nothing is cut off in silence
            layout.write_column(np.array(["2024-03-15T01"], "M8[h]"))


class OtherThreads(unittest.TestCase):
    def test_others_run_while_a_column_is_read(self):
        texts = TEXTS * 150_000
        turns, stop = [0], threading.Event()

        def count():
            while not stop.is_set():
                turns[0] += 1
                time.sleep(0)

        interval = sys.getswitchinterval()
        thread = threading.Thread(target=count)
        thread.start()
        try:
            sys.setswitchinterval(1000)  # only who gives the lock away lets others run
            before = turns[0]
            NUMBERS.read_column(texts)
            self.assertGreater(turns[0], before)
        finally:
            sys.setswitchinterval(interval)
            stop.set()
            thread.join()

    def test_elements_are_replaced_meanwhile(self):
        texts = np.array(["1.234,5"] * 200_000, object)
        values = texts.tolist()
        stop = threading.Event()

        def replace():
            number = 0
            while not stop.is_set():
                number += 1
                some = slice(number * 977 % 190_000, number * 977 % 190_000 + 5_000)
                texts[some] = f"{number % 1000},5"
                values[some] = [f"{number % 1000},5"] * len(values[some])

        threads = [threading.Thread(target=replace) for _ in range(2)]
        for thread in threads:
            thread.start()
        try:
            for _ in range(10):
                for column in (texts, values):
                    self.assertTrue((NUMBERS.read_column(column) % 1 == 0.5).all())
        finally:
            stop.set()
            for thread in threads:
                thread.join()

    def test_threads_share_a_layout(self):
        texts, results = TEXTS * 20_000, []
        threads = [threading.Thread(target=lambda: results.append(NUMBERS.read_column(texts)))
                   for _ in range(4)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        for result in results:
            np.testing.assert_array_equal(result, VALUES * 20_000)


class OtherProcesses(unittest.TestCase):
    def test_forked_workers_read(self):
        NUMBERS.read_column(TEXTS)
        for method in ("fork", "spawn"):
            with multiprocessing.get_context(method).Pool(2) as pool:
                for values in pool.map(read_in_child, [TEXTS] * 8):
                    np.testing.assert_array_equal(values, VALUES)


def resident():
    with open("/proc/self/statm", encoding="ascii") as file:
        return int(file.read().split()[1]) * resource.getpagesize()


class Memory(unittest.TestCase):
    def test_nothing_is_kept(self):
        many = "JWNLS_TEST_ALL" in os.environ
        mixed = np.array((TEXTS + [None, "x", "\ud800", b"\xff", 5]) * 3_000, object)
        amounts = jwnls.Layout("de_DE", "amount", currency="any")

        def work(number):
            NUMBERS.read_column(mixed, errors="report")[1].refusals(3)
            NUMBERS.write_column(np.linspace(0, 1e6, 5_000))
            amounts.read_column(["1,50 $", "x"] * 500, errors="coerce")
            jwnls.detect(["13/02/2024", "1/2/2024"], "date", "en_US en_GB")
            for index in range(100):
                try:
                    jwnls.Layout(f"x{number}_{index}", "number", f"zone=x{index}")
                except jwnls.Error:
                    pass
                try:
                    jwnls.Layout("de_DE", "number").read("x")
                except jwnls.Error:
                    pass

        for number in range(10):
            work(number)
        before = resident()
        for number in range(1000 if many else 60):  # with all, 100,000 names of locales
            work(number)
        self.assertLess(resident() - before, 6 << 20)


if __name__ == "__main__":
    unittest.main()
