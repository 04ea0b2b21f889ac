// SPDX-License-Identifier: MIT
#include "app/ReportDocument.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <nlohmann/json.hpp>
#include <sstream>

#include "support/Python.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

using Action = PlanItem::Action;
using Json = nlohmann::ordered_json;
using Kind = PlanNote::Kind;
using Reason = PlanSkip::Reason;

constexpr std::int64_t morning = 1795255200;  // 2026-11-21T10:00:00Z

std::string documentOf(const Plan& plan, const DocumentFrame& frame) {
    std::ostringstream out;
    writeReportDocument(plan, frame, out);
    return out.str();
}

Json parsed(const Plan& plan, const DocumentFrame& frame = {.started = morning}) {
    return Json::parse(documentOf(plan, frame));
}

Json onlyItem(const PlanItem& item, bool isVerified = false) {
    return parsed({.items = {item}, .skipped = {}},
                  {.started = morning, .ended = morning, .isVerified = isVerified})
        .at("items")
        .at(0);
}

/// Of each kind of everything at least one.
Plan fullPlan() {
    Plan plan;
    plan.items = {
        {.path = "/home/jo/.cache/mozilla/firefox/x/cache2",
         .application = "firefox",
         .trace = "cache",
         .profile = "default",
         .files = 812,
         .folders = 3,
         .bytes = 12345678,
         .notes = {{.kind = Kind::link, .path = "/home/jo/l", .target = "/srv/\xFF"},
                   {.kind = Kind::hardLink,
                    .path = "/home/jo/h",
                    .names = {"/home/jo/h", "/home/jo/\xE9"},
                    .links = 3},
                   {.kind = Kind::medium, .path = "/home/jo/m", .detail = "a solid-state disk"},
                   {.kind = Kind::shared, .path = "/home/jo/s"},
                   {.kind = Kind::unreadable, .path = "/home/jo/u", .detail = "closed"},
                   {.kind = Kind::open, .path = "/home/jo/o", .detail = "vi (1234)"}},
         .moreNotes = 4},
        {.path = "/home/jo/.mozilla/firefox/x/places.sqlite",
         .action = Action::clean,
         .application = "firefox",
         .trace = "history",
         .rows = 120},
        {.path = "/home/jo/.config/chromium/Preferences", .action = Action::clean, .keys = 2},
        {.path = "/home/jo/.cache/thumbnails/a.png",
         .action = Action::mention,
         .files = 1,
         .bytes = 99},
        {.path = "/home/jo/.local/share/recently-used.xbel",
         .action = Action::mention,
         .entries = 5},
        {.path = "/home/jo/\xE9t\xE9", .files = 1}};
    plan.skipped = {
        {.application = "chromium", .reason = Reason::running},
        {.path = "/home/jo/mnt", .reason = Reason::mount},
        {.path = "/home/jo/\x80", .application = "a", .reason = Reason::unreadable, .detail = "d"},
        {.path = "/home/jo/l", .reason = Reason::locked},
        {.path = "/home/jo/c", .reason = Reason::corrupt},
        {.path = "/home/jo/i", .reason = Reason::insecure}};
    return plan;
}

/// The same after it was carried out, with every trouble that there is.
Plan carriedOut() {
    Plan plan = fullPlan();
    for (PlanItem& item : plan.items) {
        item.outcome = ItemOutcome{
            .path = item.path,
            .overwritten = 1,
            .bytes = 2,
            .removed = 3,
            .verified = 4,
            .rows = 5,
            .left = {{.path = "/home/jo/r",
                      .operation = "open",
                      .code = EACCES,
                      .was = "/home/jo/\xC0"}},
            .unwritten = {{.path = "/u", .operation = "write", .code = EIO}},
            .unverified = {
                {.path = "/v", .operation = "read back", .reason = "not what was written"}}};
    }
    return plan;
}

