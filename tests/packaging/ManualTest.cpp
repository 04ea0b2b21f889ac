// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <regex>

#include "apps/Applications.h"
#include "packaging/Shell.h"
#include "prefs/KeyTable.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

const std::string manuals = DORVANEL_PACKAGING "/man/";

bool hasLine(const std::string& text, const std::string& pattern) {
    return std::regex_search(text, std::regex("(^|\n)" + pattern));
}

std::string factoryValue(const PreferenceKey& key, const char* yes, const char* no) {
    if (key.isBool()) return key.factoryDefault.boolValue() ? yes : no;
    return std::to_string(key.factoryDefault.intValue());
}

TEST(Manual, ExplainsEveryCommandOfTheProgramWithItsWordsAndOptions) {
    const std::string manual = readFile(manuals + "dorvanel.1");
    for (const std::string& option : helpOf("").options) {
        EXPECT_TRUE(hasLine(manual, R"(\.It .*Fl )" + option.substr(1))) << option;
    }
    for (const std::string& command : helpOf("").commands) {
        EXPECT_TRUE(hasLine(manual, R"(\.It Cm )" + command)) << command;
        const Help help = helpOf(command);
        for (const std::string& word : help.commands) {
            EXPECT_TRUE(hasLine(manual, R"(\.It .*Cm )" + (command + "( Op Cm)? ").append(word)))
                << command << ' ' << word;
        }
        for (const std::string& option : help.options) {
            EXPECT_TRUE(hasLine(manual, R"(\.It .*Fl )" + option.substr(1)))
                << command << ' ' << option;
        }
    }
}

TEST(Manual, TellsEveryPreferenceAndItsFactoryValue) {
    const std::string manual = readFile(manuals + "dorvanel.1");
    for (const PreferenceKey& key : preferenceKeys) {
        const std::string row =
            "\n.It " + std::string(key.name) + " Ta " + factoryValue(key, "YES", "NO") + " Ta ";
        EXPECT_NE(manual.find(row), std::string::npos) << key.name;
    }
}

TEST(Manual, OfFormatsTellsEveryPreferenceWithItsKindAndFactoryValue) {
    const std::string formats = readFile(DORVANEL_PACKAGING "/../docs/formats.md");
    for (const PreferenceKey& key : preferenceKeys) {
        const std::string row = "\n| `" + std::string(key.name) + "` | " +
                                (key.isBool() ? "boolean" : "integer") + " | " +
                                factoryValue(key, "true", "false") + " |";
        EXPECT_NE(formats.find(row), std::string::npos) << key.name;
    }
    for (const std::string_view name : applicationNames) {
        EXPECT_NE(formats.find("`" + std::string(name) + "`"), std::string::npos) << name;
    }
}

TEST(Manual, IsWellFormed) {
    if (!isInstalled("mandoc")) return;
    for (const char* page : {"dorvanel.1", "dorvanel-x.1"}) {
        EXPECT_EQ(outputOf({"mandoc", "-T", "lint", "-W", "warning", manuals + page}), "");
    }
}

}  // namespace
}  // namespace dorvanel::test
