// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/Result.h"
#include "engine/HeldItem.h"
#include "platform/CleaningCalls.h"
#include "platform/SystemCalls.h"

namespace dorvanel {

/// The folder with a file for each holding folder that is there: private to its user. A file whose
/// name begins with a full stop is not in force yet, or no longer. One thread at a time.
class UnfinishedFolder {
  public:
    /// A file of the folder, locked until its last owner goes.
    struct File {
        std::string name;
        std::shared_ptr<const HeldDescriptor> descriptor;
    };

    /// `path` is "" where there can be none. Both must outlive this and every file of it. Opens
    /// nothing yet.
    UnfinishedFolder(platform::SystemCalls& system, platform::CleaningCalls& files,
                     std::string path);
    ~UnfinishedFolder() { close(); }
    UnfinishedFolder(const UnfinishedFolder&) = delete;
    UnfinishedFolder& operator=(const UnfinishedFolder&) = delete;

    /// Opens the folder; false where there is none. One that others may write in is refused.
    Result<bool> open();
    /// The same, but makes what is missing of its path, for the user alone. Not the home folder.
    Result<Done> openOrMake();
    void close();

    /// Puts a new file of this text into the opened folder. It is locked before it is in force, and
    /// on the medium when the call returns. On failure nothing of it is left.
    Result<File> write(std::string_view text);
    /// Overwrites the files and removes them; empties the list. A file that cannot be overwritten
    /// keeps a name, but is no longer in force.
    void shred(std::vector<File>& files);

    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] int descriptor() const { return folder_; }

  private:
    int openPart(int in, const char* name, int& opened);
    int make();
    [[nodiscard]] Error failure(const char* operation, int code) const;
    int fill(int file, std::string_view text);
    int create(std::string& hidden, int& file);
    bool overwrite(int file);

    platform::SystemCalls& system_;
    platform::CleaningCalls& files_;
    std::string path_;
    std::string reason_;  ///< of the last failure, where it has one in words
    int folder_ = -1;
    bool isInMemory_ = false;
};

/// Where the user's folder is: "$XDG_STATE_HOME/dorvanel/unfinished"; "" without a home folder.
std::string unfinishedFolderPath();

}  // namespace dorvanel
