// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "platform/CleaningCalls.h"
#include "targets/cleaning/Cleaning.h"
#include "targets/cleaning/OpenFile.h"

namespace dorvanel::cleaning {

/// A file that is held open, and what it was when it was opened.
struct HeldFile {
    OpenFile file;
    platform::CleaningStatus status;
};

/// The folder of the file to be cleaned, held open so that no name is looked up by its path twice.
class Place {
  public:
    enum class Purpose { reading, changing };

    static Cleaned<Place> open(platform::CleaningCalls& calls, const std::string& path);

    /// Opens the file under this name where it may be cleaned: a regular file of this user, under
    /// one name only, not protected from writing.
    [[nodiscard]] Cleaned<HeldFile> hold(const std::string& name, Purpose purpose) const;
    /// The same where there is such a file at all; an empty result where there is none for certain.
    [[nodiscard]] Cleaned<std::optional<HeldFile>> holdIfThere(const std::string& name,
                                                               Purpose purpose) const;
    /// Whether the name leads to this file now; trouble where it cannot be told, or does not.
    [[nodiscard]] std::optional<Trouble> leadsTo(const std::string& name,
                                                 const platform::CleaningStatus& file) const;
    /// Trouble where there is anything under this name.
    [[nodiscard]] std::optional<Trouble> isFree(const std::string& name) const;
    /// Brings the folder's names to the medium.
    [[nodiscard]] std::optional<Trouble> flush() const;

    [[nodiscard]] platform::CleaningCalls& calls() const { return *calls_; }
    [[nodiscard]] int folder() const { return folder_.get(); }
    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] const std::string& path() const { return path_; }
    /// The path of another entry of the folder.
    [[nodiscard]] std::string pathOf(const std::string& name) const { return folderPath_ + name; }
    /// Trouble of the file that is cleaned: `code` is an errno value, or 0.
    [[nodiscard]] Trouble trouble(Fault fault, int code, const std::string& operation,
                                  const std::string& detail = {}) const;

  private:
    Place(platform::CleaningCalls& calls, const std::string& path);
    [[nodiscard]] std::optional<Trouble> refusal(const std::string& name,
                                                 const platform::CleaningStatus& status,
                                                 Purpose purpose) const;
    /// Words on which of the files it is, where it is not the one that is cleaned.
    [[nodiscard]] std::string inWords(const std::string& name, const std::string& reason) const;

    platform::CleaningCalls* calls_;
    OpenFile folder_;
    std::string path_;
    std::string folderPath_;  ///< ends in "/", or is "" for the working folder
    std::string name_;
};

}  // namespace dorvanel::cleaning
