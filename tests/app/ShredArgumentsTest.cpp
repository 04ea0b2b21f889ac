// SPDX-License-Identifier: MIT
#include "app/ShredArguments.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "support/ForwardingSystemCalls.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using Strings = std::vector<std::string>;

using platform::FileStatus;

/// Moves a folder once the way to it has been looked at and before trees are looked through.
class MovingSystemCalls final : public ForwardingSystemCalls {
  public:
    MovingSystemCalls(platform::SystemCalls& system, std::string from, std::string to)
        : ForwardingSystemCalls(system), from_(std::move(from)), to_(std::move(to)) {}

    int openFolder(int folder, const char* name) override {
        if (fs::exists(from_)) fs::rename(from_, to_);
        return ForwardingSystemCalls::openFolder(folder, name);
    }

  private:
    std::string from_, to_;
};

/// Shows the folder of some name, and what is in it, as on a mount of its own.
class MountingSystemCalls final : public ForwardingSystemCalls {
  public:
    MountingSystemCalls(platform::SystemCalls& system, std::string name)
        : ForwardingSystemCalls(system), name_(std::move(name)) {}

    int status(int descriptor, FileStatus& status) override {
        const int result = ForwardingSystemCalls::status(descriptor, status);
        std::error_code error;
        const fs::path path =
            fs::read_symlink("/proc/self/fd/" + std::to_string(descriptor), error);
        if (std::find(path.begin(), path.end(), name_) != path.end()) status.mount = 4711;
        return result;
    }

  private:
    std::string name_;
};

/// Cannot open the folder of some name.
class UnopenableSystemCalls final : public ForwardingSystemCalls {
  public:
    UnopenableSystemCalls(platform::SystemCalls& system, std::string name, int code)
        : ForwardingSystemCalls(system), name_(std::move(name)), code_(code) {}

    int openFolder(int folder, const char* name) override {
        return name == name_ ? -code_ : ForwardingSystemCalls::openFolder(folder, name);
    }

  private:
    std::string name_;
    int code_;
};

/// A working folder with a few things in it, and a home folder beside it.
class ShredArgumentsTest : public ::testing::Test {
  protected:
    ShredArgumentsTest() : former_(fs::current_path()) {
        base = fs::canonical(folder.path());
        fs::create_directories(base / "people/jo/Documents");
        fs::create_directories(base / "work/sub");
        writeFile(base / "work/file");
        writeFile(base / "work/sub/inner");
        fs::current_path(base / "work");
    }
    ~ShredArgumentsTest() override { fs::current_path(former_); }

    ShredArguments check(const Strings& arguments) {
        return checkShredArguments(arguments, home, mountPoints, *system);
    }
    /// The reason why one argument is refused; "" when it is not.
    std::string refusal(const std::string& argument) {
        const auto checked = check({argument});
        EXPECT_EQ(checked.complaints.size() + checked.items.size(), 1U);
        if (checked.complaints.empty()) return "";
        EXPECT_EQ(checked.complaints[0].argument, argument);
        return checked.complaints[0].reason;
    }
    [[nodiscard]] std::string at(const std::string& path) const { return base / path; }

    TemporaryFolder folder;
    fs::path base;
    std::string home = (fs::canonical(folder.path()) / "people/jo").string();
    Strings mountPoints = {"/", "/proc"};
    std::unique_ptr<platform::SystemCalls> system = platform::makeSystemCalls();

  private:
    fs::path former_;
};

TEST_F(ShredArgumentsTest, AbsolutePathsAreMadeOfTheArgumentsInTheirOrder) {
    writeFile(at("work/-rf"));
    const auto checked = check({"file", "sub/", "./sub/../-rf", at("work//sub/inner")});
    EXPECT_TRUE(checked.complaints.empty());
    EXPECT_EQ(checked.paths(),
              (Strings{at("work/file"), at("work/sub"), at("work/-rf"), at("work/sub/inner")}));
}

TEST_F(ShredArgumentsTest, NamesAreBytes) {
    const Strings names = {"caf\xE9", "a\nb", "[a,b]", "100%", "~", "*", "\\", " "};
    Strings expected;
    for (const std::string& name : names) {
        writeFile(at("work/") + name);
        expected.push_back(at("work/") + name);
    }
    EXPECT_EQ(check(names).paths(), expected);
}

TEST_F(ShredArgumentsTest, TheSamePathTwiceIsTakenOnce) {
    fs::create_directory_symlink(at("work"), at("alias"));
    EXPECT_EQ(check({"file", "./file", "sub/../file", at("work/file"), at("alias/file")}).paths(),
              Strings{at("work/file")});
}

