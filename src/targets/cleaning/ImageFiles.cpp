// SPDX-License-Identifier: MIT
#include "targets/cleaning/ImageFiles.h"

#include <sqlite3.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <map>
#include <new>
#include <utility>

namespace dorvanel::cleaning {

/// The images by name, and what the library knows them by.
struct ShownImages {
    explicit ShownImages(platform::CleaningCalls& theCalls) : calls(theCalls) {}

    platform::CleaningCalls& calls;
    std::string name;
    sqlite3_vfs vfs{};
    ImageMemory memory;  ///< outlives the images below
    std::map<std::string, std::shared_ptr<Image>> images;
};

namespace {

constexpr int longestName = 1024;
constexpr int sectorSize = 4096;

/// An open image as the library sees it: what it knows of comes first.
struct OpenImage {
    sqlite3_file known;
    std::shared_ptr<Image>* image;
};

Image& imageOf(sqlite3_file* file) {
    return **reinterpret_cast<OpenImage*>(file)->image;
}

/// No exception may pass through the library, which would be left half-way.
template <typename Call>
int guarded(Call call) {
    try {
        return call();
    } catch (const std::bad_alloc&) {
        return SQLITE_IOERR_NOMEM;
    } catch (...) {
        return SQLITE_IOERR;
    }
}

int closeImage(sqlite3_file* file) {
    delete reinterpret_cast<OpenImage*>(file)->image;
    file->pMethods = nullptr;
    return SQLITE_OK;
}

int readImage(sqlite3_file* file, void* data, int size, sqlite3_int64 offset) {
    return guarded([&] {
        switch (imageOf(file).read(data, static_cast<std::size_t>(size),
                                   static_cast<std::uint64_t>(offset))) {
            case Image::Outcome::done:
                return SQLITE_OK;
            case Image::Outcome::shortRead:
                return SQLITE_IOERR_SHORT_READ;
            default:
                return SQLITE_IOERR_READ;
        }
    });
}

int writeImage(sqlite3_file* file, const void* data, int size, sqlite3_int64 offset) {
    return guarded([&] {
        const auto outcome = imageOf(file).write(data, static_cast<std::size_t>(size),
                                                 static_cast<std::uint64_t>(offset));
        return outcome == Image::Outcome::done ? SQLITE_OK : SQLITE_IOERR_WRITE;
    });
}

int truncateImage(sqlite3_file* file, sqlite3_int64 size) {
    return guarded([&] {
        const auto outcome = imageOf(file).truncate(static_cast<std::uint64_t>(size));
        return outcome == Image::Outcome::done ? SQLITE_OK : SQLITE_IOERR_TRUNCATE;
    });
}

int flushImage(sqlite3_file* file, int) {
    return guarded([&] {
        return imageOf(file).flush() == Image::Outcome::done ? SQLITE_OK : SQLITE_IOERR_FSYNC;
    });
}

int tellSize(sqlite3_file* file, sqlite3_int64* size) {
    *size = static_cast<sqlite3_int64>(imageOf(file).size());
    return SQLITE_OK;
}

int holdLock(sqlite3_file*, int) {
    return SQLITE_OK;
}

int tellNobodyElseWrites(sqlite3_file*, int* reserved) {
    *reserved = 0;
    return SQLITE_OK;
}

int controlNothing(sqlite3_file*, int, void*) {
    return SQLITE_NOTFOUND;
}

int tellSectorSize(sqlite3_file*) {
    return sectorSize;
}

int tellNoCharacteristics(sqlite3_file*) {
    return 0;
}

/// Without shared memory: a write-ahead log is then read by one connection alone.
const sqlite3_io_methods imageMethods = {1,
                                         &closeImage,
                                         &readImage,
                                         &writeImage,
                                         &truncateImage,
                                         &flushImage,
                                         &tellSize,
                                         &holdLock,
                                         &holdLock,
                                         &tellNobodyElseWrites,
                                         &controlNothing,
                                         &tellSectorSize,
                                         &tellNoCharacteristics,
                                         nullptr,
                                         nullptr,
                                         nullptr,
                                         nullptr,
                                         nullptr,
                                         nullptr};

ShownImages& shownBy(sqlite3_vfs* vfs) {
    return *static_cast<ShownImages*>(vfs->pAppData);
}

int openImage(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags, int* given) {
    file->pMethods = nullptr;
    return guarded([&] {
        ShownImages& shown = shownBy(vfs);
        std::shared_ptr<Image> image;
        if (name == nullptr) {
            image = std::make_shared<MemoryImage>(shown.memory);
        } else if (const auto found = shown.images.find(name); found != shown.images.end()) {
            image = found->second;
        } else if ((flags & SQLITE_OPEN_CREATE) != 0 && name[0] != '/') {
            image = std::make_shared<MemoryImage>(shown.memory);
            shown.images.emplace(name, image);
        } else {
            return SQLITE_CANTOPEN;
        }
        auto* opened = reinterpret_cast<OpenImage*>(file);
        opened->image = new std::shared_ptr<Image>(std::move(image));
        opened->known.pMethods = &imageMethods;
        if (given != nullptr) *given = flags;
        return SQLITE_OK;
    });
}

int removeImage(sqlite3_vfs* vfs, const char* name, int) {
    return guarded([&] {
        if (name[0] == '/') return SQLITE_IOERR_DELETE;
        return shownBy(vfs).images.erase(name) > 0 ? SQLITE_OK : SQLITE_IOERR_DELETE_NOENT;
    });
}

/// A journal may name, by its path, the journal of a transaction over several databases, and is
/// void once that is gone: that one alone is looked for on the disk.
int isThere(sqlite3_vfs* vfs, const char* name, int, int* answer) {
    return guarded([&] {
        ShownImages& shown = shownBy(vfs);
        if (name[0] != '/') {
            // As elsewhere in the library, a log without a byte in it counts as none.
            const auto found = shown.images.find(name);
            *answer = found != shown.images.end() && found->second->size() > 0 ? 1 : 0;
            return SQLITE_OK;
        }
        platform::CleaningStatus status;
        const int looked = shown.calls.statusAt(-1, name, status);
        if (looked < 0 && looked != -ENOENT && looked != -ENOTDIR) return SQLITE_IOERR_ACCESS;
        *answer = looked < 0 ? 0 : 1;
        return SQLITE_OK;
    });
}

int completeName(sqlite3_vfs*, const char* name, int size, char* complete) {
    const std::size_t length = std::strlen(name);
    if (length >= static_cast<std::size_t>(size)) return SQLITE_CANTOPEN;
    std::memcpy(complete, name, length + 1);
    return SQLITE_OK;
}

}  // namespace

ImageFiles::ImageFiles(platform::CleaningCalls& calls)
    : shown_(std::make_unique<ShownImages>(calls)) {
    static std::atomic<unsigned> count{0};
    shown_->name = "dorvanel-images-" + std::to_string(++count);
    // Time, randomness and sleep stay the machine's. Nothing is loaded from any file.
    sqlite3_initialize();
    sqlite3_vfs& vfs = shown_->vfs;
    vfs = *sqlite3_vfs_find(nullptr);
    vfs.iVersion = 1;
    vfs.szOsFile = sizeof(OpenImage);
    vfs.mxPathname = longestName;
    vfs.pNext = nullptr;
    vfs.zName = shown_->name.c_str();
    vfs.pAppData = shown_.get();
    vfs.xOpen = &openImage;
    vfs.xDelete = &removeImage;
    vfs.xAccess = &isThere;
    vfs.xFullPathname = &completeName;
    vfs.xDlOpen = nullptr;
    vfs.xDlError = nullptr;
    vfs.xDlSym = nullptr;
    vfs.xDlClose = nullptr;
    vfs.xGetLastError = nullptr;
    sqlite3_vfs_register(&vfs, 0);
}

ImageFiles::~ImageFiles() {
    sqlite3_vfs_unregister(&shown_->vfs);
}

const char* ImageFiles::registeredName() const {
    return shown_->name.c_str();
}

void ImageFiles::show(const std::string& name, std::shared_ptr<Image> image) {
    shown_->images[name] = std::move(image);
}

ImageMemory& ImageFiles::memory() {
    return shown_->memory;
}

}  // namespace dorvanel::cleaning
