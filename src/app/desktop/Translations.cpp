// SPDX-License-Identifier: MIT
#include "app/desktop/Translations.h"

#include <QCoreApplication>
#include <QFile>
#include <QLibraryInfo>
#include <QRegularExpression>
#include <memory>
#include <utility>

namespace dorvanel::desktop {

QString englishFor(QString text, int number) {
    static const QRegularExpression choice(QStringLiteral(R"(\(([^()|]*)\|([^()|]*)\))"));
    const bool isOne = number == 1;
    text.replace(QStringLiteral("(s)"), isOne ? QString() : QStringLiteral("s"));
    text.replace(choice, isOne ? QStringLiteral(R"(\1)") : QStringLiteral(R"(\2)"));
    return text;
}

QString EnglishPlurals::translate(const char*, const char* sourceText, const char*,
                                  int number) const {
    // Null leaves the text to the next translator, and at last as it is.
    return number < 0 ? QString() : englishFor(QString::fromUtf8(sourceText), number);
}

namespace {

/// Installs the file NAME_LANGUAGE.qm of the folder; false where there is none.
bool install(const QString& name, const QString& language, const QString& folder) {
    auto translator = std::make_unique<QTranslator>();
    const QString file = name + QLatin1Char('_') + language;
    if (!translator->load(file, folder)) return false;
    translator->setParent(QCoreApplication::instance());
    return QCoreApplication::installTranslator(translator.release());
}

}  // namespace

void installTranslations(const std::string& resourcesFolder, const QLocale& locale) {
    // The last one that is installed is asked first.
    QCoreApplication::installTranslator(new EnglishPlurals(QCoreApplication::instance()));
    const QString folder =
        QFile::decodeName(QByteArray::fromStdString(resourcesFolder + "/translations"));
    for (QString language : locale.uiLanguages()) {
        language.replace(QLatin1Char('-'), QLatin1Char('_'));
        // English is there without a file; what is wanted less than that is not looked for.
        if (language == u"C" || language == u"en" || language.startsWith(u"en_")) return;
        // "de_AT.qm" is looked for as "de_AT", then as "de".
        if (!install(QStringLiteral("dorvanel-x"), language, folder)) continue;
        // The toolkit's own texts, of buttons for example, are of another package and may be
        // missing.
        install(QStringLiteral("qtbase"), language,
                QLibraryInfo::path(QLibraryInfo::TranslationsPath));
        return;
    }
}

}  // namespace dorvanel::desktop
