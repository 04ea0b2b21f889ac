// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace dorvanel::platform {

/// Has texts come in the language that LANGUAGE, LC_ALL, LC_MESSAGES or LANG ask for, those of the
/// C library among them, as far as `folder` has a translation of ours; English otherwise, and
/// where the characters of the locale are no UTF-8. Numbers, dates and the order of letters stay
/// those of the locale "C", as files and scripts have them. Before a second thread starts.
void speakLanguageOfEnvironment(const std::string& folder);

/// Has all texts come in English from here on. No other thread may ask for one meanwhile.
void speakEnglish();

/// Where translations are looked for, for a program whose toolkit chooses the language. Before a
/// second thread starts.
void lookForTranslationsIn(const std::string& folder);

/// The translation of a text, or the text itself. Any thread; lives as long as the program, where
/// `text` does.
const char* translationOf(const char* text);
/// The translation of what is said of `count` things, or one of the two texts, as English counts.
const char* translationOf(const char* one, const char* many, unsigned long count);

}  // namespace dorvanel::platform
