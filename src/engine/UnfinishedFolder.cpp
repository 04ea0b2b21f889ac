// SPDX-License-Identifier: MIT
#include "engine/UnfinishedFolder.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <utility>

#include "base/PathComponents.h"
#include "engine/FolderRights.h"
#include "platform/FileManager.h"

namespace dorvanel {

using platform::CleaningStatus;
using platform::EntryKind;
using platform::FileStatus;
using platform::SystemCalls;
using Links = platform::SystemCalls::Links;

namespace {

constexpr std::uint32_t ownerOnly = 0700;
constexpr std::uint32_t fileOfOwner = 0600;
constexpr const char* ofProgram = "dorvanel";
constexpr const char* ofFiles = "unfinished";
/// As many folders of the path as may be made: "~/.local/state/dorvanel/unfinished".
constexpr int mostMade = 4;
/// Up to here each file is flushed by itself: a flush of the whole file system would also wait for
/// what other programs have written.
constexpr std::size_t fewFiles = 4;

std::string folderOf(const std::string& path) {
    return path.substr(0, path.rfind('/'));
}

}  // namespace

UnfinishedFolder::UnfinishedFolder(SystemCalls& system, platform::CleaningCalls& files,
                                   std::string path)
    : system_(system), files_(files), path_(std::move(path)) {}

void UnfinishedFolder::close() {
    if (folder_ >= 0) system_.close(folder_);
    folder_ = -1;
}

Error UnfinishedFolder::failure(const char* operation, int code) const {
    if (!reason_.empty()) return Error{0, operation, path_, reason_};
    return Error{-code, operation, path_, {}};
}

/// Opens a folder that must be the user's own.
int UnfinishedFolder::openPart(int in, const char* name, int& opened) {
    opened = system_.openFolder(in, name);
    if (opened < 0) return opened;
    FileStatus status;
    const int result = system_.status(opened, status);
    const std::uint32_t user = system_.effectiveUser();
    if (result >= 0 && status.owner == user && !othersMayWriteIn(status, user)) return 0;
    system_.close(std::exchange(opened, -1));
    if (result < 0) return result;
    reason_ = "it is not the user's alone";
    return -EPERM;
}

Result<bool> UnfinishedFolder::open() {
    close();
    reason_.clear();
    if (path_.empty()) return false;
    const std::string around = folderOf(folderOf(path_));
    const int base =
        system_.openReference(SystemCalls::workingFolder, around.c_str(), Links::follow);
    int own = -1;
    int result = base < 0 ? base : openPart(base, ofProgram, own);
    if (result >= 0) result = openPart(own, ofFiles, folder_);
    if (base >= 0) system_.close(base);
    if (own >= 0) system_.close(own);
    if (result == -ENOENT) return false;
    if (result < 0) return failure("open", result);
    isInMemory_ = system_.livesInMemory(folder_) == 1;
    return true;
}

/// Makes the missing ones of the lowest folders.
int UnfinishedFolder::make() {
    std::vector<std::string> missing;
    std::string path = path_;
    for (int i = 0; i < mostMade && !path.empty(); ++i, path = folderOf(path)) {
        FileStatus status;
        const int result =
            system_.statusAt(SystemCalls::workingFolder, path.c_str(), Links::follow, status);
        if (result >= 0) break;
        if (result != -ENOENT) return result;
        missing.push_back(path);
    }
    while (!missing.empty()) {
        const int made =
            system_.makeFolder(SystemCalls::workingFolder, missing.back().c_str(), ownerOnly);
        if (made < 0 && made != -EEXIST) return made;
        missing.pop_back();
    }
    return 0;
}

Result<Done> UnfinishedFolder::openOrMake() {
    Result<bool> opened = open();
    if (opened && !opened.value()) {
        if (path_.empty())
            return Error{0, "open", path_, "there is no home folder of the user's own"};
        const int made = make();
        if (made < 0) return failure("make folder", made);
        opened = open();
    }
    if (!opened) return opened.error();
    if (!opened.value()) return failure("open", -ENOENT);
    return Done{};
}

/// Makes a file that is not in force, and locks it before anybody takes it for one that is left.
int UnfinishedFolder::create(std::string& hidden, int& file) {
    constexpr int attempts = 8;
    int result = -EAGAIN;
    for (int i = 0; i < attempts && (result == -EAGAIN || result == -EEXIST); ++i) {
        std::array<std::uint8_t, 16> bytes;
        result = files_.randomBytes(bytes.data(), bytes.size());
        if (result < 0) return result;
        hidden = ".";
        for (const std::uint8_t byte : bytes) hidden += fmt::format("{:02x}", byte);
        file = files_.createFile(folder_, hidden.c_str());
        result = file;
        if (file < 0) continue;
        CleaningStatus status;
        result = files_.lock(file, 0, 0);
        if (result >= 0) result = files_.status(file, status);
        if (result >= 0 && status.links == 0) result = -EAGAIN;  // taken for a left one
        if (result >= 0 && status.permissions != fileOfOwner) {
            result = files_.changeMode(file, fileOfOwner);
        }
        if (result >= 0) return 0;
        files_.removeFile(folder_, hidden.c_str());
        files_.close(std::exchange(file, -1));
    }
    return result;
}

int UnfinishedFolder::fill(int file, std::string_view text) {
    std::uint64_t at = 0;
    while (at < text.size()) {
        const std::ptrdiff_t written = files_.writeAt(file, text.data() + at, text.size() - at, at);
        if (written <= 0) return written < 0 ? static_cast<int>(written) : -EIO;
        at += static_cast<std::uint64_t>(written);
    }
    return 0;
}

Result<UnfinishedFolder::File> UnfinishedFolder::write(std::string_view text) {
    reason_.clear();
    std::string hidden;
    int file = -1;
    const int created = create(hidden, file);
    if (created < 0) return failure("create", created);
    File made{hidden.substr(1), std::make_shared<const HeldDescriptor>(system_, file)};
    int result = fill(file, text);
    if (result >= 0 && !isInMemory_) result = files_.flush(file);
    if (result >= 0) result = files_.rename(folder_, hidden.c_str(), made.name.c_str());
    if (result >= 0) {
        const int flushed = isInMemory_ ? 0 : files_.flush(folder_);
        if (flushed >= 0 || flushed == -EINVAL) return made;  // some know no flush of folders
        result = flushed;
        hidden = made.name;
    }
    overwrite(file);
    files_.removeFile(folder_, hidden.c_str());
    return failure("write", result);
}

bool UnfinishedFolder::overwrite(int file) {
    CleaningStatus status;
    if (files_.status(file, status) < 0) return false;
    std::array<char, 4096> bytes;
    for (std::uint64_t at = 0; at < status.size; at += bytes.size()) {
        const std::size_t size = std::min<std::uint64_t>(bytes.size(), status.size - at);
        if (files_.randomBytes(bytes.data(), size) < 0) bytes.fill(0);
        for (std::size_t done = 0; done < size;) {
            const std::ptrdiff_t written =
                files_.writeAt(file, bytes.data() + done, size - done, at + done);
            if (written <= 0) return false;
            done += static_cast<std::size_t>(written);
        }
    }
    return true;
}

void UnfinishedFolder::shred(std::vector<File>& files) {
    if (files.empty()) return;
    // Out of force first, and for good: of a file that is overwritten halfway nobody could tell
    // whether it was damaged.
    for (File& file : files) {
        if (file.name.starts_with('.')) continue;
        const std::string hidden = "." + file.name;
        if (files_.rename(folder_, file.name.c_str(), hidden.c_str()) >= 0) file.name = hidden;
    }
    if (!isInMemory_) files_.flush(folder_);
    std::vector<bool> isSafe;
    isSafe.reserve(files.size());
    for (const File& file : files) isSafe.push_back(overwrite(file.descriptor->get()));
    if (!isInMemory_) {
        const bool areAll = files.size() > fewFiles &&
                            system_.flushFileSystem(files.front().descriptor->get()) >= 0;
        for (std::size_t i = 0; !areAll && i < files.size(); ++i) {
            isSafe[i] = files_.flush(files[i].descriptor->get()) >= 0 && isSafe[i];
        }
    }
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (isSafe[i]) files_.removeFile(folder_, files[i].name.c_str());
    }
    files.clear();
}

std::string unfinishedFolderPath() {
    const std::string state = platform::stateFolder();
    return state.empty()
               ? state
               : appendingPathComponent(appendingPathComponent(state, ofProgram), ofFiles);
}

}  // namespace dorvanel
