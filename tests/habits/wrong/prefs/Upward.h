// SPDX-License-Identifier: MIT
#include "engine/FileAccess.h"
