// SPDX-License-Identifier: MIT

// Cut off at any moment, by a signal or a power failure: old contents are only where a file still
// has a name, and a second run takes the rest.
#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <random>

#include "realfs/Markers.h"
#include "realfs/RealFsFixture.h"
#include "realfs/TracedRun.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

class KilledTest : public RealFsTest {
  protected:
    /// Where the images lie: in memory, so that a disk is made and mounted in a moment.
    bool prepare() {
        images = mountMemory(base + "/images");
        return images != nullptr;
    }

    MountPointer newDisk() {
        fs::remove(image);
        MountPointer disk = mountNewImage(kind, image, mounted, megabytes, makeOptions);
        if (!disk) return nullptr;
        std::mt19937 random(7);
        for (unsigned file = 1; file <= 40; ++file) {
            const unsigned sectors = file == 20 ? 2048 : 1 + static_cast<unsigned>(random() % 60);
            const std::string folder = isManyItems ? "" : "tree/" + std::to_string(file % 5) + "/";
            writeFile(mounted + "/" + folder + std::to_string(file), markedContents(file, sectors));
        }
        sync();
        return disk;
    }

    void sync() const {
        const int folder = open(mounted.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        syncfs(folder);
        close(folder);
    }

    [[nodiscard]] std::vector<std::string> command() const {
        std::vector<std::string> words = {DORVANEL_PROGRAM, "--home", home, "shred"};
        for (std::string& item : items()) words.push_back(std::move(item));
        return words;
    }

    /// Whatever lies on the disk by now.
    [[nodiscard]] std::vector<std::string> items() const {
        std::vector<std::string> paths;
        for (const std::string& name : namesIn(mounted)) {
            if (name != "lost+found") paths.push_back(mounted + "/" + name);
        }
        return paths;
    }

    /// What is wrong with an image that is not mounted: old contents that no name leads to.
    std::string lostIn(const std::string& file) {
        const Markers all = markersIn(file);
        if (all.empty()) return {};
        const MountPointer disk = mountImage(file, base + "/looked", kind == "xfs" ? "nouuid" : "");
        return disk ? without(all, markersBelow(disk->folder())) : "cannot be mounted";
    }

    /// What is wrong after a run with `signal` at its call number `call`, and a second run.
    std::string problemAfter(long call, int signal) {
        MountPointer disk = newDisk();
        if (!disk) return "no disk";
        bool cut = false;
        const TracedRun run = runToCall(command(), call, [&](int program) {
            fs::copy_file(image, image + "-cut", fs::copy_options::overwrite_existing);
            cut = true;
            kill(program, signal);
        });
        if (cut) {
            const std::string lost = lostIn(image + "-cut");
            if (!lost.empty()) return "the power fails: " + lost;
        }
        if (run.status == 128 + signal || run.status == 130) ++cutRuns;
        if (!disk->end()) return "the disk stays busy";
        const std::string lost = lostIn(image);
        if (!lost.empty()) return "killed (" + std::to_string(run.status) + "): " + lost;
        return problemOfASecondRun();
    }

    std::string problemOfASecondRun() {
        MountPointer disk = mountImage(image, mounted);
        if (!disk) return "cannot be mounted again";
        std::vector<std::string> words = items();
        if (!words.empty()) {
            words.insert(words.begin(), "shred");
            const Ran ran = dorvanel(words);
            if (ran.status != 0) return "the second run: " + ran.out + ran.err;
        }
        if (!disk->end()) return "the disk stays busy";
        const std::string lost = without(markersIn(image), {});
        return lost.empty() ? "" : "after the second run: " + lost;
    }

    /// Signals at random calls, from the first overwriting on.
    void cutOff(int times, int signal, unsigned seed) {
        TracedRun whole;
        {
            const MountPointer disk = newDisk();
            NEEDS(disk);
            whole = runToCall(command(), 0, [](int) {});
            NEEDS(whole.status >= 0);
            ASSERT_EQ(whole.status, 0);
            ASSERT_GT(whole.firstWrite, 0);
        }
        std::mt19937 random(seed);
        std::uniform_int_distribution<long> calls(whole.firstWrite, whole.calls);
        int problems = 0;
        for (int i = 0; i < times; ++i) {
            const long call = calls(random);
            const std::string problem = problemAfter(call, signal);
            if (problem.empty()) continue;
            ++problems;
            if (problems <= 5) ADD_FAILURE() << "call " << call << ": " << problem;
        }
        EXPECT_EQ(problems, 0) << "of " << times << ", seed " << seed;
        EXPECT_GT(cutRuns, times / 2) << "the others had ended before";
        std::printf("%d of %d were cut off\n", cutRuns, times);
    }

    MountPointer images;
    int cutRuns = 0;           ///< that the signal ended
    bool isManyItems = false;  ///< each file one, instead of a tree of them
    std::string kind = "ext4";
    std::string makeOptions = "-q -b 4096";
    std::size_t megabytes = 16;
    std::string image = base + "/images/image";
};

TEST_F(KilledTest, OldContentsAreNeverWithoutANameAndASecondRunTakesTheRest) {
    NEEDS(prepare());
    cutOff(attempts(40), SIGKILL, 20261121);
}

TEST_F(KilledTest, OfManyItemsOldContentsAreNeverWithoutANameEither) {
    NEEDS(prepare());
    isManyItems = true;
    cutOff(attempts(15), SIGKILL, 5);
}

TEST_F(KilledTest, ATerminalThatGoesLeavesNoneEither) {
    NEEDS(prepare());
    cutOff(attempts(5), SIGHUP, 3);
}

TEST_F(KilledTest, OnXfsOldContentsAreNeverWithoutANameEither) {
    NEEDS(prepare());
    kind = "xfs";
    makeOptions = "-q";
    megabytes = 300;  // the least that it takes
    cutOff(attempts(5), SIGKILL, 4);
}

}  // namespace
}  // namespace dorvanel::test
