// SPDX-License-Identifier: MIT

// Cut off at any moment, a shredding is finished by `recover`: nothing of it is left, neither on
// the disk nor in the list, and nothing else is touched.
#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <random>

#include "realfs/Markers.h"
#include "realfs/RealFsFixture.h"
#include "realfs/TracedRun.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

/// How many moments are tried.
int kills() {
    const char* asked = std::getenv("DORVANEL_KILLS");
    return asked != nullptr ? std::atoi(asked) : 12;
}

class RecoverTest : public RealFsTest {
  protected:
    bool prepare() {
        images = mountMemory(base + "/images");
        return images != nullptr;
    }

    /// A disk with the home folder on it, so that the list and the items share a fate.
    MountPointer newDisk() {
        fs::remove(image);
        MountPointer disk = mountNewImage("ext4", image, mounted, 16, "-q -b 4096");
        if (!disk) return nullptr;
        home = mounted + "/home";
        fs::create_directories(home + "/Library/Preferences");
        fs::create_directories(home + "/Library/Logs");
        for (unsigned file = 1; file <= 12; ++file) {
            const std::string folder = "/items/" + std::to_string(file % 3) + "/";
            writeFile(mounted + folder + std::to_string(file), markedContents(file, 1 + file));
        }
        writeFile(mounted + "/items/0/neighbour", "kept");
        writeFile(mounted + "/target", "kept");
        sync();
        return disk;
    }
    void sync() const {
        const int folder = open(mounted.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        syncfs(folder);
        close(folder);
    }
    /// Three items in three folders: files and a whole folder.
    [[nodiscard]] std::vector<std::string> command() const {
        std::vector<std::string> words = {DORVANEL_PROGRAM, "--home", home, "shred"};
        for (const char* item : {"0/3", "0/6", "1", "2/2", "2/5", "2/8"}) {
            words.push_back(mounted + "/items/" + item);
        }
        return words;
    }
    [[nodiscard]] std::vector<std::string> holdings() const {
        std::vector<std::string> paths;
        for (const auto& entry : fs::recursive_directory_iterator(mounted)) {
            const std::string name = entry.path().filename();
            if (name.starts_with("Dorvanel X Items")) paths.push_back(entry.path());
        }
        return paths;
    }
    /// What is wrong once `recover` has been over the disk.
    std::string problemAfterRecovering() {
        for (const std::string& holding : holdings()) {
            fs::create_symlink(mounted + "/target", holding + "/link");
        }
        const Ran ran = dorvanel({"recover", "--yes"});
        if (ran.status != 0) return "recover: " + std::to_string(ran.status) + ran.out + ran.err;
        if (!holdings().empty()) return "left: " + holdings().front() + ran.out + ran.err;
        const std::string state = home + "/.local/state/dorvanel/unfinished";
        if (fs::exists(state) && !namesIn(state).empty()) return "still in the list";
        if (readFile(mounted + "/items/0/neighbour") != "kept") return "the neighbour suffered";
        if (readFile(mounted + "/target") != "kept") return "a link's target suffered";
        return {};
    }
    std::string problemAfter(long call, bool powerFails) {
        MountPointer disk = newDisk();
        if (!disk) return "no disk";
        runToCall(command(), call, [&](int program) {
            if (powerFails) {
                fs::copy_file(image, image + "-cut", fs::copy_options::overwrite_existing);
            }
            ++cuts;
            kill(program, SIGKILL);
        });
        if (!powerFails || !fs::exists(image + "-cut")) return problemAfterRecovering();
        if (!disk->end()) return "the disk stays busy";
        disk = mountImage(image + "-cut", mounted);
        if (!disk) return "cannot be mounted again";
        std::string problem = problemAfterRecovering();
        if (!disk->end()) problem += " the disk stays busy";
        fs::remove(image + "-cut");
        return problem;
    }
    void cutOff(int times, bool powerFails, unsigned seed) {
        TracedRun whole;
        {
            const MountPointer disk = newDisk();
            NEEDS(disk);
            whole = runToCall(command(), 0, [](int) {});
            NEEDS(whole.status >= 0);
            ASSERT_EQ(whole.status, 0);
            EXPECT_EQ(problemAfterRecovering(), "");
        }
        std::mt19937 random(seed);
        // From a little before the first overwriting on, where the first file is written down.
        std::uniform_int_distribution<long> calls(std::max(1L, whole.firstWrite - 60), whole.calls);
        int problems = 0;
        for (int i = 0; i < times; ++i) {
            const long call = calls(random);
            const std::string problem = problemAfter(call, powerFails);
            if (problem.empty()) continue;
            if (++problems <= 5) ADD_FAILURE() << "call " << call << ": " << problem;
        }
        EXPECT_EQ(problems, 0) << "of " << times << ", seed " << seed;
        EXPECT_GT(cuts, times / 2) << "the others had ended before";
    }

    MountPointer images;
    int cuts = 0;
    std::string image = base + "/images/image";
};

TEST_F(RecoverTest, WhatAKillLeavesIsFinished) {
    NEEDS(prepare());
    cutOff(kills(), false, 20261122);
}

TEST_F(RecoverTest, WhatAPowerCutLeavesIsFinished) {
    NEEDS(prepare());
    cutOff(kills(), true, 7);
}

TEST_F(RecoverTest, OfTwoAtOnceEachFolderIsTakenOnce) {
    for (int i = 0; i < 8; ++i) {
        const std::string folder = mounted + "/" + std::to_string(i);
        makeTree(folder + "/Dorvanel X Items (1)", 2);
        setMode(folder + "/Dorvanel X Items (1)", 0700);
    }
    std::vector<std::unique_ptr<ChildProcess>> programs;
    for (int i = 0; i < 2; ++i) {
        programs.push_back(std::make_unique<ChildProcess>(std::vector<std::string>{
            DORVANEL_PROGRAM, "--home", home, "recover", "--yes", mounted}));
    }
    std::uint64_t removed = 0;
    for (const auto& program : programs) {
        for (std::string line = program->readLine(); !line.empty(); line = program->readLine()) {
            const std::size_t end = line.find(" files overwritten");
            if (end == std::string::npos) continue;
            removed += std::stoull(line.substr(line.rfind(' ', end - 1) + 1));
        }
        EXPECT_EQ(program->waitForEnd(), 0);
    }
    EXPECT_EQ(removed, 8U * 6U) << "by both together";
    EXPECT_TRUE(holdings().empty());
}

}  // namespace
}  // namespace dorvanel::test
