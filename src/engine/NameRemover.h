// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include "engine/Outcome.h"
#include "platform/SystemCalls.h"

namespace dorvanel {

/// A name whose turn to go has come.
struct DoomedName {
    int folder;        ///< descriptor of the folder that holds it
    const char* name;  ///< NUL-terminated bytes, good during the call
    platform::EntryKind kind;
    bool isCounted = true;      ///< false: our own, such as a holding folder
    bool mayBeSwapped = false;  ///< somebody else may put something in its place
};

/// Removes names and counts what became of them.
class NameRemover {
  public:
    using Path = std::function<std::string()>;

    /// Both must outlive the remover.
    NameRemover(platform::SystemCalls& system, Outcome& outcome)
        : system_(system), outcome_(outcome) {}

    /// Removes the name. `path` is asked for where something is to be told.
    void remove(const DoomedName& doomed, const Path& path);
    /// The name stays, for this reason.
    void leave(const char* operation, int code, const Path& path);

    /// After a removal failed with `code`: forces it. Returns true: the rest of the tree goes on.
    bool fileManagerShouldProceedAfterError(const DoomedName& doomed, int code, const Path& path);

  private:
    void count(const DoomedName& doomed, bool isFolder);

    platform::SystemCalls& system_;
    Outcome& outcome_;
};

}  // namespace dorvanel
