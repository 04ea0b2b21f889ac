#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints the line coverage of each folder of src, and the lines that no test runs.

usage: report_coverage.py REPORT.json     as gcovr --json writes it

Fails where a folder of the core has fewer than 95 % of its lines run.
"""

import collections
import json
import sys

CORE = ["engine", "prefs", "targets", "watch", "run"]
LEAST = 95.0


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    with open(sys.argv[1]) as file:
        files = json.load(file)["files"]
    folders = collections.defaultdict(list)
    for entry in files:
        counted = [line for line in entry["lines"] if not line.get("gcovr/noncode")]
        folder = entry["file"].removeprefix("src/").rpartition("/")[0]
        folders[folder].append((entry["file"], counted))
    failed = [folder for folder in CORE if folder not in folders]
    for folder in failed:
        print(f"{folder}: not measured")
    for folder, entries in sorted(folders.items()):
        total = sum(len(lines) for _, lines in entries)
        run = sum(1 for _, lines in entries for line in lines if line["count"])
        percent = 100.0 * run / total if total else 100.0
        print(f"{folder:20} {percent:6.1f} %  {run:5} of {total:5} lines")
        for name, lines in sorted(entries, key=lambda entry: entry[0]):
            missing = [str(line["line_number"]) for line in lines if not line["count"]]
            if missing:
                print(f"    {name}: {', '.join(missing)}")
        if folder in CORE and percent < LEAST:
            failed.append(folder)
            print(f"    less than {LEAST:.0f} %")
    sys.exit(1 if failed else 0)


main()
