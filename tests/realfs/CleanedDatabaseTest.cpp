// SPDX-License-Identifier: MIT

// A run of the program over a database that also holds what must be kept: what of it can be read
// from the medium afterwards, and what is there when the run is cut off.
#include <csignal>
#include <filesystem>
#include <fstream>

#include "realfs/RealFsFixture.h"
#include "realfs/TracedRun.h"
#include "targets/cleaning/SampleDatabase.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* trace = "Zqxtrace";
constexpr const char* kept = "Kvwkept";

/// How often the text stands in a file, of which only a part is in memory at a time.
std::size_t countIn(const std::string& path, const std::string& text) {
    std::ifstream file(path, std::ios::binary);
    std::string bytes;
    std::string block(std::size_t{4} << 20, '\0');
    std::size_t found = 0;
    while (file.read(block.data(), static_cast<std::streamsize>(block.size())), file.gcount() > 0) {
        bytes.append(block, 0, static_cast<std::size_t>(file.gcount()));
        std::size_t at = 0;
        for (; (at = bytes.find(text, at)) != std::string::npos; at += text.size()) ++found;
        bytes.erase(0, bytes.size() - std::min(bytes.size(), text.size() - 1));
    }
    return found;
}

class CleanedDatabaseTest : public RealFsTest {
  protected:
    /// A home with a profile of Firefox whose history has so many pages, and whose traces of that
    /// kind are chosen.
    void makeHome(int pages, const std::string& journal) {
        fs::create_directories(home + "/Library/Preferences");
        fs::create_directories(home + "/Library/Logs");
        writeFile(root() + "/profiles.ini", "[Profile0]\nName=one\nPath=one\nIsRelative=1\n");
        fs::create_directories(root() + "/one");
        {
            SampleDatabase database(places());
            database.run("PRAGMA journal_mode=" + journal);
            makePlaces(database, trace, kept, pages);
        }
        EXPECT_EQ(dorvanel({"prefs", "set", "NumberOfWrites", "2"}).status, 0);
        EXPECT_EQ(dorvanel({"traces", "select", "firefox", "history", "downloads"}).status, 0);
    }

    [[nodiscard]] std::string root() const { return home + "/.mozilla/firefox"; }
    [[nodiscard]] std::string places() const { return root() + "/one/places.sqlite"; }

    /// What is wrong with the database: "" where it is whole, with its visits or without them.
    [[nodiscard]] std::string problem(const std::string& visitsBefore) const {
        const SampleDatabase database(places());
        const std::string integrity = database.text("PRAGMA integrity_check");
        if (integrity != "ok") return integrity;
        const std::string bookmarks =
            database.text("SELECT count(*) FROM moz_bookmarks b JOIN moz_places p ON p.id=b.fk");
        if (bookmarks != "3") return "bookmarks: " + bookmarks;
        const std::string visits = database.text("SELECT count(*) FROM moz_historyvisits");
        return visits == "0" || visits == visitsBefore ? "" : "visits: " + visits;
    }

    /// Overwrites what the making of the database has left in blocks that belong to no file: the
    /// program that kept it gave them back, and no other can know of them.
    void fillFreeBlocks() const {
        const std::string path = mounted + "/filling";
        std::ofstream file(path, std::ios::binary);
        const std::string block(std::size_t{1} << 20, '\0');
        while (file.write(block.data(), static_cast<std::streamsize>(block.size()))) {
        }
        file.close();
        fs::remove(path);
    }

    /// Files below the home folder that hold a trace, the lines of the log left out.
    [[nodiscard]] std::string stillReadable() const {
        std::string names;
        for (const auto& entry : fs::recursive_directory_iterator(home)) {
            if (!entry.is_regular_file() || countIn(entry.path(), trace) == 0) continue;
            names += entry.path().native() + "\n";
        }
        return names;
    }
};

TEST_F(CleanedDatabaseTest, NoRemovedRowOfAHundredMegabytesIsReadableOnTheMedium) {
    const std::string image = base + "/image";
    MountPointer disk = mountNewImage("ext4", image, mounted, 600);
    NEEDS(disk);
    home = mounted + "/home";
    makeHome(isSanitized() ? 20'000 : 380'000, "wal");
    fillFreeBlocks();
    if (!isSanitized()) {
        EXPECT_GE(fs::file_size(places()), std::uintmax_t{100} << 20);
    }
    ASSERT_TRUE(disk->end());
    EXPECT_GT(countIn(image, trace), 10'000U) << "the search finds what is there";
    disk = mountImage(image, mounted);
    ASSERT_TRUE(disk);
    const Ran ran = dorvanel({"run", "--yes"});
    EXPECT_EQ(ran.status, 0) << ran;
    EXPECT_EQ(problem("0"), "");
    ASSERT_TRUE(disk->end());
    EXPECT_EQ(countIn(image, trace), 0U);
    EXPECT_GT(countIn(image, kept), 0U);
}

TEST_F(CleanedDatabaseTest, KilledAtAnyMomentTheDatabaseIsWholeAndTheNextRunTakesTheRest) {
    const std::string worked = home;
    const std::string model = base + "/model";
    home = model;
    makeHome(400, "wal");
    home = worked;
    const auto fresh = [&] {
        fs::remove_all(home);
        fs::copy(model, home, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    };
    const std::vector<std::string> command = {DORVANEL_PROGRAM, "--home", home, "run", "--yes"};
    fresh();
    const std::string visits =
        SampleDatabase(places()).text("SELECT count(*) FROM moz_historyvisits");
    const TracedRun whole = runToCall(command, 0, {});
    NEEDS(whole.status != -1);
    ASSERT_EQ(whole.status, 0);
    ASSERT_EQ(stillReadable(), "");
    const long moments = attempts(40);
    // What comes before is the start of any program.
    const long first = whole.firstWrite / 2;
    int cut = 0;
    for (long i = 0; i < moments; ++i) {
        const long call = first + (whole.calls - first) * i / moments;
        fresh();
        const TracedRun run = runToCall(command, call, [](int program) { kill(program, SIGKILL); });
        if (run.status == 128 + SIGKILL) ++cut;
        EXPECT_EQ(problem(visits), "") << "killed at call " << call << " of " << whole.calls;
        const Ran second = dorvanel({"run", "--yes"});
        EXPECT_EQ(second.status, 0) << call << second;
        EXPECT_EQ(problem("0"), "") << call;
    }
    EXPECT_GE(cut, moments * 9 / 10);
}

}  // namespace
}  // namespace dorvanel::test
