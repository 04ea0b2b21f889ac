// SPDX-License-Identifier: MIT
#include <sys/stat.h>

#include <filesystem>

#include "targets/cleaning/CleaningTest.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using cleaning::Fault;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class FileCleaningTest : public CleaningTest {
  protected:
    static std::vector<cleaning::JsonStep> steps(const std::vector<std::string>& remove) {
        return {{"history", remove}};
    }
    /// What becomes of this text without these keys.
    std::string without(const std::string& text, const std::vector<std::string>& remove) {
        writeFile(path, text);
        auto prepared = cleaner.prepareJson(path, steps(remove));
        if (!prepared) return told(prepared);
        if (prepared.value() == nullptr) return "nothing to remove";
        EXPECT_EQ(commit(prepared), "");
        return readFile(path);
    }
};

TEST_F(FileCleaningTest, KeysGoAndTheRestStaysInItsOrder) {
    EXPECT_EQ(without(R"({ "z": 1, "a": {"b": {"Zqxtrace": [1]}, "c": 2}, "Zqx": null })",
                      {"a.b", "Zqx", "z.none", "a.none.x"}),
              R"({"z":1,"a":{"c":2}})");
    EXPECT_THAT(holding(folder.path(), "Zqx"), IsEmpty());
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("places.sqlite"));
}

TEST_F(FileCleaningTest, ValuesStayWhatTheyAre) {
    const std::string values =
        R"([18446744073709551615,-9223372036854775808,0.1,1.5e-300,-0.0,true,null,"\u0000\"\\é€𝄞",{},[]])";
    EXPECT_EQ(without(R"({"x":1,"k":)" + values + "}", {"x"}), R"({"k":)" + values + "}");
}

TEST_F(FileCleaningTest, KeysAreCountedByStepAndCountingTouchesNothing) {
    writeFile(path, R"({"a":{"b":1,"c":2},"d":3})");
    const std::vector<cleaning::JsonStep> both{{"history", {"a.b", "a.c", "a.x"}},
                                               {"downloads", {"d", "d"}}};
    const std::string before = printOf(folder.path());
    const auto counted = cleaner.countKeys(path, both);
    ASSERT_TRUE(counted.ok());
    EXPECT_THAT(counted.value(), ElementsAre(2, 1));
    EXPECT_EQ(printOf(folder.path()), before);
    auto prepared = cleaner.prepareJson(path, both);
    ASSERT_TRUE(prepared.ok());
    EXPECT_THAT(prepared.value()->counts(), ElementsAre(2, 1));
}

TEST_F(FileCleaningTest, WithoutSuchKeysNothingIsPrepared) {
    EXPECT_EQ(without(R"({"a":[{"b":1}]})", {"b", "a.b", "a.0", ""}), "nothing to remove");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("places.sqlite"));
}

TEST_F(FileCleaningTest, WhatIsNotJsonIsLeftAsItIs) {
    for (const std::string text : {"", "{", "{\"a\":1,}", "{\"a\":1} {}", "{\"a\":\"\xff\"}",
                                   "{\"a\":\"\xc3\"}", "{\"a\":1e999}", "{\"a\":NaN}"}) {
        writeFile(path, text);
        auto prepared = cleaner.prepareJson(path, steps({"a"}));
        ASSERT_FALSE(prepared.ok()) << text;
        EXPECT_EQ(prepared.trouble().fault, Fault::corrupt) << text;
        EXPECT_EQ(readFile(path), text);
    }
    EXPECT_THAT(without(R"({"a":1,"b":123456789012345678901234567890})", {"a"}),
                HasSubstr("too many digits"));
    std::string deep = R"({"a":1,"b":)";
    deep += std::string(1'000'000, '[') + std::string(1'000'000, ']') + "}";
    EXPECT_THAT(without(deep, {"a"}), HasSubstr("nested too deep"));
    fs::resize_file(path, 65U * 1024 * 1024);
    EXPECT_THAT(told(cleaner.prepareJson(path, steps({"a"}))), HasSubstr("is too large"));
}

TEST_F(FileCleaningTest, AFileThatIsWrittenMeanwhileStays) {
    writeFile(path, R"({"a":1})");
    auto prepared = cleaner.prepareJson(path, steps({"a"}));
    ASSERT_TRUE(prepared.ok());
    writeFile(path, R"({"a":1,"b":2})");
    EXPECT_THAT(commit(prepared), HasSubstr("was written meanwhile"));
    EXPECT_EQ(readFile(path), R"({"a":1,"b":2})");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("places.sqlite"));
}

TEST_F(FileCleaningTest, AnEmptyFileTakesThePlaceOfAFullOne) {
    writeFile(path, "Zqxtrace");
    chmod(path.c_str(), 0664);
    auto prepared = cleaner.prepareEmpty(path);
    ASSERT_TRUE(prepared.ok());
    std::vector<std::string> aside;
    EXPECT_FALSE(prepared.value()->commit({}, aside));
    ASSERT_EQ(aside.size(), 1U);
    EXPECT_EQ(readFile(aside[0]), "Zqxtrace");
    EXPECT_EQ(fs::file_size(path), 0U);
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0664));
    EXPECT_EQ(cleaning::Cleaner::leftovers(path), aside);
    shred(aside);

    auto again = cleaner.prepareEmpty(path);
    ASSERT_TRUE(again.ok());
    EXPECT_EQ(again.value(), nullptr);
}

TEST_F(FileCleaningTest, LinksAndWhatIsMissingAreRefused) {
    EXPECT_EQ(cleaner.prepareEmpty(path).trouble().fault, Fault::unreadable);
    EXPECT_EQ(cleaner.countKeys(folder / "gone/x", {}).trouble().fault, Fault::unreadable);
    writeFile(folder / "real", "{}");
    fs::create_symlink("real", path);
    EXPECT_THAT(told(cleaner.prepareEmpty(path)), HasSubstr("is a link"));
    EXPECT_THAT(told(cleaner.prepareJson(path, steps({"a"}))), HasSubstr("is a link"));
    EXPECT_THAT(told(cleaner.countKeys(path, steps({"a"}))), HasSubstr("is a link"));
}

}  // namespace
}  // namespace dorvanel::test
