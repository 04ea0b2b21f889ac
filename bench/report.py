# SPDX-License-Identifier: MIT
"""What was measured, as Markdown: the machine, a table for each data set, and the goals."""

import os
import platform
import subprocess

INTRODUCTION = """# Benchmarks

What `./dev bench --write` measured: the same data, shredded by dorvanel and by other programs in
turns, and at the end some costs of our own. Machines differ, so the ratios count and not the
times. "x dorvanel" is a program's time over dorvanel's: above 1, dorvanel is faster. "Plain
random()" makes the same writes and calls the C library's generator for every word of every buffer;
"bare system calls" makes the same system calls and computes nothing: it writes zeros from one fixed
buffer, and flushes a single file once; "write limit" only writes over an existing file and removes
nothing. On disk a program that does not flush is followed by a flush
of the file system.

"""

# What follows this heading is written by people and kept.
BY_HAND = "## What limits these figures\n"


def machine(systems, repetitions):
    """The machine in general terms: nothing that tells whose it is."""
    model = "unknown CPU"
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        for line in file:
            if line.startswith("model name"):
                model = line.split(":", 1)[1].strip()
                break
    memory = os.sysconf("SC_PAGE_SIZE") * os.sysconf("SC_PHYS_PAGES") / (1 << 30)
    kernel = ".".join(platform.release().split("-")[0].split(".")[:2])
    lines = [
        f"- {model}, {os.cpu_count()} cores, {memory:.0f} GiB of memory, Linux {kernel}",
        f"- in memory: {systems['tmpfs']}; on disk: {systems['disk']}",
        f"- medians of {repetitions}; {versions()}",
    ]
    return "\n".join(lines) + "\n"


def versions():
    """The versions of the other programs' packages."""
    told = []
    for package in "coreutils", "secure-delete", "wipe", "scrub":
        query = ["dpkg-query", "-W", "-f", "${Version}", package]
        try:
            found = subprocess.run(query, capture_output=True, text=True)
        except FileNotFoundError:
            return "versions unknown"
        if found.returncode == 0:
            told.append(f"{package} {found.stdout}")
    return ", ".join(told)


def markdown(header, rows):
    """A Markdown table whose columns line up in a terminal too."""
    rows = [header, *rows]
    widths = [max(len(row[i]) for row in rows) for i in range(len(header))]
    lines = [" | ".join(cell.ljust(w) for cell, w in zip(row, widths)) for row in rows]
    lines.insert(1, " | ".join("-" * w for w in widths))
    return "\n".join(f"| {line} |" for line in lines) + "\n"


def table(measured):
    """One data set on one medium."""
    data = measured.data
    single = data.files == 1 and data.bytes > 1 << 20
    own = measured.wall(measured.own)
    rows = []
    for name, program in measured.programs.items():
        if name in measured.failed:
            rows.append([name, "failed: " + measured.failed[name], "", "", "", ""])
            continue
        walls = [run.wall for run in measured.runs[name]]
        wall = measured.wall(name)
        rate = speed(data, program.passes, wall, single)
        span = f"{min(walls):.3f}-{max(walls):.3f}"
        ratio = f"{wall / own:.2f}" if own else ""
        rows.append([name, f"{wall:.3f}", span, rate, ratio, f"{measured.peak(name) / 1024:.1f}"])
    if measured.limit:
        limit = middle(measured.limit)
        span = f"{min(measured.limit):.3f}-{max(measured.limit):.3f}"
        passes = int(measured.key.split()[1])
        rows.append(["write limit", f"{limit:.3f}", span, speed(data, passes, limit, True), "", ""])
        removal = middle(measured.removal)
        rows.append(["removal alone", f"{removal:.3f}", "", "", "", ""])
    kind = " ".join(measured.key.split()[1:]).replace("1 ", "1 pass, ").replace("3 ", "3 passes, ")
    title = f"### {data.title}, {kind + ', ' if kind else ''}{measured.medium}\n\n"
    unit = "MB/s a pass" if single else "us a file" if data.files else ""
    return title + markdown(["program", "s", "range", unit, "x dorvanel", "peak MiB"], rows)


def speed(data, passes, wall, single):
    if data.files == 0:
        return ""
    if single:
        return f"{data.bytes * passes / wall / 1e6:.0f}"
    return f"{wall / data.files * 1e6:.1f}"


