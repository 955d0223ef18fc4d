"""Which locales read a column, and whether they agree on it."""

import dataclasses
import enum
from typing import Optional, Tuple

from . import _jwnls
from ._errors import Code, Error
from ._layout import Layout


class Verdict(enum.IntEnum):
    """What a kind was found to be.

    PROVED         one reading: other locales do not read some texts
    AMBIGUOUS      several, with different values: a person has to choose
    CONTRADICTION  none: the texts follow different conventions
    NONE           no locale reads half of the texts
    ANY_LOCALE     all locales read the column, to the same values
    """

    PROVED = 1
    AMBIGUOUS = 2
    CONTRADICTION = 3
    NONE = 4
    ANY_LOCALE = 5


@dataclasses.dataclass(frozen=True)
class Reading:
    """Locales that give the same value for every text they read.

    value is that of the first text on which readings differ, as a text.
    """

    kind: str
    options: str
    locales: Tuple[str, ...]
    read: int
    two_ways: int
    value: str

    def layout(self, locale=None) -> Layout:
        """The layout of one of its locales, the first if none is named."""
        if locale is not None and locale not in self.locales:
            raise Error(f"{locale} is no locale of this reading", Code.UNKNOWN)
        return Layout(locale or self.locales[0], self.kind, self.options)


@dataclasses.dataclass(frozen=True)
class DetectedKind:
    """What a column was found to be as one kind. Rows are numbered from 0, None: there is none."""

    kind: str
    verdict: Verdict
    values: int
    read: int
    dirty: int
    first_dirty: Optional[int]
    others: int
    first_other: Optional[int]
    witness: Optional[int]
    deciding: Optional[int]
    rival: str
    rival_read: int
    readings: Tuple[Reading, ...] = dataclasses.field(repr=False)


@dataclasses.dataclass(frozen=True)
class Detection:
    """kind is the one that reads most of the column, None where no kind reads half of it."""

    kind: Optional[str]
    kinds: dict = dataclasses.field(repr=False)

    @property
    def found(self) -> Optional[DetectedKind]:
        """What was found of the best kind."""
        return self.kinds.get(self.kind)

    def layout(self) -> Layout:
        """The layout that reads the column; Error where the column leaves a choice."""
        found = self.found
        if found is None:
            raise Error("no kind and no locale read half of the column", Code.UNREAD)
        if found.verdict in (Verdict.PROVED, Verdict.ANY_LOCALE):
            return found.readings[0].layout()
        choice = ", ".join(f"{reading.locales[0]} ({reading.value})"
                           for reading in found.readings[:3])
        raise Error(f"{found.verdict.name.lower()}: {choice} read the column as {self.kind} "
                    "differently", Code.UNREAD)


def _names(names):
    return names if isinstance(names, str) else " ".join(names)


def detect(values, kinds="", locales=""):
    """Which locales read a column of texts, and as what.

      values   as in Layout.read_column()
      kinds    names of kinds; none: all but instants and periods
      locales  only these are asked; none: all

    >>> dates = detect(["01/02/2024", "13/02/2024"], locales=["en_US", "en_GB"])
    >>> dates.kind, dates.found.verdict.name
    ('date', 'PROVED')
    >>> dates.layout()
    Layout('en_GB', 'date')
    """
    from ._columns import categories_of, missing_objects, texts_of

    # Of a categorical, each category once: what can be read does not depend on how often.
    categorical = categories_of(values)
    texts = texts_of(values if categorical is None else categorical[0])
    count = len(texts)
    best, found = _jwnls.detect(texts, _names(kinds), _names(locales), missing_objects())
    detected = {}
    for kind, verdict, *numbers, rival, rival_read, readings in found:
        rows = [number if i not in (3, 5, 6, 7) or number < count else None
                for i, number in enumerate(numbers)]
        detected[kind] = DetectedKind(kind, Verdict(verdict), *rows, rival, rival_read,
                                      tuple(Reading(kind, *reading) for reading in readings))
    return Detection(best, detected)
