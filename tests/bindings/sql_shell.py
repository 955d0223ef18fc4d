"""Runs statements through the shell of a database, and tells what came of each.

SQL_SHELL_WRAPPER is a command that runs the shell's, such as valgrind."""

import os
import shlex
import subprocess

# How a shell is started, what prints a line between statements, and its prompts in the documents.
SHELLS = {
    "sqlite": {
        "command": ["sqlite3", "-batch", ":memory:"],
        "mark": ".print",
        "prompts": ("sqlite> ", "   ...> "),
    },
    "postgresql": {
        "command": ["psql", "-X", "-q"],
        "mark": "\\echo",
        "prompts": ("jwnls=> ", "jwnls-> "),
    },
}
MARK = "=== the next statement ==="


def run(database, statements, options=()):
    """One process for all statements; gives a text for each, output and errors as they came."""
    shell = SHELLS[database]
    script = "".join(f"{statement}\n{shell['mark']} '{MARK}'\n" for statement in statements)
    # Unbuffered, so that errors stand where they came up.
    wrapper = shlex.split(os.environ.get("SQL_SHELL_WRAPPER", ""))
    done = subprocess.run(["stdbuf", "-o0", *wrapper, *shell["command"], *options], input=script.encode(),
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
    answers = done.stdout.decode().split(MARK + "\n")
    if len(answers) != len(statements) + 1:
        raise SystemExit(f"{database}: {len(answers) - 1} answers to {len(statements)} statements;"
                         f" the last: {answers[-1]}")
    return answers[:-1]