TEST(ReportDocumentTest, APreviewLooksAsDocumented) {
    Plan plan;
    plan.items = {{.path = "/home/jo/.cache/mozilla/firefox/x/cache2",
                   .application = "firefox",
                   .trace = "cache",
                   .profile = "default",
                   .files = 812,
                   .folders = 3,
                   .bytes = 12345678},
                  {.path = "/home/jo/.mozilla/firefox/x/places.sqlite",
                   .action = Action::clean,
                   .application = "firefox",
                   .trace = "history",
                   .rows = 120}};
    plan.skipped = {{.application = "chromium", .reason = Reason::running}};
    EXPECT_EQ(documentOf(plan, {.started = morning}), R"({
  "version": 1,
  "program": "Dorvanel X )" DORVANEL_VERSION R"(",
  "started": "2026-11-21T10:00:00Z",
  "items": [
    {
      "path": "/home/jo/.cache/mozilla/firefox/x/cache2",
      "action": "shred",
      "application": "firefox",
      "trace": "cache",
      "profile": "default",
      "files": 812,
      "folders": 3,
      "bytes": 12345678,
      "notes": []
    },
    {
      "path": "/home/jo/.mozilla/firefox/x/places.sqlite",
      "action": "clean",
      "application": "firefox",
      "trace": "history",
      "rows": 120
    }
  ],
  "skipped": [
    {
      "application": "chromium",
      "reason": "running"
    }
  ],
  "totals": {
    "items": 2,
    "files": 812,
    "folders": 3,
    "bytes": 12345678,
    "rows": 120
  },
  "status": 0
}
)");
}

TEST(ReportDocumentTest, AnEmptyPlanHasEmptyLists) {
    const Json document = parsed({}, {.started = morning, .status = 3});
    EXPECT_EQ(document.at("items"), Json::array());
    EXPECT_EQ(document.at("skipped"), Json::array());
    EXPECT_EQ(document.at("totals").at("items"), 0);
    EXPECT_EQ(document.at("status"), 3);
    EXPECT_FALSE(document.contains("ended"));
}

TEST(ReportDocumentTest, TheEndOfARunStandsInUniversalTime) {
    const Json document = parsed({}, {.started = morning, .ended = morning + 3661, .status = 130});
    EXPECT_EQ(document.at("started"), "2026-11-21T10:00:00Z");
    EXPECT_EQ(document.at("ended"), "2026-11-21T11:01:01Z");
    EXPECT_EQ(document.at("status"), 130);
}

TEST(ReportDocumentTest, EachActionHasItsCounts) {
    const Json items = parsed(fullPlan()).at("items");
    EXPECT_EQ(items.at(0).at("more_notes"), 4);
    EXPECT_EQ(items.at(1).dump(),
              R"({"path":"/home/jo/.mozilla/firefox/x/places.sqlite","action":"clean",)"
              R"("application":"firefox","trace":"history","rows":120})");
    EXPECT_EQ(items.at(2).dump(),
              R"({"path":"/home/jo/.config/chromium/Preferences","action":"clean",)"
              R"("rows":0,"keys":2})");
    EXPECT_EQ(items.at(3).dump(),
              R"({"path":"/home/jo/.cache/thumbnails/a.png","action":"mention",)"
              R"("files":1,"bytes":99})");
    EXPECT_EQ(items.at(4).dump(),
              R"({"path":"/home/jo/.local/share/recently-used.xbel","action":"mention",)"
              R"("entries":5})");
}

TEST(ReportDocumentTest, TotalsAreTheSumsOfTheItems) {
    EXPECT_EQ(parsed(fullPlan()).at("totals").dump(),
              R"({"items":6,"files":814,"folders":3,"bytes":12345777,"rows":120,"keys":2,)"
              R"("entries":5})");
}

