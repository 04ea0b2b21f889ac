// SPDX-License-Identifier: MIT
#include "platform/Language.h"

#include <langinfo.h>
#include <libintl.h>
#include <locale.h>
#include <stdlib.h>

#include <algorithm>
#include <string_view>

namespace dorvanel::platform {
namespace {

constexpr const char* domain = "dorvanel";

/// Cuts the list of languages behind English, which needs no translation: without one, a language
/// that is wanted less would be taken in its place. Whoever is started from here reads the same.
void wantNothingAfterEnglish() {
    const char* list = ::getenv("LANGUAGE");
    if (list == nullptr) return;
    const std::string all = list;
    for (std::size_t start = 0; start < all.size();) {
        const std::size_t end = std::min(all.find(':', start), all.size());
        const std::string language = all.substr(start, end - start);
        if (language == "en" || language.starts_with("en_") || language.starts_with("en@")) {
            ::setenv("LANGUAGE", all.substr(0, end).c_str(), 1);
            return;
        }
        start = end + 1;
    }
}

}  // namespace

void speakLanguageOfEnvironment(const std::string& folder) {
    const bool isKnown =
        ::setlocale(LC_CTYPE, "") != nullptr && ::setlocale(LC_MESSAGES, "") != nullptr;
    // Everything that is written is UTF-8, names of files too, and escaped where it is not.
    if (!isKnown || std::string_view(::nl_langinfo(CODESET)) != "UTF-8") return speakEnglish();
    lookForTranslationsIn(folder);
}

void speakEnglish() {
    ::setlocale(LC_CTYPE, "C");
    ::setlocale(LC_MESSAGES, "C");
}

void lookForTranslationsIn(const std::string& folder) {
    wantNothingAfterEnglish();
    ::bindtextdomain(domain, folder.c_str());
    ::bind_textdomain_codeset(domain, "UTF-8");
}

const char* translationOf(const char* text) {
    // Nothing stands for what a translation says of itself.
    return *text == '\0' ? text : ::dgettext(domain, text);
}

const char* translationOf(const char* one, const char* many, unsigned long count) {
    return ::dngettext(domain, one, many, count);
}

}  // namespace dorvanel::platform
