"""Measures the program on tables beside its peers; scripts/bench-tables prepares all it needs.

Every job runs once in each round, in turn with the others. Of processor seconds and of wall time the
least of the rounds counts: what other work on the machine adds is never less than nothing. Slow
peers get the first rows only, and their time is multiplied.
"""

import glob
import hashlib
import os
import shutil
import subprocess
import sys
import time

BUILD = "build-bench"
FOLDER = BUILD + "/tables"
PROGRAM = BUILD + "/jwnls"
PARTS = BUILD + "/"
SMALL = 200_000  # rows for peers that take long

INVOICE = ["-l", "de_DE", "-c", "Datum,Termin=date", "-c", "Netto,Steuer,Brutto=number"]
DATES = ["-l", "de_DE", "-c", "Datum,Termin=date"]
NUMBERS = ["-l", "de_DE", "-c", "a,b,c=number"]
POLISH = ["-l", "pl_PL", "-c", "Kwota=number", "-c", "Data=date"]


def read(columns, table, threads=1):
    return [PROGRAM, "read", "-F", ";", "--threads", str(threads), *columns, table]


def copy(table, threads=1):
    return [PARTS + "jwnls_copy_table", str(threads), ";", table]


# ---- Peers

def duckdb_library():
    found = glob.glob(BUILD + "/duckdb/node_modules/@duckdb/node-bindings-*/libduckdb.so")
    return found[0] if found else None


def duckdb(table, columns, select="*", target="/dev/null"):
    types = ", ".join(f"'{name}': '{kind}'" for name, kind in columns.items())
    return [PARTS + "duckdb_query", duckdb_library(), "SET threads = 1",
            f"""COPY (SELECT {select} FROM read_csv('{table}', delim = ';', header = true,
            quote = '"', escape = '"', decimal_separator = ',', thousands = '.',
            dateformat = '%d.%m.%Y', auto_detect = false, columns = {{{types}}}))
            TO '{target}' (HEADER, DELIM ';')"""]


DECIMAL = "DECIMAL(18,2)"
DUCKDB_INVOICE = {"Nr": "VARCHAR", "Kunde": "VARCHAR", "Datum": "DATE", "Termin": "DATE",
                  "Netto": DECIMAL, "Steuer": DECIMAL, "Brutto": DECIMAL, "Notiz": "VARCHAR"}
DUCKDB_NUMBERS = {"id": "VARCHAR", "a": DECIMAL, "b": DECIMAL, "c": DECIMAL}
DUCKDB_POLISH = dict.fromkeys(("Numer", "Opis", "Kwota", "Data"), "VARCHAR")
MONTHS = ("stycznia lutego marca kwietnia maja czerwca lipca sierpnia września października "
          "listopada grudnia").split()
DUCKDB_POLISH_SELECT = f"""Numer, Opis,
    CAST(replace(replace(Kwota, chr(160), ''), ',', '.') AS {DECIMAL}) AS Kwota,
    make_date(CAST(split_part(Data, ' ', 3) AS INT),
              list_position({MONTHS}, split_part(Data, ' ', 2)),
              CAST(split_part(Data, ' ', 1) AS INT)) AS Data"""


def miller(table, statements):
    return ["mlr", "--icsv", "--ocsv", "--ifs", ";", "--ofs", ";", "-S", "put", statements, table]


def miller_number(name):
    text = f"${name}"
    for _ in range(2):  # as many as there are
        text = f'sub({text}, "\\.", "")'
    return f'${name} = sub({text}, ",", ".");'


def miller_date(name):
    field = f"${{{name}}}"
    return f'{field} = substr({field}, 6, 9) . "-" . substr({field}, 3, 4) . "-" . substr({field}, 0, 1);'


MILLER_INVOICE = "".join([miller_date("Datum"), miller_date("Termin"), miller_number("Netto"),
                          miller_number("Steuer"), miller_number("Brutto")])
MAWK_NUMBERS = """{ for (i = 2; i <= 4; i++) { gsub(/\\./, "", $i); sub(/,/, ".", $i) } print }"""


# ---- Running

class Run:
    def __init__(self, code, wall, cpu, kibibytes):
        self.code, self.wall, self.cpu, self.mebibytes = code, wall, cpu, kibibytes / 1024


