// SPDX-License-Identifier: MIT
#include "targets/CollectorTest.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

class ProfileCollectorsTest : public CollectorTest {
  protected:
    const std::string mozillaRoot = home / "Library/Mozilla/Profiles";
    const std::string firefox10Root = home / "Library/Application Support/Firefox/Profiles";
    const std::string firefox15Root = home / "Library/Caches/Firefox/Profiles";
    const std::string camino07Root = home / "Library/Application Support/Chimera/Profiles";
    const std::string firefox08Root = home / "Library/Phoenix/Profiles";
};

TEST_F(ProfileCollectorsTest, AMozillaProfileWithTwoSaltFoldersIsSkipped) {
    turnOn({"ShredCache", "ShredHistory", "ShredIEDownloadCache", "ShredMailTrash"});
    sample.addMozillaProfile("two", 2, 1);
    tick({"two"});
    EXPECT_THAT(run(&Collectors::Mozilla),
                ElementsAre("Mozilla 1.x and Netscape 7", mozillaRoot + "/two", saltSkip, separator,
                            separator));
    EXPECT_THAT(shredList, IsEmpty());
}

TEST_F(ProfileCollectorsTest, ACamino07ProfileWithoutASaltFolderIsNotFound) {
    sample.addOldProfiles(0, 0);
    EXPECT_THAT(
        run(&Collectors::Camino07),
        ElementsAre("Camino 0.7", camino07Root + "/default",
                    "No Camino 0.7 profile found.  Profile Skipped.", separator, separator));
    EXPECT_THAT(run(&Collectors::Firefox08), ElementsAre("Firefox 0.8", firefox08Root + "/default",
                                                         saltSkip, separator, separator));
}

TEST_F(ProfileCollectorsTest, ACamino07ProfileWithTwoSaltFoldersIsSkipped) {
    sample.addOldProfiles(2, 2);
    EXPECT_EQ(run(&Collectors::Camino07).at(2), saltSkip);
    EXPECT_EQ(run(&Collectors::Firefox08).at(2), saltSkip);
}

TEST_F(ProfileCollectorsTest, AProfileFolderThatIsMissingCountsAsOneWithoutASaltFolder) {
    EXPECT_EQ(run(&Collectors::Camino07).at(2), "No Camino 0.7 profile found.  Profile Skipped.");
    EXPECT_EQ(run(&Collectors::Firefox08).at(2), saltSkip);
}

TEST_F(ProfileCollectorsTest, ASaltFolderEndsInSltInLowerCase) {
    fs::create_directories(mozillaRoot + "/work/upper.SLT");
    fs::create_directories(mozillaRoot + "/work/slt");
    fs::create_directories(mozillaRoot + "/work/lower.slt");
    tick({"work"});
    EXPECT_EQ(run(&Collectors::Mozilla).at(3), mozillaRoot + "/work/lower.slt/Cache");
}

TEST_F(ProfileCollectorsTest, AFileThatEndsInSltCountsAsASaltFolder) {
    fs::create_directories(mozillaRoot + "/work/one.slt");
    writeFile(mozillaRoot + "/work/two.slt");
    tick({"work"});
    EXPECT_EQ(run(&Collectors::Mozilla).at(2), saltSkip);
}

TEST_F(ProfileCollectorsTest, MozillaIsNotEnabledWhenOnlyNetscapeIsDisabled) {
    sample.addMozillaProfile("work", 1, 1);
    tick({"work"});
    preferences.disabled = {"Netscape"};
    EXPECT_THAT(run(&Collectors::Mozilla),
                ElementsAre("Mozilla 1.x and Netscape 7", notEnabled, separator));
}

TEST_F(ProfileCollectorsTest, NetscapeIsAskedForOnlyWhenMozillaIsEnabled) {
    class Asked final : public PreferenceReader {
      public:
        Number objectForKey(Key) const override { return Number::fromInt(0); }
        std::uint64_t changeCount() const override { return 0; }
        bool browserIsEnabled(std::string_view name) override {
            names.emplace_back(name);
            return false;
        }
        Lines names;
    } asked;
    Collectors(shredList, asked, platform::defaultFileManager(), defaults, clock).Mozilla();
    EXPECT_THAT(asked.names, ElementsAre("Mozilla"));
}

TEST_F(ProfileCollectorsTest, AnEmptySelectionIsSaidDifferentlyByMozillaAndFirefox) {
    for (const bool stored : {false, true}) {
        if (stored) tick({});
        EXPECT_THAT(run(&Collectors::Firefox10),
                    ElementsAre("Firefox 1.0", "No profiles selected.", separator));
        EXPECT_THAT(run(&Collectors::Firefox15),
                    ElementsAre("Firefox 1.5", "No profiles selected.", separator));
        EXPECT_THAT(run(&Collectors::Mozilla),
                    ElementsAre("Mozilla 1.x and Netscape 7",
                                "No profiles selected in the Profiles menu", separator));
    }
}

TEST_F(ProfileCollectorsTest, FirefoxPassesOverAMozillaProfileInSilence) {
    sample.addMozillaProfile("work", 1, 1);
    tick({"work"});
    EXPECT_THAT(run(&Collectors::Firefox10), ElementsAre("Firefox 1.0", separator));
    EXPECT_THAT(run(&Collectors::Firefox15), ElementsAre("Firefox 1.5", separator));
}

TEST_F(ProfileCollectorsTest, MozillaLogsAFirefoxProfileAndSkipsItForItsSalt) {
    sample.addFirefoxProfile("k3.default");
    tick({"k3.default"});
    EXPECT_THAT(run(&Collectors::Mozilla),
                ElementsAre("Mozilla 1.x and Netscape 7", mozillaRoot + "/k3.default", saltSkip,
                            separator, separator));
}

