// SPDX-License-Identifier: MIT
#include "platform/Medium.h"

#include <gmock/gmock.h>
#include <linux/magic.h>

#include <map>

#include "platform/linux/MediumSources.h"
#include "support/MountNamespace.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using platform::FileSystemFacts;
using platform::Medium;
using Kind = Medium::Kind;

/// File systems and disks that a test makes up.
class MediumTest : public testing::Test {
  protected:
    /// A disk of its own, as the kernel shows it.
    void addDisk(const std::string& name, unsigned minor, const char* rotational) {
        writeFile(devices() / name / "queue/rotational", std::string(rotational) + "\n");
        number(minor, name);
    }
    void number(unsigned minor, const std::string& device) {
        fs::create_directories(devices() / device);
        const fs::path link = sysfs_.path() / "dev/block" / ("8:" + std::to_string(minor));
        fs::create_directories(link.parent_path());
        fs::create_directory_symlink(devices() / device, link);
    }
    void addSlave(const std::string& disk, const std::string& slave) {
        const fs::path slaves = devices() / disk / "slaves";
        fs::create_directories(slaves);
        fs::create_directory_symlink(devices() / slave, slaves / fs::path(slave).filename());
    }
    [[nodiscard]] fs::path devices() const { return sysfs_.path() / "devices"; }

    /// Files of the file system `type`, on disk 8:`minor` or, without one, on none.
    void addFile(const std::string& path, std::uint32_t type, std::optional<unsigned> minor = {}) {
        files_[path] = {type, minor ? 8U : 0U, minor.value_or(77)};
    }
    [[nodiscard]] Medium mediumAt(const std::string& path) { return inspector_->mediumAt(path); }
    void forgetDisks() { inspector_->forgetDisks(); }
    [[nodiscard]] Kind kindAt(const std::string& path) { return mediumAt(path).kind; }

    int looks_ = 0;

  private:
    TemporaryFolder sysfs_;
    std::map<std::string, FileSystemFacts> files_;
    std::unique_ptr<platform::MediumInspector> inspector_ = platform::makeMediumInspector(
        platform::MediumSources{[this](const std::string& path) -> std::optional<FileSystemFacts> {
                                    ++looks_;
                                    const auto found = files_.find(path);
                                    if (found == files_.end()) return std::nullopt;
                                    return found->second;
                                },
                                sysfs_.path()});
};

TEST_F(MediumTest, FileSystemsThatDoNotWriteInPlaceAreNamed) {
    struct Case {
        std::uint32_t type;
        Kind kind;
        const char* name;
    };
    for (const Case& c :
         {Case{BTRFS_SUPER_MAGIC, Kind::copyOnWrite, "btrfs"},
          Case{0x2FC12FC1, Kind::copyOnWrite, "zfs"},
          Case{0xCA451A4E, Kind::copyOnWrite, "bcachefs"},
          Case{F2FS_SUPER_MAGIC, Kind::copyOnWrite, "f2fs"},
          Case{OVERLAYFS_SUPER_MAGIC, Kind::overlay, "overlay"},
          Case{NFS_SUPER_MAGIC, Kind::network, "nfs"},
          Case{CIFS_SUPER_MAGIC, Kind::network, "cifs"},
          Case{SMB2_SUPER_MAGIC, Kind::network, "smb2"}, Case{V9FS_MAGIC, Kind::network, "9p"},
          Case{FUSE_SUPER_MAGIC, Kind::userSpace, "fuse"}}) {
        addFile("/item", c.type);
        EXPECT_EQ(kindAt("/item"), c.kind) << c.name;
        EXPECT_EQ(mediumAt("/item").fileSystem, c.name);
    }
}

TEST_F(MediumTest, MemoryIsOverwrittenInPlace) {
    addFile("/item", TMPFS_MAGIC);
    EXPECT_EQ(kindAt("/item"), Kind::overwritable);
}

