// SPDX-License-Identifier: MIT
#include "platform/linux/ApplicationBundle.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

using platform::applicationBundleOf;
using platform::kindOfBundle;

struct Place {
    const char* executable;
    const char* bundle;
};

void PrintTo(const Place& place, std::ostream* stream) {
    *stream << ::testing::PrintToString(std::string_view(place.executable));
}

class BundlePlaceTest : public ::testing::TestWithParam<Place> {};

TEST_P(BundlePlaceTest, IsFoundFromTheExecutable) {
    EXPECT_EQ(applicationBundleOf(GetParam().executable), GetParam().bundle);
}

INSTANTIATE_TEST_SUITE_P(
    Places, BundlePlaceTest,
    ::testing::Values(Place{"/A/Safari.app/Contents/MacOS/Safari", "/A/Safari.app"},
                      Place{"/A/Safari.app/Contents/MacOS/Safari (deleted)", "/A/Safari.app"},
                      Place{"/A/Safari.app/Contents/x", "/A/Safari.app"},
                      Place{"/A/a.app.app/Contents/x", "/A/a.app.app"},
                      Place{"/A/One.app/Contents/Helpers/Two.app/Contents/MacOS/x",
                            "/A/One.app/Contents/Helpers/Two.app"},
                      Place{"/A/One.app/Contents/.app/Contents/x", "/A/One.app"},
                      Place{"/A/Safari.app/Contents", ""}, Place{"/A/Safari.app/MacOS/x", ""},
                      Place{"/A/.app/Contents/x", ""}, Place{"/A/Safari/Contents/x", ""},
                      Place{"/A/Safari.apple/Contents/x", ""}, Place{"/usr/bin/x", ""},
                      Place{"", ""}));

TEST(BundleNameTest, IsTheFolderWithoutItsSuffix) {
    EXPECT_EQ(platform::bundleName("/A/Internet Explorer.app"), "Internet Explorer");
}

class PkgInfoTest : public ::testing::Test {
  protected:
    void SetUp() override { std::filesystem::create_directories(file.parent_path()); }
    void expectKind(FourCharCode type, FourCharCode creator) const {
        const platform::BundleKind kind = kindOfBundle(folder / "Safari.app");
        EXPECT_EQ(kind.type, type);
        EXPECT_EQ(kind.creator, creator);
    }
    void expectNothingSaid() const {
        expectKind(fourCharCode("\?\?\?\?"), fourCharCode("\?\?\?\?"));
    }

    TemporaryFolder folder;
    std::filesystem::path file = folder / "Safari.app/Contents/PkgInfo";
};

TEST_F(PkgInfoTest, HasTheTypeAndThenTheCreator) {
    writeFile(file, "APPLsfri");
    expectKind(fourCharCode("APPL"), fourCharCode("sfri"));
}

TEST_F(PkgInfoTest, OnlyItsFirstEightBytesMatterHoweverManyThereAre) {
    writeFile(file, "APPLsfri\n");
    std::filesystem::resize_file(file, std::uintmax_t{1} << 40);
    expectKind(fourCharCode("APPL"), fourCharCode("sfri"));
}

TEST_F(PkgInfoTest, MayHoldAnyBytes) {
    writeFile(file, std::string("\xff\0%n\xc4\x01\x02\x03", 8));
    expectKind(0xff00256eU, 0xc4010203U);
}

TEST_F(PkgInfoTest, SaysNothingWhenItIsShort) {
    writeFile(file, "APPLsfr");
    expectNothingSaid();
}

TEST_F(PkgInfoTest, SaysNothingWhenItIsEmptyOrMissing) {
    expectNothingSaid();
    writeFile(file);
    expectNothingSaid();
}

TEST_F(PkgInfoTest, IsNotWaitedForWhenItIsAFifo) {
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    expectNothingSaid();
}

TEST_F(PkgInfoTest, SaysNothingWhenItIsAFolder) {
    std::filesystem::create_directory(file);
    expectNothingSaid();
}

}  // namespace
}  // namespace dorvanel::test
