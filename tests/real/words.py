# SPDX-License-Identifier: MIT
"""Words that nothing else writes, and the search for them in whatever a program makes of them."""

import base64
import os
import random
import sqlite3
import string
import struct

import lz4.block
import snappy


class Words:
    """What may not be found afterwards begins with `secret`, what must be, with `kept`."""

    def __init__(self, seed=None):
        letters = random.Random(seed)
        made = ["".join(letters.choices(string.ascii_lowercase, k=12)) for _ in range(2)]
        # A name of a host begins with a letter, and may end up in capitals nowhere.
        self.secret, self.kept = f"zq{made[0]}", f"yk{made[1]}"


def forms_of(word):
    """The bytes that a word may have become."""
    plain = word.encode()
    yield plain
    yield word.encode("utf-16-le")
    yield word.encode("utf-16-be")
    yield plain[::-1]  # hosts from their end
    for text in (plain, word.encode("utf-16-le")):
        for before in range(3):
            # Whatever stands around it changes the outer letters only.
            yield base64.b64encode(b"\0" * before + text)[4 if before else 0 : -4].rstrip(b"=")


def varint(data, at):
    value = shift = 0
    while True:
        byte = data[at]
        at += 1
        value |= (byte & 0x7F) << shift
        if byte < 0x80:
            return value, at
        shift += 7


def blocks_of_leveldb(data):
    """The blocks of a table file, as its index names them."""
    if len(data) < 48 or data[-8:] != struct.pack("<Q", 0xDB4775248B80FB57):
        return
    footer, at = data[-48:], 0
    for _ in range(2):
        _, at = varint(footer, at)
    # The second handle is the index's.
    _, at = varint(footer, 0)
    _, at = varint(footer, at)
    start, at = varint(footer, at)
    size, _ = varint(footer, at)
    index = block_of_leveldb(data, start, size)
    yield index
    end, at = len(index) - 4 - 4 * struct.unpack("<I", index[-4:])[0], 0
    while at < end:
        _, at = varint(index, at)
        unshared, at = varint(index, at)
        length, at = varint(index, at)
        start, handle = varint(index, at + unshared)
        size, _ = varint(index, handle)
        at += unshared + length
        yield block_of_leveldb(data, start, size)


def block_of_leveldb(data, start, size):
    block = data[start : start + size]
    return snappy.decompress(block) if data[start + size] == 1 else block


def blobs_of_sqlite(path):
    """Values that are packed, in Firefox's site data for example."""
    database = sqlite3.connect(f"file:{path}?mode=ro&immutable=1", uri=True)
    try:
        for (table,) in database.execute(
            "SELECT name FROM sqlite_master WHERE type='table'"
        ).fetchall():
            for row in database.execute(f'SELECT * FROM "{table}"'):
                yield from (value for value in row if isinstance(value, bytes))
    except sqlite3.Error:
        return  # a part that only the application can read, or no database at all
    finally:
        database.close()


def unpacked(path, data):
    """What is in a file behind the packings that browsers use."""
    if data.startswith(b"mozLz40\0"):
        yield lz4.block.decompress(data[8:])
    if data.startswith(b"SQLite format 3\0"):
        for blob in blobs_of_sqlite(path):
            try:
                yield snappy.decompress(blob)
            except Exception:  # not packed so
                continue
    if path.endswith((".ldb", ".sst")):
        yield from blocks_of_leveldb(data)


def has(data, word):
    return any(form in data for form in forms_of(word))


def find(root, word):
    """The paths below `root` that have the word in their name or in what they hold."""
    found = []
    for folder, folders, files in os.walk(root):
        for name in folders:
            if word in name:
                found.append(os.path.join(folder, name))
        for name in files:
            path = os.path.join(folder, name)
            if os.path.islink(path) or not os.path.isfile(path):
                continue
            with open(path, "rb") as file:
                data = file.read()
            parts = [name.encode("utf-8", "surrogateescape"), data, *unpacked(path, data)]
            if any(has(part, word) for part in parts):
                found.append(path)
    return sorted(os.path.relpath(path, root) for path in found)


def checks_of(root):
    """What the integrity check of each database below `root` answers."""
    for folder, _, files in os.walk(root):
        for name in files:
            path = os.path.join(folder, name)
            if os.path.islink(path) or not os.path.isfile(path):
                continue
            with open(path, "rb") as file:
                if file.read(16) != b"SQLite format 3\0":
                    continue
            database = sqlite3.connect(f"file:{path}?mode=ro", uri=True)
            try:
                yield path, database.execute("PRAGMA integrity_check").fetchone()[0]
            except sqlite3.Error as error:
                # Tables that only the application itself can read are no damage.
                yield path, "ok" if "no such" in str(error) or "unknown" in str(error) else str(
                    error
                )
            finally:
                database.close()