TEST_F(ShredArgumentsTest, WhatDoesNotExistIsRefused) {
    for (const char* name : {"nope", "nope/", "nope/file", "./nope", "/nonexistent/file"}) {
        EXPECT_EQ(refusal(name), "does not exist") << name;
    }
    EXPECT_EQ(refusal(""), "an empty name stands for nothing");
    EXPECT_EQ(refusal("file/"), "cannot be looked at: Not a directory");
    EXPECT_EQ(refusal("file/x"), "cannot be looked at: Not a directory");
    EXPECT_EQ(refusal(std::string(300, 'x')), "cannot be looked at: File name too long");
}

TEST_F(ShredArgumentsTest, ALinkThatLeadsNowhereIsNamedAsWhatItIs) {
    fs::create_symlink("gone", at("work/dangling"));
    fs::create_symlink("circle", at("work/circle"));
    EXPECT_EQ(refusal("dangling"), "is a symbolic link to \"gone\", which does not exist");
    EXPECT_EQ(refusal("circle"), "is a symbolic link that leads in a circle");
}

TEST_F(ShredArgumentsTest, TheRootAndDotsAreRefusedHoweverTheyAreWritten) {
    for (const char* name : {"/", "//", "///"}) {
        EXPECT_EQ(refusal(name), "is the root of the file system") << name;
    }
    for (const char* name : {".", "..", "./", "../", ".//", "sub/.", "sub/..", "sub/./", "sub/../",
                             "/.", "/..", "/usr/..", "nope/..", "./.", "../.."}) {
        EXPECT_EQ(refusal(name), "is never shredded") << name;
    }
    writeFile(at("work/..."));
    writeFile(at("work/..a"));
    EXPECT_EQ(refusal("..."), "");
    EXPECT_EQ(refusal("..a"), "");
}

TEST_F(ShredArgumentsTest, TheHomeFolderAndThoseAboveItAreRefused) {
    const std::string reason = "is the home folder or a folder above it";
    for (const std::string& name : {at("people/jo"), at("people/jo/"), at("people"), base.string(),
                                    std::string("../people/jo"), std::string("../people/./jo/"),
                                    std::string("sub/../../people"), std::string("/tmp")}) {
        if (name == "/tmp" && !base.string().starts_with("/tmp/")) continue;
        EXPECT_EQ(refusal(name), reason) << name;
    }
    EXPECT_EQ(refusal(at("people/jo/Documents")), "");
    fs::create_directory(at("people/joan"));
    EXPECT_EQ(refusal(at("people/joan")), "");
}

TEST_F(ShredArgumentsTest, TheHomeFolderIsKnownThroughLinksOnTheWay) {
    const std::string reason = "is the home folder or a folder above it";
    fs::create_directory_symlink(at("people"), at("alias"));
    EXPECT_EQ(refusal(at("alias/jo")), reason);
    // HOME itself leads through links: neither they nor what they lead to may go.
    home = at("alias/jo");
    EXPECT_EQ(refusal(at("people/jo")), reason);
    EXPECT_EQ(refusal(at("people")), reason);
    EXPECT_EQ(refusal(at("alias")), reason) << "without it HOME leads nowhere";
    EXPECT_EQ(refusal(at("alias/")), reason);
    fs::create_directory_symlink(at("people/jo"), at("home"));
    home = at("home");
    EXPECT_EQ(refusal(at("people/jo")), reason);
    EXPECT_EQ(refusal(at("home")), reason);
    home = at("home/.");
    EXPECT_EQ(refusal(at("people/jo")), reason);
    home = at("people/jo/../jo//");
    EXPECT_EQ(refusal(at("people/jo")), reason);
}

TEST_F(ShredArgumentsTest, ALinkToTheHomeFolderIsOnlyALink) {
    fs::create_directory_symlink(at("people/jo"), at("work/shortcut"));
    EXPECT_EQ(refusal("shortcut"), "");
    EXPECT_EQ(check({"shortcut/"}).paths(), Strings{at("work/shortcut")});
}

TEST_F(ShredArgumentsTest, AMissingOrUnknownHomeProtectsWhatIsThereOfIt) {
    home = "";
    EXPECT_EQ(refusal(at("people/jo")), "");
    home = at("people/missing/deep");
    EXPECT_EQ(refusal(at("people")), "is the home folder or a folder above it");
    EXPECT_EQ(refusal(at("people/jo")), "");
}

