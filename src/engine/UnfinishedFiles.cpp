// SPDX-License-Identifier: MIT
#include "engine/UnfinishedFiles.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "engine/UnfinishedEntry.h"

namespace dorvanel {

using platform::FileStatus;
using platform::SystemCalls;

UnfinishedFiles::UnfinishedFiles(SystemCalls& system, platform::CleaningCalls& files,
                                 std::string path)
    : system_(system), folder_(system, files, std::move(path)) {}

void UnfinishedFiles::begins(const std::string& folder, const std::string& name,
                             const FileStatus& parent) {
    const auto isIt = [&](const Written& written) {
        return written.folder == folder && written.name == name &&
               written.parent == Identity::of(parent);
    };
    if (std::ranges::any_of(written_, isIt)) return;
    // What is still there after everything was tried is left: no work of ours any more.
    if (isFull()) written_.clear();
    if (spent_.size() >= mostWritten / 2) shredSpent();
    Written written{folder, name, Identity::of(parent), {}};
    const Result<Done> done = write(written, parent);
    if (!done) return tell(done.error());
    written_.push_back(std::move(written));
}

Result<Done> UnfinishedFiles::write(Written& written, const FileStatus& parent) {
    std::error_code error;
    const std::filesystem::path real = std::filesystem::canonical(written.folder, error);
    FileStatus found;
    int code = error.value();
    if (code == 0) {
        code = -system_.statusAt(SystemCalls::workingFolder, real.c_str(), SystemCalls::Links::stay,
                                 found);
    }
    if (code == 0 && !found.isSameAs(parent)) code = ESTALE;
    if (code != 0) return Error{code, "look at", written.folder, {}};
    if (folder_.descriptor() < 0) {
        Result<Done> opened = folder_.openOrMake();
        if (!opened) return opened;
    }
    Result<UnfinishedFolder::File> file = folder_.write(
        textOf({real.native(), written.name, parent.device, parent.inode, parent.born}));
    if (!file) return file.error();
    written.file = std::move(file.value());
    return Done{};
}

void UnfinishedFiles::ended(const std::string& folder, const std::string& name) {
    std::erase_if(written_, [&](Written& written) {
        const bool isIt = written.folder == folder && written.name == name;
        if (isIt) spent_.push_back(std::move(written.file));
        return isIt;
    });
}

void UnfinishedFiles::requestEnds() {
    shredSpent();
    written_.clear();
    folder_.close();
}

void UnfinishedFiles::shredSpent() {
    folder_.shred(spent_);
}

void UnfinishedFiles::tell(const Error& error) {
    if (std::exchange(hasTold_, true) || !onTrouble) return;
    onTrouble(error);
}

}  // namespace dorvanel
