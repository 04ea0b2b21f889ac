// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/Result.h"
#include "engine/UnfinishedFolder.h"
#include "engine/UnfinishedRecord.h"

namespace dorvanel {

/// Writes holding folders down in files of the user's folder, each locked while the request that
/// made it goes on: what is not locked, nobody works on any more.
class UnfinishedFiles final : public UnfinishedRecord {
  public:
    /// `path` is the folder's. Both must outlive this.
    UnfinishedFiles(platform::SystemCalls& system, platform::CleaningCalls& files,
                    std::string path);

    void begins(const std::string& folder, const std::string& name,
                const platform::FileStatus& parent) override;
    void ended(const std::string& folder, const std::string& name) override;
    [[nodiscard]] bool isFull() const override { return written_.size() >= mostWritten; }
    void requestEnds() override;

    /// Told, once, that something could not be written down; on the thread of the request.
    std::function<void(const Error&)> onTrouble;

  private:
    /// Each takes a descriptor.
    static constexpr std::size_t mostWritten = 64;

    struct Written {
        std::string folder;  ///< as it was told
        std::string name;
        Identity parent;
        UnfinishedFolder::File file;
    };

    Result<Done> write(Written& written, const platform::FileStatus& parent);
    void shredSpent();
    void tell(const Error& error);

    platform::SystemCalls& system_;
    UnfinishedFolder folder_;
    std::vector<Written> written_;
    std::vector<UnfinishedFolder::File> spent_;  ///< of holding folders that have gone
    bool hasTold_ = false;
};

}  // namespace dorvanel
