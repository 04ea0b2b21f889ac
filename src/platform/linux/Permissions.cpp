#include "platform/Permissions.h"

#include <sys/stat.h>

namespace dorvanel::platform {

void letEverybodyUse(const std::string& path) {
    // Nobody is told when this fails: the log is a help, and the run goes on without it.
    [[maybe_unused]] const int ignored = ::chmod(path.c_str(), 0777);
}

}  // namespace dorvanel::platform
