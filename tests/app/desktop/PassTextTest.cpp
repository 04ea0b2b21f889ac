// SPDX-License-Identifier: MIT
#include "app/desktop/preferences/PassText.h"

#include <gtest/gtest.h>

namespace dorvanel::test {
namespace {

std::string text(const OverwriteSettings& settings) {
    return desktop::passText(settings).toStdString();
}

TEST(PassTextTest, WithoutASequenceItNamesNumberAndPattern) {
    EXPECT_EQ(text({.pattern = 3, .numberOfWrites = 2}), "Each file: 1 pass of zeros (0x00).");
    EXPECT_EQ(text({.pattern = 6, .numberOfWrites = 16}), "Each file: 35 passes of 0xAA.");
    EXPECT_EQ(text({.pattern = 9, .numberOfWrites = 1}),
              "Each file: 65536 passes of what was written last, or zeros.");
    EXPECT_EQ(text({}),
              "Each file: 1 to 4 passes of random data, the number drawn anew for each block.");
}

TEST(PassTextTest, ASequenceSaysItsPassesAndWhatItOverrules) {
    EXPECT_EQ(text({.pattern = 3, .numberOfWrites = 2, .doDSanitize = true}),
              "Each file: 3 passes: 0x55, 0xAA, random data. (DoD overrules the number of passes "
              "and the pattern.)");
    EXPECT_EQ(text({.pattern = 4, .numberOfWrites = 6, .nsa = true}),
              "Each file: 5 passes: first ones (0xFF), and at the end random data, random data, "
              "zeros (0x00). (NSA overrules the pattern of the last passes.)");
    EXPECT_EQ(
        text({.doDSanitize = true}),
        "Each file: 3 to 4 passes, the number drawn anew for each block; the last write 0x55, "
        "0xAA, random data. (DoD overrules the number of passes and the pattern.)");
    EXPECT_EQ(
        text({.pattern = 3, .numberOfWrites = 2, .doDSanitize = true, .nsa = true}),
        "Each file: 5 passes: first zeros (0x00), and at the end random data, random data, "
        "zeros (0x00). (NSA overrules DoD and the pattern; both together, the number of passes "
        "too.)");
}

}  // namespace
}  // namespace dorvanel::test