TEST(ReportDocumentTest, EachKindOfNoteSaysWhatItKnows) {
    const Json notes = parsed(fullPlan()).at("items").at(0).at("notes");
    EXPECT_EQ(notes.at(0).dump(), R"({"kind":"link","path":"/home/jo/l","target":"/srv/)"
                                  "\xEF\xBF\xBD"
                                  R"(","target_bytes64":"L3Nydi//"})");
    EXPECT_EQ(notes.at(1).dump(),
              R"({"kind":"hard-link","path":"/home/jo/h","names":["/home/jo/h","/home/jo/)"
              "\xEF\xBF\xBD"
              R"("],"names_bytes64":["L2hvbWUvam8vaA==","L2hvbWUvam8v6Q=="],"links":3})");
    EXPECT_EQ(notes.at(2).dump(),
              R"({"kind":"medium","path":"/home/jo/m","detail":"a solid-state disk"})");
    EXPECT_EQ(notes.at(3).dump(), R"({"kind":"shared","path":"/home/jo/s"})");
    EXPECT_EQ(notes.at(4).at("kind"), "unreadable");
    EXPECT_EQ(notes.at(5).at("kind"), "open");
    EXPECT_EQ(notes.at(5).at("detail"), "vi (1234)");
}

TEST(ReportDocumentTest, EachReasonToPassSomethingOverHasItsWord) {
    const Json skipped = parsed(fullPlan()).at("skipped");
    EXPECT_EQ(skipped.at(0).dump(), R"({"application":"chromium","reason":"running"})");
    EXPECT_EQ(skipped.at(1).dump(), R"({"path":"/home/jo/mnt","reason":"mount"})");
    EXPECT_EQ(skipped.at(2).dump(),
              R"({"path":"/home/jo/)"
              "\xEF\xBF\xBD"
              R"(","bytes64":"L2hvbWUvam8vgA==","application":"a","reason":"unreadable",)"
              R"("detail":"d"})");
    EXPECT_EQ(skipped.at(3).at("reason"), "locked");
    EXPECT_EQ(skipped.at(4).at("reason"), "corrupt");
    EXPECT_EQ(skipped.at(5).at("reason"), "insecure");
}

TEST(ReportDocumentTest, APathThatIsNotUtf8LosesNothing) {
    const auto textOf = [](const std::string& path) { return onlyItem({.path = path}).at("path"); };
    EXPECT_EQ(textOf("/\xE9t\xE9"), "/\xEF\xBF\xBDt\xEF\xBF\xBD");
    EXPECT_EQ(textOf("/a\xE6\x97"), "/a\xEF\xBF\xBD");            // a character cut short is one
    EXPECT_EQ(textOf("/\xE6\x97z"), "/\xEF\xBF\xBDz");            // whatever follows it
    EXPECT_EQ(textOf("/\x80\x80"), "/\xEF\xBF\xBD\xEF\xBF\xBD");  // bytes that begin nothing
    EXPECT_EQ(onlyItem({.path = "/\xE9"}).at("bytes64"), "L+k=");
    EXPECT_EQ(textOf("/\xC3\xA9\n\""), "/\xC3\xA9\n\"");
    EXPECT_FALSE(onlyItem({.path = "/\xC3\xA9\n\""}).contains("bytes64"));
}

TEST(ReportDocumentTest, AnOutcomeSaysWhatIsLeftAndWhereItWas) {
    const Json outcome = onlyItem(carriedOut().items.at(0)).at("outcome");
    EXPECT_EQ(outcome.at("overwritten"), 1);
    EXPECT_EQ(outcome.at("bytes"), 2);
    EXPECT_EQ(outcome.at("removed"), 3);
    EXPECT_FALSE(outcome.contains("verified"));
    EXPECT_FALSE(outcome.contains("rows"));
    EXPECT_EQ(outcome.at("left").dump(), R"([{"path":"/home/jo/r","was":"/home/jo/)"
                                         "\xEF\xBF\xBD"
                                         R"(","was_bytes64":"L2hvbWUvam8vwA==","operation":"open",)"
                                         R"("reason":"Permission denied"}])");
    EXPECT_EQ(outcome.at("unwritten").at(0).at("reason"), "Input/output error");
    EXPECT_EQ(outcome.at("unverified").at(0).at("reason"), "not what was written");
}

TEST(ReportDocumentTest, WhereSomethingDidNotMoveIsSaidOnce) {
    PlanItem item{.path = "/a", .files = 1};
    item.outcome = ItemOutcome{
        .path = "/a", .left = {{.path = "/a", .operation = "move", .code = EPERM, .was = "/a"}}};
    EXPECT_FALSE(onlyItem(item).at("outcome").at("left").at(0).contains("was"));
}