TEST_F(ShredArgumentsTest, WhatIsOrHoldsAMountPointIsRefused) {
    fs::create_directories(at("work/sub/disk"));
    fs::create_directories(at("work/substitute"));
    mountPoints.push_back(at("work/sub/disk"));
    mountPoints.push_back(at("work/file"));  // a single file can be mounted too
    EXPECT_EQ(refusal("sub/disk"), "is a mount point");
    EXPECT_EQ(refusal("sub/disk/"), "is a mount point");
    EXPECT_EQ(refusal("file"), "is a mount point");
    EXPECT_EQ(refusal("sub"), "holds the mount point \"" + at("work/sub/disk") + "\"");
    EXPECT_EQ(refusal("sub/inner"), "");
    EXPECT_EQ(refusal("substitute"), "");
    fs::create_directory_symlink(at("work/sub"), at("work/shortcut"));
    EXPECT_EQ(refusal("shortcut/disk"), "is a mount point") << "links on the way are followed";
    EXPECT_EQ(refusal("shortcut"), "") << "only the link would go";
}

TEST_F(ShredArgumentsTest, TheHomeFolderIsFoundFarInsideOfAnItem) {
    // The folders above it are known too, so only another way to it leads past them: here the home
    // folder was moved while somebody was logged in.
    fs::create_directories(at("work/sub/deep/down"));
    home = at("people/jo");
    MovingSystemCalls moving(*system, at("people/jo"), at("work/sub/deep/down/jo"));
    const auto checked = checkShredArguments({"file", at("work/sub")}, home, mountPoints, moving);
    ASSERT_EQ(checked.complaints.size(), 1U);
    EXPECT_EQ(checked.complaints[0].reason, "holds the home folder or a folder above it, \"" +
                                                at("work/sub/deep/down/jo") + "\"");
}

TEST_F(ShredArgumentsTest, AnItemIsTheOneThatWasLookedAtWhateverItsPathLeadsToLater) {
    const auto checked = check({"sub/inner"});
    fs::rename(at("work/sub"), at("work/former"));
    fs::create_directory_symlink(at("people/jo"), at("work/sub"));
    ASSERT_EQ(checked.items.size(), 1U);
    const HeldItem& item = checked.items[0];
    platform::FileStatus now;
    ASSERT_NE(item.parent, nullptr);
    ASSERT_GE(
        system->statusAt(item.parent->get(), "inner", platform::SystemCalls::Links::stay, now), 0);
    EXPECT_TRUE(now.isSameAs(item.status));
}

TEST_F(ShredArgumentsTest, WhatIsReachedByAnotherMountThanItsFolderIsAMountPoint) {
    // As a mount is that the table shows at another path.
    MountingSystemCalls mounting(*system, "disk");
    fs::create_directories(at("work/sub/deep/disk/more"));
    const auto refusals = [&](const std::string& argument) {
        const auto checked = checkShredArguments({argument}, home, mountPoints, mounting);
        return checked.complaints.empty() ? "" : checked.complaints[0].reason;
    };
    EXPECT_EQ(refusals("sub/deep/disk"), "is a mount point");
    EXPECT_EQ(refusals("sub"), "holds the mount point \"" + at("work/sub/deep/disk") + "\"");
    EXPECT_EQ(refusals("sub/inner"), "");

    // Who does not have the inside checked learns the rest all the same.
    const auto left =
        checkShredArguments({"sub", "sub/deep/disk"}, home, mountPoints, mounting,
                            platform::SystemCalls::Links::follow, {}, ShredArguments::Inside::left);
    EXPECT_EQ(left.paths(), Strings{at("work/sub")});
    ASSERT_EQ(left.complaints.size(), 1U);
    EXPECT_EQ(left.complaints[0].reason, "is a mount point");
}

TEST_F(ShredArgumentsTest, AFolderThatCannotBeLookedIntoIsRefusedUnlessItsOwnerClosedIt) {
    fs::create_directories(at("work/sub/odd/more"));
    UnopenableSystemCalls broken(*system, "odd", EIO);
    EXPECT_EQ(
        checkShredArguments({"sub"}, home, mountPoints, broken).complaints.at(0).reason,
        "holds \"" + at("work/sub/odd") + "\", which cannot be looked at: Input/output error");
    UnopenableSystemCalls closed(*system, "odd", EACCES);
    EXPECT_TRUE(checkShredArguments({"sub"}, home, mountPoints, closed).complaints.empty());
}

TEST_F(ShredArgumentsTest, EveryOffenderIsNamed) {
    const auto checked = check({"file", "nope", ".", at("people/jo"), "sub", "/"});
    Strings offenders;
    for (const auto& complaint : checked.complaints) offenders.push_back(complaint.argument);
    EXPECT_EQ(offenders, (Strings{"nope", ".", at("people/jo"), "/"}));
    EXPECT_EQ(checked.paths(), (Strings{at("work/file"), at("work/sub")}));
}

}  // namespace
}  // namespace dorvanel::test
