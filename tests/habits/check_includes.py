#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks that the folders of src include only what lies below them.

usage: check_includes.py [--picture | --picture-in FILE] SOURCE-FOLDER

Nothing but platform/linux includes a header of the operating system, nothing but app/desktop a
header of Qt, and a library that one part of the program wraps stays in that part. --picture draws
the floors from what the files include; --picture-in checks that the file shows them so.
"""

import pathlib
import re
import sys
import textwrap

# Bottom to top. A folder may include what lies on a floor below its own.
FLOORS = [
    ["base"],
    ["ui"],
    ["platform"],
    ["log", "prefs"],
    ["apps"],
    ["engine", "targets", "watch"],
    ["run"],
    ["app"],
]
BELOW = {
    folder: [other for floor in FLOORS[:height] for other in floor]
    for height, folders in enumerate(FLOORS)
    for folder in folders
}
# Libraries that are wrapped: who may include them.
WRAPPED = {
    "sqlite3.h": "targets/",
    "plist/": "prefs/",
    "sdbus-c++/": "platform/linux/",
    "toml++/": "apps/catalogue/",
    "expat.h": "targets/mentions/",
    "xxhash.h": "engine/ContentDigest.cpp",
}
SYSTEM = re.compile(
    r"(sys|linux|net|netinet|arpa|asm|bits|systemd|sdbus-c\+\+)/"
    r"|(unistd|fcntl|dirent|pwd|grp|poll|sched|signal|pthread|spawn|dlfcn|ftw|glob|fnmatch|syslog"
    r"|termios|utime|langinfo|libgen|semaphore|mqueue|ucontext|utmp|utmpx|wordexp|syscall)\.h$"
)
TOOLKIT = re.compile(r"(Q[A-Z]\w*|Qt\w+/.*|q[a-z]+\.h)$")
INCLUDE = re.compile(r'^\s*#\s*include\s*(?:<([^>]+)>|"([^"]+)")', re.M)


def faults_of(path, name):
    """What is wrong with the file `name`, a path relative to the source folder."""
    parts = name.split("/")
    layer = parts[0]
    if layer not in BELOW:
        yield "lies in a folder that has no place in the order"
        return
    is_system = name.startswith("platform/linux/")
    is_desktop = name.startswith("app/desktop/")
    is_terminal = name.startswith("app/terminal/")
    for angled, quoted in INCLUDE.findall(path.read_text()):
        if quoted:
            other = quoted.split("/")[0]
            if other != layer and other not in BELOW[layer]:
                yield f"includes {quoted}, which is not below it"
            if quoted.startswith("platform/linux/") and not is_system:
                yield f"includes {quoted}, which is the platform's own"
            if is_terminal and quoted.startswith("app/desktop/"):
                yield f"includes {quoted} of the other program"
            if is_desktop and quoted.startswith("app/terminal/"):
                yield f"includes {quoted} of the other program"
        elif SYSTEM.match(angled) and not is_system:
            yield f"includes <{angled}>, which is the platform's to use"
        elif TOOLKIT.match(angled) and not is_desktop:
            yield f"includes <{angled}>, which only the desktop program may"
        for library, owner in WRAPPED.items():
            if angled.startswith(library) and not name.startswith(owner):
                yield f"includes <{angled}>, which only {owner} may"
            if angled.startswith(library) and name.endswith(".h"):
                yield f"includes <{angled}>, which must stay in the .cpp file that uses it"


def picture_of(root, files):
    """The floors as boxes, top to bottom, each with what its files do include."""
    width = 96  # of all boxes of a floor, the borders left out
    used = {}
    for path in files:
        layer = path.relative_to(root).parts[0]
        quoted = {q.split("/")[0] for _, q in INCLUDE.findall(path.read_text()) if q}
        used.setdefault(layer, set()).update(quoted - {layer})
    order = [folder for floor in reversed(FLOORS) for folder in floor]
    lines = []
    for floor in reversed(FLOORS):
        room = (width - len(floor) + 1) // len(floor)
        rooms = [room] * (len(floor) - 1) + [width - (room + 1) * (len(floor) - 1)]
        border = "+" + "+".join("-" * r for r in rooms) + "+"
        if lines:  # where the boxes of two floors meet, both borders show
            border = "".join("+" if "+" in pair else "-" for pair in zip(border, lines[-1]))
            lines.pop()
        lines.append(border)
        texts = []
        for folder, r in zip(floor, rooms):
            below = [other for other in order if other in used.get(folder, ())]
            uses = "uses " + ", ".join(below) if below else "uses nothing of the others"
            texts.append([folder, *textwrap.wrap(uses, r - 4)])
        for i in range(max(map(len, texts))):
            cells = (t[i] if i < len(t) else "" for t in texts)
            inner = "|".join(f" {'  ' if i else ''}{c}".ljust(r) for c, r in zip(cells, rooms))
            lines.append(f"|{inner}|")
        lines.append("+" + "+".join("-" * r for r in rooms) + "+")
    return "\n".join(lines)


def main():
    *options, folder = sys.argv[1:] or [""]
    root = pathlib.Path(folder)
    files = sorted(p for p in root.rglob("*") if p.suffix in (".h", ".cpp"))
    if not folder or (options and options[0] not in ("--picture", "--picture-in")):
        sys.exit(__doc__)
    if not files:
        sys.exit(f"{root}: no sources there")
    if options == ["--picture"]:
        return print(picture_of(root, files))
    if options:
        shown = pathlib.Path(options[1]).read_text()
        if picture_of(root, files) not in shown:
            sys.exit(f"{options[1]}: the picture is not what {sys.argv[0]} --picture {root} draws")
        return print(f"{options[1]}: the picture is true")
    failed = False
    for path in files:
        for fault in faults_of(path, path.relative_to(root).as_posix()):
            failed = True
            print(f"{path}: {fault}")
    if not failed:
        print(f"{len(files)} files include only what lies below them")
    sys.exit(1 if failed else 0)


main()
