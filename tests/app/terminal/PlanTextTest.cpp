// SPDX-License-Identifier: MIT
#include "app/terminal/PlanText.h"

#include <gtest/gtest.h>

#include <sstream>

#include "app/terminal/EscapedText.h"
#include "app/terminal/TestTerminal.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

using Action = PlanItem::Action;
using Kind = PlanNote::Kind;
using Reason = PlanSkip::Reason;

/// A plan with everything in it, in the home folder `home`.
Plan fullPlan(const std::string& home) {
    Plan plan;
    plan.items = {{.path = home + "/.cache/mozilla/firefox/qxk2v9ab.default-release/cache2",
                   .application = "firefox",
                   .trace = "cache",
                   .files = 812,
                   .folders = 3,
                   .bytes = 1288490188},
                  {.path = home + "/.mozilla/firefox/qxk2v9ab.default-release/places.sqlite",
                   .action = Action::clean,
                   .application = "firefox",
                   .trace = "history",
                   .rows = 120},
                  {.path = home + "/Documents/letter.txt",
                   .files = 1,
                   .bytes = 812,
                   .notes = {{.kind = Kind::hardLink,
                              .path = home + "/Documents/letter.txt",
                              .names = {home + "/Documents/letter.txt"},
                              .links = 3}}},
                  {.path = home + "/.cache/chromium/Default/Cache",
                   .application = "chromium",
                   .trace = "cache",
                   .files = 1,
                   .folders = 1,
                   .bytes = 51200,
                   .notes = {{.kind = Kind::open,
                              .path = home + "/.cache/chromium/Default/Cache/data_0",
                              .detail = "chrome (4711)"},
                             {.kind = Kind::medium,
                              .path = home + "/.cache/chromium/Default/Cache",
                              .detail = "a flash drive writes elsewhere"}},
                   .moreNotes = 1},
                  {.path = home + "/.cache/mozilla/firefox/qxk2v9ab.default-release/startupCache",
                   .application = "firefox",
                   .trace = "cache",
                   .folders = 1},
                  {.path = "/srv/old",
                   .files = 9,
                   .folders = 2,
                   .bytes = 90000,
                   .notes = {{.kind = Kind::link, .path = "/srv/old/a", .target = home + "/b"},
                             {.kind = Kind::link,
                              .path = "/srv/old/a-folder-with-a-long-name/current",
                              .target = "/srv/archive/of-the-year/2025/december"},
                             {.kind = Kind::shared, .path = "/srv/old/image"},
                             {.kind = Kind::unreadable,
                              .path = "/srv/old/closed",
                              .detail = "Permission denied"}}},
                  {.path = home + "/.config/chromium/Default/Preferences",
                   .action = Action::clean,
                   .application = "chromium",
                   .trace = "history",
                   .rows = 1,
                   .keys = 2},
                  {.path = home + "/.local/share/recently-used.xbel",
                   .action = Action::mention,
                   .entries = 4},
                  {.path = home + "/.cache/thumbnails/large/0f1e2d3c4b5a69788796a5b4c3d2e1f0.png",
                   .action = Action::mention,
                   .files = 1,
                   .bytes = 20480}};
    plan.skipped = {{.application = "thunderbird", .reason = Reason::running},
                    {.path = home + "/Documents/usb", .reason = Reason::mount},
                    {.path = home + "/.mozilla/firefox/qxk2v9ab.default-release/cookies.sqlite",
                     .application = "firefox",
                     .reason = Reason::locked,
                     .detail = "firefox-bin (99)"}};
    return plan;
}

std::string told(const Plan& plan, TestTerminal& console, int columns) {
    terminal::tellPlan(plan, console.terminal, columns);
    return console.out.str();
}

std::string toldAt(int columns, const Plan& plan) {
    TestTerminal console(columns);
    return told(plan, console, columns);
}

TEST(PlanTextTest, APlanOnEightyColumns) {
    const TemporaryHome home;
    EXPECT_EQ(toldAt(80, fullPlan(home.path())), R"(Shred
      812 bytes     1 file  ~/Documents/letter.txt
       87.9 KiB    9 files  /srv/old

Shred firefox: cache
        1.2 GiB  812 files  ~/.cache/mozilla/firefox/...b.default-release/cache2
        0 bytes   1 folder  ~/.cache/mozilla/firefox/...ult-release/startupCache

Clean firefox: history
       120 rows             ~/.mozilla/firefox/qxk2v9...lt-release/places.sqlite

Shred chromium: cache
       50.0 KiB     1 file  ~/.cache/chromium/Default/Cache

Clean chromium: history
  1 row, 2 keys             ~/.config/chromium/Default/Preferences

Remembered by the desktop
     4 mentions             ~/.local/share/recently-used.xbel
       20.0 KiB     1 file  ~/.cache/thumbnails/large...69788796a5b4c3d2e1f0.png

Passed over
  thunderbird: is running
  ~/Documents/usb: another file system is mounted there
  ~/.mozilla/firefox/qxk2v9ab.default-release/cookies.sqlite
    another program has locked it: firefox-bin (99)

6 items, 824 files, 1.2 GiB would be shredded; 121 rows and 2 keys cleaned; 4
mentions removed

Links that lead to what would be overwritten too:
  /srv/old/a -> ~/b
  /srv/old/a-folder-with-a-long-name/current
    -> /srv/archive/of-the-year/2025/december

Files with several names, all of which would show what is written:
  ~/Documents/letter.txt: 3 names, 1 of them here

Old contents may survive on the medium:
  ~/.cache/chromium/Default/Cache: a flash drive writes elsewhere

Shared with a snapshot or a copy, which keeps the old contents:
  /srv/old/image

Cannot be looked into, or not be overwritten:
  /srv/old/closed: Permission denied

Open in another program:
  ~/.cache/chromium/Default/Cache/data_0: chrome (4711)

1 more note not shown
)");
}

