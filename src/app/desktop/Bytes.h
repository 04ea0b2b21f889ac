// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QUrl>
#include <string>
#include <string_view>

namespace dorvanel::desktop {

/// Bytes as people read them: what is not UTF-8, and what would move or hide text (control
/// characters, marks of direction), shows as a replacement character. Not for going back.
QString displayText(std::string_view bytes);

/// The path behind a "file:" URL of this machine, in bytes, whatever they are; "" for any other.
std::string pathOfUrl(const QUrl& url);

/// The URL of an absolute path, in bytes; nothing is lost.
QString urlOfPath(const std::string& path);

}  // namespace dorvanel::desktop
