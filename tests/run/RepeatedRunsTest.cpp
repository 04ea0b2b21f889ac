// SPDX-License-Identifier: MIT
#include <malloc.h>

#include <filesystem>

#include "run/RunFixture.h"
#include "support/ChildProcess.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

/// Makes, renames and removes entries in every folder below the caches, as fast as it can; its
/// first line says that it has begun.
constexpr const char* busyNeighbour = R"(
import itertools, os, sys
caches = os.path.join(sys.argv[1], "Library/Caches")
print("begun", flush=True)
for number in itertools.count():
    for folder, folders, files in os.walk(caches):
        try:
            if number % 3 == 0:
                os.makedirs(os.path.join(folder, "mine%d" % (number % 5)), exist_ok=True)
            with open(os.path.join(folder, "new%d" % (number % 7)), "w") as file:
                file.write("x" * (number % 5000))
            if len(files) > 1:
                os.remove(os.path.join(folder, files[0]))
                os.rename(os.path.join(folder, files[1]), os.path.join(folder, "renamed"))
        except OSError:
            pass
)";

/// What a program that runs for weeks must not gather.
struct Resources {
    std::ptrdiff_t descriptors;
    std::size_t heap;  ///< bytes in use; 0 under a sanitizer, whose leak check stands for it
};

class RepeatedRunsTest : public RunFixture {
  protected:
    RepeatedRunsTest() { preferences.set("ShredCache", true); }

    static Resources inUse() {
        const auto descriptors =
            std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
        return {descriptors, mallinfo2().uordblks + mallinfo2().hblkhd};
    }

    /// One run; the fakes forget what they were told, so that only the program's memory remains.
    Outcome runOnce() {
        addSafariCache();
        run.shredAndNothing();
        run.waitForWorker();
        EXPECT_EQ(reports.size(), 1U);
        EXPECT_EQ(reports.at(0).result, RunResult::completed);
        Outcome outcome = std::exchange(reports, {}).at(0).outcome;
        calls.clear();
        for (FakeTextField* field : {&fileName, &status}) *field = {};
        for (FakeTextField& label : labels) label = {};
        progress = {};
        return outcome;
    }

    static void expectNoGrowth(const Resources& before) {
        const Resources after = inUse();
        EXPECT_EQ(after.descriptors, before.descriptors);
        EXPECT_LE(after.heap, before.heap + 64 * 1024);
    }
};

TEST_F(RepeatedRunsTest, TwoHundredRunsInARowGatherNothing) {
    for (int i = 0; i < 20; ++i) runOnce();  // buffers reach their size
    const Resources before = inUse();
    for (int i = 0; i < 200; ++i) {
        runOnce();
        ASSERT_FALSE(fs::exists(home / "Library/Caches/Safari"));
    }
    expectNoGrowth(before);
}

TEST_F(RepeatedRunsTest, SoItIsWhileAnotherProcessMakesAndRemovesFilesUnderThem) {
    writeFile(home / "Documents/letter", "kept");
    Resources before{};
    std::size_t left = 0;
    {
        ChildProcess neighbour({"python3", "-c", busyNeighbour, home.path()});
        ASSERT_EQ(neighbour.readLine(), "begun");
        for (int i = 0; i < 220; ++i) {
            if (i == 20) before = inUse();
            left += runOnce().notRemoved;
        }
        EXPECT_TRUE(neighbour.isRunning());
        expectNoGrowth(before);
    }
    runOnce();
    EXPECT_FALSE(fs::exists(home / "Library/Caches/Safari"));
    std::size_t holdings = 0;
    for (const auto& entry : fs::directory_iterator(home / "Library/Caches")) {
        holdings += entry.path().filename().string().starts_with("Dorvanel X Items") ? 1 : 0;
    }
    EXPECT_LE(holdings, left) << "a holding folder stayed and no run told so";
    EXPECT_EQ(readFile(home / "Documents/letter"), "kept");
}

}  // namespace
}  // namespace dorvanel::test
