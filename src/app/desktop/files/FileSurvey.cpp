// SPDX-License-Identifier: MIT
#include "app/desktop/files/FileSurvey.h"

#include <filesystem>
#include <system_error>

namespace dorvanel::desktop {
namespace {

namespace fs = std::filesystem;

FileFacts factsOf(const std::string& path) {
    std::error_code error;
    FileFacts facts;
    switch (fs::symlink_status(path, error).type()) {
        case fs::file_type::not_found:
            facts.kind = FileFacts::Kind::missing;
            break;
        case fs::file_type::none:  // it cannot be looked at, and may be there
            break;
        case fs::file_type::regular:
            facts.kind = FileFacts::Kind::file;
            facts.bytes = fs::file_size(path, error);
            facts.isCounted = !error;
            break;
        case fs::file_type::directory:
            facts.kind = FileFacts::Kind::folder;
            break;
        case fs::file_type::symlink:
            facts.kind = FileFacts::Kind::link;
            break;
        default:
            facts.kind = FileFacts::Kind::other;
            break;
    }
    return facts;
}

/// False when it was stopped on the way.
bool countFolder(const std::string& path, const std::atomic<bool>& stopping, FileFacts& facts) {
    std::error_code error;
    fs::recursive_directory_iterator entry(path, fs::directory_options::skip_permission_denied,
                                           error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
        if (stopping) return false;
        std::error_code unknown;
        const fs::file_status status = entry->symlink_status(unknown);
        if (unknown || fs::is_directory(status)) continue;
        ++facts.files;
        if (!fs::is_regular_file(status)) continue;
        const std::uint64_t bytes = entry->file_size(unknown);
        if (!unknown) facts.bytes += bytes;
    }
    facts.isCounted = !error;
    return true;
}

}  // namespace

FileSurvey::FileSurvey(Found found) : found_(std::move(found)) {}

FileSurvey::~FileSurvey() {
    stop();
}

void FileSurvey::start(std::vector<std::string> files, bool countsFolders) {
    stop();
    stopping_ = false;
    thread_ = std::thread(
        [this, files = std::move(files), countsFolders] { look(files, countsFolders); });
}

void FileSurvey::stop() {
    stopping_ = true;
    if (thread_.joinable()) thread_.join();
    const std::scoped_lock lock(mutex_);
    results_.clear();
}

void FileSurvey::look(const std::vector<std::string>& files, bool countsFolders) {
    std::vector<std::size_t> folders;
    for (std::size_t i = 0; i < files.size() && !stopping_; ++i) {
        const FileFacts facts = factsOf(files[i]);
        if (facts.kind == FileFacts::Kind::folder) folders.push_back(i);
        tell(i, facts);
    }
    if (!countsFolders) return;
    for (const std::size_t folder : folders) {
        FileFacts facts{.kind = FileFacts::Kind::folder};
        if (!countFolder(files[folder], stopping_, facts)) return;
        tell(folder, facts);
    }
}

void FileSurvey::tell(std::size_t index, const FileFacts& facts) {
    {
        const std::scoped_lock lock(mutex_);
        results_.emplace_back(index, facts);
    }
    wake_.post();
}

void FileSurvey::deliver() {
    std::vector<std::pair<std::size_t, FileFacts>> results;
    {
        const std::scoped_lock lock(mutex_);
        results.swap(results_);
    }
    for (const auto& [index, facts] : results) found_(index, facts);
}

}  // namespace dorvanel::desktop
