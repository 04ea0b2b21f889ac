// SPDX-License-Identifier: MIT
#include "app/desktop/preferences/PassText.h"

#include <QStringList>

#include "app/PassMeaning.h"
#include "app/desktop/Words.h"

namespace dorvanel::desktop {
namespace {

QString nameOf(PassData data) {
    switch (data) {
        case PassData::random:
            return Words::tr("random data");
        case PassData::zeros:
            return Words::tr("zeros (0x00)");
        case PassData::ones:
            return Words::tr("ones (0xFF)");
        case PassData::fives:
            return Words::tr("0x55");
        case PassData::tens:
            return Words::tr("0xAA");
        case PassData::asBefore:
            break;
    }
    return Words::tr("what was written last, or zeros");
}

QString withoutSequence(const PassMeaning& meaning) {
    const QString own = nameOf(meaning.own);
    if (meaning.fewest == meaning.most) {
        return Words::tr("Each file: %n (pass|passes) of %1.", nullptr, meaning.fewest).arg(own);
    }
    return Words::tr("Each file: %1 to %2 passes of %3, the number drawn anew for each block.")
        .arg(meaning.fewest)
        .arg(meaning.most)
        .arg(own);
}

QString withSequence(const PassMeaning& meaning) {
    QStringList names;
    for (const PassData data : meaning.last) names << nameOf(data);
    const QString last = names.join(Words::tr(", ", "between the passes"));
    const int own = meaning.fewest - static_cast<int>(names.size());
    if (meaning.fewest != meaning.most) {
        return Words::tr(
                   "Each file: %1 to %2 passes, the number drawn anew for each block; the last "
                   "write %3.")
            .arg(meaning.fewest)
            .arg(meaning.most)
            .arg(last);
    }
    if (own == 0) {
        return Words::tr("Each file: %n (pass|passes): %1.", nullptr, meaning.fewest).arg(last);
    }
    return Words::tr("Each file: %n (pass|passes): first %1, and at the end %2.", nullptr,
                     meaning.fewest)
        .arg(nameOf(meaning.own), last);
}

/// Which of the choices above it does not count, and why.
QString overruling(const OverwriteSettings& settings, const PassMeaning& meaning) {
    if (settings.doDSanitize && settings.nsa) {
        return meaning.sequenceAddsPasses
                   ? Words::tr(
                         "(NSA overrules DoD and the pattern; both together, the number of "
                         "passes too.)")
                   : Words::tr("(NSA overrules DoD, and the pattern of the last passes.)");
    }
    const QString name = settings.nsa ? Words::tr("NSA") : Words::tr("DoD");
    return meaning.sequenceAddsPasses
               ? Words::tr("(%1 overrules the number of passes and the pattern.)").arg(name)
               : Words::tr("(%1 overrules the pattern of the last passes.)").arg(name);
}

}  // namespace

QString passText(const OverwriteSettings& settings) {
    const PassMeaning meaning = meaningOf(settings);
    if (meaning.last.empty()) return withoutSequence(meaning);
    return Words::tr("%1 %2", "two sentences")
        .arg(withSequence(meaning), overruling(settings, meaning));
}

}  // namespace dorvanel::desktop
