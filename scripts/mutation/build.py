"""The build whose programs test mutants, of a copy of the tree."""

import functools
import json
import os
import re
import shlex
import shutil
import signal
import subprocess
import sys
import time
import zlib
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
WORK = ROOT / "build-mutate"
SOURCE = WORK / "source"
LOADED = ("jwnlsloc.so", "jwnlsldb.so", "jwemsg.so", "jwnls")  # by path, while a test runs
GENERATOR = "ldb_generator"  # makes these sources, by parts of the library
GENERATED = ("extensions/generated/locale_tables.cpp", "extensions/generated/name_tables.cpp")
HEADERS = """algorithm array atomic bit charconv cmath cstdint cstring functional iterator limits
             map memory mutex optional string string_view utility vector""".split()
QUICK = 0.1  # seconds of a test that runs in the first round


def run(command, **options):
    return subprocess.run(command, check=True, capture_output=True, text=True, **options).stdout


def heed_signals():
    """In a test program: whoever runs this in the background may ignore some."""
    for number in (signal.SIGHUP, signal.SIGINT, signal.SIGTERM):
        signal.signal(number, signal.SIG_DFL)


def copy_sources():
    """The tree as git knows it, and what is not added yet. Files that are as they were keep their
    times, so that little is built anew."""
    listed = run(["git", "ls-files", "-z", "-co", "--exclude-standard"], cwd=ROOT).split("\0")
    names = {name for name in listed if name and (ROOT / name).is_file()}
    for name in names:
        original, copied = ROOT / name, SOURCE / name
        if not copied.exists() or copied.read_bytes() != original.read_bytes():
            copied.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(original, copied)
    for copied in [path for path in SOURCE.rglob("*") if path.is_file()]:
        if str(copied.relative_to(SOURCE)) not in names:
            copied.unlink()


