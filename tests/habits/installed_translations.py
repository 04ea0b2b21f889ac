#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Looks whether each translation is installed where the programs look for it, and packaged.

usage: installed_translations.py BUILD ROOT [--desktop]

With --desktop the desktop program is among what was built.
"""

import fnmatch
import pathlib
import subprocess
import sys
import tempfile


def expected(root, has_desktop):
    """The places below share, each with its package."""
    for path in sorted((root / "resources/translations").iterdir()):
        program, _, language = path.stem.partition("_")
        if path.suffix == ".ts" and has_desktop:
            yield f"dorvanel-x/translations/{program}_{language}.qm", "dorvanel-x"
        elif path.suffix == ".po":
            yield f"locale/{language}/LC_MESSAGES/dorvanel.mo", "dorvanel"
            if has_desktop:
                yield f"dorvanel-x/locale/{language}/LC_MESSAGES/dorvanel.mo", "dorvanel-x"


def main(arguments):
    has_desktop = "--desktop" in arguments
    places = [word for word in arguments if word != "--desktop"]
    if len(places) != 2:
        sys.exit(__doc__)
    build, root = map(pathlib.Path, places)
    faults = 0
    with tempfile.TemporaryDirectory() as name:
        script = build / "resources/cmake_install.cmake"
        subprocess.run(
            ["cmake", f"-DCMAKE_INSTALL_PREFIX={name}", "-P", script],
            check=True,
            stdout=subprocess.DEVNULL,
        )
        for place, package in expected(root, has_desktop):
            lines = (root / f"debian/{package}.install").read_text().split()
            is_packaged = any(
                fnmatch.fnmatch(f"usr/share/{place}", line + "*") for line in lines
            )
            for folder in (build, pathlib.Path(name)):
                if not (folder / "share" / place).is_file():
                    print(f"{place}: is not in {folder}")
                    faults += 1
            if not is_packaged:
                print(f"{place}: is not in the package {package}")
                faults += 1
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main(sys.argv[1:])
