#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Looks whether the help of every language is the English help in other words.

usage: check_help.py ROOT

Each language below ROOT/resources/help has the pages of English, with the same links, the same
places that links lead to and the same code in the same order; a page is titled as the translation
of the window titles it, and every text of the window that an English page prints in bold is there
as the window says it.
"""

import html
import pathlib
import re
import sys
import xml.etree.ElementTree as xml

TRANSLATIONS = "resources/translations"


def translations(path):
    """What the window says, as {English: {translation...}}, without the keys after Alt."""
    said = {}
    if not path.exists():
        return said
    for message in xml.parse(path).getroot().iter("message"):
        source = (message.findtext("source") or "").replace("&", "")
        text = (message.findtext("translation") or "").replace("&", "")
        said.setdefault(source, set()).add(text)
    return said


def inner(text, pattern):
    return [html.unescape(" ".join(found.split())) for found in re.findall(pattern, text, re.DOTALL)]


def links(text):
    return inner(text, r'href="([^"]*)"')


def places(text):
    return inner(text, r'name="([^"]*)"')


def options(text):
    """The commands and options; names of files in them are words of the language."""
    return [re.sub(r" [A-Z]+$", "", code) for code in inner(text, r"<code>(.*?)</code>")]


def bold(text):
    return [one.rstrip(":,.") for one in inner(text, r"<b>(.*?)</b>")]


def titles(text):
    return inner(text, r"<title>(.*?)</title>") + inner(text, r"<h1>(.*?)</h1>")


def faults_of(language, english, page, said):
    if f'<html lang="{language}">' not in page:
        yield "says another language"
    for what, of in (("links", links), ("places", places), ("code", options)):
        if of(page) != of(english):
            yield f"has other {what}: {of(page)}"
    wanted = said.get(titles(english)[0], set())
    if len(set(titles(page))) != 1 or titles(page)[0] not in wanted:
        yield f"is titled {titles(page)}, and by the window {sorted(wanted)}"
    for name in bold(english):
        if name in said and not said[name] & set(bold(page)):
            yield f'does not name "{name}" as the window does: {sorted(said[name])}'


def main(arguments):
    if len(arguments) != 1:
        sys.exit(__doc__)
    root = pathlib.Path(arguments[0])
    pages = {page.name: page.read_text() for page in (root / "resources/help/en").glob("*.html")}
    faults = [] if pages else ["there is no English help"]
    for folder in sorted((root / "resources/help").iterdir()):
        if folder.name == "en":
            continue
        said = translations(root / TRANSLATIONS / f"dorvanel-x_{folder.name}.ts")
        theirs = {page.name: page.read_text() for page in folder.glob("*.html")}
        for name in sorted(pages.keys() ^ theirs.keys()):
            faults.append(f"{folder.name}/{name}: is not in both languages")
        for name in sorted(pages.keys() & theirs.keys()):
            for fault in faults_of(folder.name, pages[name], theirs[name], said):
                faults.append(f"{folder.name}/{name}: {fault}")
    for fault in faults:
        print(fault)
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main(sys.argv[1:])
