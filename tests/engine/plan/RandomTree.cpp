// SPDX-License-Identifier: MIT
#include "engine/plan/RandomTree.h"

#include <sys/stat.h>

#include <array>
#include <filesystem>

#include "support/Disk.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {

namespace fs = std::filesystem;

RandomTree::RandomTree(std::string place, unsigned seed) : place_(std::move(place)), random_(seed) {
    for (const char* name : {"", "/outside", "/outside/sub", "/beside", "/beside/below"}) {
        folders_.push_back(place_ + name);
        fs::create_directories(folders_.back());
    }
    fs::create_directory_symlink(place_ + "/beside", place_ + "/detour");
    for (int i = 0; i < 3; ++i) addFile(newName(folders_[1]));
    for (int i = 0; i < 5; ++i) addItem(i == 0 ? place_ : folders_[draw(3) == 0 ? 4 : 3]);
    const std::size_t entries = 20 + draw(100);
    for (std::size_t i = 0; i < entries; ++i) addEntry();
    for (int i = 0; i < 3; ++i) {
        std::string link = newName(folders_[draw(2) == 0 ? 3 : 4]);
        addLink(link);
        items.push_back(std::move(link));
    }
    if (draw(2) == 0) items.push_back(anyOf(folders_));
    if (draw(2) == 0) items.push_back(anyOf(files_));
    if (draw(3) == 0) items.push_back(items[draw(items.size())]);
    if (draw(4) == 0) items.push_back(place_ + "/absent");
    if (draw(4) == 0) items.push_back(place_ + "/detour/below");
    std::shuffle(items.begin(), items.end(), random_);
    // The place itself goes with everything in it, at times.
    if (draw(6) == 0) items.push_back(place_);
}

std::size_t RandomTree::draw(std::size_t below) {
    return random_() % below;
}

const std::string& RandomTree::anyOf(const std::vector<std::string>& list) {
    return list[draw(list.size())];
}

std::string RandomTree::newName(const std::string& folder) {
    return folder + "/n" + std::to_string(number_++);
}

void RandomTree::addItem(const std::string& folder) {
    const std::string path = newName(folder);
    if (draw(4) == 0) {
        addFile(path);
    } else {
        fs::create_directory(path);
        folders_.push_back(path);
        std::string deep = path;
        for (std::size_t levels = draw(6); levels > 0; --levels) {
            deep = newName(deep);
            fs::create_directory(deep);
            folders_.push_back(deep);
        }
    }
    items.push_back(path);
}

void RandomTree::addEntry() {
    const std::string path = newName(anyOf(folders_));
    switch (draw(16)) {
        case 0:
            fs::create_directory(path);
            folders_.push_back(path);
            return;
        case 1:
        case 2:
            fs::create_hard_link(anyOf(files_), path);
            files_.push_back(path);
            return;
        case 3:
            ::mkfifo(path.c_str(), 0600);
            return;
        case 4:
            ::mknod(path.c_str(), S_IFSOCK | 0600, 0);
            return;
        case 5:
        case 6:
        case 7:
        case 8:
        case 9:
        case 10:
            addLink(path);
            return;
        default:
            addFile(path);
    }
}

void RandomTree::addFile(const std::string& path) {
    constexpr std::array<std::size_t, 8> sizes{0, 1, 300, 4095, 4096, 5000, 70'000, 300'000};
    const unsigned salt = static_cast<unsigned>(random_());
    writeFile(path, recognisable(sizes[draw(sizes.size())], salt));
    files_.push_back(path);
}

std::string RandomTree::anyTarget() {
    const std::size_t kind = draw(8);
    if (kind == 0) return anyOf(folders_);
    if (kind <= 2 && !links_.empty()) return anyOf(links_);
    return anyOf(files_);
}

void RandomTree::addLink(const std::string& path) {
    const std::string folder = fs::path(path).parent_path();
    const std::string target = anyTarget();
    const std::string relative = fs::path(target).lexically_relative(folder);
    std::string text;
    switch (draw(12)) {
        case 0:
            text = relative;
            break;
        case 1:  // leads there from the next folder down, which the holding folder may be
            text = "../" + relative;
            break;
        case 2:  // by the root, from wherever it lies
            for (int i = 0; i < 40; ++i) text += "../";
            text += target.substr(1);
            break;
        case 3:
            text = "nowhere";
            break;
        case 4:
            text = place_ + "/outside/nowhere";
            break;
        case 5:
            text = path;  // a circle
            break;
        case 6:
            text = place_ + "/./outside//sub/../../" +
                   std::string(fs::path(target).lexically_relative(place_));
            break;
        case 7:
            text = target + "/";
            break;
        case 8:  // up by folders that may have gone, and back
            text =
                place_ + "/detour/../" + std::string(fs::path(target).lexically_relative(place_));
            break;
        default:
            text = target;
    }
    fs::create_symlink(text, path);
    links_.push_back(path);
}

}  // namespace dorvanel::test
