"""What goes wrong: codes, and the exception that carries them."""

import enum


class Code(enum.IntEnum):
    """Why there is no value; the codes of the C interface."""

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
    """A text that is not read, a value that cannot be written, an unknown locale or option.

    code   a Code
    at     how many characters of the text fit
    index  the row of a column, or None

    >>> try:
    ...     Layout("de_DE", "number").read("1.234,5 EUR")
    ... except Error as error:
    ...     error.code, error.at
    (<Code.UNREAD: 1>, 7)
    """

    def __init__(self, message, code=Code.UNREAD, at=0, index=None):
        super().__init__(message)
        self.code = Code(code)
        self.at = at
        self.index = index

    def __reduce__(self):
        return type(self), (str(self), self.code, self.at, self.index)
