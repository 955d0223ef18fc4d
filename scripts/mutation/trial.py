"""The test of one mutant."""

import filecmp
import os
import re
import resource
import shlex
import shutil
import signal
import subprocess
import time
from pathlib import Path

from build import GENERATOR, LOADED, SOURCE, heed_signals


class Trial:
    """One mutant in one build."""

    def __init__(self, build, mutant, text, thorough):
        self.build = build
        self.thorough = thorough
        self.mutant = mutant
        self.folder = build.folder / "mutant"
        shutil.rmtree(self.folder, ignore_errors=True)
        (self.folder / "tmp").mkdir(parents=True)
        changed = self.folder / "source" / mutant.file
        changed.parent.mkdir(parents=True)
        changed.write_text(mutant.applied(text))
        self.sources = {str(SOURCE / mutant.file): str(changed)}  # what is compiled instead
        self.generated = set()  # objects of data that come out otherwise
        self.affected = set(build.including.get(mutant.file, []))
        self.compiled = {}  # object: whether it compiles
        self.changed = set()  # those that are other code
        self.relinked = []
        self.seconds = {"build": 0.0, "test": 0.0}  # of a processor

    def outcome(self):
        """What catches the mutant: a program, "" for nothing; None where it does not compile, or
        to the same code."""
        try:
            failed = self.generate()
            if failed is not None:
                return failed or None
            for program, chosen in self.build.rounds(self.mutant.file, self.thorough):
                objects = self.affected & self.build.objects[program]
                # Tests are compiled where they themselves look into the changed header.
                tests = {each for each in objects if each.startswith("tests/")}
                if not all(self.compiles(each) for each in sorted(objects - tests)):
                    return None
                if not all(self.compiles(each) for each in sorted(tests) if self.included_by(each)):
                    return f"{program} does not compile"
                if (objects | self.generated) & self.changed and not self.passes(program, chosen):
                    return program
            return "" if self.changed else None
        except subprocess.CalledProcessError:
            return None  # it does not link
        finally:
            self.build.put_back(self.relinked)

    def generate(self):
        """The data that a part of the library makes before it is built. None: that was done; else
        as outcome(), but "" where it does not compile."""
        affected = self.affected & self.build.objects[GENERATOR]
        if not all(self.compiles(each) for each in sorted(affected)):
            return ""
        if not affected & self.changed:
            return None
        generator = self.folder / GENERATOR
        self.link(GENERATOR, generator)
        made = {source: self.folder / Path(source).name for source in self.build.generated}
        if self.limited([str(generator), *map(str, made.values())], 120) != 0:
            return GENERATOR
        for source, output in made.items():
            if not filecmp.cmp(output, self.build.folder / source, False):
                name = self.build.generated[source]
                self.sources[str(self.build.folder / source)] = str(output)
                self.generated.add(name)
                if not self.compiles(name):
                    return GENERATOR
        self.affected |= self.generated
        return None

    def included_by(self, name):
        """Whether an object's source itself includes the file."""
        source = shlex.split(self.build.compile_commands[name])[-1]
        return f'#include "{self.mutant.file}"' in Path(source).read_text()

    def compiles(self, name):
        if name not in self.compiled:
            words = [word for word in shlex.split(self.build.compile_commands[name])
                     if Path(word).name != "ccache" and word != "-Werror"]
            output = self.folder / name
            output.parent.mkdir(parents=True, exist_ok=True)
            words[words.index("-o") + 1] = str(output)
            words[-1] = self.sources.get(words[-1], words[-1])
            flags = tuple(word for word in words[:words.index("-o")]
                          if not word.startswith(("-I", "-D")))
            words[1:1] = ["-w", f"-I{self.folder / 'source'}",
                          "-include", str(self.build.precompiled(flags))]
            self.compiled[name] = self.limited(words, 60) == 0
            if self.compiled[name] and not filecmp.cmp(output, self.build.folder / name, False):
                self.changed.add(name)
        return self.compiled[name]

    def link(self, target, output):
        command = self.build.link_command(target)
        front = []
        for name in sorted(self.changed & self.build.objects[target]):
            if f" {name} " in command:
                command = command.replace(f" {name} ", f" {self.folder / name} ")
            else:
                front.append(str(self.folder / name))
        command = re.sub(rf" -o {re.escape(target)} ", f" {' '.join(front)} -o {output} ", command)
        if self.limited(["sh", "-c", command], 60) != 0:
            raise subprocess.CalledProcessError(1, command)

    def passes(self, program, chosen):
        """The program stands beside what it loads, as the one without the mutant does."""
        changed = self.build.folder / f"mutant_{program}"
        if program not in self.relinked:
            self.link(program, changed)
            self.relinked.append(program)
            for name in LOADED:
                if name not in self.relinked and self.affected & self.build.objects[name]:
                    if all(self.compiles(each) for each in self.affected & self.build.objects[name]):
                        self.link(name, name)
                        self.relinked.append(name)
        seconds = self.build.times[program]["seconds"]
        arguments = ["--gtest_brief=1", "--gtest_fail_fast"]
        if chosen != "-":
            arguments.append(f"--gtest_filter={chosen}")
        return self.limited([str(changed), *arguments], 10 + 5 * seconds, "test") == 0

    def limited(self, command, seconds, kind="build"):
        """Runs with a limit of processor time, of time and of memory: what never ends fails."""
        def limits():
            heed_signals()
            resource.setrlimit(resource.RLIMIT_CPU, (int(seconds) + 1, int(seconds) + 1))
            resource.setrlimit(resource.RLIMIT_AS, (8 << 30, 8 << 30))
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        process = subprocess.Popen(
            command, cwd=self.build.folder, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL, start_new_session=True, preexec_fn=limits,
            env={**os.environ, "TMPDIR": str(self.folder / "tmp")})
        deadline = time.monotonic() + 60 + 6 * seconds
        try:
            while time.monotonic() < deadline:
                ended, status, used = os.wait4(process.pid, os.WNOHANG)
                if ended:
                    self.seconds[kind] += used.ru_utime + used.ru_stime
                    process.returncode = os.waitstatus_to_exitcode(status)
                    return process.returncode
                time.sleep(0.01)
            return -1
        finally:
            try:
                os.killpg(process.pid, signal.SIGKILL)  # also what it started
            except ProcessLookupError:
                pass
            process.wait()
