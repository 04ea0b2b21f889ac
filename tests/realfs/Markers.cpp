// SPDX-License-Identifier: MIT
#include "realfs/Markers.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <vector>

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t sectorSize = 512;
constexpr std::array<char, 12> sign = {'\x03', 'o', 'l', 'd', ' ', 'c',
                                       'o',    'n', 't', 'e', 'n', 't'};

}  // namespace

std::string markedContents(unsigned file, unsigned sectors) {
    std::string contents(sectors * sectorSize, 'o');
    for (unsigned sector = 0; sector < sectors; ++sector) {
        char* at = contents.data() + sector * sectorSize;
        const std::uint32_t marker = file << 16 | sector;
        std::memcpy(at, sign.data(), sign.size());
        std::memcpy(at + sign.size(), &marker, sizeof marker);
    }
    return contents;
}

Markers markersIn(const std::string& path) {
    Markers found;
    std::ifstream file(path, std::ios::binary);
    std::vector<char> bytes(std::size_t{1} << 20);
    do {
        file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        const auto length = static_cast<std::size_t>(file.gcount());
        for (std::size_t at = 0; at + sectorSize <= length; at += sectorSize) {
            if (std::memcmp(bytes.data() + at, sign.data(), sign.size()) != 0) continue;
            std::uint32_t marker = 0;
            std::memcpy(&marker, bytes.data() + at + sign.size(), sizeof marker);
            found.insert(marker);
        }
    } while (file);
    return found;
}

Markers markersBelow(const std::string& folder) {
    Markers found;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file() && !entry.is_symlink()) found.merge(markersIn(entry.path()));
    }
    return found;
}

std::string without(const Markers& all, const Markers& allowed) {
    std::vector<std::uint32_t> others;
    std::set_difference(all.begin(), all.end(), allowed.begin(), allowed.end(),
                        std::back_inserter(others));
    if (others.empty()) return {};
    std::string text = std::to_string(others.size()) + " sectors, of the files";
    std::set<std::uint32_t> files;
    for (const std::uint32_t marker : others) files.insert(marker >> 16);
    for (const std::uint32_t file : files) text += " " + std::to_string(file);
    return text;
}

}  // namespace dorvanel::test
