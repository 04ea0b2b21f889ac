#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Looks for texts of the desktop program that cannot be translated.

usage: check_words.py DESKTOP

A string with a space between two letters is taken for something that people read: it belongs into
Words::tr(...), or into QT_TRANSLATE_NOOP("Words", ...) where it is said elsewhere. The command line,
which is read before the toolkit is there, has tr(...), as the terminal program.
"""

import pathlib
import re
import sys

# What only looks like a text, and why it stays as it is.
NO_TEXT = {
    "Dorvanel X": "a name",
    "D-Bus Interface": "what Qt calls the name of an interface",
    "NSWindow Frame ": "the key under which the frame of a window is saved",
    "~/Mail/Mailsmith User Data/Mail/(dorvanelx)": "a path",
    "There is no place for the applications": "a line of the system log",
    "[Desktop Entry]\\n": "a line of a file that the desktop reads",
    "Name=Dorvanel X\\n": "a line of a file that the desktop reads",
    "Comment=Browser Watch, hidden behind its icon\\n": "a line of a file that the desktop reads",
    "Failed to load MainMenu.nib": "a line of the system log",
    "Failed to load MyDocument.nib": "a line of the system log",
    "what is in work is not written down: ": "a line of the system log",
    # The names by which the tray tells the commands apart.
    "Shred and Log Out": "a name that the controller gives",
    "Shred and Shut Down": "a name that the controller gives",
    "Shred and Restart": "a name that the controller gives",
}
COMMAND_LINE = "CommandLine.cpp"

STRING = re.compile(r'R"\((?P<raw>.*?)\)"|"(?P<plain>(?:[^"\\\n]|\\.)*)"', re.DOTALL)
COMMENT = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:[^"\\\n]|\\.)*"', re.DOTALL)
SENTENCE = re.compile(r"[^\W\d_] [^\W\d_]")
# Before a string: what translates it, the parts of the same string that stand before it, and the
# text that it tells from others of the same words.
TRANSLATED = re.compile(
    r'(?P<by>Words::tr|QT_TRANSLATE_N?_?NOOP|\btr)\(\s*(?:"Words",\s*)?'
    r'(?:"(?:[^"\\\n]|\\.)*"\s*)*(?:,\s*(?:"(?:[^"\\\n]|\\.)*"\s*)*)?$'
)
INCLUDED = re.compile(r"#\s*include\s*$")


def without_comments(text):
    def blank(match):
        found = match.group()
        return found if found.startswith('"') else re.sub(r"[^\n]", " ", found)

    return COMMENT.sub(blank, text)


def texts_of(path):
    """The lines and the texts of a file that are not translated."""
    text = without_comments(path.read_text())
    for match in STRING.finditer(text):
        said = match.group("plain") if match.group("raw") is None else match.group("raw")
        before = text[: match.start()]
        if not SENTENCE.search(said) or said in NO_TEXT:
            continue
        translated = TRANSLATED.search(before)
        if translated and (translated.group("by") != "tr" or path.name == COMMAND_LINE):
            continue
        if not INCLUDED.search(before):
            yield before.count("\n") + 1, said


def main(arguments):
    if len(arguments) != 1:
        sys.exit(__doc__)
    folder = pathlib.Path(arguments[0])
    faults = 0
    for path in sorted([*folder.rglob("*.cpp"), *folder.rglob("*.h")]):
        for line, said in texts_of(path):
            print(f'{path}:{line}: not in Words::tr: "{said}"')
            faults += 1
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main(sys.argv[1:])
