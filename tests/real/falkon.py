# SPDX-License-Identifier: MIT
"""Falkon, by its keys; bookmark and password are written into its files while it is closed."""

import json
import sqlite3

from session import wait_until

PACKAGE, PROGRAM, ID = "falkon", "falkon", "falkon"
BY_AUTOMATION = "bookmark, password and search engine written into its closed files"
# It asks the system for addresses, and knows no names below localhost by itself.
NAMES = {
    "QTWEBENGINE_CHROMIUM_FLAGS": "--host-resolver-rules='MAP *.localhost 127.0.0.1'",
    "QTWEBENGINE_DISABLE_SANDBOX": "1",
}


def profile(session):
    return session.home / ".config/falkon/profiles/default"


def ask(session, query, *values):
    path = profile(session) / "browsedata.db"
    if not path.exists():
        return []
    database = sqlite3.connect(path)
    try:
        with database:
            return database.execute(query, values).fetchall()
    except sqlite3.OperationalError:
        return []  # it is being made, or written
    finally:
        database.close()


def visits(session):
    rows = ask(session, "SELECT count(*) FROM history")
    return rows[0][0] if rows else 0


def open_in_turn(session, addresses):
    program = session.start([PROGRAM], NAMES)
    wait_until(lambda: session.window("falkon"), 40, "no window")
    for address in addresses:
        known = visits(session)
        session.run(PROGRAM, "--new-tab", address, check=False)
        wait_until(lambda: visits(session) > known, 30, f"{address} was not remembered")
    return program


def leave(session, program):
    for _ in range(3):
        session.press("falkon", "ctrl+q")
        try:
            wait_until(lambda: program.poll() is not None, 5, "still there")
            return True
        except TimeoutError:
            session.press("falkon", "Return")  # whether to close all tabs
    return session.end(program, 10)


def browse(session, site):
    known = site.words
    program = open_in_turn(session, [site.secret(path) for path in ("one", "two")])
    is_clean = leave(session, program)
    marks = json.loads((profile(session) / "bookmarks.json").read_text())
    page = {
        "type": "url",
        "name": f"{known.kept}bookmark",
        "url": site.kept("page"),
        "description": "",
        "keyword": "",
        "visit_count": 0,
    }
    marks["roots"]["bookmark_bar"]["children"].append(page)
    (profile(session) / "bookmarks.json").write_text(json.dumps(marks))
    ask(
        session,
        "INSERT INTO autofill (server, username, password, data, last_used) VALUES (?, ?, ?, '', 0)",
        f"{known.kept}.example",
        f"{known.kept}user",
        f"{known.kept}password",
    )
    ask(session, "INSERT INTO autofill_exceptions (server) VALUES (?)", f"{known.secret}.example")
    ask(
        session,
        "INSERT INTO search_engines (name, url, shortcut) VALUES (?, ?, '')",
        f"{known.kept}engine",
        f"http://{known.kept}.example/?q=%s",
    )
    program = open_in_turn(session, [site.secret("three"), site.kept("page")])
    return leave(session, program) and is_clean


def look(session, site):
    kept = site.words.kept
    before = visits(session)
    program = open_in_turn(session, [site.kept("again")])
    leave(session, program)
    marks = (profile(session) / "bookmarks.json").read_text()
    return {
        "bookmark": f"{kept}bookmark" in marks and site.kept("page") in marks.replace("\\/", "/"),
        "password": ask(session, "SELECT password FROM autofill") == [(f"{kept}password",)],
        "search engine": (f"{kept}engine",) in ask(session, "SELECT name FROM search_engines"),
        "no visits": before == 0,
        "history goes on": visits(session) > 0,
    }
