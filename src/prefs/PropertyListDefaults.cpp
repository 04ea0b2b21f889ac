// SPDX-License-Identifier: MIT
#include "prefs/PropertyListDefaults.h"

#include <cerrno>
#include <filesystem>
#include <map>
#include <optional>
#include <system_error>
#include <utility>

#include "platform/AccountFolders.h"
#include "platform/FileManager.h"
#include "platform/FolderLock.h"
#include "platform/ReplaceFile.h"
#include "platform/UserSwitch.h"
#include "prefs/PropertyList.h"

namespace dorvanel {
namespace {

namespace fs = std::filesystem;

class PropertyListDefaults final : public platform::UserDefaults {
  public:
    PropertyListDefaults(std::string path, std::function<void(const Error&)> report, Saving saving)
        : path_(std::move(path)), report_(std::move(report)), saving_(saving) {
        const Result<Done> loaded = load();
        if (loaded) return;
        trouble_ = loaded.error();
        report_(loaded.error());
    }

    bool isKnown() const override { return !trouble_; }

    bool hasObjectForKey(const std::string& key) const override { return reading(key).has(key); }
    bool boolForKey(const std::string& key) const override { return reading(key).asBool(key); }
    int integerForKey(const std::string& key) const override { return reading(key).asInteger(key); }
    std::optional<std::vector<std::string>> arrayForKey(const std::string& key) const override {
        return reading(key).asStrings(key);
    }
    std::optional<StringLists> dictionaryForKey(const std::string& key) const override {
        return reading(key).asStringLists(key);
    }

    void setBool(bool value, const std::string& key) override { change(key, value); }
    void setInteger(int value, const std::string& key) override {
        change(key, std::int64_t{value});
    }
    void setArray(const std::vector<std::string>& strings, const std::string& key) override {
        change(key, strings);
    }
    void setDictionary(const StringLists& lists, const std::string& key) override {
        change(key, lists);
    }
    void removeObjectForKey(const std::string& key) override { change(key, std::nullopt); }

    Result<Done> synchronize() override {
        if (trouble_) return *trouble_;
        if (saving_ == Saving::never) return Done{};
        return changes_.empty() ? load() : save();
    }

    Result<Done> startAfresh() override {
        if (path_.empty()) return noHome("read preferences");
        const std::string file = storedFile();
        const Result<platform::FolderLock> lock = lockFolderOf(file);
        if (!lock) return lock.error();
        Result<PropertyList> list = readList(file);
        if (list) {
            current_ = std::move(list.value());
            for (const auto& [key, value] : changes_) apply(key, value, current_);
        } else {
            Result<Done> replaced = setAsideAndWrite(file, list.error(), lock.value());
            if (!replaced) return replaced;
        }
        trouble_.reset();
        known_.clear();
        return Done{};
    }

  private:
    /// What is stored under a key, for comparison; absent when nothing is.
    struct Known {
        bool isStored = false;
        std::optional<PropertyList::Value> value;  ///< none for a kind that we never store
    };
    using Change = std::optional<PropertyList::Value>;  ///< none removes the key

    const PropertyList& reading(const std::string& key) const {
        known_[key] = Known{current_.has(key), current_.value(key)};
        return current_;
    }

    void change(const std::string& key, const Change& value) {
        if (trouble_) return;  // made of what nobody chose
        const auto known = known_.find(key);
        const bool isKnown = known != known_.end() &&
                             (value ? known->second.value == value : !known->second.isStored);
        if (isKnown) return;
        known_[key] = Known{value.has_value(), value};
        changes_[key] = value;
        apply(key, value, current_);
    }

    static void apply(const std::string& key, const Change& value, PropertyList& list) {
        if (value) {
            list.set(key, *value);
        } else {
            list.remove(key);
        }
    }

    static Error noHome(const char* operation) {
        return Error{0, operation, {}, "there is no home folder"};
    }

