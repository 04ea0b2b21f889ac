// SPDX-License-Identifier: MIT
#include "platform/linux/PythonScript.h"

#include <gtest/gtest.h>

#include <vector>

namespace dorvanel::test {
namespace {

using platform::PythonScript;

PythonScript scriptOf(const std::vector<std::string>& arguments) {
    std::string text;
    for (const std::string& argument : arguments) text += argument + '\0';
    return platform::pythonScript(text);
}

PythonScript path(const std::string& text) {
    return {text, {}};
}

PythonScript module(const std::string& text) {
    return {{}, text};
}

const PythonScript nothing;

TEST(PythonScriptTest, TheFirstArgumentThatIsNoOptionIsTheScript) {
    EXPECT_EQ(scriptOf({"python3", "/usr/bin/qutebrowser", "--x", "y"}),
              path("/usr/bin/qutebrowser"));
    EXPECT_EQ(scriptOf({"python3", "-I", "-Es", "a.py"}), path("a.py"));
}

TEST(PythonScriptTest, TheValueOfAnOptionIsNoScript) {
    EXPECT_EQ(scriptOf({"python3", "-W", "ignore", "a.py"}), path("a.py"));
    EXPECT_EQ(scriptOf({"python3", "-Wignore", "-X", "dev", "a.py"}), path("a.py"));
    EXPECT_EQ(scriptOf({"python3", "-OEX", "dev", "a.py"}), path("a.py"));
    EXPECT_EQ(scriptOf({"python3", "--check-hash-based-pycs", "never", "a.py"}), path("a.py"));
}

TEST(PythonScriptTest, AModuleIsWhatStandsBehindItsOption) {
    EXPECT_EQ(scriptOf({"python3", "-m", "qutebrowser", "a.py"}), module("qutebrowser"));
    EXPECT_EQ(scriptOf({"python3", "-Im", "a.b"}), module("a.b"));
    EXPECT_EQ(scriptOf({"python3", "-ma.b"}), module("a.b"));
}

TEST(PythonScriptTest, AProgramFromTheCommandLineOrStandardInputIsNoScript) {
    EXPECT_EQ(scriptOf({"python3", "-c", "import x", "qutebrowser"}), nothing);
    EXPECT_EQ(scriptOf({"python3", "-Ec", "import x", "qutebrowser"}), nothing);
    EXPECT_EQ(scriptOf({"python3", "-", "qutebrowser"}), nothing);
    EXPECT_EQ(scriptOf({"python3", "", "qutebrowser"}), nothing);
    EXPECT_EQ(scriptOf({"python3"}), nothing);
    EXPECT_EQ(scriptOf({}), nothing);
}

TEST(PythonScriptTest, BehindTwoDashesThereAreNoOptions) {
    EXPECT_EQ(scriptOf({"python3", "--", "a.py"}), path("a.py"));
    EXPECT_EQ(scriptOf({"python3", "--"}), nothing);
}

TEST(PythonScriptTest, WhatIsCutOffIsReadAsFarAsItGoes) {
    EXPECT_EQ(scriptOf({"python3", "-m"}), nothing);
    EXPECT_EQ(scriptOf({"python3", "-W"}), nothing);
    EXPECT_EQ(platform::pythonScript(std::string("python3\0a.py", 12)), path("a.py"));
}

}  // namespace
}  // namespace dorvanel::test
