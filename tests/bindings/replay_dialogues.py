#!/usr/bin/env python3
"""Replays the dialogues of documents:  replay_dialogues.py sqlite|postgresql FILE...

A dialogue stands in a block that begins with the shell's prompt: statements behind prompts, and
what comes of each. All dialogues of a file are one session. With --write the answers are put in.
"""

import difflib
import pathlib
import re
import sys

from sql_shell import SHELLS, run


def parts_of(text, prompts):
    """The file as a list of (kind, lines): "text", "statement", "answer"."""
    parts, inside, begins = [], False, False
    for line in text.splitlines():
        if line.startswith("```"):
            begins, inside = not inside and line == "```", False
            kind = "text"
        elif begins or inside:
            inside, begins = inside or line.startswith(prompts[0]), False
            kind = "statement" if line.startswith(prompts) else "answer"
            kind = kind if inside else "text"
        else:
            kind = "text"
        if kind == "text" or not parts or parts[-1][0] != kind or line.startswith(prompts[0]):
            parts.append((kind, []))
        parts[-1][1].append(line)
    return parts


def replayed(database, path):
    prompts = SHELLS[database]["prompts"]
    parts = parts_of(path.read_text(), prompts)
    statements = ["\n".join(line[len(prompts[0]):] for line in lines)
                  for kind, lines in parts if kind == "statement"]
    answers = iter(run(database, statements))
    out = []
    for kind, lines in parts:
        if kind != "answer":
            out += lines
        if kind == "statement":
            answer = re.sub(r"(error) near line \d+", r"\1", next(answers))
            out += [line.rstrip() for line in answer.rstrip("\n").splitlines()]
    return len(statements), "\n".join(out) + "\n"


def main():
    write = "--write" in sys.argv
    database, *paths = [each for each in sys.argv[1:] if each != "--write"]
    faults = 0
    for path in map(pathlib.Path, paths):
        count, out = replayed(database, path)
        if write:
            path.write_text(out)
        difference = list(difflib.unified_diff(path.read_text().splitlines(), out.splitlines(),
                                               str(path), "replayed", lineterm=""))
        print("\n".join(difference + [f"{path}: {count} statements replayed"]))
        faults += bool(difference) or count == 0
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
