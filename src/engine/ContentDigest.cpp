// SPDX-License-Identifier: MIT
#include "engine/ContentDigest.h"

#include <xxhash.h>

#include <new>

namespace dorvanel {

struct ContentDigest::State {
    State() : library(XXH3_createState()) {
        if (library == nullptr) throw std::bad_alloc();
    }
    ~State() { XXH3_freeState(library); }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    XXH3_state_t* library;
};

ContentDigest::ContentDigest() : state_(std::make_unique<State>()) {
    clear();
}
ContentDigest::~ContentDigest() = default;

void ContentDigest::clear() {
    XXH3_128bits_reset(state_->library);
}

void ContentDigest::add(const void* bytes, std::size_t size) {
    XXH3_128bits_update(state_->library, bytes, size);
}

Digest ContentDigest::value() const {
    const XXH128_hash_t hash = XXH3_128bits_digest(state_->library);
    return {hash.low64, hash.high64};
}

}  // namespace dorvanel
