// SPDX-License-Identifier: MIT
#include <unistd.h>
