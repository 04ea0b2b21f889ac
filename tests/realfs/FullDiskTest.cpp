// SPDX-License-Identifier: MIT

// No room for more: the old bytes are overwritten in place all the same.
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include "realfs/RealFsFixture.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::Not;

class FullDiskTest : public RealFsTest {
  protected:
    /// Takes all the room that there is but for one block, which a holding folder needs.
    static void fill(const std::string& file) {
        writeFile(file + " last", "block");
        const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        for (std::size_t size : {std::size_t{1} << 16, std::size_t{4096}, std::size_t{1}}) {
            const std::string bytes(size, 'f');
            while (write(descriptor, bytes.data(), size) > 0) {
            }
        }
        fsync(descriptor);
        close(descriptor);
        fs::remove(file + " last");
    }

    static void expectReplaced(const std::string& old, const std::string& now) {
        ASSERT_GE(now.size(), old.size());
        std::size_t kept = 0;
        for (std::size_t at = 0; at < old.size(); at += 512) {
            if (now.compare(at, 512, old, at, 512) == 0) ++kept;
        }
        EXPECT_EQ(kept, 0U) << "of the old sectors";
    }
};

TEST_F(FullDiskTest, AFileIsOverwrittenAndGone) {
    const MountPointer disk = mountNewImage("ext4", base + "/image", mounted, 8, "-q -b 1024 -m 0");
    NEEDS(disk);
    const std::string old = recognisable(std::size_t{64} << 10);  // whole blocks: no room behind
    writeFile(mounted + "/work/file", old);
    hardLink(mounted + "/work/file", mounted + "/witness");
    fs::create_directory(mounted + "/work/folder");
    fill(mounted + "/filler");
    const Ran ran = shred(mounted + "/work/file");
    EXPECT_EQ(ran.status, 0) << ran;
    EXPECT_THAT(ran.out, Not(HasSubstr("not wholly")));
    EXPECT_FALSE(fs::exists(mounted + "/work/file"));
    expectReplaced(old, readFile(mounted + "/witness"));
}

TEST_F(FullDiskTest, ATreeIsOverwrittenAndGone) {
    const MountPointer disk = mountNewImage("ext4", base + "/image", mounted, 8, "-q -b 1024 -m 0");
    NEEDS(disk);
    makeTree(mounted + "/tree");
    fill(mounted + "/filler");
    const Ran ran = shred(mounted + "/tree");
    EXPECT_EQ(ran.status, 0) << ran;
    EXPECT_FALSE(fs::exists(mounted + "/tree"));
}

TEST_F(FullDiskTest, ALimitOfTheFilesSizeIsNoFailureWhereTheOldBytesAreReplaced) {
    const std::string old = recognisable(std::size_t{64} << 10);
    writeFile(base + "/work/file", old);
    hardLink(base + "/work/file", base + "/witness");
    const Ran ran = dorvanel({"shred", base + "/work/file"}, [&] {
        const rlimit limit{old.size(), old.size()};
        setrlimit(RLIMIT_FSIZE, &limit);
    });
    EXPECT_EQ(ran.status, 0) << ran;
    EXPECT_FALSE(fs::exists(base + "/work/file"));
    expectReplaced(old, readFile(base + "/witness"));
}

TEST_F(FullDiskTest, ALimitBelowTheFilesSizeIsTold) {
    writeFile(base + "/work/file", recognisable(std::size_t{64} << 10));
    const Ran ran = dorvanel({"shred", base + "/work/file"}, [&] {
        const rlimit limit{std::size_t{32} << 10, std::size_t{32} << 10};
        setrlimit(RLIMIT_FSIZE, &limit);
    });
    EXPECT_EQ(ran.status, 1) << ran;
    EXPECT_THAT(ran.out + ran.err, HasSubstr("not wholly overwritten"));
}

}  // namespace
}  // namespace dorvanel::test
