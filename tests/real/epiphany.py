# SPDX-License-Identifier: MIT
"""GNOME Web, by its keys and by its actions on the bus."""

import sqlite3

from session import wait_until

PACKAGE, PROGRAM, ID = "epiphany-browser", "epiphany", "epiphany"
BY_AUTOMATION = "bookmark by its key; passwords are in the keyring, which is another program's"


def data(session):
    return session.home / ".local/share/epiphany"


def visits(session):
    path = data(session) / "ephy-history.db"
    if not path.exists():
        return 0
    database = sqlite3.connect(f"file:{path}?mode=ro", uri=True)
    try:
        return database.execute("SELECT count(*) FROM visits").fetchone()[0]
    except sqlite3.Error:
        return 0  # it is being made
    finally:
        database.close()


def open_in_turn(session, site, addresses):
    """Each page in a tab, and the program as it was started."""
    program = session.start([PROGRAM, addresses[0]])
    wait_until(lambda: session.window("epiphany"), 40, "no window")
    wait_until(lambda: site.was_asked_for(addresses[0]), 30, "the first page was not opened")
    for address in addresses[1:]:
        known = visits(session)
        session.run(PROGRAM, address, check=False)
        wait_until(lambda: site.was_asked_for(address), 30, f"{address} was not opened")
        # Not every page of a start is remembered.
        wait_until(lambda: visits(session) > known, 30, f"{address} was not remembered")
    return program


def leave(session, program):
    """As its menu does."""
    session.run(
        "gdbus",
        "call",
        "--session",
        "--dest",
        "org.gnome.Epiphany",
        "--object-path",
        "/org/gnome/Epiphany",
        "--method",
        "org.gtk.Actions.Activate",
        "quit",
        "[]",
        "{}",
    )
    return session.end(program, 30)


def browse(session, site):
    secret = [site.secret(path) for path in ("one", "two", "three")]
    program = open_in_turn(session, site, [*secret, site.kept("page")])
    session.press("epiphany", "ctrl+d")
    marks = data(session) / "bookmarks.gvdb"
    wait_until(
        lambda: marks.exists() and site.words.kept.encode() in marks.read_bytes(),
        20,
        "no bookmark was made",
    )
    session.press("epiphany", "Escape")
    known = visits(session)
    session.run(PROGRAM, site.secret("four"), check=False)
    wait_until(lambda: visits(session) > known, 30, "the last visit was not kept")
    return leave(session, program)


def look(session, site):
    before = visits(session)
    program = open_in_turn(session, site, [site.kept("again"), site.kept("more")])
    is_clean = leave(session, program)
    marks = (data(session) / "bookmarks.gvdb").read_bytes()
    return {
        "bookmark": site.kept("page").encode() in marks,
        "no visits": before == 0,
        "history goes on": visits(session) > 0,
        "quits by itself": is_clean,
    }
