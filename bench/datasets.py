# SPDX-License-Identifier: MIT
"""The data that is shredded: one large file, many small ones, and a browser's cache; and a tree that
is only looked at."""

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


class EmptyFiles:
    """Folders of so many empty files each: nothing but names, to be looked at and not shredded."""

    def __init__(self, folders, each):
        self.title = f"A plan of {folders * each:,} empty files in {folders:,} folders"
        self.folders = folders
        self.each = each
        self.files = folders * each
        self.bytes = 0

    def make(self, folder):
        """Makes the files below `folder` and returns the one item to hand to a program."""
        tree = os.path.join(folder, "tree")
        for i in range(self.folders):
            parent = os.path.join(tree, f"{i:04d}")
            os.makedirs(parent)
            for j in range(self.each):
                os.mknod(os.path.join(parent, f"file{j:04d}"))
        return tree


class NoFiles:
    """Nothing at all: what is measured is the program itself."""

    def __init__(self, title):
        self.title = title
        self.files = 0
        self.bytes = 0

    def make(self, folder):
        return folder


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
