"""Layouts: one way to write one kind of value, and the Python values that they read and write."""

import datetime
import decimal
import functools
import numbers
from typing import NamedTuple

from . import _jwnls
from ._errors import Code, Error

_EPOCH_DAY = datetime.date(1970, 1, 1).toordinal()
_EPOCH = datetime.datetime(1970, 1, 1)
_EPOCH_UTC = _EPOCH.replace(tzinfo=datetime.timezone.utc)
_MICROSECOND = datetime.timedelta(microseconds=1)

TWO_WAYS, DECIDES, BUDDHIST = 1, 2, 4


class Amount(NamedTuple):
    """A number exactly, and the ISO code of its currency."""

    value: decimal.Decimal
    currency: str


class Facts(NamedTuple):
    """What a text is known for, beside its value.

    two_ways  a writer of another convention could have meant another value
    decides   the text excludes that other convention
    buddhist  a year of the Buddhist era was read
    """

    two_ways: bool
    decides: bool
    buddhist: bool


def amount(text, currency):
    return Amount(decimal.Decimal(text), currency)


def exact_number(text, _currency):
    return decimal.Decimal(text)


def _datetime(microseconds):
    return _EPOCH + microseconds * _MICROSECOND


def _instant(microseconds):
    return _EPOCH_UTC + microseconds * _MICROSECOND


def _date(days):
    return datetime.date.fromordinal(days + _EPOCH_DAY)


def _time(microseconds):
    return (_EPOCH + microseconds * _MICROSECOND).time()


_PYTHON_VALUE = {
    "number": float,
    "integer": int,
    "percent": float,
    "amount": lambda pair: amount(*pair),
    "date": _date,
    "period": _date,
    "time": _time,
    "datetime": _datetime,
    "instant": _instant,
}


def option_words(options, named):
    """The words of docs/layouts.md: of a text, and of Python's named arguments.

    >>> option_words("plus", {"no_group": True, "decimals": 2, "rounding": None})
    'plus no-group decimals=2'
    """
    words = options.split(" ") if options else []
    for name, value in named.items():
        if value is None or value is False:
            continue
        word = name.replace("_", "-")
        if value is not True:
            word += f"={value}"
        if any(character.isspace() for character in word):
            raise Error(f"option {name}={value!r}: one word without blanks is expected",
                        Code.UNKNOWN)
        words.append(word)
    return " ".join(word for word in words if word)


class Layout(_jwnls.Layout):
    """How a locale writes one kind of value.

    Layout(locale, kind, options="", **options). A kind is number, integer, amount, percent, date,
    time, datetime, instant or period; option words stand in one text, or as named arguments with
    "_" for "-". A layout never changes, any number of threads may use it, it can be pickled, and
    equal ones are equal.

    >>> layout = Layout("de_DE", "number", groups="any")
    >>> layout.read("1.234,5")
    1234.5
    >>> layout.write(1234.5)
    '1.234,5'
    >>> layout
    Layout('de_DE', 'number', 'groups=any')
    >>> layout == Layout("de-DE", "number", "groups=any")
    True
    """

    __slots__ = ("_python_value",)

    def __new__(cls, locale, kind, options="", /, **named):
        self = super().__new__(cls, locale, kind, option_words(options, named))
        self._python_value = _PYTHON_VALUE[self.kind]
        return self

    @classmethod
    def described(cls, description):
        """Opens what describe() gave.

        >>> Layout.described("pl_PL date style=long").write(datetime.date(2024, 3, 15))
        '15 marca 2024'
        """
        words = description.split(" ", 2)
        if len(words) < 2:
            raise Error(f"{description!r} is no description of a layout", Code.UNKNOWN)
        return cls(*words)

    @property
    def options(self):
        """The option words that were given, in one order."""
        return " ".join(self.describe().split(" ")[2:])

    def __reduce__(self):
        return type(self).described, (self.describe(),)

    def __repr__(self):
        parts = [self.locale, self.kind, self.options]
        return f"Layout({', '.join(map(repr, parts if parts[2] else parts[:2]))})"

    def __eq__(self, other):
        if not isinstance(other, Layout):
            return NotImplemented
        return self.describe() == other.describe()

    def __hash__(self):
        return hash(self.describe())

    def read(self, text, *, exact=False):
        """The value of a text, a str or bytes of UTF-8; None of a blank one.

        Numbers and percentages are floats, or Decimals where `exact`; amounts are Amounts, dates
        datetime.date, and so on. Raises Error for what is not read.

        >>> Layout("de_DE", "amount").read("1.234,50 €")
        Amount(value=Decimal('1234.50'), currency='EUR')
        >>> Layout("en_US", "percent").read("12.5%", exact=True)
        Decimal('0.125')
        """
        if exact and self.kind in ("number", "percent"):
            pair = self._read_decimal(text)
            return None if pair is None else decimal.Decimal(pair[0])
        value = self._read(text)
        return None if value is None else self._python_value(value)

    def facts(self, text):
        """What a text is known for; of one that is not read, nothing.

        >>> Layout("en_US", "date").facts("01/02/2024")
        Facts(two_ways=True, decides=False, buddhist=False)
        """
        facts = self._facts(text)[1]
        return Facts(bool(facts & TWO_WAYS), bool(facts & DECIDES), bool(facts & BUDDHIST))

    def write(self, value):
        """The text of a value, '' of None, NaN and NaT. Raises Error for what cannot be written.

        >>> Layout("en_IN", "amount").write(decimal.Decimal("1234567.5"))
        '₹12,34,567.50'
        >>> Layout("fr_CH", "date", style="long").write(datetime.date(2024, 3, 15))
        '15 mars 2024'
        """
        if value is None or value != value:  # NaN and NaT are not themselves
            return ""
        try:
            text = _WRITERS[self.kind](self, value)
        except OverflowError:
            raise Error(f"{value!r} is too large", Code.RANGE) from None
        except Error as error:
            raise Error(f"{value!r}: {error}", error.code) from None
        return "" if text is None else text

    def read_column(self, values, *, errors="raise", exact=None):
        """The values of a column of texts, as a NumPy array.

          values  a list, a NumPy array of objects, bytes or str, a pandas Series or Categorical;
                  None, NaN, NaT and NA are missing values
          errors  of values that are not read: "raise" an Error that names the first; "coerce": as
                  missing; "report": as missing, and the answer is (array, Report)
          exact   numbers as Decimals; amounts are so if False is not given

        float64 (missing: NaN), int64 (a masked array where some are missing), datetime64[D],
        datetime64[us], timedelta64[us] (NaT), objects (None). With the option "proved" a column is
        not read, either, whose values could all mean others.

        >>> Layout("de_DE", "number").read_column(["1.234,5", None, "7"])
        array([1234.5,    nan,    7. ])
        >>> days, report = Layout("pl_PL", "date").read_column(
        ...     ["15 marca 2024", "32 marca"], errors="report")
        >>> days
        array(['2024-03-15',        'NaT'], dtype='datetime64[D]')
        >>> report.read, report.refused, report.first_refused
        (1, 1, 1)
        """
        from ._columns import read_column

        return read_column(self, values, errors, exact)

    def write_column(self, values, *, errors="raise"):
        """The texts of a column of values, as a NumPy array of str, None where one is missing.

        >>> Layout("de_DE", "integer").write_column([1234, 5])
        array(['1.234', '5'], dtype=object)
        """
        from ._columns import write_column

        return write_column(self, values, errors)


