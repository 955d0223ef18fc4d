"""Reads the German amounts and Polish dates of a CSV data set on a Dask cluster.

    python3 dask_columns.py SCHEDULER 'data/*.csv'

read_sales() is an ordinary function of a pandas frame: the same object goes to one process, to
Dask, and to other engines that hand out pandas frames.
"""

import sys

import jwnls

AMOUNTS = jwnls.Layout("de_DE", "number")
DAYS = jwnls.Layout("pl_PL", "date")


def read_sales(frame):
    """A frame of texts, with prices and days read; what is not read is missing, and counted."""
    prices, of_prices = AMOUNTS.read_column(frame["price"], errors="report")
    days, of_days = DAYS.read_column(frame["day"], errors="report")
    return frame.assign(price=prices, day=days.astype("M8[ns]"),
                        refused=of_prices.refused + of_days.refused)


def sales_of(files):
    """The data set as a Dask frame: one partition a file, whatever its size."""
    import dask.dataframe

    texts = dask.dataframe.read_csv(files, dtype=str, blocksize=None, keep_default_na=False)
    meta = texts._meta.assign(price=1.0, day="2024-03-15", refused=0)
    return texts.map_partitions(read_sales, meta=meta.astype({"day": "M8[ns]"}))


def totals(frame):
    """What a partition comes to, exactly: rows, cents, days since 1970, refused values."""
    cents = (frame["price"] * 100).round().sum()
    days = frame["day"].to_numpy().astype("M8[D]").astype("i8").sum()
    refused = 0 if len(frame) == 0 else int(frame["refused"].iloc[0])
    return len(frame), int(cents), int(days), refused


def compute(client, files):
    """The totals of each partition, in the files' order."""
    import dask

    parts = sales_of(files).to_delayed()
    return client.gather([client.compute(dask.delayed(totals)(part)) for part in parts])


def main(scheduler, files):
    from distributed import Client

    with Client(scheduler) as client:
        for total in compute(client, files):
            print(*total)


if __name__ == "__main__":
    main(*sys.argv[1:])
