// SPDX-License-Identifier: MIT
#pragma once

#include "platform/FileManager.h"

namespace dorvanel {

/// A file manager that moves and copies nothing, and answers as if it had: for a look at what would
/// happen. Main thread.
class UntouchedFiles final : public platform::FileManager {
  public:
    /// `files` must outlive it.
    explicit UntouchedFiles(platform::FileManager& files) : files_(files) {}

    [[nodiscard]] bool fileExistsAtPath(const std::string& path) const override {
        return files_.fileExistsAtPath(path);
    }
    [[nodiscard]] bool isDirectoryAtPath(const std::string& path) const override {
        return files_.isDirectoryAtPath(path);
    }
    [[nodiscard]] std::vector<std::string> directoryContentsAtPath(
        const std::string& path) const override {
        return files_.directoryContentsAtPath(path);
    }
    bool movePath(const std::string& from, const std::string& to) override {
        return files_.fileExistsAtPath(from) && !files_.fileExistsAtPath(to);
    }
    /// To where something was moved away before.
    bool copyPath(const std::string& from, const std::string& /*to*/) override {
        return files_.fileExistsAtPath(from);
    }

  private:
    platform::FileManager& files_;
};

}  // namespace dorvanel
