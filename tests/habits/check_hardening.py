#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks with readelf how programs are hardened.

usage: check_hardening.py [--fortified] [--sanitized] PROGRAM...

Each program must be position independent, have its relocations read-only from the start, no
executable stack and no segment that is both writable and executable, and be built with the stack
protector; --fortified: with the checked library functions too; --sanitized: the sanitizer brings
its own, so those two are not asked for.
"""

import re
import subprocess
import sys


def readelf(option, program):
    command = ["readelf", "--wide", option, program]
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def faults_of(program, fortified, sanitized):
    header = readelf("--file-header", program)
    segments = readelf("--program-headers", program)
    dynamic = readelf("--dynamic", program)
    symbols = readelf("--dyn-syms", program)
    # NAME OFFSET ADDRESS ADDRESS SIZE SIZE FLAGS ALIGNMENT, the flags as "R E" or "RW".
    flags = dict(re.findall(r"^ +(\w+) +(?:0x[0-9a-f]+ +){5}([RWE ]{3})", segments, re.M))
    every = re.findall(r"^ +\w+ +(?:0x[0-9a-f]+ +){5}([RWE ]{3})", segments, re.M)
    if not every:
        yield "its segments cannot be read"
    if not re.search(r"Type: +DYN \(Position-Independent Executable", header):
        yield "is not position independent"
    if "GNU_RELRO" not in flags:
        yield "has no read-only relocations"
    if not re.search(r"BIND_NOW|FLAGS_1.*\bNOW\b", dynamic):
        yield "binds symbols late"
    if "E" in flags.get("GNU_STACK", "E"):
        yield "has an executable stack"
    if any("W" in f and "E" in f for f in every):
        yield "has a segment that is writable and executable"
    if "TEXTREL" in dynamic:
        yield "relocates its code"
    if re.search(r"\((RPATH|RUNPATH)\)", dynamic):
        yield "looks for libraries in a folder of its own"
    if not sanitized and "__stack_chk_fail" not in symbols:
        yield "has no stack protector"
    if fortified and not re.search(r" __\w+_chk[@ \n]", symbols):
        yield "has no checked library functions"


def main():
    options = {word for word in sys.argv[1:] if word.startswith("--")}
    programs = [word for word in sys.argv[1:] if not word.startswith("--")]
    if not programs or options - {"--fortified", "--sanitized"}:
        sys.exit(__doc__)
    failed = False
    for program in programs:
        faults = list(faults_of(program, "--fortified" in options, "--sanitized" in options))
        failed = failed or bool(faults)
        for fault in faults:
            print(f"{program}: {fault}")
        if not faults:
            print(f"{program}: hardened")
    sys.exit(1 if failed else 0)


main()
