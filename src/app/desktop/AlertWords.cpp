// SPDX-License-Identifier: MIT
#include "app/desktop/AlertWords.h"

#include <array>
#include <charconv>
#include <string_view>

#include "app/desktop/Words.h"

namespace dorvanel::desktop {
namespace {

// The runs and the watch speak English, wherever they are; these are their words.

constexpr std::string_view question =
    QT_TRANSLATE_NOOP("Words", "Are you sure you want to shred these items: %1 ?");

constexpr std::array<const char*, 8> items = {
    QT_TRANSLATE_NOOP("Words", "Browser Cache"),  QT_TRANSLATE_NOOP("Words", "Browser History"),
    QT_TRANSLATE_NOOP("Words", "Download Cache"), QT_TRANSLATE_NOOP("Words", "Mail Cache"),
    QT_TRANSLATE_NOOP("Words", "Mail Trash"),     QT_TRANSLATE_NOOP("Words", "Apple Mail Junk"),
    QT_TRANSLATE_NOOP("Words", "Mailsmith Spam"), QT_TRANSLATE_NOOP("Words", "Browser Icons"),
};

constexpr const char* haveNotQuit = QT_TRANSLATE_N_NOOP(
    "Words",
    "%n Email or Browser Applications did not quit.  Please quit them and click OK to continue.  "
    "If you continue without quitting those applicaitons some items will not be shredded.");

constexpr const char* severalProfiles = QT_TRANSLATE_NOOP(
    "Words",
    "You have more than 1 Mozilla (Netscape or Firefox) profile.  You must select profiles from "
    "the "
    "Profiles menu if you want shredding enabled for them.\n\nThis dialog will not be displayed "
    "again.");

constexpr std::array<const char*, 5> states = {
    QT_TRANSLATE_NOOP("Words", "Enabled and waiting for the first timer event to occur..."),
    QT_TRANSLATE_NOOP("Words", "Not enabled. Use preferences to enable..."),
    QT_TRANSLATE_NOOP("Words", "A supported browser or email application is running..."),
    QT_TRANSLATE_NOOP("Words", "All supported browser or email application have quit..."),
    QT_TRANSLATE_NOOP("Words", "No supported applications are running..."),
};

/// The kinds of traces at the beginning of the list; names of applications stay as they are.
QString listWords(std::string_view list) {
    constexpr std::string_view comma = ", ";
    QString words;
    for (bool isKnown = true; isKnown;) {
        isKnown = false;
        for (const std::string_view item : items) {
            if (!list.starts_with(item)) continue;
            isKnown = true;
            words += Words::tr(item.data());
            list.remove_prefix(item.size());
            if (!list.starts_with(comma)) break;
            words += QLatin1String(comma.data());
            list.remove_prefix(comma.size());
            break;
        }
    }
    return words + QString::fromUtf8(list.data(), qsizetype(list.size()));
}

}  // namespace

std::string alertWords(const std::string& message) {
    if (message == severalProfiles) return Words::tr(severalProfiles).toStdString();
    constexpr std::string_view place = "%1";
    constexpr std::string_view before = question.substr(0, question.find(place));
    constexpr std::string_view after = question.substr(before.size() + place.size());
    if (message.size() > before.size() + after.size() && message.starts_with(before) &&
        message.ends_with(after)) {
        const std::string_view list = std::string_view(message).substr(
            before.size(), message.size() - before.size() - after.size());
        return Words::tr(question.data()).arg(listWords(list)).toStdString();
    }
    int count = 0;
    const char* const end = message.data() + message.size();
    const auto read = std::from_chars(message.data(), end, count);
    constexpr std::string_view afterCount = std::string_view(haveNotQuit).substr(place.size());
    if (read.ec == std::errc() && std::string_view(read.ptr, end) == afterCount) {
        return Words::tr(haveNotQuit, nullptr, count).toStdString();
    }
    return message;
}

std::string statusWords(const std::string& text) {
    for (const char* state : states) {
        if (text == state) return Words::tr(state).toStdString();
    }
    return text;
}

}  // namespace dorvanel::desktop
