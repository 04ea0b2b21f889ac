// SPDX-License-Identifier: MIT
#pragma once

#include <QFontMetrics>
#include <QLabel>
#include <QString>

namespace dorvanel::desktop {

/// The text with each word that is wider than `width` pixels cut in its middle. Words are what a
/// label can break lines between: one that is not cut makes its window as wide as itself.
QString withLongWordsCut(const QString& text, const QFontMetrics& metrics, int width);

/// Shows a text in a label that breaks lines, with long words cut; whole in the label's tool tip
/// and for assistive technology. `whole`: what that is, where it is not `text` itself.
void showCut(QLabel& label, const QString& text, const QString& whole = {});

}  // namespace dorvanel::desktop