TEST_F(MediumTest, NothingIsSaidOfWhatIsNotThereOrNotKnown) {
    EXPECT_EQ(kindAt("/missing"), Kind::overwritable);
    addFile("/item", EXT4_SUPER_MAGIC, 3);  // a disk that the system shows nothing of
    EXPECT_EQ(kindAt("/item"), Kind::overwritable);
}

TEST_F(MediumTest, ADiskTellsWhetherItRotates) {
    addDisk("rotating", 0, "1");
    addDisk("solid", 16, "0");
    addFile("/rotating/item", EXT4_SUPER_MAGIC, 0);
    addFile("/solid/item", EXT4_SUPER_MAGIC, 16);
    EXPECT_EQ(kindAt("/rotating/item"), Kind::overwritable);
    EXPECT_EQ(kindAt("/solid/item"), Kind::solidState);
    EXPECT_EQ(mediumAt("/solid/item").fileSystem, "");
}

TEST_F(MediumTest, APartitionIsWhatItsDiskIs) {
    addDisk("solid", 16, "0");
    writeFile(devices() / "solid/solid1/partition", "1\n");
    number(17, "solid/solid1");
    addFile("/item", XFS_SUPER_MAGIC, 17);
    EXPECT_EQ(kindAt("/item"), Kind::solidState);
}

TEST_F(MediumTest, ADiskMadeOfOthersIsSolidStateWhereOneOfThemIs) {
    addDisk("rotating", 0, "1");
    addDisk("solid", 16, "0");
    writeFile(devices() / "solid/solid1/partition", "1\n");
    addDisk("mapped", 32, "1");
    addSlave("mapped", "rotating");
    addFile("/item", EXT4_SUPER_MAGIC, 32);
    EXPECT_EQ(kindAt("/item"), Kind::overwritable);

    addDisk("mapped twice", 33, "1");
    addSlave("mapped twice", "rotating");
    addSlave("mapped twice", "solid/solid1");
    addFile("/item2", EXT4_SUPER_MAGIC, 33);
    EXPECT_EQ(kindAt("/item2"), Kind::solidState);
}

TEST_F(MediumTest, AnImageLiesOnWhatItsFileLiesOn) {
    addDisk("image", 0, "0");
    writeFile(devices() / "image/loop/backing_file", "/images/one\n");
    addFile("/item", EXT4_SUPER_MAGIC, 0);
    EXPECT_EQ(kindAt("/item"), Kind::solidState) << "where the file cannot be seen";

    addDisk("image2", 1, "0");
    writeFile(devices() / "image2/loop/backing_file", "/images/two\n");
    addFile("/images/two", BTRFS_SUPER_MAGIC);
    addFile("/item2", EXT4_SUPER_MAGIC, 1);
    EXPECT_EQ(kindAt("/item2"), Kind::copyOnWrite);

    addDisk("image3", 2, "0");
    writeFile(devices() / "image3/loop/backing_file", "/images/three\n");
    addFile("/images/three", TMPFS_MAGIC);
    addFile("/item3", EXT4_SUPER_MAGIC, 2);
    EXPECT_EQ(kindAt("/item3"), Kind::overwritable);
}

TEST_F(MediumTest, ADiskOnItselfEnds) {
    addDisk("self", 0, "1");
    addSlave("self", "self");
    addFile("/item", EXT4_SUPER_MAGIC, 0);
    EXPECT_EQ(kindAt("/item"), Kind::overwritable);

    addDisk("image", 1, "1");
    writeFile(devices() / "image/loop/backing_file", "/item2\n");
    addFile("/item2", EXT4_SUPER_MAGIC, 1);
    EXPECT_EQ(kindAt("/item2"), Kind::overwritable);
}

TEST_F(MediumTest, AProgramThatKeepsItsFileSystemOnADiskWritesThere) {
    addDisk("rotating", 0, "1");
    addDisk("solid", 16, "0");
    addFile("/rotating/item", FUSE_SUPER_MAGIC, 0);
    addFile("/solid/item", FUSE_SUPER_MAGIC, 16);
    EXPECT_EQ(kindAt("/rotating/item"), Kind::overwritable);
    EXPECT_EQ(kindAt("/solid/item"), Kind::solidState);
}