TEST(ReportDocumentTest, AnOutcomeWithoutTroubleLeavesNothing) {
    PlanItem item{.path = "/a", .files = 1};
    item.outcome = ItemOutcome{.path = "/a", .overwritten = 1, .removed = 1, .verified = 1};
    EXPECT_EQ(onlyItem(item).at("outcome").dump(),
              R"({"overwritten":1,"bytes":0,"removed":1,"left":[]})");
    EXPECT_EQ(onlyItem(item, true).at("outcome").at("verified"), 1);
}

TEST(ReportDocumentTest, WhatWasCleanedHasItsRows) {
    PlanItem item{.path = "/a", .action = Action::clean, .rows = 3};
    item.outcome = ItemOutcome{.path = "/a", .rows = 3};
    EXPECT_EQ(onlyItem(item, true).at("outcome").dump(), R"({"rows":3,"left":[]})");
    item.action = Action::mention;
    item.entries = 3;
    EXPECT_EQ(onlyItem(item, true).at("outcome").dump(), R"({"entries":3,"left":[]})");
}

TEST(ReportDocumentTest, APreviewFailsWhereSomethingIsPassedOverThatDoesNotRun) {
    Plan plan;
    EXPECT_EQ(previewStatus(plan), 0);
    plan.skipped = {{.application = "chromium", .reason = Reason::running}};
    EXPECT_EQ(previewStatus(plan), 0);
    plan.skipped.push_back({.path = "/a", .reason = Reason::locked});
    EXPECT_EQ(previewStatus(plan), 1);
}

/// Documents that are to fit the schema, and the same with a fault in each place, which must not.
constexpr const char* validation = R"(
import copy, json, jsonschema, pathlib
docs = pathlib.Path("DOCS")
schema = json.loads((docs / "report.schema.json").read_text())
jsonschema.Draft202012Validator.check_schema(schema)
validator = jsonschema.Draft202012Validator(schema)

def objects(value):
    if isinstance(value, dict):
        yield value
    if isinstance(value, (dict, list)):
        for part in value.values() if isinstance(value, dict) else value:
            yield from objects(part)

def must_fail(document, what):
    if validator.is_valid(document):
        print("fits all the same:", what)

shown = (docs / "reports.md").read_text().split("```json\n")[1].split("```")[0]
pathlib.Path("example").write_text(shown)
for name in ("preview", "report", "empty", "example"):
    document = json.loads(pathlib.Path(name).read_text())
    for error in validator.iter_errors(document):
        print(name, error.json_path, error.message)
    for i in range(len(list(objects(document)))):
        changed = copy.deepcopy(document)
        list(objects(changed))[i]["surplus"] = 1
        must_fail(changed, f"{name} with something more in object {i}")
    for key in ("version", "program", "started", "items", "skipped", "totals", "status"):
        changed = copy.deepcopy(document)
        del changed[key]
        must_fail(changed, f"{name} without {key}")

report = json.loads(pathlib.Path("report").read_text())
for i, item in enumerate(report["items"]):
    for key in ("path", "action", "left"):
        changed = copy.deepcopy(report)
        del (changed["items"][i]["outcome"] if key == "left" else changed["items"][i])[key]
        must_fail(changed, f"item {i} without {key}")
del report["ended"]
must_fail(report, "outcomes in a preview")
)";

TEST(ReportDocumentTest, EveryDocumentFitsTheSchemaAndNothingElseDoes) {
    const TemporaryFolder folder;
    writeFile(folder / "preview", documentOf(fullPlan(), {.started = morning, .status = 1}));
    writeFile(folder / "report",
              documentOf(carriedOut(),
                         {.started = morning, .ended = morning, .status = 1, .isVerified = true}));
    writeFile(folder / "empty", documentOf({}, {.started = morning, .status = 4}));
    std::string program = validation;
    program.replace(program.find("DOCS"), 4, DORVANEL_DOCS);
    EXPECT_EQ(python(folder.path(), program), "");
}

}  // namespace
}  // namespace dorvanel::test
