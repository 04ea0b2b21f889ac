#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Makes the pages on what goes and what stays of each application, from their descriptions.

usage: application_pages.py [--write] DESCRIPTIONS PAGES

Without --write it only says which pages in the folder PAGES are not what it would make, and fails.
"""

import pathlib
import re
import sys
import tomllib

KINDS = {
    "cache": "Cache",
    "history": "History",
    "downloads": "List of downloads",
    "cookies": "Cookies",
    "forms": "What was typed",
    "sessions": "Open and closed tabs",
    "sitedata": "What sites stored",
    "icons": "Icons of pages",
    "permissions": "Choices for sites",
    "thumbnails": "Small pictures",
    "logs": "Logs",
    "crashes": "Crash reports",
    "mailindex": "Index of mails",
    "mailcache": "Copies of mails",
    "collected": "Collected addresses",
    "expunged": "Expunged mails",
    "trash": "Trash",
    "junk": "Junk",
    "recent": "Recent documents",
}
INSTALLS = {"native": "as a program of the system", "flatpak": "as a Flatpak", "snap": "as a Snap"}
PROFILES = {
    "mozilla": "each profile that `profiles.ini` in `{root}` names",
    "chromium": "each profile that `Local State` in `{root}` names",
}
STAYS = {
    "browser": "Bookmarks, passwords, certificates, settings, extensions and what they keep for "
    "themselves, and the files that were downloaded.",
    "mail": "Mails outside trash and junk, those that were not sent yet, accounts and passwords, "
    "certificates and keys, address books, calendars, filters and settings.",
    "desktop": "The documents themselves, and all settings.",
}
INDEX = "README.md"


def read(folder):
    """The descriptions by ID, each with what its family adds."""
    files = {path.stem: tomllib.loads(path.read_text()) for path in sorted(folder.glob("*.toml"))}
    for entry in files.values():
        family = files.get(entry.get("family"), {})
        entry["own"] = [trace["kind"] for trace in entry.get("trace", [])]
        for part in ("kind", "icon", "processes", "locks", "install", "profiles"):
            if part not in entry and part in family:
                entry[part] = family[part]
    for entry in files.values():
        shared = files.get(entry.get("family"), {}).get("trace", [])
        entry["all"] = entry.get("trace", []) + [
            trace for trace in shared if trace["kind"] not in entry["own"]
        ]
    return files


def code(words):
    return ", ".join(f"`{word}`" for word in words)


def unique(words):
    return list(dict.fromkeys(words))


def statements(clean):
    for statement in clean["run"]:
        yield statement if isinstance(statement, str) else statement["sql"]


def rows_of(clean):
    """What leaves a database, table by table."""
    whole, some, reset = [], [], []
    for sql in statements(clean):
        if deleted := re.fullmatch(r"DELETE FROM (\w+)( WHERE .*)?", sql, re.S):
            (some if deleted[2] else whole).append(deleted[1])
        elif updated := re.match(r"UPDATE (\w+) SET ", sql):
            reset.append(updated[1])
    if whole:
        yield f"all rows of {code(unique(whole))}"
    if some := [table for table in unique(some) if table not in whole]:
        yield f"some rows of {code(some)}"
    if reset := [table for table in unique(reset) if table not in whole]:
        yield f"numbers and times in {code(reset)}"


def goes(trace):
    """A line for each thing that one kind takes."""
    for path in trace.get("shred", []):
        yield f"- `{path}`"
    for path in trace.get("empty", []):
        yield f"- `{path}`: an empty file takes its place"
    for clean in trace.get("clean", []):
        yield f"- in `{clean['database']}`: {'; '.join(rows_of(clean))}"
        for query in clean.get("keep", []):
            yield f"  - as before: `{query}`"
    for json in trace.get("json", []):
        yield f"- in `{json['file']}`: the keys {code(json['remove'])}"


def places(entry):
    yield "| Installed | Places |"
    yield "|---|---|"
    for install in entry["install"]:
        roots = ", ".join(f"`{{{key}}}` = `{install[key]}`" for key in install if key != "name")
        yield f"| {INSTALLS[install['name']]} | {roots} |"
    if profiles := entry.get("profiles"):
        root = profiles["root"]
        which = PROFILES.get(profiles["list"], f"each folder `{root}/{profiles['list']}`")
        yield ""
        yield f"`{{profile}}` stands for {which.replace('{root}', root)}."


def page(name, entry):
    yield f"# {entry['name']}: what goes and what stays"
    yield ""
    yield f"As [{name}.toml](../../resources/applications/{name}.toml) describes it; how such a file is"
    yield "read and written is told in [catalogue.md](../catalogue.md). Only kinds that were chosen are"
    yield "taken, and none while it runs."
    yield ""
    yield "## Where it is looked for"
    yield ""
    yield from places(entry)
    yield ""
    yield "Roots that are not there are passed over."
    yield ""
    yield "## What goes"
    for trace in entry["all"]:
        yield ""
        yield f"### {KINDS[trace['kind']]} (`{trace['kind']}`)"
        yield ""
        is_recommended = trace.get("recommended", False)
        words = ["Recommended." if is_recommended else "Only where it is chosen by hand."]
        if "family" in entry and trace["kind"] not in entry["own"]:
            words.append(f"As for [{entry['family']}]({entry['family']}.md).")
        if "why" in trace:
            words.append(trace["why"])
        yield " ".join(words)
        yield ""
        yield from goes(trace)
    yield ""
    yield "## What stays"
    yield ""
    yield STAYS[entry["kind"]]
    if any("clean" in trace for trace in entry["all"]):
        yield ""
        yield "A database is cleaned in a copy. What is marked `as before` must have the same answer there"
        yield "after the cleaning, or the database stays as it was."


def index(files):
    yield "# Applications of today"
    yield ""
    yield "What goes and what stays of each; the pages are made from"
    yield "[their descriptions](../../resources/applications). A kind in bold is recommended: hardly"
    yield "anybody would miss it."
    yield ""
    yield "| Application | Kinds |"
    yield "|---|---|"
    for name, entry in sorted(files.items(), key=lambda item: item[1]["name"].lower()):
        kinds = ", ".join(
            f"**{trace['kind']}**" if trace.get("recommended") else trace["kind"]
            for trace in entry["all"]
        )
        yield f"| [{entry['name']}]({name}.md) | {kinds} |"


def main(arguments):
    is_writing = arguments[:1] == ["--write"]
    source, target = map(pathlib.Path, arguments[is_writing:])
    files = read(source)
    made = {f"{name}.md": page(name, entry) for name, entry in files.items()}
    made[INDEX] = index(files)
    status = 0
    for name in sorted(made.keys() | {path.name for path in target.glob("*.md")}):
        path = target / name
        text = "".join(f"{line}\n" for line in made[name]) if name in made else None
        if text == (path.read_text() if path.exists() else None):
            continue
        if not is_writing:
            print(f"{path}: is not what the descriptions say; --write makes it")
            status = 1
        elif text is None:
            path.unlink()
        else:
            target.mkdir(parents=True, exist_ok=True)
            path.write_text(text)
    return status


if __name__ == "__main__":
    if len(sys.argv) - (sys.argv[1:2] == ["--write"]) != 3:
        sys.exit(__doc__)
    sys.exit(main(sys.argv[1:]))
