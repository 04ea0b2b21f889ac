#pragma once

#include <string>

namespace dorvanel::platform {

/// The effect of "chmod 777 PATH", by the system call: no shell sees the path. Failure is silent.
void letEverybodyUse(const std::string& path);

}  // namespace dorvanel::platform
