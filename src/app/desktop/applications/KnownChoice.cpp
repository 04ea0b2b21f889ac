// SPDX-License-Identifier: MIT
#include "app/desktop/applications/KnownChoice.h"

#include <algorithm>
#include <utility>

namespace dorvanel::desktop {

bool KnownChoice::read() {
    static_cast<void>(defaults_.synchronize());
    Chosen now = TraceChoice(defaults_).chosen();
    return std::exchange(chosen_, now) != now;
}

Result<Done> KnownChoice::store(const std::function<Result<Done>(TraceChoice&)>& change) {
    static_cast<void>(defaults_.synchronize());
    TraceChoice choice(defaults_);
    Result<Done> stored = change(choice);
    chosen_ = choice.chosen();
    return stored;
}

bool KnownChoice::has(const std::string& application, const std::string& kind) const {
    const auto found = chosen_.find(application);
    return found != chosen_.end() && std::ranges::find(found->second, kind) != found->second.end();
}

}  // namespace dorvanel::desktop
