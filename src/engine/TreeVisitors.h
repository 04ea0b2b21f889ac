// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "engine/FlushBatch.h"
#include "engine/HeldItem.h"
#include "engine/LinkTargets.h"
#include "engine/Manifest.h"
#include "engine/RandomName.h"
#include "engine/TreeWalk.h"
#include "platform/SystemCalls.h"

namespace dorvanel {

/// A visitor that walks into real folders, never through links nor onto other mounts, and passes
/// over what it cannot open or list.
class PlainVisitor : public TreeVisitor {
  public:
    PlainVisitor(platform::SystemCalls& system, FlushBatch& batch, const std::atomic<bool>& stop)
        : system_(system), batch_(batch), stop_(stop) {}

    int enter(const TreeEntry& entry) override;
    bool walksInto(const TreeEntry& entry, int folder, const platform::FileStatus& found) override;
    void leave(const TreeEntry&) override {}
    void missed(const std::string&, int) override {}
    bool stops() override { return stop_.load(std::memory_order_relaxed); }
    bool keeps(int folder) override { return batch_.takesOver(folder); }

  protected:
    /// Whether the entry is a folder or a link to one.
    bool leadsToFolder(const TreeEntry& entry);

    platform::SystemCalls& system_;
    FlushBatch& batch_;  ///< holds descriptors that a walk may need

  private:
    const std::atomic<bool>& stop_;
};

/// Looks at an item before anything is done to it. Adds up the sizes of all files; a link counts as
/// the file that it leads to, a folder as nothing. Remembers what the links lead to and which names
/// there are, and finds what must not be shredded.
class SizeVisitor final : public PlainVisitor, private NameLane::Looks {
  public:
    struct Parts {
        platform::SystemCalls& system;
        FlushBatch& batch;
        const std::atomic<bool>& stop;
        LinkTargets& targets;
        const std::vector<Identity>& spared;  ///< folders that are never shredded
        std::uint32_t user;                   ///< that the process acts as
        platform::SystemCalls::Links links;   ///< whether what they lead to counts
    };
    SizeVisitor(Parts parts, const TreeWalk& walk, Manifest& manifest)
        : PlainVisitor(parts.system, parts.batch, parts.stop),
          targets_(parts.targets),
          spared_(parts.spared),
          user_(parts.user),
          links_(parts.links),
          walk_(walk),
          manifest_(manifest) {}
    ~SizeVisitor() override { batch_.forgetLooks(); }
    SizeVisitor(const SizeVisitor&) = delete;
    SizeVisitor& operator=(const SizeVisitor&) = delete;
    int enter(const TreeEntry& entry) override;
    bool walksInto(const TreeEntry& entry, int folder, const platform::FileStatus& found) override;
    void listed(const platform::FileStatus& folder,
                const platform::FolderListing& listing) override;

    // Complete once the batch's `endPhase` was called.
    std::uint64_t total = 0;
    std::string mountPoint;    ///< the first one found, relative to the item; empty: none
    std::string sparedFolder;  ///< likewise

  private:
    void looked(const platform::FileStatus& in, const platform::FileStatus& file,
                const NameLane::Path& path) override;

    LinkTargets& targets_;
    const std::vector<Identity>& spared_;
    std::uint32_t user_;
    platform::SystemCalls::Links links_;
    const TreeWalk& walk_;
    Manifest& manifest_;
};

/// The one entry that a walk begins at. Its name changes when it is renamed.
struct TopEntry {
    int folder;  ///< descriptor of the folder that holds it
    std::string name;
};

/// Folders that hold nothing but files, as they were listed.
class PlainFolders {
  public:
    /// Remembers the folder if it is one, and there is room.
    void add(const platform::FileStatus& folder, const platform::FolderListing& listing);
    /// How many entries it has; nothing where it is not known to be one.
    [[nodiscard]] std::optional<std::size_t> entriesOf(const Identity& folder) const;

  private:
    static constexpr std::size_t most = 16384;
    std::unordered_map<Identity, std::size_t, Identity::Hash> folders_;
};

/// Gives entries random names.
class Renamer : public PlainVisitor {
  public:
    /// `top` may be null.
    Renamer(platform::SystemCalls& system, FlushBatch& batch, const std::atomic<bool>& stop,
            RandomName& name, TopEntry* top)
        : PlainVisitor(system, batch, stop), name_(name), top_(top) {}

  protected:
    void drawName() { name_.randomizeName(); }
    void rename(const TreeEntry& entry);

  private:
    RandomName& name_;
    TopEntry* top_;
};

/// Draws a random name for every entry and gives it to those that are not folders. Tells what has
/// gone since the item was measured.
class FileRenamer final : public Renamer {
  public:
    using Vanished = std::function<void(const std::string& name)>;
    /// `manifest` may be null; `vanished` is called with the path of what has gone, relative to the
    /// walked folder.
    FileRenamer(Renamer renamer, const TreeWalk& walk, Manifest* manifest, Vanished vanished,
                PlainFolders& plain)
        : Renamer(std::move(renamer)),
          plain_(plain),
          walk_(walk),
          manifest_(manifest),
          vanished_(std::move(vanished)) {}
    int enter(const TreeEntry& entry) override;
    void listed(const platform::FileStatus& folder,
                const platform::FolderListing& listing) override;

    std::uint64_t entries = 0;  ///< met so far

  private:
    PlainFolders& plain_;
    const TreeWalk& walk_;
    Manifest* manifest_;
    Vanished vanished_;
};

/// Draws a random name for every entry and gives it to the folders. For a walk backward, so that a
/// folder is renamed after everything inside it.
class FolderRenamer final : public Renamer {
  public:
    /// `plain`: what the files were renamed in; they need not be listed once more.
    FolderRenamer(Renamer renamer, const PlainFolders& plain)
        : Renamer(std::move(renamer)), plain_(plain) {}
    int enter(const TreeEntry& entry) override;
    void leave(const TreeEntry& entry) override;

  private:
    const PlainFolders& plain_;
};

}  // namespace dorvanel
