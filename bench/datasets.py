# SPDX-License-Identifier: MIT
"""The data that is shredded: one large file, many small ones, and a browser's cache."""

import os
import random

MIB = 1 << 20
BLOCK = os.urandom(MIB)


class DataSet:
    """Files of given names and sizes; `make` lays them out afresh, the same each time."""

    def __init__(self, title, files):
        self.title = title
        self.sizes = files  # relative path -> bytes
        self.files = len(files)
        self.bytes = sum(files.values())

    def make(self, folder):
        """Writes the files below `folder` and returns the one item to hand to a program."""
        made = set()
        for name, size in self.sizes.items():
            path = os.path.join(folder, name)
            parent = os.path.dirname(path)
            if parent not in made:
                os.makedirs(parent, exist_ok=True)
                made.add(parent)
            with open(path, "wb") as file:
                for _ in range(size // MIB):
                    file.write(BLOCK)
                file.write(BLOCK[: size % MIB])
        return os.path.join(folder, next(iter(self.sizes)).split("/")[0])


def large_file(mebibytes):
    return DataSet(f"One file of {mebibytes} MiB", {"large": mebibytes * MIB})


def small_files(count, folders):
    files = {f"tree/{i % folders:03d}/file{i:04d}": 4096 for i in range(count)}
    return DataSet(f"{count:,} files of 4 KiB in {folders} folders", files)


def browser_cache(count):
    """Log-normal sizes round a median of 8 KiB, and one file in 500 of 2 to 9 MiB; 40-character
    names in one folder, as a browser's cache has them."""
    source = random.Random(20240607)
    sizes = [min(int(source.lognormvariate(9.0109, 1.6)), 2 * MIB) for _ in range(count)]
    for i in range(count // 500):
        sizes[i * 500] = source.randrange(2 * MIB, 9 * MIB)
    files = {f"cache/entries/{source.getrandbits(160):040X}": size for size in sizes}
    data = DataSet("", files)
    data.title = f"{count:,} files of log-normal sizes, {data.bytes // 1000000} MB"
    return data


def one_folder(count):
    files = {f"folder/{i:06d}": 16 for i in range(count)}
    return DataSet(f"{count:,} entries in one folder", files)


def files_of_one_folder(count):
    files = {f"folder/file{i:05d}": 4096 for i in range(count)}
    return DataSet(f"{count:,} files of 4 KiB, handed over as their folder and one by one", files)


def one_small_file():
    return DataSet("One file of 4 KiB", {"small": 4096})
