#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Takes history, downloads and cache from the same profiles with dorvanel and with BleachBit.

Each run gets a file system of its own on a new medium, an image that is mounted (as root). What was
visited, downloaded or cached has a number of its own in its address; afterwards the medium is read
from its first byte to its last, and the numbers that are still there are counted.
"""

import argparse
import os
import pathlib
import random
import re
import shutil
import sqlite3
import statistics
import subprocess
import sys
import tempfile
import time

import report

ROOT = pathlib.Path(__file__).resolve().parent.parent
MIB = 1 << 20
BLOCK = 4096
FIREFOX = ".mozilla/firefox/k3v9q1xz.default-release"
FIREFOX_CACHE = ".cache/mozilla/firefox/k3v9q1xz.default-release/cache2/entries"
CHROMIUM = ".config/chromium/Default"
KEPT = 50  # bookmarks in each browser
CANARY = re.compile(rb"(visited|fetched|cached)-([0-9]{8})\.example")

# Those that make finding quick; what the tests share has only those that refuse something.
PLACES_INDICES = """
CREATE INDEX moz_places_url_hashindex ON moz_places (url_hash);
CREATE INDEX moz_places_hostindex ON moz_places (rev_host);
CREATE INDEX moz_places_visitcount ON moz_places (visit_count);
CREATE INDEX moz_places_frecencyindex ON moz_places (frecency);
CREATE INDEX moz_places_lastvisitdateindex ON moz_places (last_visit_date);
CREATE INDEX moz_places_originidindex ON moz_places (origin_id);
CREATE INDEX moz_historyvisits_placedateindex ON moz_historyvisits (place_id, visit_date);
CREATE INDEX moz_historyvisits_fromindex ON moz_historyvisits (from_visit);
CREATE INDEX moz_historyvisits_dateindex ON moz_historyvisits (visit_date);
CREATE INDEX moz_bookmarks_itemindex ON moz_bookmarks (fk, type);
"""
HISTORY_INDICES = """
CREATE INDEX urls_url_index ON urls (url);
CREATE INDEX visits_url_index ON visits(url);
CREATE INDEX visits_from_index ON visits (from_visit);
CREATE INDEX visits_time_index ON visits(visit_time);
"""


def schema(name):
    """The tables of a database, as the tests have them."""
    text = (ROOT / "tests/support/Schemas.h").read_text(encoding="utf-8")
    return re.search(rf'string_view {name} = R"sql\((.*?)\)sql"', text, re.DOTALL).group(1)


class Profiles:
    """A home with a profile of Firefox and one of Chromium. `scale` is 1 for the whole size: a
    places.sqlite of 150 MB and a cache of 1 GiB, and a History of 100 MB."""

    def __init__(self, home, scale):
        self.home = home
        self.random = random.Random(20251009)
        self.pages = {"visited": int(350_000 * scale), "fetched": int(215_000 * scale)}
        self.firefox()
        self.chromium()
        self.cache(int(1024 * MIB * scale))

    def database(self, path, *scripts):
        path = self.home / path
        path.parent.mkdir(parents=True, exist_ok=True)
        database = sqlite3.connect(path)
        for script in scripts:
            database.executescript(script)
        return database

    def words(self):
        return f"{self.random.getrandbits(480):0120x}"

    def firefox(self):
        places = self.database(
            f"{FIREFOX}/places.sqlite", "PRAGMA page_size=32768;", schema("places"), PLACES_INDICES
        )
        pages = [
            (n, f"https://visited-{n:08}.example/{self.words()}")
            for n in range(self.pages["visited"])
        ]
        kept = [(len(pages) + n, f"https://kept-{n}.example/") for n in range(KEPT)]
        with places:
            places.execute(
                "INSERT INTO moz_origins VALUES (1,'https://','example',0,0,NULL,0,NULL,NULL)"
            )
            places.executemany(
                "INSERT INTO moz_places (id, url, title, rev_host, visit_count, frecency,"
                " last_visit_date, guid, url_hash, origin_id) VALUES (?1+1, ?2, 'Title ' || ?1,"
                " 'elpmaxe.', 1, 100, 1760000000000000 + ?1, printf('%012d', ?1), ?1 * 7919, 1)",
                pages + kept,
            )
            places.execute(
                "INSERT INTO moz_historyvisits (from_visit, place_id, visit_date, visit_type)"
                " SELECT id - 1, id, last_visit_date, 1 FROM moz_places"
            )
            places.executemany(
                "INSERT INTO moz_bookmarks (type, fk, parent, title, guid)"
                " VALUES (1, ?1+1, 3, ?2, ?2)",
                kept,
            )
        places.close()
        self.database(f"{FIREFOX}/favicons.sqlite", schema("favicons")).close()
        folder = self.home / FIREFOX
        (folder / "prefs.js").write_text("// Mozilla User Preferences\n")
        (folder.parent / "profiles.ini").write_text(
            "[Profile0]\nName=default-release\nIsRelative=1\n"
            "Path=k3v9q1xz.default-release\nDefault=1\n"
        )

    def chromium(self):
        history = self.database(f"{CHROMIUM}/History", schema("chromiumHistory"), HISTORY_INDICES)
        pages = [
            (n, f"https://fetched-{n:08}.example/{self.words()}")
            for n in range(self.pages["fetched"])
        ]
        with history:
            history.execute("INSERT INTO meta VALUES ('version', '70')")
            history.executemany(
                "INSERT INTO urls (id, url, title, visit_count, last_visit_time) VALUES"
                " (?1+1, ?2, 'Title ' || ?1, 1, 13400000000000000 + ?1)",
                pages,
            )
            history.execute(
                "INSERT INTO visits (url, visit_time, from_visit)"
                " SELECT id, last_visit_time, id - 1 FROM urls"
            )
        history.close()
        kept = ",".join(
            f'{{"name":"kept","type":"url","url":"https://kept-{n}.example/"}}' for n in range(KEPT)
        )
        folder = self.home / CHROMIUM
        (folder / "Bookmarks").write_text(f'{{"roots":{{"bookmark_bar":{{"children":[{kept}]}}}}}}')
        (folder / "Preferences").write_text('{"profile":{"name":"Jo"}}')
        (folder.parent / "Local State").write_text(
            '{"profile":{"info_cache":{"Default":{"name":"Jo"}}}}'
        )

    def cache(self, size):
        """In each block of each file a number of its own."""
        folder = self.home / FIREFOX_CACHE
        folder.mkdir(parents=True)
        numbers = 0
        noise = self.random.randbytes(BLOCK)
        names = iter(range(1 << 30))
        while size > 0:
            blocks = 1 + min(int(self.random.lognormvariate(1.2, 1.3)), 500)
            with open(folder / f"{next(names):040X}", "wb") as file:
                for _ in range(blocks):
                    canary = b"https://cached-%08d.example/" % numbers
                    file.write(canary + noise[len(canary) :])
                    numbers += 1
            size -= blocks * BLOCK
        self.pages["cached"] = numbers


class Medium:
    """An ext4 file system with a copy of the home, on an image that nothing was on before."""

    def __init__(self, folder, home):
        self.image, self.mount = folder / "medium", folder / "mounted"
        self.mount.mkdir(exist_ok=True)
        self.image.unlink(missing_ok=True)
        used = sum(f.stat().st_size for f in home.rglob("*") if f.is_file())
        with open(self.image, "wb") as file:
            file.truncate(max(3 * used, 256 * MIB))
        whole = "lazy_itable_init=0,lazy_journal_init=0"
        subprocess.run(["mkfs.ext4", "-q", "-F", "-E", whole, self.image], check=True)
        subprocess.run(["mount", "-o", "loop", self.image, self.mount], check=True)
        try:
            subprocess.run(["cp", "-a", home, self.mount / "home"], check=True)
            subprocess.run(["sync", "-f", self.mount], check=True)
        except BaseException:
            self.unmount()
            raise
        self.home = self.mount / "home"

    def unmount(self):
        if self.mount.is_mount():
            subprocess.run(["umount", self.mount], check=True)

    def readable(self):
        """How many different numbers of each sort stand somewhere on the unmounted medium."""
        found = {"visited": set(), "fetched": set(), "cached": set()}
        tail = b""
        with open(self.image, "rb") as file:
            while data := file.read(16 * MIB):
                for sort, number in CANARY.findall(tail + data):
                    found[sort.decode()].add(number)
                tail = data[-32:]
        return {sort: len(numbers) for sort, numbers in found.items()}


class Program:
    def __init__(self, name, before, command):
        self.name, self.before, self.command = name, before, command
        self.walls, self.cpus, self.left = [], [], []

    def run(self, medium, log):
        environment = {
            k: v for k, v in os.environ.items() if not k.startswith("XDG_") and k != "DISPLAY"
        }
        environment["HOME"] = str(medium.home)
        for command in self.before:
            subprocess.run(command, check=True, env=environment, stdout=log, stderr=log)
        subprocess.run(["sync", "-f", medium.mount], check=True)
        start = time.monotonic()
        process = subprocess.Popen(
            self.command, env=environment, stdin=subprocess.DEVNULL, stdout=log, stderr=log
        )
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        # What has not reached the medium is not done.
        subprocess.run(["sync", "-f", medium.mount], check=True)
        self.walls.append(time.monotonic() - start)
        self.cpus.append(usage.ru_utime + usage.ru_stime)
        if process.returncode != 0:
            raise RuntimeError(
                f"{self.name} ended with status {process.returncode}, see {log.name}"
            )


def one(database, query):
    connection = sqlite3.connect(f"file:{database}?mode=ro", uri=True)
    try:
        return connection.execute(query).fetchone()[0]
    finally:
        connection.close()


def check(program, home):
    """Whether the work was done, and no more than that; otherwise times say nothing."""
    places, history = home / FIREFOX / "places.sqlite", home / CHROMIUM / "History"
    cache = home / FIREFOX_CACHE
    left = {
        "visits in Firefox": one(places, "SELECT count(*) FROM moz_historyvisits"),
        "pages in Chromium": one(history, "SELECT count(*) FROM urls"),
        "files in the cache": len(list(cache.iterdir())) if cache.is_dir() else 0,
        "bookmarks lost": KEPT
        - one(places, "SELECT count(*) FROM moz_bookmarks b JOIN moz_places p ON p.id=b.fk"),
        "bookmarks of Chromium lost": KEPT
        - (home / CHROMIUM / "Bookmarks").read_text().count("kept-"),
    }
    wrong = ", ".join(f"{count} {what}" for what, count in left.items() if count)
    if wrong:
        print(f"{program.name}: {wrong}", flush=True)


def programs(bin_folder, peers, overwrite):
    ours = os.path.join(bin_folder, "dorvanel")
    kinds = ["history", "downloads", "cache"]
    before = [
        [ours, "prefs", "set", "NumberOfWrites", "2"],
        [ours, "prefs", "set", "OverwritePattern", "0"],
        [ours, "traces", "select", "firefox", *kinds],
        [ours, "traces", "select", "chromium", *kinds],
    ]
    made = [Program("dorvanel", before, [ours, "run", "--yes"])]
    cleaners = [
        f"{b}.{c}"
        for b, h in (("firefox", "url_history"), ("chromium", "history"))
        for c in (h, "cache", "vacuum")
    ]
    if peers and overwrite:
        made.append(
            Program("bleachbit --overwrite", [], ["bleachbit", "--clean", "--overwrite", *cleaners])
        )
    if peers:
        made.append(Program("bleachbit", [], ["bleachbit", "--clean", *cleaners]))
    return made


def row(program, ours):
    median = statistics.median(program.walls)
    worst = {sort: max(left[sort] for left in program.left) for sort in program.left[0]}
    return [
        program.name,
        f"{median:.2f}",
        f"{min(program.walls):.2f}-{max(program.walls):.2f}",
        f"{median / statistics.median(ours.walls):.2f}",
        f"{statistics.median(program.cpus):.2f}",
        *(f"{worst[sort]:,}" for sort in ("visited", "fetched", "cached")),
    ]


def goals(measured):
    """Whether ours is faster than each peer, and what it has left can be read nowhere."""
    ours, *peers = measured
    told = report.Goals([])
    row = "traces of two browsers"
    if not peers:
        told.add(row, "faster than bleachbit", None, False)
    for peer in peers:
        value = statistics.median(peer.walls) / statistics.median(ours.walls)
        told.add(row, f"faster than {peer.name}", f"{value:.2f}", value > 1)
    left = max(sum(found.values()) for found in ours.left)
    told.add(row, "nothing readable on the medium", f"{left:,} pages and blocks", left == 0)
    return told.told()


def parse():
    parser = argparse.ArgumentParser(prog="./dev bench --cleaning", description=__doc__)
    add = parser.add_argument
    add("--bin", required=True, help=argparse.SUPPRESS)
    add("--repetitions", type=int, default=5, metavar="N", help="runs of each (5)")
    add("--quick", action="store_true", help="small data, one repetition: a smoke test")
    add("--overwrite", action="store_true", help="also bleachbit --overwrite, which takes minutes")
    add("--disk", metavar="DIR", help="a folder on a disk (the build folder)")
    options = parser.parse_args()
    options.bin = os.path.abspath(options.bin)
    options.disk = os.path.abspath(options.disk or os.path.dirname(options.bin))
    if os.geteuid() != 0:
        parser.error("file systems are mounted: only root can do that")
    return options


def main():
    options = parse()
    repetitions = 1 if options.quick else options.repetitions
    folder = pathlib.Path(tempfile.mkdtemp(prefix="dorvanel-cleaning-", dir=options.disk))
    measured = programs(options.bin, shutil.which("bleachbit") is not None, options.overwrite)
    if len(measured) == 1:
        print("bleachbit is not there: its rows are left out")
    medium = None
    try:
        profiles = Profiles(folder / "home", 0.02 if options.quick else 1)
        sizes = [
            (folder / "home" / name).stat().st_size / 1e6
            for name in (f"{FIREFOX}/places.sqlite", f"{CHROMIUM}/History")
        ]
        made = profiles.pages
        print(
            f"places.sqlite of {sizes[0]:.0f} MB, {made['visited']:,} pages; History of "
            f"{sizes[1]:.0f} MB, {made['fetched']:,} pages; cache of {made['cached']:,} blocks\n",
            flush=True,
        )
        with open(os.path.join(options.disk, "cleaning.log"), "w", encoding="utf-8") as log:
            for _ in range(repetitions):
                for program in measured:
                    medium = Medium(folder, folder / "home")
                    program.run(medium, log)
                    check(program, medium.home)
                    medium.unmount()
                    program.left.append(medium.readable())
                    print(
                        f"{program.name}: {program.walls[-1]:.2f} s, left: {program.left[-1]}",
                        file=sys.stderr,
                        flush=True,
                    )
    finally:
        if medium is not None:
            medium.unmount()
        shutil.rmtree(folder, ignore_errors=True)
    header = [
        "program",
        "s",
        "range",
        "x dorvanel",
        "CPU s",
        "Firefox pages",
        "Chromium pages",
        "cache blocks",
    ]
    print(report.markdown(header, [row(program, measured[0]) for program in measured]))
    print(goals(measured))
    if options.quick:
        print("Small data, one repetition: the numbers above only show that all of it runs.")
    return 0


if __name__ == "__main__":
    sys.exit(main())
