// SPDX-License-Identifier: MIT
#include "app/terminal/MediumText.h"

#include "engine/MediumNotice.h"

namespace dorvanel::terminal {

namespace {

template <typename Items>
void tell(const Items& items, const Terminal& terminal) {
    if (terminal.medium == nullptr) return;
    const auto quoted = [](const std::string& path) { return "\"" + path + "\""; };
    const std::string notice = mediumNotice(items, *terminal.medium, quoted);
    if (!notice.empty()) terminal.complain(notice);
}

}  // namespace

void tellMedium(const std::vector<std::string>& items, const Terminal& terminal) {
    tell(items, terminal);
}

void tellMedium(const std::vector<HeldItem>& items, const Terminal& terminal) {
    tell(items, terminal);
}

}  // namespace dorvanel::terminal
