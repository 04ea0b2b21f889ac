// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "platform/SystemCalls.h"

namespace dorvanel {

/// Where the engine writes down which holding folders there are, so that what a kill or a power cut
/// leaves is found again. Nothing that fails here keeps anything from being shredded. The thread of
/// the request.
class UnfinishedRecord {
  public:
    virtual ~UnfinishedRecord() = default;

    /// The holding folder `name` is about to be made in `folder`, a path, whose status is `parent`.
    /// When the call returns, that is on the medium, or could not be written.
    virtual void begins(const std::string& folder, const std::string& name,
                        const platform::FileStatus& parent) = 0;
    /// It is gone, or was not made after all.
    virtual void ended(const std::string& folder, const std::string& name) = 0;
    /// Whether so many are written down that those which have gone should be told now.
    [[nodiscard]] virtual bool isFull() const = 0;
    /// The request has ended. What has not been told as ended is left.
    virtual void requestEnds() = 0;
};

}  // namespace dorvanel
