// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <utility>

#include "app/LookServices.h"
#include "app/desktop/plan/IdleLine.h"
#include "app/desktop/plan/Looker.h"

namespace dorvanel::desktop {

/// What the window looks with at what would be shredded: one thread, for one look at a time.
struct Plans {
    Plans(QtRunLoop& loop, std::unique_ptr<LookServices> made, IdleLine::Parts parts)
        : services(std::move(made)), looker(loop), idleLine(looker, *services, std::move(parts)) {}

    std::unique_ptr<LookServices> services;
    Looker looker;
    IdleLine idleLine;
};

}  // namespace dorvanel::desktop
