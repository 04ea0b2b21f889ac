// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

#include "prefs/Keys.h"
#include "prefs/Number.h"

namespace dorvanel {

/// What a reader of preferences needs: the committed values by key, at the moment of use, and the
/// list of enabled applications. `Preferences` is the real one.
class PreferenceReader {
  public:
    virtual ~PreferenceReader() = default;

    /// The committed value. Any thread.
    [[nodiscard]] virtual Number objectForKey(Key key) const = 0;

    /// Grows with every change of the committed values, so that a reader in a hurry can keep what
    /// it read until it grows. Any thread; takes no lock.
    [[nodiscard]] virtual std::uint64_t changeCount() const = 0;

    /// Whether the application of this exact name is enabled. Main thread.
    [[nodiscard]] virtual bool browserIsEnabled(std::string_view name) = 0;

    /// False where the stored preferences could not be read: the values are then the factory's,
    /// which nobody chose, and nothing may be shredded by them. Any thread.
    [[nodiscard]] virtual bool areKnown() const { return true; }

    [[nodiscard]] bool boolForKey(BoolKey key) const { return objectForKey(key).boolValue(); }
    [[nodiscard]] int intForKey(IndexKey key) const { return objectForKey(key).intValue(); }
};

}  // namespace dorvanel
