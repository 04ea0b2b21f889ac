// SPDX-License-Identifier: MIT
#include <QString>
