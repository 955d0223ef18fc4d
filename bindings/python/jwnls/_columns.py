"""Columns: what a caller holds becomes texts for the extension, what it reads becomes arrays."""

import dataclasses
import sys
from typing import Any, Iterator, NamedTuple, Optional

import numpy as np

from ._errors import Code, Error
from ._layout import DECIDES, TWO_WAYS, amount, exact_number

_DTYPE = {
    "number": "f8",
    "percent": "f8",
    "amount": "f8",
    "integer": "i8",
    "date": "M8[D]",
    "period": "M8[D]",
    "datetime": "M8[us]",
    "instant": "M8[us]",
    "time": "m8[us]",
}
_ERRORS = ("raise", "coerce", "report")


class Refusal(NamedTuple):
    """A value that was not read or written."""

    index: int
    value: Any
    error: Error


@dataclasses.dataclass(frozen=True)
class Report:
    """What a column was found to be; counts are of rows, numbered from 0.

    codes is an array with the Code of each row; why(index) says why a row has no value,
    refusals() goes through all of them.

    >>> numbers, report = Layout("de_DE", "number").read_column(["1,5", "x"], errors="report")
    >>> for row in report.refusals():
    ...     print(row.index, row.value, row.error.code.name)
    1 x UNREAD
    """

    read: int
    refused: int
    missing: int
    two_ways: int
    deciding: int
    first_refused: Optional[int]
    first_two_ways: Optional[int]
    codes: np.ndarray = dataclasses.field(repr=False, compare=False)
    _explain: Any = dataclasses.field(repr=False, compare=False)

    def why(self, index) -> Optional[Error]:
        if self.codes[index] in (Code.OK, Code.MISSING):
            return None
        return self._explain(int(index))[1]

    def refusals(self, limit=None) -> Iterator[Refusal]:
        rows = np.flatnonzero((self.codes != Code.OK) & (self.codes != Code.MISSING))
        for index in rows[:limit].tolist():
            yield Refusal(index, *self._explain(index))


def missing_objects():
    """Objects that mean "no value", beside None and NaN."""
    pandas = sys.modules.get("pandas")
    return () if pandas is None or not hasattr(pandas, "NaT") else (pandas.NA, pandas.NaT)


def categories_of(values):
    """(categories, numbers of categories) of a pandas categorical, or None."""
    if type(getattr(values, "dtype", None)).__name__ != "CategoricalDtype":
        return None
    categorical = getattr(values, "array", values)
    return categorical.categories, categorical.codes


def _unmasked(array):
    """Objects, None where a masked array has no value."""
    objects = array.data.astype(object)
    objects[np.ma.getmaskarray(array)] = None
    return objects


def texts_of(values):
    """A list or tuple, or a contiguous array of objects, bytes or str."""
    if isinstance(values, (list, tuple)):
        return values
    if isinstance(values, (str, bytes, bytearray)):
        raise TypeError("a column of texts is expected; read() takes one text")
    if not hasattr(values, "dtype") and not hasattr(values, "__array__"):
        return list(values)
    array = values
    if np.ma.isMaskedArray(array):
        array = _unmasked(array)
    if not isinstance(array, np.ndarray):
        array = np.asarray(values, dtype=object)
    if array.ndim != 1:
        raise ValueError(f"a column has one dimension, not {array.ndim}")
    if array.dtype.kind == "f" and np.isnan(array).all():
        array = np.full(len(array), None, dtype=object)  # pandas gives empty columns so
    if array.dtype.kind not in "OSU":
        raise TypeError(f"a column of texts is expected, not of {array.dtype}")
    return np.ascontiguousarray(array, dtype=array.dtype.newbyteorder("="))


def explain_object(layout, value):
    if isinstance(value, (str, bytes)):
        error = layout.explain(value)
    else:
        error = Error(f"an object of class {type(value).__name__} is no text")
    return error or Error("the value was another one when it was read")


def _row(number, count):
    return None if number >= count else number


def _raise(count, report, done):
    index = report.first_refused
    error = report.why(index)
    raise Error(f"{report.refused} of {count} values cannot be {done}, the first in row {index}: "
                f"{error}", error.code, error.at, index) from None


def _check_errors(errors):
    if errors not in _ERRORS:
        raise ValueError(f"errors={errors!r}: \"raise\", \"coerce\" or \"report\" is expected")


def _read(layout, values, exact):
    """(array, codes, the extension's seven counts or None)."""
    count = len(values)
    codes = np.empty(count, np.uint8)
    if exact:
        make = amount if layout.kind == "amount" else exact_number
        out = np.empty(count, object)
        layout._read_decimals(values, out, codes, missing_objects(), make)
        return out, codes, None
    out = np.empty(count, _DTYPE[layout.kind])
    return out, codes, layout._read_column(values, out.view("i8"), codes, missing_objects())


def _counts(codes, facts):
    """What the extension counts, of codes and the facts of each row."""
    count = len(codes)
    refused = (codes != Code.OK) & (codes != Code.MISSING)
    two_ways = facts & TWO_WAYS != 0

    def first(mask):
        return int(mask.argmax()) if mask.any() else count

    return (int((codes == Code.OK).sum()), int(refused.sum()), int((codes == Code.MISSING).sum()),
            int(two_ways.sum()), int((facts & DECIDES != 0).sum()), first(refused), first(two_ways))


def _facts_of(layout, values):
    def facts(value):
        try:
            return layout._facts(value)[1]
        except (TypeError, ValueError):  # no text
            return 0

    return np.array([facts(value) for value in values], np.uint8)


