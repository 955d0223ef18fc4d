import datetime
import decimal
import enum
from typing import Any, Dict, Iterable, List, Literal, NamedTuple, Optional, Tuple, Union, overload

import numpy as np

from ._columns import Refusal as Refusal, Report as Report

__version__: str

_Kind = Literal["number", "integer", "amount", "percent", "date", "time", "datetime", "instant", "period"]
_Value = Union[float, int, decimal.Decimal, Amount, datetime.date, datetime.time, datetime.datetime, datetime.timedelta]

class Code(enum.IntEnum):
    OK = 0
    UNREAD = 1
    RANGE = 2
    MISSING = 3
    ROOM = 4
    UNKNOWN = 5
    LOAD = 6
    MEMORY = 7
    KIND = 8

class Error(ValueError):
    code: Code
    at: int
    index: Optional[int]
    def __init__(self, message: str, code: Code = ..., at: int = ..., index: Optional[int] = ...) -> None: ...

class Amount(NamedTuple):
    value: decimal.Decimal
    currency: str

class Facts(NamedTuple):
    two_ways: bool
    decides: bool
    buddhist: bool

class Layout:
    def __new__(cls, locale: str, kind: _Kind, options: str = "", /, **named: Union[str, int, bool, None]) -> Layout: ...
    @classmethod
    def described(cls, description: str) -> Layout: ...
    @property
    def locale(self) -> str: ...
    @property
    def kind(self) -> str: ...
    @property
    def options(self) -> str: ...
    @property
    def currency(self) -> str: ...
    def describe(self) -> str: ...
    def read(self, text: Union[str, bytes], *, exact: bool = False) -> Optional[_Value]: ...
    def facts(self, text: Union[str, bytes]) -> Facts: ...
    def explain(self, text: Union[str, bytes]) -> Optional[Error]: ...
    def write(self, value: Any) -> str: ...
    @overload
    def read_column(self, values: Iterable[Any], *, errors: Literal["raise", "coerce"] = "raise", exact: Optional[bool] = None) -> np.ndarray: ...
    @overload
    def read_column(self, values: Iterable[Any], *, errors: Literal["report"], exact: Optional[bool] = None) -> Tuple[np.ndarray, Report]: ...
    @overload
    def write_column(self, values: Iterable[Any], *, errors: Literal["raise", "coerce"] = "raise") -> np.ndarray: ...
    @overload
    def write_column(self, values: Iterable[Any], *, errors: Literal["report"]) -> Tuple[np.ndarray, Report]: ...

class Verdict(enum.IntEnum):
    PROVED = 1
    AMBIGUOUS = 2
    CONTRADICTION = 3
    NONE = 4
    ANY_LOCALE = 5

class Reading:
    kind: str
    options: str
    locales: Tuple[str, ...]
    read: int
    two_ways: int
    value: str
    def layout(self, locale: Optional[str] = None) -> Layout: ...

class DetectedKind:
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
    readings: Tuple[Reading, ...]

class Detection:
    kind: Optional[str]
    kinds: Dict[str, DetectedKind]
    @property
    def found(self) -> Optional[DetectedKind]: ...
    def layout(self) -> Layout: ...

class LocaleInfo(NamedTuple):
    name: str
    english_name: str
    own_name: str

def detect(values: Iterable[Any], kinds: Union[str, Iterable[str]] = "", locales: Union[str, Iterable[str]] = "") -> Detection: ...
def locales() -> List[LocaleInfo]: ...
def zones() -> List[str]: ...
def match_locale(name: str) -> Optional[Tuple[str, bool]]: ...
def zones_version() -> str: ...
def data_version() -> str: ...
