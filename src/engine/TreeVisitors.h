#pragma once

#include <atomic>
#include <cstdint>

#include "engine/FlushBatch.h"
#include "engine/LinkTargets.h"
#include "engine/RandomName.h"
#include "engine/TreeWalk.h"
#include "platform/SystemCalls.h"

namespace dorvanel {

/// A visitor that walks into real folders, never through links, and passes over what it cannot
/// open or list.
class PlainVisitor : public TreeVisitor {
  public:
    PlainVisitor(platform::SystemCalls& system, FlushBatch& batch, const std::atomic<bool>& stop)
        : system_(system), batch_(batch), stop_(stop) {}

    int enter(const TreeEntry& entry) override;
    void leave(const TreeEntry&) override {}
    void missed(const std::string&, int) override {}
    bool stops() override { return stop_.load(std::memory_order_relaxed); }

  protected:
    /// Whether the entry is a folder or a link to one.
    bool leadsToFolder(const TreeEntry& entry);

    platform::SystemCalls& system_;

  private:
    FlushBatch& batch_;  ///< holds descriptors that a walk may need
    const std::atomic<bool>& stop_;
};

/// Adds up the sizes of all files; a link counts as the file that it leads to, a folder as nothing.
/// Remembers what the links lead to.
class SizeVisitor final : public PlainVisitor {
  public:
    SizeVisitor(platform::SystemCalls& system, FlushBatch& batch, const std::atomic<bool>& stop,
                LinkTargets& targets)
        : PlainVisitor(system, batch, stop), targets_(targets) {}
    int enter(const TreeEntry& entry) override;

    std::uint64_t total = 0;

  private:
    LinkTargets& targets_;
};

/// Draws a random name for every entry and gives it to those that are not folders.
class FileRenamer final : public PlainVisitor {
  public:
    FileRenamer(platform::SystemCalls& system, FlushBatch& batch, const std::atomic<bool>& stop,
                RandomName& name)
        : PlainVisitor(system, batch, stop), name_(name) {}
    int enter(const TreeEntry& entry) override;

  private:
    RandomName& name_;
};

/// Draws a random name for every entry and gives it to the folders. For a walk backward, so that a
/// folder is renamed after everything inside it.
class FolderRenamer final : public PlainVisitor {
  public:
    FolderRenamer(platform::SystemCalls& system, FlushBatch& batch, const std::atomic<bool>& stop,
                  RandomName& name)
        : PlainVisitor(system, batch, stop), name_(name) {}
    void leave(const TreeEntry& entry) override;

  private:
    RandomName& name_;
};

}  // namespace dorvanel
