// SPDX-License-Identifier: MIT
#include "targets/cleaning/KeptJournals.h"

#include <sqlite3.h>

#include <atomic>
#include <string_view>

#include "targets/cleaning/NewFile.h"
#include "targets/cleaning/Place.h"

namespace dorvanel::cleaning {

struct KeptNames {
    sqlite3_vfs vfs{};  ///< first: it is all that the library hands back
    sqlite3_vfs* disk = nullptr;
    std::string name;
    std::unique_ptr<platform::CleaningCalls> calls = platform::makeCleaningCalls();
};

namespace {

/// A plain file under one name: what is behind a link, or has another name, is not ours to shred.
bool isPlain(const Place& place) {
    platform::CleaningStatus status;
    return place.calls().statusAt(place.folder(), place.name().c_str(), status) >= 0 &&
           status.kind == platform::EntryKind::regular && status.links == 1;
}

int keep(KeptNames& kept, const Place& place, bool isToBeFlushed) {
    auto suffix = drawSuffix(place);
    if (!suffix) return SQLITE_IOERR_DELETE;
    const std::string name = place.name() + suffix.value();
    if (kept.calls->rename(place.folder(), place.name().c_str(), name.c_str()) < 0) {
        return SQLITE_IOERR_DELETE;
    }
    return isToBeFlushed && place.flush() ? SQLITE_IOERR_DIR_FSYNC : SQLITE_OK;
}

int removeFile(sqlite3_vfs* vfs, const char* path, int isToBeFlushed) {
    auto& kept = *reinterpret_cast<KeptNames*>(vfs);
    try {
        const std::string_view name = path;
        if (name.ends_with("-journal") || name.ends_with("-wal")) {
            const auto place = Place::open(*kept.calls, path);
            if (place && isPlain(place.value())) {
                return keep(kept, place.value(), isToBeFlushed != 0);
            }
        }
        return kept.disk->xDelete(kept.disk, path, isToBeFlushed);
    } catch (...) {
        return SQLITE_IOERR_NOMEM;  // no exception may pass through the library
    }
}

}  // namespace

KeptJournals::KeptJournals() : kept_(std::make_unique<KeptNames>()) {
    static std::atomic<unsigned> count{0};
    kept_->name = "dorvanel-kept-journals-" + std::to_string(++count);
    sqlite3_initialize();
    kept_->disk = sqlite3_vfs_find(nullptr);
    kept_->vfs = *kept_->disk;
    kept_->vfs.pNext = nullptr;
    kept_->vfs.zName = kept_->name.c_str();
    kept_->vfs.xDelete = &removeFile;
    sqlite3_vfs_register(&kept_->vfs, 0);
}

KeptJournals::~KeptJournals() {
    sqlite3_vfs_unregister(&kept_->vfs);
}

const char* KeptJournals::registeredName() const {
    return kept_->name.c_str();
}

}  // namespace dorvanel::cleaning
