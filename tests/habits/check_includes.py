#!/usr/bin/env python3
"""Checks that the folders of src include only what lies below them.

usage: check_includes.py SOURCE-FOLDER

platform < prefs < engine < targets, watch < run < app. Nothing but platform/linux includes a header
of the operating system, and nothing but app/desktop a header of Qt.
"""

import pathlib
import re
import sys

BELOW = {
    "platform": [],
    "prefs": ["platform"],
    "engine": ["platform", "prefs"],
    "targets": ["platform", "prefs", "engine"],
    "watch": ["platform", "prefs", "engine"],
    "run": ["platform", "prefs", "engine", "targets", "watch"],
    "app": ["platform", "prefs", "engine", "targets", "watch", "run"],
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


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    root = pathlib.Path(sys.argv[1])
    files = sorted(p for p in root.rglob("*") if p.suffix in (".h", ".cpp"))
    if not files:
        sys.exit(f"{root}: no sources there")
    failed = False
    for path in files:
        for fault in faults_of(path, path.relative_to(root).as_posix()):
            failed = True
            print(f"{path}: {fault}")
    if not failed:
        print(f"{len(files)} files include only what lies below them")
    sys.exit(1 if failed else 0)


main()
