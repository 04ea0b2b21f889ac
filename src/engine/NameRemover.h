// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include "engine/ItemOutcomes.h"
#include "engine/Outcome.h"
#include "platform/SystemCalls.h"

namespace dorvanel {

/// A name whose turn to go has come.
struct DoomedName {
    int folder;        ///< descriptor of the folder that holds it
    const char* name;  ///< NUL-terminated bytes, good during the call
    platform::EntryKind kind;
    bool isCounted = true;                    ///< false: our own, such as a holding folder
    bool mayBeSwapped = false;                ///< somebody else may put something in its place
    std::uint32_t item = ItemOutcomes::none;  ///< that it belongs to
};

/// Removes names and counts what became of them.
class NameRemover {
  public:
    using Path = std::function<std::string()>;

    /// All of them must outlive the remover.
    NameRemover(platform::SystemCalls& system, Outcome& outcome, ItemOutcomes& items)
        : system_(system), outcome_(outcome), items_(items) {}

    /// Removes the name. `path` is asked for where something is to be told.
    void remove(const DoomedName& doomed, const Path& path);
    /// It was removed.
    void countGone(const DoomedName& doomed);
    /// A file of the current item, this long, was overwritten.
    void countOverwritten(std::uint64_t bytes);
    /// A file could not be overwritten. Its name goes all the same.
    void tellUnwritten(const DoomedName& doomed, int code, const Path& path);
    /// The name stays, for this reason.
    void leave(const DoomedName& doomed, const char* operation, int code, const Path& path);

    /// The file of an item, or of `ItemOutcomes::none`, read back as it was written.
    void countVerified(std::uint32_t item) { items_.countVerified(item); }
    /// It read back otherwise, or, with a code, could not be read back; so its name stays.
    void leaveUnverified(const DoomedName& doomed, int code, const Path& path);
    /// The same for one whose name is to stay in any case.
    void tellUnverified(int code, std::string path);

    /// No name waits any longer.
    void settle() { items_.settle(); }

    /// After a removal failed with `code`: forces it. Returns true: the rest of the tree goes on.
    bool fileManagerShouldProceedAfterError(const DoomedName& doomed, int code, const Path& path);

  private:
    void count(const DoomedName& doomed, bool isFolder);
    void tellLeft(const DoomedName& doomed, ItemOutcome::Trouble trouble);

    platform::SystemCalls& system_;
    Outcome& outcome_;
    ItemOutcomes& items_;
};

}  // namespace dorvanel
