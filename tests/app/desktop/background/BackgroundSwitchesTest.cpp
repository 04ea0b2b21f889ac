// SPDX-License-Identifier: MIT
#include "app/desktop/background/BackgroundSwitches.h"

#include <QCheckBox>
#include <filesystem>

#include "app/desktop/DesktopFixture.h"

namespace dorvanel::test {
namespace {

using desktop::AutostartEntry;
using desktop::BackgroundSwitches;
using ::testing::HasSubstr;

/// The file that starts the program with the session.
class AutostartEntryTest : public ::testing::Test {
  protected:
    TemporaryFolder folder;
    AutostartEntry entry{folder / "config/autostart"};
};

TEST_F(AutostartEntryTest, ItIsWrittenAndRemoved) {
    EXPECT_EQ(entry.state(), AutostartEntry::State::off);
    ASSERT_TRUE(entry.set(true));
    EXPECT_EQ(entry.state(), AutostartEntry::State::on);
    const std::string contents = readFile(entry.path());
    EXPECT_THAT(contents, HasSubstr("\nExec=dorvanel-x --hidden\n"));
    EXPECT_THAT(contents, HasSubstr("\nX-GNOME-Autostart-enabled=true\n"));
    ASSERT_TRUE(entry.set(true)) << "again does nothing";
    ASSERT_TRUE(entry.set(false));
    EXPECT_EQ(entry.state(), AutostartEntry::State::off);
    EXPECT_FALSE(std::filesystem::exists(entry.path()));
}

TEST_F(AutostartEntryTest, AFileThatSomebodyElseWroteIsLeftAlone) {
    writeFile(entry.path(), "[Desktop Entry]\nExec=something else\n");
    EXPECT_EQ(entry.state(), AutostartEntry::State::foreign);
    EXPECT_FALSE(entry.set(false));
    EXPECT_FALSE(entry.set(true));
    EXPECT_EQ(readFile(entry.path()), "[Desktop Entry]\nExec=something else\n");
}

TEST_F(AutostartEntryTest, AFileThatWasChangedIsLeftAlone) {
    ASSERT_TRUE(entry.set(true));
    const std::string changed = readFile(entry.path()) + "Hidden=true\n";
    writeFile(entry.path(), changed);
    EXPECT_EQ(entry.state(), AutostartEntry::State::foreign);
    EXPECT_FALSE(entry.set(false));
    EXPECT_EQ(readFile(entry.path()), changed);
}

TEST_F(AutostartEntryTest, ALinkIsNobodysFileToReplace) {
    std::filesystem::create_directories(folder / "config/autostart");
    std::filesystem::create_symlink(folder / "elsewhere", entry.path());
    EXPECT_EQ(entry.state(), AutostartEntry::State::foreign);
    EXPECT_FALSE(entry.set(true));
    EXPECT_FALSE(std::filesystem::exists(folder / "elsewhere"));
}

TEST_F(AutostartEntryTest, WhatCannotBeWrittenIsAnError) {
    writeFile(folder / "config", "a file in the way");
    EXPECT_FALSE(entry.set(true));
    EXPECT_EQ(entry.state(), AutostartEntry::State::off);
}

/// The switches, with a systemd of the test's own.
class BackgroundSwitchesTest : public ::testing::Test {
  protected:
    /// Writes a systemctl that answers from files in the folder, and notes how it was called.
    void install(const std::string& state) {
        writeFile(folder / "state", state);
        const std::string program = folder / "systemctl";
        const std::string where = folder.path().native();
        writeFile(program, "#!/bin/sh\necho \"$@\" >> '" + where + "/calls'\n" +
                               "case \"$2\" in\n" + "show) cat '" + where + "/state' ;;\n" +
                               "enable) test ! -e '" + where +
                               "/refuses' || "
                               "{ echo 'No such luck' >&2; exit 1; }\n"
                               "printf 'LoadState=loaded\\nActiveState=active\\n"
                               "UnitFileState=enabled\\n' > '" +
                               where + "/state' ;;\n" +
                               "disable) printf 'LoadState=loaded\\nActiveState=inactive\\n"
                               "UnitFileState=disabled\\n' > '" +
                               where + "/state' ;;\n" + "esac\n");
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
        systemctl = QString::fromStdString(program);
    }
    void show() {
        switches = std::make_unique<BackgroundSwitches>(nullptr, folder / "autostart", systemctl);
        switches->show();
        waitUntil([this] { return note("watchServiceCheckbox") != "Asking systemd…"; });
    }
    QCheckBox& box(const char* name) {
        return *switches->findChild<QCheckBox*>(QLatin1String(name));
    }
    QString note(const char* name) {
        return switches->findChild<QLabel*>(QLatin1String(name) + "Note")
            ->property("told")
            .toString();
    }
    std::string calls() { return readFile(folder / "calls"); }

