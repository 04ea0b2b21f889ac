// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "apps/catalogue/Entry.h"
#include "platform/FileManager.h"

namespace dorvanel::catalogue {

/// Where catalogue files lie. An empty path stands for no folder.
struct Folders {
    std::string shipped;
    std::string own;  ///< the user's; a file there takes the place of the shipped one of its ID
};

/// The shipped folder as seen from the program, and the user's below $XDG_CONFIG_HOME.
Folders catalogueFolders();

/// The applications of today, as their files describe them. A file with a fault is left out,
/// whoever wrote it, and a shipped one does not come back in its place: nobody knows what was to be
/// taken away with it.
class Catalogue {
  public:
    struct Fault {
        std::string file;  ///< its path, in bytes
        Problem problem;
    };

    /// Reads all files of both folders. What is missing or cannot be read is told in `faults`, a
    /// folder that is not there excepted.
    static Catalogue load(const Folders& folders, const platform::FileManager& files);

    /// Complete, with what their families add; by ID.
    [[nodiscard]] const std::vector<Entry>& entries() const& { return entries_; }
    void entries() const&& = delete;
    [[nodiscard]] const Entry* find(const std::string& id) const;
    [[nodiscard]] const std::vector<Fault>& faults() const& { return faults_; }
    void faults() const&& = delete;

  private:
    std::vector<Entry> entries_;
    std::vector<Fault> faults_;
};

/// A fault as a line for people: "FILE:LINE: reason", without the line where the file as a whole is
/// meant.
std::string textOf(const std::string& file, const Problem& problem);

/// Reads one file as it would stand in a catalogue whose other entries are those of `others`.
ReadEntry readFile(const std::string& path, const Catalogue& others);

}  // namespace dorvanel::catalogue
