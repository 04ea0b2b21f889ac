// SPDX-License-Identifier: MIT
#include "run/TracePaths.h"

#include <system_error>

#include "targets/traces/HomeRoot.h"

namespace dorvanel {

std::string pathFromHome(const std::string& path) {
    const std::string below = traces::pathBelow(path, traces::realHome());
    return below.empty() ? path : "~/" + below;
}

const char* wordFor(cleaning::Fault fault) {
    switch (fault) {
        case cleaning::Fault::locked:
            return "locked";
        case cleaning::Fault::corrupt:
            return "corrupt";
        case cleaning::Fault::unreadable:
            return "unreadable";
        case cleaning::Fault::failed:
            break;
    }
    return "failed";
}

std::string textOf(const cleaning::Trouble& trouble) {
    const std::string reason = trouble.error.detail.empty() && trouble.error.code != 0
                                   ? std::generic_category().message(trouble.error.code)
                                   : trouble.error.detail;
    return reason.empty() ? wordFor(trouble.fault)
                          : std::string(wordFor(trouble.fault)) + ": " + reason;
}

}  // namespace dorvanel
