// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "targets/cleaning/Cleaning.h"
#include "targets/cleaning/Place.h"

namespace dorvanel::cleaning {

/// What is put behind a name to make another of it: ".dorvanel-" and six letters or digits.
Cleaned<std::string> drawSuffix(const Place& place);
/// Whether `name` is `of` with such a suffix.
bool hasSuffixOf(std::string_view name, std::string_view of);

/// The file that is to take the place of another. Its end overwrites and removes it, unless it has
/// been let go. It uses the place, which must outlive it.
class NewFile {
  public:
    /// An empty file that only its owner may read or write.
    static Cleaned<NewFile> create(const Place& place);
    ~NewFile() { discard(); }
    NewFile(NewFile&& other) noexcept;
    NewFile& operator=(NewFile&&) = delete;

    /// Appends nothing: the bytes are the whole of the file.
    std::optional<Trouble> fill(std::string_view bytes);
    /// Gives it the owner and mode of the old file, and brings it and its name to the medium.
    std::optional<Trouble> finish(const platform::CleaningStatus& old);
    /// Its name now leads to something else, or is another's to look after.
    void letGo() { file_ = OpenFile(); }

    [[nodiscard]] int file() const { return file_.get(); }
    [[nodiscard]] const std::string& name() const { return name_; }
    /// What it was when it was finished.
    [[nodiscard]] const platform::CleaningStatus& status() const { return status_; }

  private:
    NewFile(const Place& place, std::string name, OpenFile file)
        : place_(place), name_(std::move(name)), file_(std::move(file)) {}
    void discard();
    [[nodiscard]] Trouble trouble(int result, const std::string& operation) const;

    const Place& place_;
    std::string name_;
    OpenFile file_;
    platform::CleaningStatus status_;
};

}  // namespace dorvanel::cleaning