TEST_F(MediumTest, ADiskIsLookedAtOnce) {
    addDisk("solid", 16, "0");
    addFile("/item", EXT4_SUPER_MAGIC, 16);
    EXPECT_EQ(kindAt("/item"), Kind::solidState);
    writeFile(devices() / "solid/queue/rotational", "1\n");
    EXPECT_EQ(kindAt("/item"), Kind::solidState);
    EXPECT_EQ(looks_, 2);
}

TEST_F(MediumTest, ADiskThatMayHaveGoneIsLookedAtAgain) {
    addDisk("solid", 16, "0");
    addFile("/item", EXT4_SUPER_MAGIC, 16);
    EXPECT_EQ(kindAt("/item"), Kind::solidState);
    writeFile(devices() / "solid/queue/rotational", "1\n");
    forgetDisks();
    EXPECT_EQ(kindAt("/item"), Kind::overwritable);
}

/// The kind of medium, in a child's mounts, of a file that `mounted` makes; "not allowed" where it
/// cannot mount.
template <typename Mount>
std::optional<std::string> kindInNamespace(const TemporaryFolder& folder, Mount mounted) {
    return inMountNamespace([&]() -> std::string {
        const std::string place = mounted(folder);
        if (place.empty()) return "not allowed";
        writeFile(place + "/item", "contents");
        const Medium medium = platform::makeMediumInspector()->mediumAt(place + "/item");
        return std::to_string(static_cast<int>(medium.kind)) + medium.fileSystem;
    });
}

void expectKind(const std::optional<std::string>& answer, Kind kind, const char* name) {
    if (!answer || *answer == "not allowed") {
        sayNotRun("this machine allows the test no mount of its own");
        return;
    }
    EXPECT_EQ(*answer, std::to_string(static_cast<int>(kind)) + name);
}

TEST(RealMediumTest, ATmpfsMountIsOverwrittenInPlace) {
    const TemporaryFolder folder;
    expectKind(kindInNamespace(folder,
                               [](const TemporaryFolder& in) {
                                   return mountTmpfs(in / "t") ? in / "t" : std::string();
                               }),
               Kind::overwritable, "");
}

TEST(RealMediumTest, AnOverlayMountIsNot) {
    const TemporaryFolder folder;
    expectKind(kindInNamespace(folder,
                               [](const TemporaryFolder& in) {
                                   fs::create_directory(in / "lower");
                                   // Its upper layer may not lie on every file system.
                                   const bool done = mountTmpfs(in / "t") &&
                                                     mountOverlay(in / "lower", in / "t/over");
                                   return done ? in / "t/over" : std::string();
                               }),
               Kind::overlay, "overlay");
}

TEST(RealMediumTest, AnExt4ImageInMemoryIsOverwrittenInPlace) {
    const TemporaryFolder folder;
    expectKind(kindInNamespace(folder,
                               [](const TemporaryFolder& in) {
                                   const bool done = mountTmpfs(in / "t") &&
                                                     mountExt4(in / "t/image", in / "ext4");
                                   return done ? in / "ext4" : std::string();
                               }),
               Kind::overwritable, "");
}

TEST(RealMediumTest, AnExt4ImageOnAnOverlayMountIsNot) {
    const TemporaryFolder folder;
    expectKind(kindInNamespace(folder,
                               [](const TemporaryFolder& in) {
                                   fs::create_directory(in / "lower");
                                   const bool done = mountTmpfs(in / "t") &&
                                                     mountOverlay(in / "lower", in / "t/over") &&
                                                     mountExt4(in / "t/over/image", in / "ext4");
                                   return done ? in / "ext4" : std::string();
                               }),
               Kind::overlay, "overlay");
}

}  // namespace
}  // namespace dorvanel::test
