# SPDX-License-Identifier: MIT
"""count_kept.py HOME: counts what people keep in the profiles of a sample home."""

import json
import pathlib
import sqlite3
import sys


def number(database, query):
    connection = sqlite3.connect(f"{database.as_uri()}?mode=ro", uri=True)
    try:
        return connection.execute(query).fetchone()[0]
    finally:
        connection.close()


def main():
    home = pathlib.Path(sys.argv[1]).resolve()
    firefox = home / ".config/mozilla/firefox/k3v9q1xz.default-release"
    chromium = [home / ".config/chromium" / name for name in ("Default", "Profile 1")]
    inbox = home / ".thunderbird/m5n7p9r1.default-release/Mail/pop.example.org/Inbox"

    bookmarks = number(firefox / "places.sqlite", "SELECT count(*) FROM moz_bookmarks b JOIN "
                       "moz_places p ON p.id=b.fk WHERE p.url LIKE 'https://kept.%'")
    passwords = len(json.loads((firefox / "logins.json").read_text())["logins"])
    told = [f"Firefox {bookmarks} bookmarks, {passwords} passwords"]
    trees = [json.loads((profile / "Bookmarks").read_text()) for profile in chromium]
    bookmarks = sum(len(tree["roots"]["bookmark_bar"]["children"]) for tree in trees)
    passwords = sum(number(p / "Login Data", "SELECT count(*) FROM logins") for p in chromium)
    told.append(f"Chromium {bookmarks} bookmarks, {passwords} passwords")
    mails = sum(line.startswith("From - ") for line in inbox.read_text().splitlines())
    told.append(f"Thunderbird {mails} mails in the inbox")
    print("; ".join(told))


if __name__ == "__main__":
    main()
