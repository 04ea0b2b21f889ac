// SPDX-License-Identifier: MIT
#pragma once

namespace dorvanel::platform {

/// What a program does before anything else. Descriptors 0 to 2 that nobody opened are opened on
/// /dev/null: a file of ours would get one of their numbers, and whatever is written to standard
/// output or error with it. A reader that has gone (SIGPIPE) and a limit of file sizes (SIGXFSZ)
/// make a call fail from here on, and do not end the program in the middle of its work.
void prepareProcess();

}  // namespace dorvanel::platform
