#!/usr/bin/env python3
"""Prints the line coverage of each folder of src, and the files with lines that no test runs.

usage: report_coverage.py SUMMARY.json

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
        folders[entry["filename"].removeprefix("src/").rpartition("/")[0]].append(entry)
    failed = [folder for folder in CORE if folder not in folders]
    for folder in failed:
        print(f"{folder}: not measured")
    for folder, entries in sorted(folders.items()):
        total = sum(entry["line_total"] for entry in entries)
        run = sum(entry["line_covered"] for entry in entries)
        percent = 100.0 * run / total if total else 100.0
        print(f"{folder:20} {percent:6.1f} %  {run:5} of {total:5} lines")
        for entry in sorted(entries, key=lambda entry: entry["filename"]):
            missing = entry["line_total"] - entry["line_covered"]
            if missing:
                print(f"    {entry['filename']}: {missing} not run")
        if folder in CORE and percent < LEAST:
            failed.append(folder)
            print(f"    less than {LEAST:.0f} %")
    sys.exit(1 if failed else 0)


main()