TEST_F(ProfileCollectorsTest, MozillaMailTakesTheTrashOfEveryEntryPlainFilesToo) {
    const std::string mail = home / "Mail";
    writeFile(mail + "/.DS_Store");
    fs::create_directories(mail + "/pop.example.org");
    const Lines entries = platform::defaultFileManager().directoryContentsAtPath(mail);
    ASSERT_THAT(entries, ::testing::UnorderedElementsAre(".DS_Store", "pop.example.org"));
    turnOn({"ShredMailTrash"});
    collectors.MozillaMail(mail);
    Lines expectedLines, expectedList;
    for (const std::string& entry : entries) {
        const std::string trash = mail + "/" + entry + "/Trash";
        expectedLines.insert(expectedLines.end(), {"Shred:", trash, trash + ".msf"});
        expectedList.insert(expectedList.end(), {trash, trash + ".msf"});
    }
    EXPECT_EQ(log.lines(), expectedLines);
    EXPECT_EQ(shredList, expectedList);
}

TEST_F(ProfileCollectorsTest, MozillaMailWithItsKeyOffSkipsBothPathsOfAnEntry) {
    writeFile(home / "Mail/.DS_Store");
    collectors.MozillaMail(home / "Mail");
    EXPECT_THAT(log.lines(), ElementsAre("Skip:", home / "Mail/.DS_Store/Trash",
                                         home / "Mail/.DS_Store/Trash.msf"));
    EXPECT_THAT(shredList, IsEmpty());
}

TEST_F(ProfileCollectorsTest, MozillaMailWritesNothingForAFolderThatIsMissing) {
    collectors.MozillaMail(home / "nowhere");
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(ProfileCollectorsTest, EveryCollectorWithProfilesEndsWithTwoSeparators) {
    sample.addMozillaProfile("work", 1, 1);
    sample.addFirefoxProfile("k3.default");
    sample.addOldProfiles(1, 1);
    tick({"work", "k3.default"});
    for (auto collector : {&Collectors::Camino07, &Collectors::Firefox08, &Collectors::Firefox10,
                           &Collectors::Firefox15, &Collectors::Mozilla}) {
        const Lines lines = run(collector);
        ASSERT_GE(lines.size(), 4U);
        EXPECT_EQ(lines[lines.size() - 1], separator) << lines[0];
        EXPECT_EQ(lines[lines.size() - 2], separator) << lines[0];
        EXPECT_NE(lines[lines.size() - 3], separator) << lines[0];
    }
    const Lines camino08 = run(&Collectors::Camino08);
    EXPECT_EQ(camino08.back(), separator);
    EXPECT_NE(camino08[camino08.size() - 2], separator);
}

TEST_F(ProfileCollectorsTest, ProfilesAreTakenInTheOrderOfTheSelectionAndAsOftenAsItNamesThem) {
    sample.addFirefoxProfile("b.default");
    sample.addFirefoxProfile("a.default");
    tick({"b.default", "a.default", "b.default"});
    turnOn({"ShredCache"});
    run(&Collectors::Firefox15);
    EXPECT_THAT(shredList,
                ElementsAre(firefox15Root + "/b.default/Cache", firefox15Root + "/a.default/Cache",
                            firefox15Root + "/b.default/Cache"));
}

TEST_F(ProfileCollectorsTest, FirefoxTakesATickedNameThatIsAPlainFile) {
    writeFile(firefox10Root + "/odd");
    tick({"odd"});
    EXPECT_EQ(run(&Collectors::Firefox10).at(1), firefox10Root + "/odd");
}

TEST_F(ProfileCollectorsTest, NamesOfAnyBytesComeThroughAsTheyAre) {
    const std::string name = "Ren\xE9\xFF e.default";
    sample.addFirefoxProfile(name);
    tick({name});
    turnOn({"ShredCache"});
    EXPECT_EQ(run(&Collectors::Firefox15).at(1), firefox15Root + "/" + name);
    EXPECT_THAT(shredList, ElementsAre(firefox15Root + "/" + name + "/Cache"));
}

TEST_F(ProfileCollectorsTest, ANameThatIsNoFoldersNameSelectsNothing) {
    turnOn({"ShredCache", "ShredHistory", "ShredMailTrash"});
    writeFile(home / "Library/Mozilla/one.slt/history.dat");
    writeFile(home / "Library/Mozilla/Profiles/one.slt/history.dat");
    writeFile(home / "Library/Mozilla/Profiles/a/b/one.slt/history.dat");
    writeFile(home / "Library/Application Support/Firefox/Profiles/history.dat");
    tick({"", ".", "..", "../Profiles", "/", "/etc", "a/b", "a/", std::string("a\0b", 3)});
    EXPECT_EQ(run(&Collectors::Mozilla).at(1), "No profiles selected in the Profiles menu");
    EXPECT_EQ(run(&Collectors::Firefox10).at(1), "No profiles selected.");
    EXPECT_EQ(run(&Collectors::Firefox15).at(1), "No profiles selected.");
    EXPECT_THAT(shredList, IsEmpty());
}

TEST_F(ProfileCollectorsTest, ALineBreakInAFoldersNameForgesNoLineOfTheLog) {
    turnOn({"ShredCache"});
    const std::string profiles = home / "Library/Application Support/Firefox/Profiles/";
    writeFile(profiles + "x\nShred: y/Cache/a");
    tick({"x\nShred: y"});
    const Lines lines = run(&Collectors::Firefox10);
    EXPECT_EQ(lines.at(1), profiles + "x Shred: y");
    EXPECT_EQ(lines.at(3), profiles + "x Shred: y/Cache");
    EXPECT_EQ(shredList.at(0), profiles + "x\nShred: y/Cache");
}

}  // namespace
}  // namespace dorvanel::test
