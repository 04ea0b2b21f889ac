#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Shreds the same data with dorvanel and with other programs, in turns, and prints what each took.

Every run gets data laid out afresh and already on the medium; a table's runs are interleaved, so
that what else the machine does meets all programs alike; medians are told.
"""

import argparse
import os
import re
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

import datasets
import report
from programs import Programs


def file_system(folder):
    df = ["df", "--output=fstype", folder]
    told = subprocess.run(df, check=True, stdout=subprocess.PIPE, text=True).stdout
    return told.split()[-1]


class Run:
    def __init__(self, wall, cpu, peak):
        self.wall = wall  # seconds
        self.cpu = cpu  # seconds
        self.peak = peak  # KiB


class Table:
    """What the runs of one data set on one medium gave: a list of runs for each program."""

    def __init__(self, key, medium, data, programs, own="dorvanel"):
        self.key = key
        self.own = own  # the one that the others are compared with
        self.medium = medium
        self.data = data
        self.programs = {p.name: p for p in programs}
        self.runs = {p.name: [] for p in programs}
        self.failed = {}  # program -> why
        self.limit = []  # seconds of plain writing, where it was measured
        self.removal = []  # seconds of removing the one file, where it was measured

    def wall(self, program):
        """The median in seconds, or nothing where the program was not measured."""
        runs = self.runs.get(program)
        return statistics.median(r.wall for r in runs) if runs else None

    def peak(self, program):
        """The highest peak in KiB."""
        runs = self.runs.get(program)
        return max(r.peak for r in runs) if runs else None


class Bench:
    def __init__(self, options, scratch):
        self.options = options
        self.scratch = scratch  # medium -> folder
        self.homes = os.path.join(scratch["tmpfs"], "homes")
        self.programs = Programs(options.bin, self.homes, options.before)
        self.measure = os.path.join(options.bin, "bench_measure")
        self.tables = []
        self.others = []  # (title, what the program printed)
        self.figures = {}  # name -> number, as our own programs print them

    def measured(self, table, program, item):
        """One run of the program, and its exit status."""
        result = os.path.join(self.scratch["tmpfs"], "result")
        subprocess.run(
            [self.measure, result, *program.on(item, table.medium == "disk")],
            check=True,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
        )
        with open(result, encoding="ascii") as file:
            wall, cpu, peak, status = file.read().split()
        return Run(float(wall), float(cpu), int(peak)), status

    def run_once(self, table, program, folder):
        os.makedirs(folder, exist_ok=True)
        item = table.data.make(folder)
        subprocess.run(["sync", "-f", folder], check=True)
        run, status = self.measured(table, program, item)
        left = os.listdir(folder)
        if status != "0" or left:
            table.failed[program.name] = f"status {status}, {len(left)} left"
            shutil.rmtree(folder)
        else:
            table.runs[program.name].append(run)

    def limit_once(self, table, passes, folder):
        os.makedirs(folder, exist_ok=True)
        item = table.data.make(folder)
        subprocess.run(["sync", "-f", folder], check=True)
        table.limit.append(self.programs.write_limit(passes, item))
        start = time.monotonic()
        os.unlink(item)
        table.removal.append(time.monotonic() - start)

    def wanted(self, name):
        return re.search(self.options.only or "", name)

    def table(self, key, medium, data, programs, limit_passes=0, repetitions=0):
        if not self.wanted(f"{key} {medium}"):
            return
        folder = os.path.join(self.scratch[medium], "data")
        table = Table(key, medium, data, programs)
        for _ in range(repetitions or self.options.repetitions):
            for program in programs:
                if program.name not in table.failed:
                    self.run_once(table, program, folder)
            if limit_passes:
                self.limit_once(table, limit_passes, folder)
        self.tables.append(table)
        print(report.table(table), flush=True)

    def standing(self, table, repetitions):
        """A table of programs that only look: the data is laid out once, and stays through all."""
        if not self.wanted(f"{table.key} {table.medium}"):
            return
        folder = os.path.join(self.scratch[table.medium], "standing")
        os.makedirs(folder)
        item = table.data.make(folder)
        there = os.listdir(folder)
        for _ in range(repetitions):
            for name, program in table.programs.items():
                if name in table.failed:
                    continue
                run, status = self.measured(table, program, item)
                if status != "0" or os.listdir(folder) != there:
                    table.failed[name] = f"status {status}"
                else:
                    table.runs[name].append(run)
        shutil.rmtree(folder)
        self.tables.append(table)
        print(report.table(table), flush=True)

    def looks(self):
        """What is only looked at: a tree for its plan, and the window until its first paint."""
        quick, repetitions = self.options.quick, self.options.repetitions
        tree = datasets.EmptyFiles(10 if quick else 1000, 100 if quick else 1000)
        self.standing(Table("preview", "tmpfs", tree, self.programs.for_preview()), repetitions)
        paints = self.programs.for_first_paint()
        if paints:
            nothing = datasets.NoFiles("From the start to the first paint of the window")
            table = Table("first-paint", "tmpfs", nothing, paints, own="dorvanel-x")
            self.standing(table, 3 if quick else 21)

    def all(self):
        quick = self.options.quick
        large = datasets.large_file(16 if quick else 512)
        small = datasets.small_files(200 if quick else 10000, 10 if quick else 100)
        few = datasets.small_files(200 if quick else 2000, 10 if quick else 20)
        cache = datasets.browser_cache(500 if quick else 5000)
        # Each file on a disk waits for the medium with the peers: fewer of them tell as much.
        trees = {"tmpfs": ("small", small), "disk": ("few", few)}
        programs = self.programs
        for medium in "tmpfs", "disk":
            for passes, pattern in (1, "random"), (3, "random"), (1, "zero"):
                chosen = programs.for_large_file(passes, pattern)
                self.table(f"large {passes} {pattern}", medium, large, chosen, passes)
            self.table(trees[medium][0], medium, trees[medium][1], programs.for_tree())
            self.table("cache", medium, cache, programs.for_tree())
        listed = datasets.files_of_one_folder(200 if quick else 10000)
        for medium in "tmpfs", "disk":
            self.table("arguments", medium, listed, programs.for_arguments())
        for medium in "tmpfs", "disk":
            self.table("verified-large", medium, large, programs.for_verified())
            self.table("verified-small", medium, trees[medium][1], programs.for_verified())
        starts = programs.for_one_small_file()
        self.table("start", "tmpfs", datasets.one_small_file(), starts, repetitions=21)
        folder = datasets.one_folder(1000 if quick else 100000)
        self.table("folder", "tmpfs", folder, programs.for_one_folder(), repetitions=1)
        self.looks()
        rounds = str(self.options.repetitions)
        window = ["window_cost", self.scratch["tmpfs"], rounds, "200" if quick else "100000"]
        self.other("A run with the window open, tmpfs", *window)
        dropped = ["drop_cost", self.scratch["tmpfs"], "2000" if quick else "100000"]
        self.other("Very many files dropped on the window, tmpfs", *dropped)
        self.other("One watch pass, and an idle hour of watching", "watch_cost")
        self.other("All collectors, the work doubled, tmpfs", "targets_scaling", rounds)

    def other(self, title, program, *arguments):
        """What a program of our own measures by itself, where it was built."""
        path = os.path.join(self.options.bin, program)
        if not os.path.exists(path) or not self.wanted(program):
            return
        os.makedirs(self.homes, exist_ok=True)
        settings = {"TMPDIR": self.homes, "QT_QPA_PLATFORM": "offscreen"}
        told = subprocess.run(
            [path, *arguments],
            check=True,
            env=os.environ | settings,
            stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL,
            text=True,
        ).stdout
        text, figures = report.parted(told)
        self.figures |= figures
        self.others.append((title, text))
        print(report.other(title, text), flush=True)


def parse():
    parser = argparse.ArgumentParser(prog="./dev bench", description=__doc__)
    add = parser.add_argument
    add("--bin", required=True, help=argparse.SUPPRESS)
    add("--quick", action="store_true", help="small data, one repetition: a smoke test")
    add("--before", metavar="DIR", help="the programs of another build, to measure beside ours")
    add("--write", action="store_true", help="keep the result in docs/benchmarks.md")
    add("--only", metavar="REGEX", help="only the tables that match, as in 'small tmpfs'")
    add("--repetitions", type=int, default=5, metavar="N", help="runs of each (5)")
    add("--tmpfs", default="/dev/shm", metavar="DIR", help="a folder in memory")
    add("--disk", metavar="DIR", help="a folder on a disk (the build folder)")
    options = parser.parse_args()
    options.bin = os.path.abspath(options.bin)
    options.before = options.before and os.path.abspath(options.before)
    options.disk = options.disk or os.path.dirname(options.bin)
    if options.quick:
        options.repetitions = 1
    if file_system(options.tmpfs) != "tmpfs":
        parser.error(f"{options.tmpfs} is not on tmpfs: name another with --tmpfs")
    if file_system(options.disk) in ("tmpfs", "ramfs"):
        parser.error(f"{options.disk} is not on a disk: name another with --disk")
    for folder in options.tmpfs, options.disk:
        if not options.quick and shutil.disk_usage(folder).free < 2 << 30:
            parser.error(f"{folder} has less than 2 GiB free")
    if options.write and (options.quick or options.only or options.before):
        parser.error("--write keeps whole results only: leave out --quick, --only and --before")
    return options


def keep(page):
    """Replaces docs/benchmarks.md but for what people wrote at its end."""
    root = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    path = os.path.join(root, "docs", "benchmarks.md")
    written = ""
    if os.path.exists(path):
        with open(path, encoding="utf-8") as file:
            _, heading, rest = file.read().partition(report.BY_HAND)
            written = heading + rest
    with open(path, "w", encoding="utf-8") as file:
        file.write(page + "\n" + (written or report.BY_HAND))


def main():
    options = parse()
    scratch = {}
    try:
        for medium, folder in ("tmpfs", options.tmpfs), ("disk", options.disk):
            scratch[medium] = tempfile.mkdtemp(prefix="dorvanel-bench-", dir=folder)
        bench = Bench(options, scratch)
        systems = {medium: file_system(folder) for medium, folder in scratch.items()}
        described = report.machine(systems, options.repetitions)
        print(described)
        for name in bench.programs.missing:
            print(f"{name} is not there: its rows are left out")
        print()
        bench.all()
        goals = report.goals(bench.tables, bench.figures)
        print(goals)
        if options.quick:
            print("Small data, one repetition: the numbers above only show that all of it runs.")
    finally:
        for folder in scratch.values():
            shutil.rmtree(folder, ignore_errors=True)
    if options.write:
        keep(report.page(described, goals, bench))
    return 0


if __name__ == "__main__":
    sys.exit(main())