TEST(PlanTextTest, APlanOnFortyColumns) {
    const TemporaryHome home;
    EXPECT_EQ(toldAt(40, fullPlan(home.path())), R"(Shred
      812 bytes  ~/Documents/letter.txt
       87.9 KiB  /srv/old

Shred firefox: cache
        1.2 GiB  ~/.cache/m...ase/cache2
        0 bytes  ~/.cache/m...artupCache

Clean firefox: history
       120 rows  ~/.mozilla...ces.sqlite

Shred chromium: cache
       50.0 KiB  ~/.cache/c...ault/Cache

Clean chromium: history
  1 row, 2 keys  ~/.config/...references

Remembered by the desktop
     4 mentions  ~/.local/s...-used.xbel
       20.0 KiB  ~/.cache/t...d2e1f0.png

Passed over
  thunderbird: is running
  ~/Documents/usb
    another file system is mounted there
  ~/.mozilla/firefox...se/cookies.sqlite
    another program has locked it:
    firefox-bin (99)

6 items, 824 files, 1.2 GiB would be
shredded; 121 rows and 2 keys cleaned; 4
mentions removed

Links that lead to what would be
overwritten too:
  /srv/old/a -> ~/b
  /srv/old/a-folder-...long-name/current
    -> /srv/archive/o...ar/2025/december

Files with several names, all of which
would show what is written:
  ~/Documents/letter.txt
    3 names, 1 of them here

Old contents may survive on the medium:
  ~/.cache/chromium/Default/Cache
    a flash drive writes elsewhere

Shared with a snapshot or a copy, which
keeps the old contents:
  /srv/old/image

Cannot be looked into, or not be
overwritten:
  /srv/old/closed: Permission denied

Open in another program:
  ~/.cache/chromium/Default/Cache/data_0
    chrome (4711)

1 more note not shown
)");
}

TEST(PlanTextTest, AnUnknownWidthIsEighty) {
    const TemporaryHome home;
    EXPECT_EQ(toldAt(0, fullPlan(home.path())), toldAt(80, fullPlan(home.path())));
}

TEST(PlanTextTest, NoLineIsWiderThanTheTerminal) {
    const TemporaryHome home;
    Plan plan = fullPlan(home.path());
    const std::string longName = "/srv/" + std::string(300, 'x') + "\x1b日本";
    plan.items.push_back({.path = longName,
                          .application = std::string(90, 'a'),
                          .trace = "cache",
                          .files = 1234567,
                          .bytes = 1'000'000'000,
                          .notes = {{.kind = Kind::link, .path = longName, .target = longName},
                                    {.kind = Kind::open, .path = longName, .detail = longName}}});
    plan.skipped.push_back({.path = longName, .detail = longName});
    for (int columns = 20; columns <= 120; ++columns) {
        std::istringstream text(toldAt(columns, plan));
        for (std::string line; std::getline(text, line);) {
            ASSERT_LE(terminal::displayWidth(line), columns) << line;
        }
    }
}

TEST(PlanTextTest, AScriptGetsPathsWholeAndAsTheyAre) {
    TestTerminal console;
    const std::string path = "/srv/" + std::string(100, 'x') + "\xE9\x1b[1m";
    const Plan plan = {.items = {{.path = path, .files = 1, .bytes = 5}}, .skipped = {}};
    EXPECT_EQ(told(plan, console, 40), "Shred\n  5 bytes  1 file  " + path +
                                           "\n\n1 item, 1 file, 5 bytes would be shredded\n");
}

TEST(PlanTextTest, APersonGetsPathsThatMoveNoCursor) {
    const Plan plan = {.items = {{.path = "/srv/a\x1b[1m\n\xE9", .files = 1}},
                       .skipped = {{.path = "/b\r", .reason = Reason::corrupt}}};
    const std::string text = toldAt(80, plan);
    EXPECT_NE(text.find("  /srv/a\\x1b[1m\\n\\xe9\n"), std::string::npos) << text;
    EXPECT_NE(text.find("  /b\\r: is damaged\n"), std::string::npos) << text;
}

TEST(PlanTextTest, OfManyNotesTheFirstAreShownAndTheOthersCounted) {
    Plan plan;
    plan.items = {{.path = "/a", .files = 32}};
    for (int i = 1; i <= 32; ++i) {
        plan.items[0].notes.push_back(
            {.kind = Kind::shared, .path = "/a/" + std::to_string(i) + "."});
    }
    const std::string text = toldAt(80, plan);
    EXPECT_NE(text.find("\n  /a/20.\n  and 12 more\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("/a/21."), std::string::npos) << text;
}

TEST(PlanTextTest, EachReasonIsGivenInWords) {
    Plan plan;
    for (const Reason reason : {Reason::running, Reason::mount, Reason::unreadable, Reason::locked,
                                Reason::corrupt, Reason::insecure}) {
        plan.skipped.push_back({.path = "/a", .reason = reason});
    }
    EXPECT_EQ(toldAt(80, plan),
              "Passed over\n"
              "  /a: is running\n"
              "  /a: another file system is mounted there\n"
              "  /a: cannot be looked into\n"
              "  /a: another program has locked it\n"
              "  /a: is damaged\n"
              "  /a: others can write there\n"
              "\n"
              "nothing would be shredded\n");
}

TEST(PlanTextTest, AnEmptyPlanIsOneLine) {
    EXPECT_EQ(toldAt(80, {}), "nothing would be shredded\n");
}

}  // namespace
}  // namespace dorvanel::test
