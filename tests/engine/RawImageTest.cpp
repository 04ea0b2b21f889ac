// SPDX-License-Identifier: MIT

// What is left on the medium itself: files on a file system in an image, shredded, unmounted, and
// the image searched byte by byte. Needs the right to mount.
#include <gtest/gtest.h>
#include <sys/mount.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "engine/FileAccess.h"
#include "engine/random/FeedbackSequence.h"
#include "support/Disk.h"
#include "support/FakeClock.h"
#include "support/FakeOutlets.h"
#include "support/FakePreferences.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

/// An ext4 file system in a file, mounted by a loop device while wanted.
class Image {
  public:
    Image() {
        fs::create_directory(mountPoint);
        std::ofstream(file).close();
        fs::resize_file(file, 96 << 20);
        made = run("mkfs.ext4 -q -F '" + file + "'") == 0;
    }
    ~Image() {
        if (mounted && !unmount()) ::umount2(mountPoint.c_str(), MNT_DETACH);
    }
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    bool mount() {
        mounted = made && run("mount -o loop '" + file + "' '" + mountPoint + "'") == 0;
        return mounted;
    }
    bool unmount() {
        mounted = ::umount2(mountPoint.c_str(), 0) != 0;
        return !mounted;
    }
    /// How often the text stands in the unmounted image.
    [[nodiscard]] std::size_t count(const std::string& text) const {
        const std::string bytes = readFile(file);
        std::size_t found = 0;
        for (std::size_t at = bytes.find(text); at != std::string::npos;
             at = bytes.find(text, at + text.size())) {
            ++found;
        }
        return found;
    }

    TemporaryFolder place;
    std::string file = place / "image";
    std::string mountPoint = place / "mounted";
    bool made = false;
    bool mounted = false;

  private:
    static int run(const std::string& command) {
        return std::system(("PATH=$PATH:/usr/sbin:/sbin; " + command + " 2>/dev/null").c_str());
    }
};

class RawImageTest : public ::testing::Test {
  protected:
    /// Makes the files and brings them to the medium; false where this machine does not let us.
    bool prepare() {
        if (!isRoot() || !image.mount()) {
            std::cout << "not run: no file system can be mounted here\n";
            return false;
        }
        for (unsigned i = 0; i < 200; ++i) {
            const std::string folder = image.mountPoint + "/tree/" + std::to_string(i % 7);
            writeFile(folder + "/large " + std::to_string(i), recognisable(65536, i));
            writeFile(folder + "/small " + std::to_string(i), recognisable(130, 1000 + i));
        }
        EXPECT_TRUE(image.unmount());
        EXPECT_GE(image.count("Secret contents"), 200U * 2000U) << "the search finds what is there";
        return image.mount();
    }
    const Outcome& shredTree() {
        preferences.set("NumberOfWrites", 2);
        std::vector<std::string> items{image.mountPoint + "/tree"};
        engine.shredDroppedFile(items);
        return engine.outcome();
    }

    Image image;
    FakePreferences preferences;
    FakeClock clock;
    FakeProgressIndicator bar;
    FakeTextField name;
    FeedbackSequence draws;
    std::unique_ptr<platform::SystemCalls> system = platform::makeSystemCalls();
    FileAccess engine{{*system, clock, draws}, preferences, bar, name};
};

TEST_F(RawImageTest, NothingOfShreddedFilesIsFoundOnTheMedium) {
    if (!prepare()) return;
    const Outcome& outcome = shredTree();
    EXPECT_EQ(outcome.filesOverwritten, 400U);
    EXPECT_EQ(outcome.notRemoved + outcome.notFlushed, 0U);
    ASSERT_TRUE(image.unmount());
    EXPECT_EQ(image.count("Secret contents"), 0U);
    EXPECT_EQ(image.count("ret conte"), 0U);
}

TEST_F(RawImageTest, FilesThatAreOnlyRemovedAreFoundThere) {
    if (!prepare()) return;
    fs::remove_all(image.mountPoint + "/tree");
    ASSERT_TRUE(image.unmount());
    EXPECT_GE(image.count("Secret contents"), 200U * 2000U) << "so the search proves something";
}

}  // namespace
}  // namespace dorvanel::test
