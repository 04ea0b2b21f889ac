// SPDX-License-Identifier: MIT
#pragma once

#include <deque>

#include "run/ProcessControl.h"

namespace dorvanel::test {

/// Applications that are no bundles: how many run, look by look.
class FakeOtherApplications final : public OtherApplications {
  public:
    std::int16_t askToQuit() override {
        ++asked;
        return next();
    }
    std::int16_t stillRunning() override { return next(); }

    std::deque<std::int16_t> looks;  ///< what each look finds; none when there are no more
    int asked = 0;

  private:
    std::int16_t next() {
        if (looks.empty()) return 0;
        const std::int16_t found = looks.front();
        looks.pop_front();
        return found;
    }
};

}  // namespace dorvanel::test
