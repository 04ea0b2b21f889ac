// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "app/desktop/MainThreadWake.h"

namespace dorvanel::desktop {

/// What is known of a file of a document.
struct FileFacts {
    enum class Kind { unknown, file, folder, link, other, missing };
    Kind kind = Kind::unknown;
    bool isCounted = false;   ///< whether the numbers are known
    std::uint64_t files = 0;  ///< in a folder, at any depth
    std::uint64_t bytes = 0;
};

/// Looks, on a thread of its own, which files are there, and how much is in them and in folders.
/// Reads no file and follows no link. Made, used and destroyed on the main thread.
class FileSurvey final {
  public:
    using Found = std::function<void(std::size_t index, const FileFacts& facts)>;

    /// `found` is called on the main thread: for every file once it was looked at, and for a folder
    /// again when it has been counted.
    explicit FileSurvey(Found found);
    ~FileSurvey();
    FileSurvey(const FileSurvey&) = delete;
    FileSurvey& operator=(const FileSurvey&) = delete;

    /// Begins anew; `countsFolders`: also what is in folders.
    void start(std::vector<std::string> files, bool countsFolders);
    /// Returns when the thread has ended, which is at once; nothing is found any more.
    void stop();

  private:
    void look(const std::vector<std::string>& files, bool countsFolders);
    void tell(std::size_t index, const FileFacts& facts);
    void deliver();

    Found found_;
    std::mutex mutex_;
    std::vector<std::pair<std::size_t, FileFacts>> results_;  ///< guarded by the mutex
    std::atomic<bool> stopping_ = false;
    MainThreadWake wake_{[this] { deliver(); }};
    std::thread thread_;
};

}  // namespace dorvanel::desktop
