// SPDX-License-Identifier: MIT
#include "support/SampleHome.h"

#include <gtest/gtest.h>

#include <map>

#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

std::map<std::string, std::string> everyFile(const TemporaryFolder& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path())) {
        const std::string path = entry.path().native().substr(folder.path().native().size());
        files[path] = entry.is_regular_file() ? readFile(entry.path()) : "folder";
    }
    return files;
}

TEST(SampleHomeTest, TheSameSeedMakesTheSameHome) {
    const TemporaryFolder one, two, three;
    SampleHome(one.path(), 42).addEverything();
    SampleHome(two.path(), 42).addEverything();
    SampleHome(three.path(), 43).addEverything();
    EXPECT_EQ(everyFile(one), everyFile(two));
    EXPECT_NE(everyFile(one), everyFile(three));
}

TEST(SampleHomeTest, AHomeHasNamesThatAreNotAsciiAndOneThatIsNotUtf8) {
    const TemporaryFolder folder;
    SampleHome(folder.path(), 1).addEverything();
    const auto files = everyFile(folder);
    EXPECT_TRUE(files.contains("/Pictures/Caf\xE9.jpg"));
    EXPECT_TRUE(files.contains("/Documents/\u65e5\u672c\u8a9e.txt"));
    EXPECT_TRUE(files.contains("/Library/Caches/Opera Cache/Cache \u0192"));
}

}  // namespace
}  // namespace dorvanel::test
