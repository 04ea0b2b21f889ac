// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <iostream>

#include "support/Disk.h"
#include "support/EngineFixture.h"

namespace dorvanel::test {
namespace {

/// An engine over the system's own calls, with nothing recorded: its memory is measured.
struct BareEngine {
    BareEngine() {
        preferences.set("NumberOfWrites", 2);
        preferences.set("OverwritePattern", 0);
    }
    const Outcome& shred(const std::string& path) {
        std::vector<std::string> paths{path};
        access.shredDroppedFile(paths);
        return access.outcome();
    }

    FakePreferences preferences;
    FakeClock clock;
    FakeProgressIndicator bar;
    FakeTextField name;
    FeedbackSequence draws;
    std::unique_ptr<platform::SystemCalls> real = platform::makeSystemCalls();
    FaultySystemCalls system{*real};
    FileAccess access{{system, clock, draws}, preferences, bar, name};
};

/// Folders one in another, each with a file; longer together than any path may be.
void makeDeep(const std::string& path, int levels) {
    int folder = open(path.c_str(), O_DIRECTORY | O_RDONLY | O_CLOEXEC);
    for (int i = 0; i < levels; ++i) {
        const int file = openat(folder, "file", O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
        if (write(file, "secret", 6) != 6) throw std::runtime_error("write");
        close(file);
        if (mkdirat(folder, "deeper", 0700) != 0) throw std::runtime_error("mkdirat");
        const int inner = openat(folder, "deeper", O_DIRECTORY | O_RDONLY | O_CLOEXEC);
        close(folder);
        folder = inner;
    }
    close(folder);
}

void limitDescriptors(rlim_t most) {
    struct rlimit limit {};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = most;
    if (setrlimit(RLIMIT_NOFILE, &limit) != 0) throw std::runtime_error("setrlimit");
}

std::size_t peakKilobytes() {
    struct rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::size_t>(usage.ru_maxrss);
}

TEST(LargeTreesTest, TwoThousandLevelsAreShreddedWithFewDescriptorsAndALittleStack) {
    const TemporaryFolder folder(quickPlace());
    std::filesystem::create_directory(folder / "tree");
    makeDeep(folder / "tree", 2000);
    EXPECT_EQ(inChild([&]() -> std::string {
                  limitDescriptors(160);
                  BareEngine engine;
                  engine.system.inMemory = 0;  // files wait open for their flush
                  const Outcome& outcome = engine.shred(folder / "tree");
                  if (outcome.filesOverwritten != 2000) return "not all overwritten";
                  if (outcome.foldersRemoved != 2001) return "not all removed";
                  return outcome.notRemoved + outcome.notOverwritten == 0 ? "" : "the outcome";
              }),
              "");
    EXPECT_THAT(namesIn(folder.path()), ::testing::IsEmpty());
}

TEST(LargeTreesTest, ManyFilesThatWaitForTheirFlushDoNotUseUpFewDescriptors) {
    const TemporaryFolder folder(quickPlace());
    for (int i = 0; i < 400; ++i) writeFile(folder / ("tree/" + std::to_string(i)), "secret");
    EXPECT_EQ(inChild([&]() -> std::string {
                  limitDescriptors(200);
                  BareEngine engine;
                  engine.system.inMemory = 0;
                  const Outcome& outcome = engine.shred(folder / "tree");
                  if (outcome.filesOverwritten != 400) return "not all overwritten";
                  return outcome.notRemoved + outcome.notOverwritten == 0 ? "" : "the outcome";
              }),
              "");
}

TEST(LargeTreesTest, AHundredThousandEntriesInOneFolderTakeLittleMemory) {
    const TemporaryFolder folder(quickPlace());
    const std::string tree = folder / "tree";
    std::filesystem::create_directory(tree);
    const int top = open(tree.c_str(), O_DIRECTORY | O_RDONLY | O_CLOEXEC);
    constexpr std::uint64_t count = 100'000;
    for (std::uint64_t i = 0; i < count; ++i) {
        const std::string name = "an entry with a name of some length " + std::to_string(i);
        close(openat(top, name.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
    }
    close(top);
    EXPECT_EQ(inChild([&]() -> std::string {
                  BareEngine engine;
                  engine.system.inMemory = 1;
                  const std::size_t before = peakKilobytes();
                  const Outcome& outcome = engine.shred(tree);
                  const std::size_t grown = peakKilobytes() - before;
                  if (outcome.filesRemoved != count) return "not all removed";
                  if (isSanitized()) {
                      std::cout << "not compared: memory under a sanitizer\n";
                  } else if (grown > std::size_t{24} * 1024) {
                      return std::to_string(grown) + " KiB more";
                  }
                  return {};
              }),
              "");
    EXPECT_THAT(namesIn(folder.path()), ::testing::IsEmpty());
}

}  // namespace
}  // namespace dorvanel::test
