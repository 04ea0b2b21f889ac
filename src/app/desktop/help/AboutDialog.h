// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

namespace dorvanel::desktop {

/// What the program is, its versions, which can be copied into a letter, and its terms. Main
/// thread.
class AboutDialog final : public QDialog {
  public:
    explicit AboutDialog(QWidget* parent);

    /// The versions of the program, the toolkit and the system, one a line.
    static QString versions();
};

}  // namespace dorvanel::desktop
