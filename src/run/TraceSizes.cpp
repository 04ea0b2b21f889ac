// SPDX-License-Identifier: MIT
#include "run/TraceSizes.h"

#include <algorithm>
#include <numeric>
#include <system_error>

#include "engine/ItemCount.h"
#include "run/TracePaths.h"
#include "targets/traces/FoundTraces.h"

namespace dorvanel {
namespace {

using Action = traces::TraceItem::Action;

std::string line(const std::string& path, const std::string& reason) {
    return path + ": " + reason;
}

class Count {
  public:
    Count(platform::SystemCalls& system, cleaning::Cleaner& cleaner,
          const std::function<bool()>& stop, TraceSizes& sizes)
        : system_(system), cleaner_(cleaner), stop_(stop), sizes_(sizes) {}

    void add(const traces::TraceItem& item, TraceSize& size) {
        const std::size_t unseen = sizes_.unseen.size();
        addItem(item, size);
        size.isWhole = size.isWhole && sizes_.unseen.size() == unseen;
    }

  private:
    void addItem(const traces::TraceItem& item, TraceSize& size) {
        if (item.action == Action::clean) {
            addCounts(item.path,
                      cleaner_.countRows(
                          {.path = item.path,
                           .attach = item.attach,
                           .steps = {{item.trace->kind, item.database->run, item.database->keep}}},
                          stop_),
                      size.rows);
        } else if (item.action == Action::json) {
            addCounts(item.path,
                      cleaner_.countKeys(item.path, {{item.trace->kind, item.json->remove}}),
                      size.keys);
        } else {
            addFiles(item.path, item.action == Action::empty, size);
        }
    }

    void addCounts(const std::string& path,
                   const cleaning::Cleaned<std::vector<std::uint64_t>>& counts,
                   std::uint64_t& sum) {
        if (counts) {
            sum = std::accumulate(counts.value().begin(), counts.value().end(), sum);
        } else {
            sizes_.unseen.push_back(line(path, textOf(counts.trouble())));
        }
    }

    void addFiles(const std::string& path, bool isEmptied, TraceSize& size) {
        const ItemCount count = countItem(system_, path, stop_);
        if (isEmptied && count.bytes == 0) return;
        size.files += count.files;
        size.bytes += count.bytes;
        for (const ItemCount::Unread& unread : count.unread) {
            sizes_.unseen.push_back(
                line(unread.path, std::generic_category().message(unread.code)));
        }
        if (!count.mountPoint.empty()) {
            sizes_.unseen.push_back(line(count.mountPoint, "is a mount point"));
        }
    }

    platform::SystemCalls& system_;
    cleaning::Cleaner& cleaner_;
    const std::function<bool()>& stop_;
    TraceSizes& sizes_;
};

}  // namespace

TraceSizes countTraces(const catalogue::Entry& entry, platform::SystemCalls& system,
                       cleaning::Cleaner& cleaner, const std::function<bool()>& stop) {
    TraceSizes sizes;
    for (const catalogue::Trace& trace : entry.traces) sizes.traces.push_back({.trace = &trace});
    const traces::FoundTraces found = traces::findTraces(entry, system);
    sizes.isFound = found.isInstalled;
    for (const traces::Obstacle& obstacle : found.obstacles) {
        sizes.unseen.push_back(line(obstacle.path, obstacle.reason));
    }
    // Nobody knows which kinds an obstacle hides.
    for (TraceSize& size : sizes.traces) size.isWhole = found.obstacles.empty();
    Count count(system, cleaner, stop, sizes);
    for (const traces::TraceItem& item : found.items) {
        if (stop()) break;
        count.add(item, *std::ranges::find(sizes.traces, item.trace, &TraceSize::trace));
    }
    return sizes;
}

}  // namespace dorvanel
