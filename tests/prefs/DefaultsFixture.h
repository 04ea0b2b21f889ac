// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "prefs/PropertyListDefaults.h"
#include "support/Python.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {

/// A home folder whose property list Python reads and writes.
class DefaultsFixture : public ::testing::Test {
  protected:
    std::unique_ptr<platform::UserDefaults> open() {
        return openUserDefaults(userDefaultsPath(),
                                [this](const Error& error) { reports.push_back(error.message()); });
    }

    /// Stores the Python dictionary `values` in the property list; `format` is XML or BINARY.
    void store(const std::string& values, const std::string& format = "XML") {
        python(preferences(),
               "import plistlib, datetime\n"
               "with open('" +
                   name +
                   "', 'wb') as file:\n"
                   "    plistlib.dump(" +
                   values + ", file, fmt=plistlib.FMT_" + format + ", sort_keys=False)\n");
    }
    /// Python's repr() of the expression, in which the stored dictionary is `d`.
    std::string stored(const std::string& expression = "d") {
        return python(preferences(),
                      "import plistlib\n"
                      "d = plistlib.load(open('" +
                          name +
                          "', 'rb'))\n"
                          "print(repr(" +
                          expression + "))\n");
    }
    [[nodiscard]] std::string preferences() const { return home / "Library/Preferences"; }
    [[nodiscard]] std::string path() const { return userDefaultsPath(); }
    /// The names in the Preferences folder, sorted.
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(preferences())) {
            found.push_back(entry.path().filename());
        }
        std::sort(found.begin(), found.end());
        return found;
    }

    TemporaryHome home;
    std::string name = "com.dorvanel.DorvanelX.plist";
    std::vector<std::string> reports;
};

}  // namespace dorvanel::test