def middle(values):
    return sorted(values)[len(values) // 2]


BARE = "bare system calls"


class Goals:
    def __init__(self, tables):
        self.tables = {(t.key, t.medium): t for t in tables}
        self.rows = []

    def add(self, row, asked, value, met):
        """`value` is the text of what was measured, or nothing."""
        verdict = "not measured" if value is None else "met" if met else "**not met**"
        self.rows.append([row, asked, value or "", verdict])

    def speed_over(self, key, medium, other):
        """How many times as fast as `other` dorvanel is, or nothing where one was not measured."""
        found = self.tables.get((key, medium))
        own, its = (found.wall(found.own), found.wall(other)) if found else (None, None)
        return its / own if own and its else None

    def told(self):
        return "### Goals\n\n" + markdown(["row", "goal", "measured", ""], self.rows)

    def times(self, row, key, medium, other, least):
        """dorvanel is at least `least` times as fast as `other`."""
        value = self.speed_over(key, medium, other)
        asked = f"{least} times {other} or better"
        self.add(row, asked, value and f"{value:.2f}", value and value >= least)

    def faster(self, row, key, medium, other):
        value = self.speed_over(key, medium, other)
        self.add(row, f"faster than {other}", value and f"{value:.2f}", value and value > 1)

    def within(self, row, key, medium, most, other=BARE, meaning=""):
        """dorvanel takes at most `most` times what `other` takes. `meaning`: what that does."""
        speed = self.speed_over(key, medium, other)
        value = speed and 1 / speed
        asked = f"within {most} of {other}{meaning}"
        self.add(row, asked, value and f"{value:.2f}", value and value <= most)

    def window(self, figures):
        """What the open window adds to the terminal program's time, in percent."""
        value = figures.get("window_percent_over_terminal")
        text = None if value is None else f"{value:+.1f} %"
        asked = "at most 3 % over the terminal program"
        files = figures.get("window_files", 0)
        row = f"{files:,.0f} small files with the window open" if files else "the window open"
        self.add(row, asked, text, value is not None and value <= 3)

    def write_limit(self, row, key):
        found = self.tables.get((key, "tmpfs"))
        own = found.wall("dorvanel") if found else None
        value = None
        if own:
            value = middle(found.limit) / max(own - middle(found.removal), 1e-9)
        text = None if value is None else f"{value:.2f}"
        self.add(row, "0.9 of the write limit, removal apart", text, value and value >= 0.9)

    def every_peer(self, row, key, medium):
        found = self.tables.get((key, medium))
        own = found.wall("dorvanel") if found else None
        peers = [found.wall(n) for n, p in found.programs.items() if p.peer] if own else []
        peers = [wall for wall in peers if wall]
        value = min(peers) / own if peers else None
        text = None if value is None else f"{value:.2f} times the fastest"
        self.add(row, "faster than every peer", text, value and value > 1)

    def one_by_one(self, row, medium, most):
        """Files handed over one by one take at most `most` times what their folder takes."""
        found = self.tables.get(("arguments", medium))
        folder = found.wall("dorvanel") if found else None
        each = found.wall("dorvanel, one by one") if found else None
        value = each / folder if folder and each else None
        text = None if value is None else f"{value:.2f}"
        self.add(row, f"within {most} of their folder", text, value and value <= most)

    def memory(self, row, keys, most):
        kept = [t for (key, _), t in self.tables.items() if key.split()[0] in keys]
        peaks = [peak for peak in (t.peak("dorvanel") for t in kept) if peak]
        value = max(peaks) / 1024 if peaks else None
        text = None if value is None else f"{value:.1f} MiB"
        self.add(row, f"{most} MiB or less", text, value and value <= most)

    def start(self):
        found = self.tables.get(("start", "tmpfs"))
        own, its = (found.wall("dorvanel"), found.wall("shred -u")) if found else (None, None)
        value = (own - its) * 1000 if own and its else None
        text = None if value is None else f"{value:+.1f} ms"
        asked = "within 1 ms of shred -u"
        self.add("one small file, start to end", asked, text, value is not None and value <= 1)


def goals(tables, figures):
    """The goals and whether this run meets them."""
    all_goals = Goals(tables)
    for passes, least in (1, 1.5), (3, 3):
        row = f"large file, {passes} random, tmpfs"
        all_goals.times(row, f"large {passes} random", "tmpfs", "shred -u", least)
        all_goals.times(row, f"large {passes} random", "tmpfs", "plain random()", 8)
    for medium in "tmpfs", "disk":
        row = f"large file, 1 random, {medium}"
        zeros = ": zeros once, one flush"
        all_goals.within(row, "large 1 random", medium, 1.05, meaning=zeros)
    all_goals.write_limit("large file, 1 zero, tmpfs", "large 1 zero")
    row = "files of 4 KiB, tmpfs"
    unlink = "shred --remove=unlink"
    all_goals.faster(row, "small", "tmpfs", unlink)
    all_goals.within(row, "small", "tmpfs", 1.3)
    all_goals.times(row, "small", "tmpfs", "plain random()", 20)
    row = "log-normal sizes, tmpfs"
    all_goals.faster(row, "cache", "tmpfs", unlink)
    all_goals.every_peer(row, "cache", "tmpfs")
    all_goals.within(row, "cache", "tmpfs", 1.3)
    for key, row in ("few", "files of 4 KiB, disk"), ("cache", "log-normal sizes, disk"):
        all_goals.times(row, key, "disk", unlink, 1.5)
        all_goals.times(row, key, "disk", "shred -u", 4)
        all_goals.within(row, key, "disk", 1.05)
    for medium in "tmpfs", "disk":
        all_goals.one_by_one(f"10,000 files one by one, {medium}", medium, 1.2)
    all_goals.memory("peak memory, trees", ("large", "small", "few", "cache"), 20)
    all_goals.memory("peak memory, one folder of 100,000 entries", ("folder",), 64)
    all_goals.memory("peak memory, plan of 1,000,000 files", ("preview",), 128)
    all_goals.start()
    all_goals.within("plan of 1,000,000 files, tmpfs", "preview", "tmpfs", 1.2, "du -s")
    all_goals.window(figures)
    row = "the window, start to first paint"
    all_goals.within(row, "first-paint", "tmpfs", 1.5, "empty window")
    return all_goals.told()


def parted(told):
    """What one of our own programs printed: the text, and the numbers of its lines that say
    "figure NAME NUMBER"."""
    lines = told.splitlines()
    figures = [line.split() for line in lines if line.startswith("figure ")]
    text = "\n".join(line for line in lines if not line.startswith("figure "))
    return text, {name: float(number) for _, name, number in figures}


def other(title, told):
    """The text that one of our own programs printed."""
    return f"### {title}\n\n```text\n{told.strip()}\n```\n"


def page(described, told_goals, measured):
    """The whole of docs/benchmarks.md."""
    parts = [told_goals, *(table(t) for t in measured.tables)]
    parts += [other(title, told) for title, told in measured.others]
    return INTRODUCTION + described + "\n" + "\n".join(parts)
