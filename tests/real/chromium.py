# SPDX-License-Identifier: MIT
"""Chromium, by its own remote protocol over two pipes."""

import json
import os
import select
import sqlite3
import time

from session import wait_until

PACKAGE, PROGRAM, ID = "chromium", "chromium", "chromium"
BY_AUTOMATION = (
    "bookmark, password and choice for a site by automation, in its own pages; form typed and sent"
)


class Chromium:
    def __init__(self, session):
        self.session = session
        there, self.writing = os.pipe()
        self.reading, back = os.pipe()
        # It reads from descriptor 3 and writes to 4, whatever the pipes' own numbers are.
        command = f'exec {PROGRAM} "$@" 3<&{there} 4>&{back}'
        arguments = [
            "--no-sandbox",
            "--remote-debugging-pipe",
            "--no-first-run",
            "--password-store=basic",
        ]
        arguments += ["--disable-gpu", "about:blank"]
        self.process = session.start(
            ["sh", "-c", command, "sh", *arguments], pass_fds=[there, back]
        )
        os.close(there)
        os.close(back)
        self.buffer, self.number = b"", 0
        wait_until(lambda: self.pages(), 40, "no page was opened")
        self.target = self.attach(self.pages()[0])

    def pages(self):
        found = self.send("Target.getTargets")["targetInfos"]
        return [target["targetId"] for target in found if target["type"] == "page"]

    def attach(self, target):
        return self.send("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]

    def receive(self, seconds=40):
        end = time.monotonic() + seconds
        while b"\0" not in self.buffer:
            ready, _, _ = select.select([self.reading], [], [], max(0, end - time.monotonic()))
            data = os.read(self.reading, 65536) if ready else b""
            if not data:
                raise ConnectionError("Chromium does not answer")
            self.buffer += data
        message, _, self.buffer = self.buffer.partition(b"\0")
        return json.loads(message)

    def send(self, method, within=None, **parameters):
        self.number += 1
        message = {"id": self.number, "method": method, "params": parameters}
        if within:
            message["sessionId"] = within
        os.write(self.writing, json.dumps(message).encode() + b"\0")
        while (answer := self.receive()).get("id") != self.number:
            pass
        if "error" in answer:
            raise RuntimeError(f"{method}: {answer['error']}")
        return answer["result"]

    def inside(self, script):
        result = self.send(
            "Runtime.evaluate",
            self.target,
            expression=script,
            awaitPromise=True,
            returnByValue=True,
        )
        if "exceptionDetails" in result:
            raise RuntimeError(f"{script}: {result['exceptionDetails']}")
        return result["result"].get("value")

    def visit(self, address):
        self.send("Page.navigate", self.target, url=address)
        script = (
            f'location.href.startsWith({json.dumps(address)}) && document.readyState == "complete"'
        )
        wait_until(lambda: self.inside(script), 20, f"{address} was not opened")

    def press(self, key, code):
        for kind in ("keyDown", "keyUp"):
            self.send(
                "Input.dispatchKeyEvent",
                self.target,
                type=kind,
                key=key,
                code=key,
                windowsVirtualKeyCode=code,
                text="\r" if key == "Enter" and kind == "keyDown" else "",
            )

    def quit(self):
        self.send("Browser.close")
        ended = self.session.end(self.process, 30)
        os.close(self.reading)
        os.close(self.writing)
        return ended


ADD = """new Promise(done => chrome.bookmarks.create(
  {parentId: "1", title: "%(kept)sbookmark", url: "%(page)s"}, done))"""
SAVE = """new Promise(done => chrome.passwordsPrivate.addPassword({url: "http://%(kept)s.example/",
  username: "%(kept)suser", password: "%(kept)spassword", note: "", useAccountStore: false}, done))"""
# As the page of settings does it.
CHOOSE = (
    'chrome.send("setCategoryPermissionForPattern", ["%(secret)s", "", "images", "block", false])'
)


def type_and_send(program, word):
    program.inside('document.getElementById("field").focus()')
    program.send("Input.insertText", program.target, text=f"{word}typed")
    program.press("Enter", 13)
    wait_until(
        lambda: program.inside(f'location.href.includes("{word}sent")'), 20, "no form was sent"
    )


def browse(session, site):
    known = site.words
    program = Chromium(session)
    for path in ("one", "two"):
        program.visit(site.secret(path))
    type_and_send(program, known.secret)
    program.visit(site.kept("page"))
    folder = str(session.home / "Downloads")
    program.send("Browser.setDownloadBehavior", behavior="allow", downloadPath=folder)
    program.inside('document.getElementById("file").click()')
    program.visit("chrome://bookmarks/")
    program.inside(ADD % {"kept": known.kept, "page": site.kept("page")})
    program.visit("chrome://password-manager/passwords")
    program.inside(SAVE % {"kept": known.kept})
    program.visit("chrome://settings/content/images")
    program.inside(CHOOSE % {"secret": site.secret().rsplit("/", 1)[0]})
    program.visit(site.secret("three"))
    program.inside('document.getElementById("file").click()')
    time.sleep(12)  # it writes what it keeps of sites some seconds later
    is_clean = program.quit()
    settings = (session.home / ".config/chromium/Default/Preferences").read_text()
    if known.secret not in json.dumps(
        json.loads(settings)["profile"]["content_settings"]["exceptions"]["images"]
    ):
        raise RuntimeError("the choice for a site was not kept")
    return is_clean


def row_of(home, database, query):
    path = home / ".config/chromium/Default" / database
    connection = sqlite3.connect(f"file:{path}?mode=ro", uri=True)
    try:
        return connection.execute(query).fetchone()[0]
    finally:
        connection.close()


def look(session, site):
    kept = site.words.kept
    visits = row_of(session.home, "History", "SELECT count(*) FROM visits")
    program = Chromium(session)
    program.visit("chrome://bookmarks/")
    found = program.inside(f'new Promise(done => chrome.bookmarks.search("{kept}bookmark", done))')
    program.visit("chrome://password-manager/passwords")
    script = "new Promise(done => chrome.passwordsPrivate.getCredentialGroups(done))"
    saved = json.dumps(program.inside(script))
    program.visit(site.kept("again"))
    is_clean = program.quit()
    return {
        "bookmark": [mark["url"] for mark in found] == [site.kept("page")],
        "password": f"{kept}user" in saved,
        "search engines": row_of(session.home, "Web Data", "SELECT count(*) FROM keywords") > 0,
        "no visits": visits == 0,
        "history goes on": row_of(session.home, "History", "SELECT count(*) FROM visits") > 0,
        "quits by itself": is_clean,
    }
