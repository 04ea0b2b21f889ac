// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "platform/ProgramListing.h"
#include "ui/RunLoop.h"

namespace dorvanel::platform {

/// Tells when processes end, which need not be this program's children, as soon as they do. Costs
/// nothing while none ends. Main thread only.
class ProgramEnds {
  public:
    /// Gets those of the followed that have ended since the last call, at least one. They are no
    /// longer followed.
    using Ended = std::function<void(const std::vector<ProcessIdentity>&)>;

    enum class Following {
        yes,     ///< its end will be told
        ended,   ///< it has ended already, which will not be told
        refused  ///< there are too many, or the system has no means left: look again yourself
    };

    virtual ~ProgramEnds() = default;

    /// Has the main loop call `ended` from now on; an empty function for nobody. May be called
    /// from within `ended`.
    virtual void tell(Ended ended) = 0;

    /// Following what is followed changes nothing.
    virtual Following follow(const ProcessIdentity& process) = 0;
    /// Its end is not told any more, also when it has ended by now. One that is not followed is no
    /// fault.
    virtual void unfollow(const ProcessIdentity& process) = 0;
};

/// Each followed process costs a descriptor, of which the engine wants many.
constexpr std::size_t kMostFollowedPrograms = 256;

/// The ends of this machine's processes, told by `runLoop`, which must outlive it. Its thread
/// starts with the first process that is followed, and has ended when it is destroyed.
std::unique_ptr<ProgramEnds> makeProgramEnds(ui::RunLoop& runLoop);

}  // namespace dorvanel::platform
