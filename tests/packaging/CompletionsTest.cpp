// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "apps/Applications.h"
#include "apps/catalogue/Entry.h"
#include "packaging/Shell.h"
#include "prefs/KeyTable.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

using Words = std::set<std::string>;

const std::string completions = DORVANEL_PACKAGING "/completions";
const std::string scripts = DORVANEL_PACKAGING_TESTS;

/// A shell and its own line editor, asked what it would complete a line with.
class Completion : public testing::TestWithParam<const char*> {
  protected:
    [[nodiscard]] bool canRun() const { return isInstalled(GetParam()); }

    [[nodiscard]] static Words candidates(const std::string& line) {
        const std::string shell = GetParam();
        if (shell == "bash") {
            return linesOf(outputOf({shell, scripts + "/bash_candidates.bash", completions, line}));
        }
        if (shell == "zsh") {
            return linesOf(outputOf({shell, scripts + "/zsh_candidates.zsh", completions, line}));
        }
        const std::string program = line.substr(0, line.find(' '));
        const std::string script = "source $argv[1]; complete -C $argv[2]";
        return withoutDescriptions(outputOf(
            {shell, "--no-config", "-c", script, completions + "/" + program + ".fish", line}));
    }

    /// Candidates without the folder that a shell puts before them, and without the "/" behind.
    [[nodiscard]] static Words namesOf(const Words& paths) {
        Words names;
        for (std::string path : paths) {
            if (path.ends_with('/')) path.pop_back();
            names.insert(std::filesystem::path(path).filename());
        }
        return names;
    }

    TemporaryHome home;

  private:
    static Words withoutDescriptions(const std::string& text) {
        Words words;
        for (const std::string& line : linesOf(text)) words.insert(line.substr(0, line.find('\t')));
        return words;
    }
};

/// The actions of the launcher, which are those of the desktop program.
Words launcherActions() {
    for (const std::string& line :
         linesOf(readFile(DORVANEL_PACKAGING "/../resources/dorvanel-x.desktop"))) {
        if (!line.starts_with("Actions=")) continue;
        Words actions;
        std::istringstream stream(line.substr(line.find('=') + 1));
        for (std::string action; std::getline(stream, action, ';');) actions.insert(action);
        return actions;
    }
    return {};
}

INSTANTIATE_TEST_SUITE_P(Shells, Completion, testing::Values("bash", "zsh", "fish"),
                         [](const auto& shell) { return std::string(shell.param); });

TEST_P(Completion, OffersTheCommandsOfTheProgram) {
    if (!canRun()) return;
    const Words commands = helpOf("").commands;
    EXPECT_FALSE(commands.empty());
    EXPECT_EQ(candidates("dorvanel "), commands);
    EXPECT_EQ(candidates("dorvanel --home /tmp "), commands);
    EXPECT_EQ(candidates("dorvanel p"), (Words{"prefs", "profiles"}));
}

TEST_P(Completion, OffersTheWordsOfEachCommand) {
    if (!canRun()) return;
    for (const std::string& command : helpOf("").commands) {
        const Words words = helpOf(command).commands;
        if (words.empty()) continue;
        EXPECT_EQ(candidates("dorvanel " + command + " "), words) << command;
    }
}

TEST_P(Completion, OffersTheOptionsOfEachCommand) {
    if (!canRun()) return;
    EXPECT_EQ(candidates("dorvanel --"), helpOf("").options);
    for (const std::string& command : helpOf("").commands) {
        Words options = helpOf(command).options;
        options.insert("--home");  // the program's own, which every command takes
        EXPECT_EQ(candidates("dorvanel " + command + " --"), options) << command;
    }
}

TEST_P(Completion, OffersTheThreeEndingsOfARun) {
    if (!canRun()) return;
    EXPECT_EQ(candidates("dorvanel run --then "), (Words{"logout", "restart", "shutdown"}));
}

TEST_P(Completion, OffersEveryPreference) {
    if (!canRun()) return;
    Words keys;
    for (const PreferenceKey& key : preferenceKeys) keys.emplace(key.name);
    EXPECT_EQ(candidates("dorvanel prefs get "), keys);
    EXPECT_EQ(candidates("dorvanel prefs set "), keys);
    EXPECT_FALSE(candidates("dorvanel prefs revert ").contains("ShredCache"));
}

TEST_P(Completion, OffersJustTheValuesThatAPreferenceCanHave) {
    if (!canRun()) return;
    for (const PreferenceKey& key : preferenceKeys) {
        Words values;
        if (key.isBool()) values = {"YES", "NO"};
        for (int index = 0; !key.isBool() && index < 100; ++index) {
            if (canBeChosen(key, index)) values.insert(std::to_string(index));
        }
        EXPECT_EQ(candidates("dorvanel prefs set " + std::string(key.name) + " "), values);
    }
}

TEST_P(Completion, OffersEveryApplication) {
    if (!canRun()) return;
    const Words names(applicationNames.begin(), applicationNames.end());
    EXPECT_EQ(candidates("dorvanel apps enable "), names);
    EXPECT_EQ(candidates("dorvanel apps disable "), names);
}

TEST_P(Completion, OffersTheApplicationsOfTodayAndTheKindsOfTheirTraces) {
    if (!canRun()) return;
    Words ids;
    for (const auto& file :
         std::filesystem::directory_iterator(DORVANEL_PACKAGING "/../resources/applications")) {
        ids.insert(file.path().stem());
    }
    EXPECT_EQ(candidates("dorvanel traces select "), ids);
    EXPECT_EQ(candidates("dorvanel traces deselect "), ids);
    const Words kinds(catalogue::traceKinds.begin(), catalogue::traceKinds.end());
    EXPECT_EQ(candidates("dorvanel traces select firefox "), kinds);
    EXPECT_EQ(candidates("dorvanel traces deselect firefox cache "), kinds);
}

TEST_P(Completion, OffersTheProfilesOfTheHomeFolderAndMakesNothingThere) {
    if (!canRun()) return;
    for (const char* profile : {"Library/Mozilla/Profiles/work",
                                "Library/Application Support/Firefox/Profiles/k3.default",
                                "Library/Caches/Firefox/Profiles/k3.default"}) {
        std::filesystem::create_directories(home / profile);
    }
    EXPECT_EQ(candidates("dorvanel profiles select "), (Words{"k3.default", "work"}));
    EXPECT_EQ(candidates("dorvanel profiles deselect w"), Words{"work"});
    EXPECT_TRUE(std::filesystem::is_empty(home / "Library/Preferences"));
}

TEST_P(Completion, OffersFilesToShred) {
    if (!canRun()) return;
    writeFile(home / "items/report.pdf");
    std::filesystem::create_directories(home / "items/album");
    EXPECT_EQ(namesOf(candidates("dorvanel shred " + home / "items/")),
              (Words{"album", "report.pdf"}));
    EXPECT_EQ(namesOf(candidates("dorvanel-x " + home / "items/r")), Words{"report.pdf"});
}

TEST_P(Completion, OffersTheLaunchersActionsToTheDesktopProgram) {
    if (!canRun()) return;
    EXPECT_EQ(launcherActions().size(), 4U);
    EXPECT_EQ(candidates("dorvanel-x --action "), launcherActions());
}

}  // namespace
}  // namespace dorvanel::test
