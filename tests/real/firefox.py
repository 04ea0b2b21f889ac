# SPDX-License-Identifier: MIT
"""Firefox ESR, by its own remote protocol."""

from marionette import Marionette
from session import wait_until

PACKAGE, PROGRAM, ID = "firefox-esr", "firefox-esr", "firefox"
BY_AUTOMATION = "bookmark, keyword, tag, password, form history and permission by automation"

FILL = """
const [secret, kept, secretPage, keptPage, file] = args;
const {FormHistory} = ChromeUtils.importESModule("resource://gre/modules/FormHistory.sys.mjs");
const {PlacesUtils} = ChromeUtils.importESModule("resource://gre/modules/PlacesUtils.sys.mjs");
const {Downloads} = ChromeUtils.importESModule("resource://gre/modules/Downloads.sys.mjs");
const mark = await PlacesUtils.bookmarks.insert(
  {parentGuid: PlacesUtils.bookmarks.menuGuid, title: kept + "bookmark", url: keptPage});
await PlacesUtils.keywords.insert({keyword: kept + "word", url: keptPage});
PlacesUtils.tagging.tagURI(Services.io.newURI(keptPage), [kept + "tag"]);
const login = Cc["@mozilla.org/login-manager/loginInfo;1"].createInstance(Ci.nsILoginInfo);
login.init("http://" + kept + ".example", "http://" + kept + ".example", null, kept + "user",
  kept + "password", "", "");
await Services.logins.addLoginAsync(login);
await FormHistory.update({op: "add", fieldname: secret + "field", value: secret + "typed"});
const principal = Services.scriptSecurityManager.createContentPrincipal(
  Services.io.newURI(secretPage), {});
Services.perms.addFromPrincipal(principal, "camera", Services.perms.ALLOW_ACTION);
Services.prefs.setStringPref("browser.startup.homepage", "http://" + kept + "home.example/");
const download = await Downloads.createDownload({source: file,
  target: Services.dirsvc.get("Home", Ci.nsIFile).path + "/" + kept + "-download.bin"});
await (await Downloads.getList(Downloads.ALL)).add(download);
await download.start();
"""

LOOK = """
const [kept, keptPage] = args;
const {PlacesUtils} = ChromeUtils.importESModule("resource://gre/modules/PlacesUtils.sys.mjs");
const mark = await PlacesUtils.bookmarks.fetch({url: keptPage});
const word = await PlacesUtils.keywords.fetch(kept + "word");
const tags = PlacesUtils.tagging.getTagsForURI(Services.io.newURI(keptPage));
const logins = await Services.logins.searchLoginsAsync({origin: "http://" + kept + ".example"});
const page = await PlacesUtils.history.fetch(keptPage, {includeVisits: true});
return {
  bookmark: mark && mark.title == kept + "bookmark",
  keyword: word && word.url.href == keptPage,
  tag: tags.includes(kept + "tag"),
  password: logins.length == 1 && logins[0].password == kept + "password",
  setting: Services.prefs.getStringPref("browser.startup.homepage").includes(kept),
  "places status": PlacesUtils.history.databaseStatus <= 1,
  "no visits": !page || page.visits.length == 0,
};
"""

VISITS = """
const {PlacesUtils} = ChromeUtils.importESModule("resource://gre/modules/PlacesUtils.sys.mjs");
const database = await PlacesUtils.promiseDBConnection();
const rows = await database.execute(
  "SELECT count(*) FROM moz_historyvisits WHERE visit_type=7 OR visit_type<7");
return rows[0].getResultByIndex(0);
"""


def browse(session, site):
    words = site.words
    program = Marionette(session, PROGRAM)
    for path in ("one", "two"):
        program.visit(site.secret(path))
    program.visit(site.kept("page"))
    program.inside(
        FILL, words.secret, words.kept, site.secret("one"), site.kept("page"), site.secret("f.bin")
    )
    program.visit(site.secret("three"))
    wait_until(lambda: program.inside(VISITS) >= 5, 30, "visits were not kept")
    return program.quit()


def look(session, site):
    """What there is of what should be."""
    program = Marionette(session, PROGRAM)
    found = program.inside(LOOK, site.words.kept, site.kept("page"))
    program.visit(site.kept("again"))
    found["history goes on"] = wait_until(
        lambda: program.inside(VISITS) >= 1, 30, "no visit was kept"
    )
    program.quit()
    return found
