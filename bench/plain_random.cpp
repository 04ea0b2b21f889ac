// SPDX-License-Identifier: MIT

// The plain program: shreds its arguments as dorvanel does with random passes, the simplest way
// there is. Every word of every buffer is one call of random(), needed or not; one thread, stdio,
// whole paths, no flush to the medium. What dorvanel's speed is held against.
//
// usage: bench_plain_random PASSES PATH...
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t words = 65536;
constexpr std::uint64_t blockSize = words * sizeof(std::uint16_t);

std::array<std::uint16_t, words> buffer;

void fill() {
    for (auto& word : buffer) word = static_cast<std::uint16_t>(random());
}

std::string randomName() {
    static constexpr char alphabet[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789AB";
    std::string name(static_cast<std::size_t>(random() & 0xFFFF) % 24 + 9, '\0');
    for (std::size_t i = name.size(); i > 0; --i) name[i - 1] = alphabet[random() % 64];
    return name;
}

void write(std::FILE* file, std::uint64_t size) {
    std::fwrite(buffer.data(), 1, size, file);
    std::fflush(file);
}

void overwrite(const fs::path& path, int passes) {
    std::error_code ignored;
    std::uint64_t remaining = fs::file_size(path, ignored);
    std::FILE* file = std::fopen(path.c_str(), "r+");
    if (file == nullptr) return;
    fill();
    std::uint64_t size = 0;
    do {
        randomName();
        size = remaining < blockSize ? remaining : blockSize;
        remaining -= size;
        const off_t start = ftello(file);
        random();  // the draw of the pass count
        for (int pass = 0; pass < passes; ++pass) {
            fseeko(file, start, SEEK_SET);
            write(file, size);
            fill();
        }
    } while (remaining != 0);

    const off_t end = ftello(file);
    random();
    for (int pass = 0; pass < passes; ++pass) {
        fill();
        write(file, size);
        fseeko(file, end, SEEK_SET);
    }
    std::fclose(file);
}

/// Everything below a folder, a folder before what is in it.
std::vector<fs::path> entriesBelow(const fs::path& folder) {
    std::vector<fs::path> entries;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) entries.push_back(entry);
    return entries;
}

bool isFolder(const fs::path& path) {
    return fs::is_directory(fs::symlink_status(path));
}

void renameAtRandom(const fs::path& path) {
    std::rename(path.c_str(), (path.parent_path() / randomName()).c_str());
}

void shred(const fs::path& item, int passes) {
    const fs::path holding =
        item.parent_path() / ("Dorvanel X Items (" + std::to_string(std::time(nullptr)) + ")");
    fs::create_directory(holding);
    fs::rename(item, holding / item.filename());

    for (const auto& path : entriesBelow(holding)) {
        if (!isFolder(path)) renameAtRandom(path);
    }
    auto entries = entriesBelow(holding);
    for (auto path = entries.rbegin(); path != entries.rend(); ++path) {
        if (isFolder(*path)) renameAtRandom(*path);
    }
    entries = entriesBelow(holding);
    for (auto path = entries.rbegin(); path != entries.rend(); ++path) {
        if (isFolder(*path)) {
            rmdir(path->c_str());
        } else {
            chmod(path->c_str(), 0777);
            overwrite(*path, passes);
            unlink(path->c_str());
        }
    }
    rmdir(holding.c_str());
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3 || std::atoi(argv[1]) < 1) {
        std::fprintf(stderr, "usage: %s PASSES PATH...\n", argv[0]);
        return 2;
    }
    for (int i = 2; i < argc; ++i) shred(fs::absolute(argv[i]), std::atoi(argv[1]));
    return 0;
}
