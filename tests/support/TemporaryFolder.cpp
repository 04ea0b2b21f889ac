// SPDX-License-Identifier: MIT
#include "support/TemporaryFolder.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace dorvanel::test {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder(const fs::path& parent) {
    std::string name = (parent.empty() ? fs::temp_directory_path() : parent) / "dorvanel-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("mkdtemp " + name);
    path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

TemporaryHome::TemporaryHome() {
    if (const char* home = std::getenv("HOME")) formerHome_ = home;
    fs::create_directories(path() / "Library/Logs");
    fs::create_directories(path() / "Library/Preferences");
    setenv("HOME", path().c_str(), 1);
}

TemporaryHome::~TemporaryHome() {
    setenv("HOME", formerHome_.c_str(), 1);
}

void writeFile(const fs::path& path, const std::string& contents) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << contents;
}

std::string readFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace dorvanel::test
