# SPDX-License-Identifier: MIT
"""Thunderbird, by its own remote protocol; mails are put into its mailboxes while it is closed."""

from marionette import Marionette
from session import wait_until

PACKAGE, PROGRAM, ID = "thunderbird", "thunderbird", "thunderbird"
BY_AUTOMATION = (
    "contacts, password, typed text and page in a tab by automation; "
    "mails written into closed mailboxes"
)

FOLDERS = ["Inbox", "Trash", "Junk"]
MAIL = """From - Tue Nov 10 10:00:00 2026
X-Mozilla-Status: 0001
X-Mozilla-Status2: 00000000
From: {word}sender <{word}@a.example>
To: {word}receiver <{word}@b.example>
Subject: {word}title mail
Date: Tue, 10 Nov 2026 10:00:00 +0000
Message-ID: <{word}@id.example>
Content-Type: text/plain

{word}body of a mail

"""

FILL = """
const [secret, kept, page] = args;
const {FormHistory} = ChromeUtils.importESModule("resource://gre/modules/FormHistory.sys.mjs");
const {MailServices} = ChromeUtils.importESModule("resource:///modules/MailServices.sys.mjs");
try { MailServices.accounts.localFoldersServer; }
catch { MailServices.accounts.createLocalMailAccount(); }
const local = MailServices.accounts.localFoldersServer;
for (const [book, word] of [["abook", kept], ["history", secret]]) {
  const card = Cc["@mozilla.org/addressbook/cardproperty;1"].createInstance(Ci.nsIAbCard);
  card.displayName = word + "contact";
  card.primaryEmail = word + "@contact.example";
  MailServices.ab.getDirectory("jsaddrbook://" + book + ".sqlite").addCard(card);
}
const login = Cc["@mozilla.org/login-manager/loginInfo;1"].createInstance(Ci.nsILoginInfo);
login.init("imap://" + kept + ".example", null, "imap://" + kept + ".example", kept + "user",
  kept + "password", "", "");
await Services.logins.addLoginAsync(login);
await FormHistory.update({op: "add", fieldname: secret + "field", value: secret + "typed"});
Services.prefs.setStringPref("mailnews.start_page.url", "http://" + kept + "start.example/");
const tabs = Services.wm.getMostRecentWindow("mail:3pane").document.getElementById("tabmail");
const tab = tabs.openTab("contentTab", {url: page});
for (let i = 0; i < 100 && tab.browser.contentTitle != secret + "titleone"; ++i) {
  await new Promise(done => Services.wm.getMostRecentWindow("mail:3pane").setTimeout(done, 100));
}
if (tab.browser.contentTitle != secret + "titleone") throw Error(tab.browser.contentTitle);
return local.localPath.path;
"""

# Whoever opens a folder has its index made, which takes its time.
OPEN = """
const {MailServices} = ChromeUtils.importESModule("resource:///modules/MailServices.sys.mjs");
const root = MailServices.accounts.localFoldersServer.rootFolder;
const subjects = {};
for (const name of args) {
  const folder = root.getChildNamed(name);
  subjects[name] = null;
  try {
    folder.QueryInterface(Ci.nsIMsgLocalMailFolder).getDatabaseWithReparse(null, null);
    subjects[name] = [...folder.messages].map(message => message.subject);
  } catch {}
}
return subjects;
"""

LOOK = """
const [kept] = args;
const {MailServices} = ChromeUtils.importESModule("resource:///modules/MailServices.sys.mjs");
const logins = await Services.logins.searchLoginsAsync({origin: "imap://" + kept + ".example"});
const cards = book => MailServices.ab.getDirectory("jsaddrbook://" + book + ".sqlite").childCards;
return {
  contact: cards("abook").some(card => card.displayName == kept + "contact"),
  "no collected addresses": cards("history").length == 0,
  password: logins.length == 1 && logins[0].password == kept + "password",
  setting: Services.prefs.getStringPref("mailnews.start_page.url").includes(kept),
};
"""


def subjects(program):
    """Of the mails in each folder, once all of them have been read."""

    def read():
        found = program.inside(OPEN, *FOLDERS)
        return None if None in found.values() else found

    return wait_until(read, 30, "the folders were not read")


def browse(session, site):
    words = site.words
    program = Marionette(session, PROGRAM)
    wait_until(
        lambda: program.inside('return !!Services.wm.getMostRecentWindow("mail:3pane")'),
        30,
        "no window",
    )
    folder = program.inside(FILL, words.secret, words.kept, site.secret("one"))
    is_clean = program.quit()
    for mailbox, word in (("Inbox", words.kept), ("Trash", words.secret), ("Junk", words.secret)):
        with open(f"{folder}/{mailbox}", "w", encoding="ascii") as file:
            file.write(MAIL.format(word=word))
    program = Marionette(session, PROGRAM)
    mails = subjects(program)
    if mails["Trash"] != [f"{words.secret}title mail"] or mails["Junk"] != mails["Trash"]:
        raise RuntimeError(f"not the mails that were put there: {mails}")
    return program.quit() and is_clean


def look(session, site):
    kept = site.words.kept
    program = Marionette(session, PROGRAM)
    found = program.inside(LOOK, kept)
    mails = subjects(program)
    found["mail in the inbox"] = mails["Inbox"] == [f"{kept}title mail"]
    found["empty trash"] = mails["Trash"] == []
    found["empty junk"] = mails["Junk"] == []
    program.quit()
    inbox = next(session.home.glob(".thunderbird/*/Mail/Local Folders/Inbox")).read_text()
    found["body of the mail"] = f"{kept}body of a mail" in inbox
    return found
