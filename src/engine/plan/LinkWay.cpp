// SPDX-License-Identifier: MIT
#include "engine/plan/LinkWay.h"

#include <utility>

namespace dorvanel {

using platform::EntryKind;
using platform::FileStatus;
using platform::SystemCalls;
using Links = SystemCalls::Links;

namespace {

constexpr int mostLinks = 40;  // as the kernel has it

/// Takes the first component off a path: "" for slashes at its end.
std::string takeComponent(std::string& text) {
    const std::size_t slash = text.find('/');
    std::string name = text.substr(0, slash);
    text.erase(0, slash == std::string::npos ? text.size() : slash + 1);
    return name;
}

std::string pathAbove(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

}  // namespace

LinkWay::Found LinkWay::fromRoot(const std::string& text) {
    return resolve(reference(SystemCalls::workingFolder, "/"), {}, text);
}

LinkWay::Found LinkWay::from(int folder, const std::string& path, const std::string& text) {
    if (text.starts_with('/')) return fromRoot(text);
    return resolve(reference(folder, "."), path == "/" ? std::string() : path, text);
}

LinkWay::Folder LinkWay::reference(int folder, const char* name) {
    const int opened = system_.openReference(folder, name, Links::stay);
    return opened < 0 ? nullptr : std::make_shared<const HeldDescriptor>(system_, opened);
}

/// `path`: the folder's, "" for the root.
LinkWay::Found LinkWay::resolve(Folder folder, std::string path, std::string text) {
    Found found;
    if (folder == nullptr || system_.status(folder->get(), found.status) < 0) return {};
    int links = 0;
    while (!text.empty()) {
        const bool isFolderWanted = text.find('/') != std::string::npos;
        const std::string name = takeComponent(text);
        if (name.empty() || name == ".") continue;
        if (name != ".." && moved_.holds(found.status, name)) return {End::moved};
        const Folder next = reference(folder->get(), name.c_str());
        FileStatus status;
        if (next == nullptr || system_.status(next->get(), status) < 0) return {};
        if (status.kind == EntryKind::link) {
            std::string linked;
            if (++links > mostLinks || system_.readLink(folder->get(), name.c_str(), linked) < 0 ||
                linked.empty()) {
                return {};
            }
            if (isFolderWanted) linked.append("/").append(text);
            text = std::move(linked);
            if (!text.starts_with('/')) continue;
            folder = reference(SystemCalls::workingFolder, "/");
            path.clear();
            if (folder == nullptr || system_.status(folder->get(), found.status) < 0) return {};
            continue;
        }
        if (isFolderWanted && status.kind != EntryKind::folder) return {};
        if (name == "..") {
            path = pathAbove(path);
        } else {
            path.append("/").append(name);
        }
        found.status = status;
        folder = next;
        if (status.kind != EntryKind::folder) break;
    }
    found.end = End::reached;
    found.path = path.empty() ? "/" : std::move(path);
    return found;
}

}  // namespace dorvanel
