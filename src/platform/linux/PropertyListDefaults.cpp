#include "platform/PropertyListDefaults.h"

#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <map>
#include <utility>

#include "platform/AccountFolders.h"
#include "platform/FileManager.h"
#include "platform/PropertyList.h"
#include "platform/ReplaceFile.h"
#include "platform/linux/FolderLock.h"

namespace dorvanel::platform {
namespace {

namespace fs = std::filesystem;

class PropertyListDefaults final : public UserDefaults {
  public:
    PropertyListDefaults(std::string path, std::function<void(const Error&)> report)
        : path_(std::move(path)), report_(std::move(report)) {
        const Result<Done> loaded = load();
        if (!loaded) report_(loaded.error());
    }

    bool hasObjectForKey(const std::string& key) const override { return reading(key).has(key); }
    bool boolForKey(const std::string& key) const override { return reading(key).asBool(key); }
    int integerForKey(const std::string& key) const override { return reading(key).asInteger(key); }
    std::optional<std::vector<std::string>> arrayForKey(const std::string& key) const override {
        return reading(key).asStrings(key);
    }

    void setBool(bool value, const std::string& key) override { change(key, value); }
    void setInteger(int value, const std::string& key) override {
        change(key, std::int64_t{value});
    }
    void setArray(const std::vector<std::string>& strings, const std::string& key) override {
        change(key, strings);
    }
    void removeObjectForKey(const std::string& key) override { change(key, std::nullopt); }

    Result<Done> synchronize() override { return changes_.empty() ? load() : save(); }

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

    Result<PropertyList> readList(const std::string& file, std::string& damage) const {
        Result<std::string> bytes = readWholeFile(file, PropertyList::maximumBytes);
        if (!bytes) return bytes.error();
        std::error_code ignored;
        if (bytes.value().empty() && !fs::exists(file, ignored)) return PropertyList();
        std::optional<PropertyList> list = PropertyList::parse(bytes.value(), damage);
        if (list) damage.clear();
        return list ? std::move(*list) : PropertyList();
    }

    /// Reads the file; one that cannot be parsed is set aside, which another process may not do
    /// at the same time.
    Result<PropertyList> readOrSetAside(const std::string& file) {
        std::string damage;
        Result<PropertyList> list = readList(file, damage);
        if (!list || damage.empty()) return list;
        const Result<std::string> aside = setFileAside(file);
        if (!aside) {
            return Error{aside.error().code, "set aside", file, damage};
        }
        report_(Error{0, "parse", file, damage + "; kept as " + aside.value()});
        return list;
    }

    Result<Done> load() {
        if (path_.empty()) return Error{0, "read preferences", {}, "there is no home folder"};
        const std::string file = followingLinks(path_);
        std::string damage;
        Result<PropertyList> list = readList(file, damage);
        if (list && !damage.empty()) {
            const Result<FolderLock> lock = FolderLock::take(fs::path(file).parent_path());
            if (!lock) return lock.error();
            list = readOrSetAside(file);
        }
        if (!list) return list.error();
        current_ = std::move(list.value());
        return Done{};
    }

    Result<Done> save() {
        if (path_.empty()) return Error{0, "save preferences", {}, "there is no home folder"};
        const std::string file = followingLinks(path_);
        const fs::path folder = fs::path(file).parent_path();
        std::error_code ignored;
        if (path_ == userDefaultsPath() && !fs::exists(folder, ignored)) {
            Result<Done> made = makeAccountFolders();
            if (!made) return made;
        }
        const Result<FolderLock> lock = FolderLock::take(folder);
        if (!lock) return lock.error();
        Result<PropertyList> list = readOrSetAside(file);
        if (!list) return list.error();
        for (const auto& [key, value] : changes_) apply(key, value, list.value());

        // Without a lock two writers must not share a temporary file.
        std::string temporary = "." + fs::path(file).filename().string() + ".new";
        if (!lock.value().isHeld()) temporary += "-" + std::to_string(::getpid());
        const std::string bytes = list.value().serialized();
        if (bytes.empty()) return Error{ENOMEM, "save preferences", file, {}};
        Result<Done> written = replaceFile(file, bytes, temporary);
        if (!written) return written;
        current_ = std::move(list.value());
        changes_.clear();
        return Done{};
    }

    std::string path_;
    std::function<void(const Error&)> report_;
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
    const std::string home = homeDirectory();
    return home.empty() ? home : home + "/Library/Preferences/com.dorvanel.DorvanelX.plist";
}

std::unique_ptr<UserDefaults> openUserDefaults(std::string path,
                                               std::function<void(const Error&)> report) {
    return std::make_unique<PropertyListDefaults>(std::move(path), std::move(report));
}

}  // namespace dorvanel::platform