    [[nodiscard]] bool refusesLinks() const {
        return platform::isRootInAnothersHome() && path_ == userDefaultsPath();
    }

    [[nodiscard]] std::string storedFile() const {
        return refusesLinks() ? path_ : platform::followingLinks(path_);
    }

    [[nodiscard]] Result<platform::FolderLock> lockFolderOf(const std::string& file) const {
        const fs::path folder = fs::path(file).parent_path();
        std::error_code ignored;
        if (path_ == userDefaultsPath() && !fs::exists(folder, ignored)) {
            const Result<Done> made = platform::makeAccountFolders();
            if (!made) return made.error();
        }
        return platform::FolderLock::take(folder);
    }

    [[nodiscard]] Result<PropertyList> readList(const std::string& file) const {
        const Result<std::optional<std::string>> bytes = platform::readWholeFile(
            file, PropertyList::maximumBytes, refusesLinks() ? platform::homeDirectory() : "");
        if (!bytes) return bytes.error();
        if (!bytes.value()) return PropertyList();
        Result<PropertyList> list = PropertyList::parse(*bytes.value());
        if (!list) return Error{0, "parse", file, list.error().detail};
        return list;
    }

    Result<Done> load() {
        if (path_.empty()) return noHome("read preferences");
        Result<PropertyList> list = readList(storedFile());
        if (!list) return list.error();
        current_ = std::move(list.value());
        return Done{};
    }

    Result<Done> save() {
        if (path_.empty()) return noHome("save preferences");
        const std::string file = storedFile();
        const Result<platform::FolderLock> lock = lockFolderOf(file);
        if (!lock) return lock.error();
        Result<PropertyList> list = readList(file);
        if (!list) return list.error();
        for (const auto& [key, value] : changes_) apply(key, value, list.value());
        Result<Done> written = write(file, list.value(), lock.value());
        if (!written) return written;
        current_ = std::move(list.value());
        changes_.clear();
        return Done{};
    }

    Result<Done> setAsideAndWrite(const std::string& file, const Error& trouble,
                                  const platform::FolderLock& lock) {
        const Result<std::string> aside = platform::setFileAside(file);
        if (!aside) return aside.error();
        const std::string reason =
            trouble.code == 0 ? trouble.detail : std::generic_category().message(trouble.code);
        report_(Error{0, trouble.operation, file, reason + "; kept as " + aside.value()});
        Result<Done> written = write(file, current_, lock);
        if (written) changes_.clear();
        return written;
    }

    static Result<Done> write(const std::string& file, const PropertyList& list,
                              const platform::FolderLock& lock) {
        const std::string bytes = list.serialized();
        if (bytes.empty()) return Error{ENOMEM, "save preferences", file, {}};
        // What could not be read back would stop every run from the next start on.
        if (const Result<PropertyList> read = PropertyList::parse(bytes); !read) {
            return Error{0, "save preferences", file, read.error().detail};
        }
        return platform::replaceFile(file, bytes, lock);
    }

    std::string path_;
    std::function<void(const Error&)> report_;
    Saving saving_;
    /// Why the file could not be read when it was first; nothing is known then.
    std::optional<Error> trouble_;
    /// The file as last read, with the changes made since.
    PropertyList current_;
    /// What is not in the file yet.
    std::map<std::string, Change> changes_;
    /// What this process last read or wrote of each key. Not what the file came to hold since:
    /// whoever keeps a value in memory must not undo another process by storing it again.
    mutable std::map<std::string, Known> known_;
};

}  // namespace

std::string userDefaultsPath() {
    const std::string home = platform::homeDirectory();
    return home.empty() ? home : home + "/Library/Preferences/com.dorvanel.DorvanelX.plist";
}

std::unique_ptr<platform::UserDefaults> openUserDefaults(std::string path,
                                                         std::function<void(const Error&)> report,
                                                         Saving saving) {
    return std::make_unique<PropertyListDefaults>(std::move(path), std::move(report), saving);
}

}  // namespace dorvanel
