// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace dorvanel::test {

/// Bytes that no overwriting makes: a text with a running number.
std::string recognisable(std::size_t size, unsigned salt = 0);

/// The permission bits of what the path leads to.
unsigned modeOf(const std::string& path);
void setMode(const std::string& path, unsigned mode);

/// A second name for a file, by which a test sees what became of its contents.
void hardLink(const std::string& path, const std::string& other);

/// Names in a folder, sorted.
std::vector<std::string> namesIn(const std::filesystem::path& folder);

/// A folder for temporary folders that is in memory where the machine has one, for tests of many
/// steps that do not need a disk.
std::string quickPlace();

/// Descriptors that this process has open.
std::size_t openDescriptors();

bool isRoot();

/// Whether this program runs under a sanitizer, whose own memory would be measured.
bool isSanitized();

/// Runs `body` in a child process; what it returns, or how the child ended. "" says that all went
/// well.
std::string inChild(const std::function<std::string()>& body);

/// The same as an ordinary user: as "nobody" where this process is root's, else as oneself.
std::string asOrdinaryUser(const std::function<std::string()>& body);

}  // namespace dorvanel::test
