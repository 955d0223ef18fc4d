"""Values as Python has them: examples of the documentation, types, pickles, what is refused."""

import datetime
import decimal
import doctest
import importlib
import inspect
import os
import pickle
import unittest
from pathlib import Path

import numpy as np

import jwnls

DOCUMENT = Path(os.environ["JWNLS_SOURCE"]) / "docs" / "python.md"
MODULES = ["jwnls", "jwnls._errors", "jwnls._layout", "jwnls._columns", "jwnls._detect"]


def documented():
    """Everything with a docstring: of modules, their classes, and the extension's methods."""
    for module in map(importlib.import_module, MODULES):
        yield module.__name__, module
        for name, each in vars(module).items():
            if getattr(each, "__module__", None) == module.__name__:
                yield f"{module.__name__}.{name}", each
                if inspect.isclass(each):
                    for of_class in each.__mro__[:2]:
                        for key, value in vars(of_class).items():
                            yield f"{name}.{key}", value


class Documentation(unittest.TestCase):
    def test_examples(self):
        names = {"datetime": datetime, "decimal": decimal, "jwnls": jwnls}
        names.update((name, getattr(jwnls, name)) for name in jwnls.__all__)
        names["option_words"] = importlib.import_module("jwnls._layout").option_words
        parser, runner = doctest.DocTestParser(), doctest.DocTestRunner(verbose=False)
        seen = set()
        for name, each in documented():
            text = getattr(each, "__doc__", None)
            if isinstance(text, str) and ">>>" in text and text not in seen:
                seen.add(text)
                runner.run(parser.get_doctest(inspect.cleandoc(text), dict(names), name, None, 0))
        self.assertGreater(len(seen), 12)
        self.assertEqual(runner.summarize(verbose=False).failed, 0)

    def test_dialogues(self):
        failed, tried = doctest.testfile(str(DOCUMENT), module_relative=False)
        self.assertGreater(tried, 25)
        self.assertEqual(failed, 0)


class Values(unittest.TestCase):
    def test_numpy_and_python_values_are_written_alike(self):
        moment = datetime.datetime(2024, 3, 15, 14, 30, 5)
        rows = [
            ("number", 0.1, [np.float64(0.1), np.float32(0.1), decimal.Decimal("0.1")]),
            ("integer", 1234, [np.int64(1234), np.uint8(1) + np.int16(1233), 1234.0]),
            ("date", moment.date(), [np.datetime64("2024-03-15"), moment.combine(
                moment.date(), datetime.time())]),
            ("datetime", moment, [np.datetime64(moment), np.datetime64(moment).astype("M8[ns]")]),
            ("time", moment.time(), [datetime.timedelta(hours=14, minutes=30, seconds=5),
                                     np.timedelta64(52205, "s")]),
            ("instant", moment.replace(tzinfo=datetime.timezone.utc),
             [np.datetime64(moment), moment.replace(tzinfo=datetime.timezone(
                 datetime.timedelta(hours=2))) + datetime.timedelta(hours=2)]),
        ]
        for kind, value, others in rows:
            layout = jwnls.Layout("de_DE", kind)
            for other in others:
                with self.subTest(kind=kind, other=other):
                    self.assertEqual(layout.write(other), layout.write(value))
                    self.assertEqual(list(layout.write_column([other])), [layout.write(value)])

    def test_what_has_no_value_is_written_as_nothing(self):
        for kind, value in [("number", float("nan")), ("number", decimal.Decimal("NaN")),
                            ("date", np.datetime64("NaT")), ("time", None)]:
            layout = jwnls.Layout("de_DE", kind)
            self.assertEqual(layout.write(value), "")
            self.assertEqual(list(layout.write_column([value])), [None])

    def test_what_is_of_another_kind_is_refused(self):
        now = datetime.datetime(2024, 3, 15, 14, 30)
        rows = [
            ("number", "1", TypeError), ("number", True, TypeError), ("date", 5, TypeError),
            ("date", now, jwnls.Error), ("instant", now, jwnls.Error),
            ("datetime", now.astimezone(), jwnls.Error), ("integer", 1.5, jwnls.Error),
            ("time", now, TypeError),
            ("amount", jwnls.Amount(decimal.Decimal(1), "USD"), jwnls.Error),
        ]
        for kind, value, error in rows:
            layout = jwnls.Layout("de_DE", kind)
            with self.subTest(kind=kind, value=value):
                with self.assertRaises(error):
                    layout.write(value)
                with self.assertRaises(jwnls.Error) as caught:
                    layout.write_column([value])
                self.assertEqual(caught.exception.index, 0)
                _, report = layout.write_column([value, None], errors="report")
                self.assertEqual((report.refused, report.missing), (1, 1))

    def test_garbage_has_a_clear_error(self):
        rows = [
            (("de_DE", "number", "decimals=99999"), {}, ValueError),
            (("de_DE", "nonsense"), {}, jwnls.Error), (("xx_YY", "number"), {}, jwnls.Error),
            (("de\0DE", "number"), {}, ValueError), (("\ud800", "number"), {}, ValueError),
            ((None, "number"), {}, TypeError),
            (("de_DE", "number", "\xff" * 10**6), {}, jwnls.Error),
            (("x" * 10**8, "number"), {}, jwnls.Error),
            (("de_DE", "number"), {"x": "y z"}, jwnls.Error),
            (("de_DE", "number"), {"groups": "some"}, jwnls.Error),
        ]
        for arguments, named, error in rows:
            with self.subTest(str(arguments)[:60]), self.assertRaises(error) as caught:
                jwnls.Layout(*arguments, **named)
            self.assertLess(len(str(caught.exception)), 400)
        layout = jwnls.Layout("de_DE", "number")
        for text in ["1\ud800", "1\0", "9" * 10**8, b"\xff\xfe", b"9" * 10**8, "\U0010FFFF"]:
            with self.assertRaises(jwnls.Error):
                layout.read(text)
            self.assertIn(layout.explain(text).code, (jwnls.Code.UNREAD, jwnls.Code.RANGE))
            self.assertEqual(layout.read_column([text], errors="report")[1].refused, 1)
        for thing in [5, None, ["1"]]:
            with self.assertRaises(TypeError):
                layout.read(thing)
        with self.assertRaises(ValueError):
            layout.read_column(["1"], errors="ignore")

    def test_layouts_are_their_words(self):
        layout = jwnls.Layout("de-DE", "datetime", "style=long", zone="Europe/Berlin")
        again = pickle.loads(pickle.dumps(layout))
        self.assertEqual(again, layout)
        self.assertEqual(hash(again), hash(layout))
        self.assertEqual(eval(repr(layout), {"Layout": jwnls.Layout}), layout)
        self.assertNotEqual(layout, jwnls.Layout("de_AT", "datetime"))
        error = jwnls.Layout("de_DE", "number").explain("x")
        copy = pickle.loads(pickle.dumps(error))
        self.assertEqual((str(copy), copy.code, copy.at), (str(error), error.code, error.at))

    def test_what_there_is(self):
        self.assertEqual(len(jwnls.locales()), 805)
        for locale in jwnls.locales():
            self.assertEqual(jwnls.Layout(locale.name, "number").locale, locale.name)
        self.assertIn("Asia/Kolkata", jwnls.zones())


if __name__ == "__main__":
    unittest.main()
