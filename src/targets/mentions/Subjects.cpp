// SPDX-License-Identifier: MIT
#include "targets/mentions/Subjects.h"

#include <filesystem>
#include <system_error>

namespace dorvanel::mentions {

Subjects::Subjects(const std::vector<std::string>& items) {
    for (const std::string& item : items) {
        items_.insert(item);
        names_.insert(item.substr(item.rfind('/') + 1));
    }
}

std::optional<std::string> Subjects::subjectOf(const std::string& path) {
    const auto isItem = [this](std::string_view part) { return items_.contains(part); };
    if (forEachAbove(path, isItem)) return path;
    std::optional<std::string> subject;
    forEachAbove(path, [&](std::string_view part) {
        // Only where it may be one: the way there may lead to a server that does not answer.
        const std::size_t slash = part.rfind('/');
        if (!names_.contains(part.substr(slash + 1))) return false;
        const std::string& folder = withoutLinks(part.substr(0, slash));
        if (folder.empty()) return false;
        const std::string item = folder + std::string(part.substr(slash));
        if (!items_.contains(item)) return false;
        subject = item + path.substr(part.size());
        return true;
    });
    return subject;
}

const std::string& Subjects::withoutLinks(std::string_view folder) {
    const auto [entry, isNew] = folders_.try_emplace(std::string(folder));
    if (isNew && !folder.empty()) {
        std::error_code error;
        const auto real = std::filesystem::canonical(entry->first, error);
        if (!error && real != "/") entry->second = real.native();
    }
    return entry->second;
}

Remains::Remains(const std::vector<std::string>& left) {
    for (const std::string& path : left) {
        left_.insert(path);
        forEachAbove(path, [this](std::string_view part) {
            return !above_.insert(std::string(part)).second;
        });
    }
}

bool Remains::include(const std::string& path) const {
    if (above_.contains(path)) return true;
    if (forEachAbove(path, [this](std::string_view part) { return left_.contains(part); })) {
        return true;
    }
    std::error_code error;
    const auto status = std::filesystem::symlink_status(path, error);
    return status.type() != std::filesystem::file_type::not_found;
}

}  // namespace dorvanel::mentions