class Build:
    """A build of the copy: what its programs are made of, and how long their tests take."""

    times = {}  # of each program; measure()

    def __init__(self, number):
        self.folder = WORK / str(number)
        self.kept = self.folder / "kept"
        self.put_back(LOADED)
        linker = ["-fuse-ld=lld"] if shutil.which("ld.lld") else []
        flags = [f"-DCMAKE_{kind}_LINKER_FLAGS={' '.join(linker)}"
                 for kind in ("EXE", "SHARED", "MODULE")]
        run(["cmake", "-G", "Ninja", "-S", SOURCE, "-B", self.folder, "--log-level=WARNING",
             "-DCMAKE_BUILD_TYPE=Mutate", "-DCMAKE_CXX_FLAGS_MUTATE=-O1 -DNDEBUG", *flags])
        done = subprocess.run(["ninja", "-C", self.folder], capture_output=True, text=True)
        if done.returncode != 0:
            sys.exit(f"scripts/mutate: the build fails\n{done.stdout[-3000:]}")
        self.kept.mkdir(exist_ok=True)
        for name in LOADED:
            shutil.copy2(self.folder / name, self.kept)
        self.compile_commands = {
            re.search(r" -o (\S+)", entry["command"])[1]: entry["command"]
            for entry in json.loads((self.folder / "compile_commands.json").read_text())}
        self.generated = {  # source: its object
            source: next(name for name, command in self.compile_commands.items()
                         if command.endswith(f"/{source}")) for source in GENERATED}
        self.including = self.read_dependencies()
        self.programs = sorted(path.name for path in self.folder.iterdir()
                               if re.fullmatch(r"(?!mutant_)\w+_(tests|corpus)", path.name))
        self.objects = {name: self.linked(name) for name in (*self.programs, *LOADED, GENERATOR)}

    def put_back(self, names):
        for name in names:
            if (self.kept / name).exists():
                shutil.copy2(self.kept / name, self.folder / f"{name}.new")
                os.replace(self.folder / f"{name}.new", self.folder / name)

    def read_dependencies(self):
        """The objects that include each file of the tree."""
        including = {}
        for line in run(["ninja", "-C", self.folder, "-t", "deps"]).splitlines():
            if line and not line.startswith(" "):
                output = line.split(":")[0]
            elif line:
                file = os.path.relpath(os.path.join(self.folder, line.strip()), SOURCE)
                including.setdefault(file, []).append(output)
        return including

    @functools.lru_cache(maxsize=None)
    def link_command(self, target):
        return run(["ninja", "-C", self.folder, "-t", "commands", "-s", target]).strip()

    def linked(self, target):
        """The objects of a program, those in archives too."""
        found = set()
        for word in shlex.split(self.link_command(target)):
            if word.endswith(".o"):
                found.add(word)
            elif word.endswith(".a") and not word.startswith("/") and word != target:
                found |= self.linked(word)
        return found

    @functools.lru_cache(maxsize=None)
    def precompiled(self, flags):
        """The standard headers, precompiled: they are half of a compiler's work."""
        folder = self.folder / "headers" / f"{zlib.crc32(' '.join(flags).encode()):08x}"
        header = folder / "standard.h"
        if not (folder / "standard.h.gch").exists():
            folder.mkdir(parents=True, exist_ok=True)
            header.write_text("".join(f"#include <{each}>\n" for each in HEADERS))
            run([*flags, "-x", "c++-header", "-o", f"{header}.gch", header])
        return header

    def measure(self, jobs):
        """Seconds of each program, and its slow tests."""
        stored = WORK / "times.json"
        self.times = json.loads(stored.read_text()) if stored.exists() else {}
        built = {name: (self.folder / name).stat().st_mtime for name in self.programs}
        new = [name for name in self.programs
               if self.times.get(name, {}).get("built") != built[name]]
        with ThreadPoolExecutor(jobs) as pool:
            for name, measured in zip(new, pool.map(self.measured, new)):
                self.times[name] = {"built": built[name], **measured}
        stored.write_text(json.dumps(self.times))
        return self.times

    def measured(self, name):
        """In seconds of a processor: how long a test takes depends on who else is at work."""
        report, said = (self.folder / f"{name}.{kind}" for kind in ("json", "txt"))
        began = time.monotonic()
        with open(said, "w") as output:
            process = subprocess.Popen(
                [self.folder / name, "--gtest_brief=1", f"--gtest_output=json:{report}"],
                cwd=self.folder, stdout=output, stderr=output, stdin=subprocess.DEVNULL,
                preexec_fn=heed_signals)
            _, status, used = os.wait4(process.pid, 0)
        if status != 0:
            sys.exit(f"scripts/mutate: {name} fails without a mutant\n{said.read_text()[-3000:]}")
        seconds = used.ru_utime + used.ru_stime
        share = min(1, seconds / (time.monotonic() - began))
        slow = [f"{suite['name']}.{test['name']}"
                for suite in json.loads(report.read_text())["testsuites"]
                for test in suite["testsuite"]
                if float(test["time"][:-1]) * share > QUICK and not name.endswith("_corpus")]
        return {"seconds": seconds, "slow": slow}

    def nearness(self, program, file):
        """How many folders a program's tests share with the file."""
        sources = [re.sub(rf".*/{program}\.dir/", "", each) for each in self.objects[program]
                   if f"/{program}.dir/" in each]
        folder = Path(file).parent.parts
        tests = Path(os.path.commonpath([os.path.dirname(each) for each in sources])).parts
        shared = [left == right for left, right in zip(tests, folder)]
        return (shared + [False]).index(False) + (tests[-1:] == folder[-1:])

    def rounds(self, file, thorough):
        """(program, filter) for what can notice a mutant of the file: the tests that stand nearest
        first, quick tests before slow ones; slow ones far away only on demand."""
        affected = set(self.including.get(file, []))
        found = []
        for name in self.programs:
            if not affected & self.objects[name]:
                continue
            near = self.nearness(name, file)
            slow = ":".join(self.times[name]["slow"])
            seconds = self.times[name]["seconds"]
            found.append(((near == 0, False, -near, seconds), name, f"-{slow}"))
            if slow and (near or thorough):
                found.append(((near == 0, True, -near, seconds), name, slow))
        return [each[1:] for each in sorted(found)]
