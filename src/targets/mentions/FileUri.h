// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace dorvanel::mentions {

/// The URI of an absolute path, byte for byte as GLib writes it: the names of thumbnails are made
/// from it.
std::string fileUri(std::string_view path);
/// Adds more of a path to such a URI.
void addToUri(std::string& uri, std::string_view pathPart);

/// The absolute path that a "file:" URI of this machine leads to, decoded, without doubled slashes
/// and one at its end; nothing where it is of another kind or machine. What is not encoded as it
/// should be stands for itself.
std::optional<std::string> pathOfUri(std::string_view uri);

/// The path of an absolute path as text: without doubled slashes, dots, and a slash at its end.
std::string plainPath(std::string_view path);

/// What a desktop entry of the kind "Link" leads to: its URL, in which KDE writes "$HOME" for the
/// home folder, as a path. Nothing where it has none, or one of another kind.
std::optional<std::string> pathOfLinkEntry(std::string_view text, const std::string& home);

}  // namespace dorvanel::mentions
