"""The mutants of a C++ source: small faults, each in one place. scripts/mutate tests the tests with
them."""

import re
from typing import NamedTuple


class Mutant(NamedTuple):
    file: str  # from the project's folder
    line: int
    start: int  # what is replaced of the source's text
    end: int
    new: str

    def applied(self, text):
        return text[:self.start] + self.new + text[self.end:]

    def lines(self, text):
        """The line as it is, and as it becomes."""
        begin = text.rfind("\n", 0, self.start) + 1
        end = text.find("\n", self.end)
        return " ".join(text[begin:end].split()), " ".join(
            (text[begin:self.start] + self.new + text[self.end:end]).split())


# Where nothing is changed. Numbers stand here because of their separators, which look like quotes.
_NOT_CODE = re.compile(
    r"""(?P<number>\b\d[\w'.]*)
      | R"(?P<mark>[^(\s]*)\(.*?\)(?P=mark)"
      | "(?:\\.|[^"\\\n])*" | '(?:\\.|[^'\\\n])*'
      | //[^\n]* | /\*.*?\*/
      | ^[ \t]*\#(?:\\\n|[^\n])*""", re.VERBOSE | re.DOTALL | re.MULTILINE)

_RELATIONS = {"<": ("<=", ">="), "<=": ("<", ">"), ">": (">=", "<="), ">=": (">", "<"),
              "==": ("!=",), "!=": ("==",)}
_SWAPS = {"+": "-", "-": "+", "+=": "-=", "-=": "+=", "&&": "||", "||": "&&", "++": "--",
          "--": "++", "true": "false", "false": "true"}
_OPERATOR = re.compile(r"(?<=\s)(<=|>=|==|!=|<|>|\+=|-=|\+|-|&&|\|\|)(?=\s)")
_WORD = re.compile(r"\+\+|--|\b(?:true|false)\b")
_NUMBER = re.compile(r"(?<![\w.'])(?<!\d[eE]-)(0[xX][\da-fA-F']+|0|[1-9][\d']*)([uUlLzZ]*)(?![\w.'])")
_STATUS = re.compile(r"(?<=\breturn )(Status::|JWNLS_|JW_)(\w+)(?=;)")
_CONDITION = re.compile(r"\b(?:if|while) \(")
_NOT = re.compile(r"!(?=[\w(])")
# An assignment, a call, or a jump that is all of its line; a declaration has a type in front.
_STATEMENT = re.compile(
    r"(?<=[;{}])\s*?\n[ \t]*((?:[\w.\[\]()*]|->|::)+(?: (?:[-+*/%|&^]|<<|>>)?= [^;]*|\([^;{}]*\))|"
    r"(?:\+\+|--)[\w.>-]+|break|continue);[ \t]*(?=\n)")


def _blank(text, start, end):
    return text[:start] + re.sub(r"[^\n]", " ", text[start:end]) + text[end:]


def _closing(text, at, opening, closing):
    """Where the bracket at `at` is closed."""
    depth = 0
    for place in range(at, len(text)):
        if text[place] == opening:
            depth += 1
        elif text[place] == closing:
            depth -= 1
            if depth == 0:
                return place
    return len(text)


def _code(text):
    """The text, blank where nothing is changed: comments, literals, directives, assertions of the
    compiler, parameters of templates."""
    text = _NOT_CODE.sub(
        lambda found: found[0] if found["number"] else _blank(found[0], 0, len(found[0])), text)
    for opening, pattern in (("<", r"\btemplate <"), ("(", r"\bstatic_assert\("),
                             ("(", r"\brequires \(")):
        for found in re.finditer(pattern, text):
            end = _closing(text, found.end() - 1, opening, {"<": ">", "(": ")"}[opening])
            text = _blank(text, found.start(), end + 1)
    return text


def _neighbours(digits):
    hexadecimal = digits[:2] in ("0x", "0X")
    number = int(digits.replace("'", ""), 16 if hexadecimal else 10)
    for other in (number + 1, number - 1):
        if other >= 0:
            yield f"0x{other:X}" if hexadecimal else str(other)


def _changes(text):
    """(start, end, replacement) for every change."""
    code = _code(text)
    for found in _OPERATOR.finditer(code):
        for new in _RELATIONS.get(found[0]) or (_SWAPS[found[0]],):
            yield *found.span(), new
    for found in _WORD.finditer(code):
        yield *found.span(), _SWAPS[found[0]]
    for found in _NUMBER.finditer(code):
        for digits in _neighbours(found[1]):
            yield *found.span(1), digits
    for found in _STATUS.finditer(code):
        failure = {"Status::": "no_match", "JWNLS_": "UNREAD", "JW_": "NO_MATCH"}[found[1]]
        good = "OK" if found[1].isupper() else "ok"
        yield *found.span(2), failure if found[2] == good else good
    for found in _CONDITION.finditer(code):
        end = _closing(code, found.end() - 1, "(", ")")
        start = max(found.end(), code.rfind("; ", found.end(), end) + 2)
        yield start, end, f"!({text[start:end]})"
    for found in _NOT.finditer(code):
        yield *found.span(), ""
    for found in _STATEMENT.finditer(code):
        yield *found.span(1), ""


def mutants_of(file, text):
    """A list of mutants for each line of the file that has any."""
    lines = {}
    for start, end, new in sorted(_changes(text)):
        line = text.count("\n", 0, start) + 1
        lines.setdefault(line, []).append(Mutant(file, line, start, end, new))
    return list(lines.values())