def _write_number(layout, value):
    if isinstance(value, bool):
        raise TypeError("a number is expected, not a bool")
    if isinstance(value, Amount):
        if value.currency != layout.currency:
            raise Error(f"the layout writes {layout.currency or 'no currency'}", Code.RANGE)
        value = value.value
    if isinstance(value, float):
        return layout._write_number(value)
    if isinstance(value, decimal.Decimal):
        if not value.is_finite():
            return layout._write_number(float(value))
        return layout._write_decimal(str(value))
    if isinstance(value, numbers.Integral):
        return layout._write_decimal(str(int(value)))
    if isinstance(value, numbers.Real) and not isinstance(value, numbers.Rational):
        return layout._write_decimal(str(value))  # NumPy's float32: its own shortest digits
    raise TypeError(f"a number is expected, not {type(value).__name__}")


def _write_integer(layout, value):
    if isinstance(value, float):
        if not value.is_integer():
            raise Error("an integer is expected", Code.RANGE)
        value = int(value)
    if isinstance(value, int) and abs(value) < 2**63 and not isinstance(value, bool):
        return layout._write_integer(value)
    return _write_number(layout, value)


def _python_moment(value):
    """NumPy's moments as Python's, microseconds."""
    to_python = getattr(value, "astype", None)
    return value if to_python is None else to_python(f"{value.dtype.kind}8[us]").item()


def _write_date(layout, value):
    value = _python_moment(value)
    if isinstance(value, datetime.datetime):
        if value.time() != datetime.time():
            raise Error("a date is expected, not a time of day", Code.RANGE)
    elif not isinstance(value, datetime.date):
        raise TypeError(f"a date is expected, not {type(value).__name__}")
    return layout._write_moment(value.toordinal() - _EPOCH_DAY)


def _write_datetime(layout, value, aware=False):
    value = _python_moment(value)
    if not isinstance(value, datetime.datetime):
        raise TypeError(f"a datetime is expected, not {type(value).__name__}")
    if (value.tzinfo is not None) != aware:
        raise Error("a datetime without a time zone is expected, or a layout of instants"
                    if not aware else "a datetime with a time zone is expected", Code.RANGE)
    return layout._write_moment((value - (_EPOCH_UTC if aware else _EPOCH)) // _MICROSECOND)


def _write_instant(layout, value):
    moment = _python_moment(value)
    if moment is not value and isinstance(moment, datetime.datetime):
        moment = moment.replace(tzinfo=datetime.timezone.utc)  # NumPy's are in UTC
    return _write_datetime(layout, moment, aware=True)


def _write_time(layout, value):
    value = _python_moment(value)
    if isinstance(value, datetime.time):
        value = datetime.datetime.combine(_EPOCH, value.replace(tzinfo=None)) - _EPOCH
    if not isinstance(value, datetime.timedelta):
        raise TypeError(f"a time is expected, not {type(value).__name__}")
    return layout._write_moment(value // _MICROSECOND)


_WRITERS = {
    "number": _write_number,
    "percent": _write_number,
    "amount": _write_number,
    "integer": _write_integer,
    "date": _write_date,
    "period": _write_date,
    "datetime": _write_datetime,
    "instant": _write_instant,
    "time": _write_time,
}


@functools.lru_cache(maxsize=256)
def cached_layout(locale, kind, words):
    """Layouts for those who name them anew for every column."""
    return Layout(locale, kind, words)
