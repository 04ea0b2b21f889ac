// SPDX-License-Identifier: MIT
#pragma once

#include <QLocale>
#include <QString>
#include <QTranslator>
#include <string>

namespace dorvanel::desktop {

/// The English of a text with a number: "(s)" is there or not, and of "(is|are)" the first stands
/// for one, the second for any other number.
QString englishFor(QString text, int number);

/// What the texts with a number say where no other language is asked for.
class EnglishPlurals final : public QTranslator {
  public:
    using QTranslator::QTranslator;
    [[nodiscard]] bool isEmpty() const override { return false; }
    [[nodiscard]] QString translate(const char* context, const char* sourceText,
                                    const char* disambiguation, int number) const override;
};

/// Has the application speak the language of `locale`, as far as there is a translation below
/// `resourcesFolder`, and English otherwise. Main thread, before the first text.
void installTranslations(const std::string& resourcesFolder, const QLocale& locale = QLocale());

}  // namespace dorvanel::desktop
