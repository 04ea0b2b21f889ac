// SPDX-License-Identifier: MIT
#include "platform/PortableNumbers.h"

#include <locale.h>

namespace dorvanel::platform {
namespace {

/// Built into the C library: making it takes no file and no memory, and cannot fail.
locale_t plainLocale() {
    static const locale_t locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

}  // namespace

PortableNumbers::PortableNumbers() : former_(::uselocale(plainLocale())) {}

PortableNumbers::~PortableNumbers() {
    ::uselocale(static_cast<locale_t>(former_));
}

}  // namespace dorvanel::platform