def _report(layout, texts, codes, counts):
    count = len(codes)

    def explain(index):
        return texts[index], explain_object(layout, texts[index])

    return Report(*counts[:5], _row(counts[5], count), _row(counts[6], count), codes, explain)


def _take(categories, rows, missing):
    """Values of categories for rows, whose number is -1 where there is none."""
    if len(categories) == 0:
        return np.full(len(rows), missing, categories.dtype)
    taken = categories.take(rows, mode="clip")
    taken[rows < 0] = missing
    return taken


_NOTHING = {"f": np.nan, "i": 0, "u": Code.MISSING, "O": None, "M": "NaT", "m": "NaT"}


def read_column(layout, values, errors, exact):
    _check_errors(errors)
    exact = layout.kind == "amount" if exact is None else exact
    if exact and layout.kind not in ("number", "percent", "amount"):
        raise ValueError(f"exact=True is for numbers, amounts and percentages, not {layout.kind}")
    categorical = categories_of(values)
    proved = "proved" in layout.options.split(" ")
    texts = texts_of(values if categorical is None else categorical[0])
    out, codes, counts = _read(layout, texts, exact)
    if counts is None or categorical is not None:
        # The quick way to the counts is not there; facts are asked only for a report.
        asked = errors == "report" or proved
        facts = _facts_of(layout, texts) if asked else np.zeros(len(codes), np.uint8)
        if categorical is not None:
            rows = categorical[1]
            out = _take(out, rows, _NOTHING[out.dtype.kind])
            codes, facts = _take(codes, rows, Code.MISSING), _take(facts, rows, 0)
            texts = _Rows(texts, rows)
        counts = _counts(codes, facts)
    report = _report(layout, texts, codes, counts)
    if errors == "raise" and report.refused:
        _raise(len(codes), report, "read")
    if proved and errors != "report" and report.two_ways and not report.deciding:
        raise Error(f"not proved: {report.two_ways} of {len(codes)} values could mean others, the "
                    f"first in row {report.first_two_ways}, and none decides",
                    index=report.first_two_ways)
    if layout.kind == "integer" and report.read < len(codes):
        out = np.ma.masked_array(out, codes != Code.OK)
    return (out, report) if errors == "report" else out


class _Rows:
    """The texts of a categorical's rows."""

    def __init__(self, categories, rows):
        self.categories, self.rows = categories, rows

    def __getitem__(self, index):
        return self.categories[self.rows[index]] if self.rows[index] >= 0 else None


def _values_of(layout, values):
    """An array of floats, 64-bit integers (moments in the layout's unit), or objects."""
    if np.ma.isMaskedArray(values):
        values = _unmasked(values)
    zone = getattr(getattr(values, "dtype", None), "tz", None)
    if zone is not None and layout.kind == "instant" and hasattr(values, "dt"):
        values = values.dt.tz_convert("UTC").dt.tz_localize(None)
    if not isinstance(values, np.ndarray) and not hasattr(values, "dtype"):
        values = list(values)
        kinds = {type(value) for value in values}
        array = np.array(values) if kinds <= {float} or kinds <= {int} else None
        if array is None or array.dtype.kind not in "fi":
            array = np.empty(len(values), object)
            array[:] = values
        values = array
    array = np.asarray(values)
    if array.ndim != 1:
        raise ValueError(f"a column has one dimension, not {array.ndim}")
    dtype = np.dtype(_DTYPE[layout.kind])
    wanted = dtype.kind
    if wanted in "Mm" and array.dtype.kind == wanted:
        moments = array.astype(dtype)
        if layout.kind not in ("date", "period") or bool(
                ((moments == array) | np.isnat(array)).all()):
            return moments
    elif layout.kind != "integer" and wanted == "f" and array.dtype == np.float64:
        return array
    elif wanted in "fi" and array.dtype.kind in "iu" and array.dtype != np.uint64:
        return array.astype(np.int64, copy=False)
    objects = array.astype(object)
    if array.dtype.kind == "f":
        objects[:] = list(array)  # a float32 has shortest digits of its own
    return objects


def write_column(layout, values, errors):
    _check_errors(errors)
    array = np.ascontiguousarray(_values_of(layout, values))
    out = np.empty(len(array), object)
    codes = np.zeros(len(array), np.uint8)
    if array.dtype.kind == "O":
        _write_objects(layout, array, out, codes)
    else:
        numbers = array.view("f8" if array.dtype.kind == "f" else "i8")
        layout._write_column(numbers, out, codes)
        if array.dtype.kind in "Mm":
            codes[np.isnat(array)] = Code.MISSING

    def explain(index):
        value = array[index]
        try:
            layout.write(value)
        except (Error, TypeError) as error:
            return value, error if isinstance(error, Error) else Error(str(error), Code.KIND)
        return value, Error("the value was another one when it was written")

    counts = _counts(codes, np.zeros(len(codes), np.uint8))
    report = Report(*counts[:5], _row(counts[5], len(codes)), None, codes, explain)
    if errors == "raise" and report.refused:
        _raise(len(codes), report, "written")
    return (out, report) if errors == "report" else out


def _write_objects(layout, values, out, codes):
    missing = missing_objects()
    for index, value in enumerate(values):
        if value is None or any(value is each for each in missing) or value != value:
            codes[index] = Code.MISSING
            continue
        try:
            out[index] = layout.write(value)
        except Error as error:
            codes[index] = error.code
        except TypeError:
            codes[index] = Code.KIND
