// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

namespace dorvanel::test {

/// A folder of its own for one test, removed with all it holds at the end. Below TMPDIR, or where
/// `parent` says.
class TemporaryFolder {
  public:
    explicit TemporaryFolder(const std::filesystem::path& parent = {});
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] std::string operator/(const std::string& name) const { return path_ / name; }

  private:
    std::filesystem::path path_;
};

/// A temporary folder that is HOME as long as it lives, with Library/Logs and Library/Preferences.
class TemporaryHome : public TemporaryFolder {
  public:
    TemporaryHome();
    ~TemporaryHome();

  private:
    std::string formerHome_;
};

/// Makes the folders above `path` where missing, then the file.
void writeFile(const std::filesystem::path& path, const std::string& contents = {});
/// The file's bytes; "" when there is none.
std::string readFile(const std::filesystem::path& path);

}  // namespace dorvanel::test
