// SPDX-License-Identifier: MIT
#pragma once

class Words {
    Q_DECLARE_TR_FUNCTIONS(Words)
};
