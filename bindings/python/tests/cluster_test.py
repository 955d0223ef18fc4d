"""examples/dask_columns.py on a scheduler and worker processes of this machine.

4 million rows when JWNLS_TEST_ALL is set, else 120,000.
"""

import os
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

import numpy as np
import pandas as pd

import jwnls

EXAMPLES = Path(os.environ["JWNLS_SOURCE"]) / "bindings" / "python" / "examples"
sys.path.insert(0, str(EXAMPLES))
import dask_columns  # noqa: E402

ALL = "JWNLS_TEST_ALL" in os.environ
ROWS, FILES = (4_000_000, 40) if ALL else (120_000, 12)


def write_data(folder):
    random = np.random.default_rng(20241122)
    prices = jwnls.Layout("de_DE", "number", decimals=2)
    days = jwnls.Layout("pl_PL", "date", style="long")
    for number in range(FILES):
        count = ROWS // FILES
        price = prices.write_column(random.integers(-10**7, 10**9, count) / 100)
        day = days.write_column(random.integers(0, 20_000, count).astype("M8[D]"))
        price[::1000] = "n/a"
        frame = pd.DataFrame({"price": price, "day": day})
        frame.to_csv(Path(folder) / f"sales-{number:02}.csv", index=False)


class Cluster:
    """A scheduler and its workers on the loopback; each a process of its own."""

    def __init__(self, folder, workers):
        self.processes = []
        file = Path(folder) / "scheduler.json"
        file.unlink(missing_ok=True)
        self.start("dask_scheduler", "--host", "127.0.0.1", "--port", "0", "--no-dashboard",
                   "--scheduler-file", str(file))
        self.workers = [self.start("dask_worker", "--scheduler-file", str(file), "--nthreads", "1",
                                   "--host", "127.0.0.1", "--no-dashboard", "--no-nanny",
                                   "--local-directory", str(folder)) for _ in range(workers)]
        from distributed import Client

        self.client = Client(scheduler_file=str(file), timeout=60)
        self.client.wait_for_workers(workers, timeout=60)

    def start(self, module, *arguments):
        # The scheduler and its workers import the example by name, as a cluster would.
        environment = {**os.environ, "PYTHONPATH": os.pathsep.join(filter(None, sys.path))}
        process = subprocess.Popen(
            [sys.executable, "-W", "ignore", "-m", f"distributed.cli.{module}", *arguments],
            env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.processes.append(process)
        return process

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.client.close()
        for process in reversed(self.processes):
            process.kill()
            process.wait()


class OnACluster(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = folder.name
        cls.files = str(Path(folder.name) / "sales-*.csv")
        write_data(folder.name)
        frames = [pd.read_csv(file, dtype=str, keep_default_na=False)
                  for file in sorted(Path(folder.name).glob("sales-*.csv"))]
        cls.expected = [dask_columns.totals(dask_columns.read_sales(frame)) for frame in frames]

    def test_one_process_reads_all_but_the_dirt(self):
        self.assertEqual(sum(total[0] for total in self.expected), ROWS)
        self.assertEqual(sum(total[3] for total in self.expected), ROWS // 1000)

    def test_workers_read_the_same_and_share_the_work(self):
        seconds = {}
        for workers in (1, 2):
            with Cluster(self.folder, workers) as cluster:
                start = time.perf_counter()
                self.assertEqual(dask_columns.compute(cluster.client, self.files), self.expected)
                seconds[workers] = time.perf_counter() - start
        if ALL:
            print(f"\n{ROWS} rows: {seconds[1]:.2f} s with one worker, {seconds[2]:.2f} s with "
                  f"two: {seconds[1] / seconds[2]:.2f} times faster")

    def test_a_killed_worker_costs_only_time(self):
        import dask

        with Cluster(self.folder, 2) as cluster:
            parts = dask_columns.sales_of(self.files).to_delayed()
            futures = [cluster.client.compute(dask.delayed(dask_columns.totals)(part))
                       for part in parts]
            deadline = time.monotonic() + 60
            while sum(future.done() for future in futures) < 2 and time.monotonic() < deadline:
                time.sleep(0.01)
            self.assertFalse(all(future.done() for future in futures))
            cluster.workers[1].kill()
            self.assertEqual(cluster.client.gather(futures), self.expected)
            self.assertEqual(len(cluster.client.scheduler_info()["workers"]), 1)


if __name__ == "__main__":
    unittest.main()
