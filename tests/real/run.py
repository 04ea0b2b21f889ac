#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Takes the traces of real programs, and looks whether all went that should and all stayed.

Each program gets a home of its own, keeps what it can of a web site or a mailbox with words that
nothing else writes, and is quit. All its kinds are taken, and the words must be nowhere. Then it is
started again, and must have everything that people make or choose.
"""

import argparse
import importlib
import pathlib
import shutil
import sys
import traceback

import words
from dorvanel import Dorvanel
from image import Image
from session import Session
from website import Site

# As browsers end the host in names of files for a site, and in no address.
ENDS_OF_NAMES = ["host.localhost_", "host.localhost+"]
PROGRAMS = ["firefox", "chromium", "thunderbird", "epiphany", "falkon"]


class Outcome:
    def __init__(self, program):
        self.program = program
        self.faults, self.kinds, self.stayed, self.notes = [], [], [], []

    def expect(self, holds, fault):
        if not holds:
            self.faults.append(fault)


def size(home):
    return sum(1 for path in home.rglob("*") if path.is_file() and not path.is_symlink())


def copy_to_image(session, outcome, dorvanel, application, kinds, secret):
    """The same home once more, on a medium whose every byte is looked at."""
    image = Image(session.folder, session.home)
    try:
        before = image.count(secret)
        outcome.expect(before, "no secret word was on the medium: there is nothing to find")
        dorvanel.clean(image.home, application, kinds)
        image.unmount()
        left = image.count(secret)
        # What files were called goes with them, but is not overwritten in the folders' own blocks.
        names = sum(image.count(f"{secret}{end}") for end in ENDS_OF_NAMES)
        outcome.notes.append(
            f"on the medium: the word {before} times before, {left - names} times after"
        )
        outcome.notes.append(f"on the medium, in names of files that are gone: {names} times")
        outcome.expect(left == names, f"contents are left on the medium, {left - names} times")
    finally:
        image.unmount()


def try_out(outcome, module, arguments):
    session = Session()
    known = words.Words()
    site = Site(known)
    try:
        dorvanel = Dorvanel(arguments.bin / "dorvanel", session)
        outcome.expect(module.browse(session, site), "it did not quit by itself")
        dorvanel.wait_for_end(session.home, module.ID)
        before = words.find(session.home, known.secret)
        outcome.expect(before, "it kept no secret word: there is nothing to take")
        found = dorvanel.traces(session.home, module.ID)
        files = size(session.home)
        if arguments.image:
            copy_to_image(session, outcome, dorvanel, module.ID, list(found), known.secret)
        status, errors, log = dorvanel.clean(session.home, module.ID, list(found))
        outcome.expect(status == 0, f"the run ended with status {status}: {errors}")
        shutil.rmtree(session.home / "Library")  # its own settings and log, which tell paths
        after = dorvanel.traces(session.home, module.ID)
        outcome.kinds = [(kind, found[kind], after[kind]) for kind in found]
        for kind, left in after.items():
            outcome.expect(not left["rows"], f"{kind}: {left['rows']} rows are left")
            outcome.expect(left["bytes"] == 0, f"{kind}: {left['files']} files are left")
        for path in words.find(session.home, known.secret):
            outcome.faults.append(f"a secret word is left in {path}")
        outcome.notes.append(f"{len(before)} files and folders had secret words; of {files} files")
        outcome.notes.append(module.BY_AUTOMATION)
        for what, is_there in module.look(session, site).items():
            outcome.stayed.append(f"{what}: {'yes' if is_there else 'NO'}")
            outcome.expect(is_there, f"not as it should be: {what}")
        corrupt = [
            str(path)
            for path in session.home.rglob("*corrupt*")
            if words.has(str(path).encode(), "sqlite")
        ]
        outcome.expect(not corrupt, f"set aside as damaged: {corrupt}")
        for database, answer in words.checks_of(session.home):
            outcome.expect(answer == "ok", f"{database}: {answer}")
    except Exception:  # one program's trouble is told, and the next has its turn
        outcome.faults.append(traceback.format_exc(limit=-4))
    finally:
        site.close()
        session.close(arguments.keep)
        if arguments.keep:
            outcome.notes.append(
                f"left in {session.folder}; secret {known.secret}, kept {known.kept}"
            )


def show(outcome):
    print(f"\n{outcome.program}: {'FAILED' if outcome.faults else 'passed'}")
    print(f"  {'kind':<12} {'files':>6} {'bytes':>10} {'rows':>6}   left: files, bytes, rows")
    for kind, was, left in outcome.kinds:
        counts = f"{was['files']:>6} {was['bytes']:>10} {was.get('rows') or 0:>6}"
        print(f"  {kind:<12} {counts}   {left['files']}, {left['bytes']}, {left.get('rows') or 0}")
    print("  stayed: " + "; ".join(outcome.stayed))
    for note in outcome.notes:
        print(f"  {note}")
    for fault in outcome.faults:
        print(f"  FAULT: {fault}")
    sys.stdout.flush()


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("programs", nargs="*", choices=[*PROGRAMS, []], help="without one: all")
    parser.add_argument("--bin", type=pathlib.Path, required=True, help="the folder of dorvanel")
    parser.add_argument("--image", action="store_true", help="also on a medium of its own, as root")
    parser.add_argument("--keep", action="store_true", help="leave the homes, to be looked at")
    arguments = parser.parse_args()
    status = 0
    for name in arguments.programs or PROGRAMS:
        outcome = Outcome(name)
        try_out(outcome, importlib.import_module(name), arguments)
        show(outcome)
        status |= bool(outcome.faults)
    return status


if __name__ == "__main__":
    sys.exit(main())