    static constexpr const char* off =
        "LoadState=loaded\nActiveState=inactive\nUnitFileState=disabled\n";
    TemporaryFolder folder;
    QString systemctl = QString::fromStdString(folder / "no such program");
    std::unique_ptr<BackgroundSwitches> switches;
};

TEST_F(BackgroundSwitchesTest, TheServiceIsTurnedOnAndOff) {
    install(off);
    show();
    auto& watch = box("watchServiceCheckbox");
    EXPECT_TRUE(watch.isEnabled());
    EXPECT_FALSE(watch.isChecked());
    EXPECT_EQ(note("watchServiceCheckbox"), "It does not run.");
    watch.click();
    EXPECT_FALSE(watch.isEnabled()) << "one thing at a time";
    waitUntil([this] { return note("watchServiceCheckbox") == "It runs."; });
    EXPECT_TRUE(watch.isChecked());
    EXPECT_THAT(calls(), HasSubstr("--user enable --now dorvanel-watch.service\n"));
    watch.click();
    waitUntil([this] { return note("watchServiceCheckbox") == "It does not run."; });
    EXPECT_FALSE(watch.isChecked());
    EXPECT_THAT(calls(), HasSubstr("--user disable --now dorvanel-watch.service\n"));
}

TEST_F(BackgroundSwitchesTest, WithoutSystemdTheSwitchIsDimmedAndSaysWhy) {
    show();
    EXPECT_FALSE(box("watchServiceCheckbox").isEnabled());
    EXPECT_EQ(note("watchServiceCheckbox"), "There is no systemd on this computer.");
}

TEST_F(BackgroundSwitchesTest, WithoutTheServiceTheSwitchIsDimmedAndSaysWhy) {
    install("LoadState=not-found\nActiveState=inactive\nUnitFileState=\n");
    show();
    EXPECT_FALSE(box("watchServiceCheckbox").isEnabled());
    EXPECT_TRUE(note("watchServiceCheckbox").contains("is not installed"));
}

TEST_F(BackgroundSwitchesTest, WhatSystemdRefusesIsToldAndTheSwitchShowsHowThingsAre) {
    install(off);
    writeFile(folder / "refuses", "");
    show();
    box("watchServiceCheckbox").click();
    waitUntil(
        [this] { return note("watchServiceCheckbox") == "systemd could not do it: No such luck"; });
    EXPECT_FALSE(box("watchServiceCheckbox").isChecked());
    EXPECT_TRUE(box("watchServiceCheckbox").isEnabled());
}

TEST_F(BackgroundSwitchesTest, AServiceThatRunsButIsNotEnabledIsToldApart) {
    install("LoadState=loaded\nActiveState=active\nUnitFileState=disabled\n");
    show();
    EXPECT_TRUE(box("watchServiceCheckbox").isChecked());
    EXPECT_EQ(note("watchServiceCheckbox"), "It runs now, but does not start with the session.");
}

TEST_F(BackgroundSwitchesTest, ItGoesWhileSystemdIsStillAsked) {
    install(off);
    writeFile(systemctl.toStdString(), "#!/bin/sh\nexec sleep 600\n");
    switches = std::make_unique<BackgroundSwitches>(nullptr, folder / "autostart", systemctl);
    switches->show();
    EXPECT_EQ(note("watchServiceCheckbox"), "Asking systemd…");
    switches.reset();
}

TEST_F(BackgroundSwitchesTest, TheAutostartIsTurnedOnAndOff) {
    show();
    auto& autostart = box("autostartCheckbox");
    const std::string file = folder / "autostart/com.dorvanel.DorvanelX.desktop";
    autostart.click();
    EXPECT_TRUE(std::filesystem::exists(file));
    EXPECT_TRUE(autostart.isChecked());
    autostart.click();
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_FALSE(autostart.isChecked());
}

TEST_F(BackgroundSwitchesTest, AForeignAutostartFileDimsTheSwitchAndIsNamed) {
    const std::string file = folder / "autostart/com.dorvanel.DorvanelX.desktop";
    writeFile(file, "mine");
    show();
    EXPECT_FALSE(box("autostartCheckbox").isEnabled());
    EXPECT_TRUE(note("autostartCheckbox").contains(QString::fromStdString(file)));
    EXPECT_EQ(readFile(file), "mine");
}

TEST_F(BackgroundSwitchesTest, AnAutostartThatCannotBeWrittenStaysOffAndSaysWhy) {
    writeFile(folder / "autostart", "a file in the way");
    show();
    box("autostartCheckbox").click();
    EXPECT_FALSE(box("autostartCheckbox").isChecked());
    EXPECT_TRUE(note("autostartCheckbox").startsWith("This could not be changed: "));
}

}  // namespace
}  // namespace dorvanel::test