def measure(command, codes=(0,)):
    result = FOLDER + "/result"
    done = subprocess.run([PARTS + "jwnls_measure", result, *command], stdout=subprocess.DEVNULL,
                          stderr=subprocess.PIPE, stdin=subprocess.DEVNULL, check=False)
    if done.returncode != 0:
        sys.exit(f"bench-tables: {command[0]} could not be measured: {done.stderr.decode()}")
    with open(result, encoding="ascii") as file:
        code, wall, cpu, kibibytes = file.read().split()
    if int(code) not in codes:
        sys.exit(f"bench-tables: {' '.join(command)[:200]}\n  ended with {code}: "
                 f"{done.stderr.decode()[:500]}")
    return Run(int(code), float(wall), float(cpu), int(kibibytes))


def least(runs):
    """What the quickest runs took, and the most memory of any."""
    return Run(runs[0].code, min(run.wall for run in runs), min(run.cpu for run in runs),
               1024 * max(run.mebibytes for run in runs))


def output_of(command):
    return subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout


def hash_of(command):
    digest = hashlib.sha256()
    with subprocess.Popen(command, stdout=subprocess.PIPE) as process:
        while block := process.stdout.read(1 << 20):
            digest.update(block)
    return digest.hexdigest()


def rows_seconds(command):
    """Seconds from a row's arrival on a pipe to its converted text, the input then pausing."""
    with subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE) as process:
        os.write(process.stdin.fileno(), b"a;b\n1;2,5\n")
        text = b""
        while text.count(b"\n") < 2:
            text += os.read(process.stdout.fileno(), 4096)
        spans = []
        for _ in range(50):
            time.sleep(0.005)
            begin = time.perf_counter()
            os.write(process.stdin.fileno(), b"7;1.234,50\n")
            answer = os.read(process.stdout.fileno(), 4096)
            spans.append(time.perf_counter() - begin)
            assert answer == b"7;1234.50\n", answer
        process.stdin.close()
    return sorted(spans)[len(spans) // 2]


# ---- Tables

def generate(table, rows, name=None):
    path = f"{FOLDER}/{name or table}.csv"
    generator = PARTS + "jwnls_generate_table"
    stamp = f"{path}.rows"
    made = f"{rows} {os.path.getmtime(generator)}"
    if os.path.exists(stamp) and open(stamp, encoding="ascii").read() == made:
        return path
    with open(path, "wb") as file:
        subprocess.run([generator, table, str(rows)], stdout=file, check=True)
    with open(stamp, "w", encoding="ascii") as file:
        file.write(made)
    return path


def check_nasty():
    """Files for every rule of reading: all bytes are handed through, or all before the row that
    cannot be read. Gives what does not hold."""
    folder = FOLDER + "/nasty"
    os.makedirs(folder, exist_ok=True)
    subprocess.run([PARTS + "jwnls_generate_table", "nasty", folder], check=True)
    wrong = []
    files = sorted(os.listdir(folder))
    for name in files:
        path = f"{folder}/{name}"
        content = open(path, "rb").read()
        for threads in (1, 2):
            separator = "" if name.endswith("sep-line") else ";"
            done = subprocess.run([PARTS + "jwnls_copy_table", str(threads), separator, path],
                                  capture_output=True, check=False)
            whole = done.stdout == content if name[0] != "4" else content.startswith(done.stdout)
            if not whole or done.returncode != int(name[0]):
                wrong.append(f"{name} ({threads} threads: exit {done.returncode})")
    return len(files), wrong


# ---- Marks

class Marks:
    def __init__(self):
        self.rows, self.missed = [], 0

    def add(self, name, what, mark, measured, met):
        self.missed += not met
        self.rows.append((name, what, mark, measured, "met" if met else "NOT MET"))

    def at_most(self, name, what, mark, measured, unit=""):
        self.add(name, what, f"<= {mark:g}{unit}", f"{measured:.3g}{unit}", measured <= mark)

    def at_least(self, name, what, mark, measured, unit=""):
        self.add(name, what, f">= {mark:g}{unit}", f"{measured:.3g}{unit}", measured >= mark)

    def print(self):
        widths = [max(len(row[i]) for row in self.rows) for i in range(5)]
        for row in self.rows:
            print("  ".join(cell.ljust(width) for cell, width in zip(row, widths)).rstrip())


def jobs_of(tables, small, rows):
    """name -> (command, how often its rows are in the whole table, exit codes)"""
    share = rows / SMALL
    jobs = {
        "invoice": (read(INVOICE, tables["invoice"]), 1),
        "invoice, 2 threads": (read(INVOICE, tables["invoice"], 2), 1),
        "invoice copied": (copy(tables["invoice"]), 1),
        "invoice, cat FILE | cat": (["sh", "-c", f"cat {tables['invoice']} | cat"], 1),
        "numbers": (read(NUMBERS, tables["numbers"]), 1),
        "numbers, 2 threads": (read(NUMBERS, tables["numbers"], 2), 1),
        "numbers copied": (copy(tables["numbers"]), 1),
        "unread": (read(NUMBERS, tables["unread"]), 1, (1,)),
        "polish": (read(POLISH, small["polish"]), share),
        "two dates": (read(DATES, small["invoice"]), share),
        "integers out": ([PROGRAM, "format", "-F", ";", "--threads", "1", "-l", "en_US", "-c",
                          "id=integer", small["numbers"]], share),
        "invoice, Miller": (miller(small["invoice"], MILLER_INVOICE), share),
        "numbers, mawk": (["mawk", "-F;", "-v", "OFS=;", MAWK_NUMBERS, small["numbers"]], share),
        "two dates, dconv": (["dateutils.dconv", "-S", "-i", "%d.%m.%Y", "-f", "%F",
                              small["invoice"]], share),
        "integers out, numfmt": (["env", f"LOCPATH={BUILD}/locales", "LC_ALL=en_US.UTF-8", "sh",
                                  "-c", f"numfmt --header --grouping -d ';' < {small['numbers']}"],
                                 share),
    }
    # dconv reads standard input only.
    jobs["two dates, dconv"] = (["sh", "-c", "dateutils.dconv -S -i %d.%m.%Y -f %F < " +
                                 small["invoice"]], share)
    if duckdb_library():
        jobs["invoice, DuckDB"] = (duckdb(tables["invoice"], DUCKDB_INVOICE), 1)
        jobs["numbers, DuckDB"] = (duckdb(tables["numbers"], DUCKDB_NUMBERS), 1)
        jobs["polish, DuckDB"] = (duckdb(small["polish"], DUCKDB_POLISH, DUCKDB_POLISH_SELECT),
                                  share)
    for name, job in list(jobs.items()):
        program = job[0][0]
        if program not in ("sh", "env") and shutil.which(program) is None:
            print(f"bench-tables: {name} is left out: no {program}")
            del jobs[name]
    return jobs


def check_same(small):
    """What is compared must do the same job."""
    same = {"invoice": (INVOICE, DUCKDB_INVOICE, "*"), "numbers": (NUMBERS, DUCKDB_NUMBERS, "*"),
            "polish": (POLISH, DUCKDB_POLISH, DUCKDB_POLISH_SELECT)}
    for name, (columns, types, select) in same.items():
        own = output_of(read(columns, small[name]))
        target = FOLDER + "/peer.csv"
        if duckdb_library():
            output_of(duckdb(small[name], types, select, target))
            # It leaves out the quotes that are not needed.
            theirs = open(target, "rb").read()
            if own.replace(b'"', b"") != theirs.replace(b'"', b""):
                sys.exit(f"bench-tables: {name}: DuckDB's rows are others")
    theirs = output_of(miller(small["invoice"], MILLER_INVOICE))
    own = output_of(read(INVOICE, small["invoice"]))
    if own.replace(b'"', b"") != theirs.replace(b'"', b""):
        sys.exit("bench-tables: invoice: Miller's rows are others")


def start_of(rounds):
    """Wall seconds: the program with one value, and with a table of two columns and locales."""
    table = FOLDER + "/two.csv"
    with open(table, "w", encoding="utf-8") as file:
        file.write("a;b\n15.03.2024;1,234.50\n")
    one = [PROGRAM, "read", "number", "-l", "de_DE", "1.234,5"]
    two = [PROGRAM, "read", "-F", ";", "-c", "a=date:de_DE", "-c", "b=number:en_US", table]
    runs = [(measure(one), measure(two)) for _ in range(rounds)]
    return least([run[0] for run in runs]), least([run[1] for run in runs])


def main():
    rows = int(sys.argv[1]) if len(sys.argv) > 1 else 5_000_000
    rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 3
    os.makedirs(FOLDER, exist_ok=True)
    tables = {name: generate(name, rows) for name in ("invoice", "numbers", "unread")}
    small = {name: generate(name, SMALL, name + "-small")
             for name in ("invoice", "numbers", "polish")}
    load = os.getloadavg()[0]
    check_same(small)
    nasty_count, wrong = check_nasty()

    jobs = jobs_of(tables, small, rows)
    runs = {name: [] for name in jobs}
    for _ in range(rounds):
        for name, (command, _, *codes) in jobs.items():
            runs[name].append(measure(command, *codes))
    took = {name: least(of_job) for name, of_job in runs.items()}
    cpu = {name: took[name].cpu * jobs[name][1] for name in jobs}

    marks = Marks()
    bytes_of = {name: os.path.getsize(path) for name, path in tables.items()}
    has_duckdb = "invoice, DuckDB" in cpu
    if has_duckdb:
        to_duckdb = {name: cpu[name] / cpu[name + ", DuckDB"] for name in ("invoice", "numbers")}
        marks.at_most("T1", "invoice, CPU of DuckDB's", 0.50, to_duckdb["invoice"])
        marks.at_most("T1", "numbers, CPU of DuckDB's", 0.70, to_duckdb["numbers"])
    marks.at_least("T1", "invoice, Miller's CPU of the program's", 25,
                   cpu["invoice, Miller"] / cpu["invoice"])
    if has_duckdb:
        marks.at_most("T2", "invoice, CPU of DuckDB's", 0.15, to_duckdb["invoice"])
        marks.at_most("T2", "numbers, CPU of DuckDB's", 0.20, to_duckdb["numbers"])
    for name in ("invoice", "numbers"):
        marks.at_most("T2", name + ", CPU of copying it", 4, cpu[name] / cpu[name + " copied"])
    for name, columns in (("invoice", INVOICE), ("numbers", NUMBERS)):
        same = hash_of(read(columns, tables[name])) == hash_of(read(columns, tables[name], 2))
        gain = took[name].wall / took[name + ", 2 threads"].wall
        marks.at_least("T3", name + ", 2 threads against 1, wall" + ("" if same else ": OTHER BYTES"),
                       1.8, gain if same else 0, " x")
    copied = took["invoice copied"]
    marks.at_most("T4", "copying, wall of cat FILE | cat", 1,
                  copied.wall / took["invoice, cat FILE | cat"].wall)
    marks.at_least("T4", "copying, processor time", 2, bytes_of["invoice"] / copied.cpu / 1e9,
                   " GB/s")
    marks.at_least("T5", "invoice rows a core", 14, rows / cpu["invoice"] / 1e6, " M/s")
    marks.at_least("T5", "numbers a core", 60, 3 * rows / cpu["numbers"] / 1e6, " M/s")
    marks.at_most("T6", "memory, 2 threads", 16,
                  max(took[name + ", 2 threads"].mebibytes for name in ("invoice", "numbers")),
                  " MiB")
    one, two = start_of(10 * rounds)
    marks.at_most("T7", "first row of a table, wall of the program's start", 2, two.wall / one.wall)
    marks.at_most("T7", "first row of a table, wall", 5, two.wall * 1000, " ms")
    marks.at_most("T8", "nothing but unread texts, CPU of read ones", 1.5,
                  cpu["unread"] / cpu["numbers"])
    marks.at_most("T9", "a row on a pipe that pauses", 10, 1000 * rows_seconds(
        [PROGRAM, "read", "-F", ";", "-l", "de_DE", "-c", "b=number"]), " ms")
    marks.add("", f"{nasty_count} nasty files handed through", "all",
              "all" if not wrong else "not " + ", ".join(wrong), not wrong)

    print(f"{rows} rows, {rounds} rounds, least of each; {os.cpu_count()} processors, load {load:.1f} "
          f"at the begin, {os.getloadavg()[0]:.1f} at the end\n")
    marks.print()
    print(f"\n{'job':26} {'CPU s':>8} {'wall s':>8} {'MiB':>6}  CPU of the program's")
    for name in sorted(jobs):
        peer = name.split(", ")
        ratio = f"  {cpu[name] / cpu[peer[0]]:.2f}" if len(peer) > 1 else ""
        print(f"{name:26} {cpu[name]:8.3f} {took[name].wall * jobs[name][1]:8.3f} "
              f"{took[name].mebibytes:6.1f}{ratio}")
    print(f"{'start, one value':26} {one.cpu:8.4f} {one.wall:8.4f} {one.mebibytes:6.1f}")
    print(f"{'start, a table':26} {two.cpu:8.4f} {two.wall:8.4f} {two.mebibytes:6.1f}")
    if not has_duckdb:
        print("DuckDB was not there: T1 and T2 against it are not measured")


main()
