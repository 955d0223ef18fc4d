"""Dates, times, numbers and amounts as each of 805 locales writes them.

A Layout is one way to write one kind of value. It reads and writes single values and columns:

>>> import jwnls
>>> layout = jwnls.Layout("de_DE", "number")
>>> layout.read("1.234,5")
1234.5
>>> layout.read_column(["1.234,5", "", "7"])
array([1234.5,    nan,    7. ])
>>> jwnls.Layout("pl_PL", "date", style="long").read("15 marca 2024")
datetime.date(2024, 3, 15)

What a locale would not write is not read: Error says why and where.
"""

from typing import NamedTuple, Optional, Tuple

from . import _jwnls, _pandas
from ._detect import DetectedKind, Detection, Reading, Verdict, detect
from ._errors import Code, Error
from ._jwnls import zones_version
from ._layout import Amount, Facts, Layout

__all__ = ["Amount", "Code", "DetectedKind", "Detection", "Error", "Facts", "Layout", "LocaleInfo",
           "Reading", "Verdict", "data_version", "detect", "locales", "match_locale", "zones",
           "zones_version"]
__version__ = _jwnls.version


class LocaleInfo(NamedTuple):
    """A locale's name, and what it is called in English and in its own language."""

    name: str
    english_name: str
    own_name: str


def locales():
    """All locales, by name.

    >>> [locale.own_name for locale in locales() if locale.name == "pl_PL"]
    ['polski (Polska)']
    """
    return [LocaleInfo(*locale) for locale in _jwnls.locales()]


def zones():
    """The names of all time zones.

    >>> "Europe/Berlin" in zones()
    True
    """
    return _jwnls.zones()


def match_locale(name) -> Optional[Tuple[str, bool]]:
    """The locale that a name gives, and whether it is that one or a near relative; None: no locale.

    >>> match_locale("de-DE.UTF-8"), match_locale("de_US"), match_locale("xx")
    (('de_DE', True), ('de', False), None)
    """
    return _jwnls.match_locale(name)


def data_version():
    """The locale data's version, on which stored results depend."""
    return _jwnls.data_version


for _each in (Amount, Code, DetectedKind, Detection, Error, Facts, Layout, Reading, Verdict):
    _each.__module__ = __name__  # where people find them, and pickles too
_pandas.register_when_imported()
