// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <string_view>

namespace dorvanel::test {

/// Makes what today's browsers, a mail program and the desktop leave in a home folder on Linux: the
/// traces, in the tables and files that the programs make, and what people keep beside and between
/// them, which nothing may touch: bookmarks, passwords, settings, mails and addresses. What was
/// only visited, fetched or thrown away has "seen" in its text; what is kept has "kept". The same
/// seed makes the same files.
class SampleProfiles {
  public:
    /// Makes the folder where missing; nothing in it yet.
    SampleProfiles(std::filesystem::path home, std::uint32_t seed);

    /// All of what follows.
    void addEverything();

    /// A profile that is used and one that never was, as Firefox makes the two.
    void addFirefox();
    /// Two profiles that are used.
    void addChromium();
    /// One profile with a POP account.
    void addThunderbird();
    /// The list of documents opened last, thumbnails, and two documents.
    void addDesktop();

  private:
    void addFirefoxProfile(const std::string& profile);
    void addChromiumProfile(const std::string& profile, const std::string& cache);
    void write(const std::string& path, const std::string& contents);
    /// A file of so many bytes that mean nothing.
    void addNoise(const std::string& path, std::size_t size);
    /// Files with names of 40 digits, as caches have them, of 2 to 60 KiB.
    void addCache(const std::string& path, int files);
    /// A database, made by these statements; "pages" is a table of the numbers from 1 to 400.
    void addDatabase(const std::string& path, std::string_view schema, std::string_view rows);

    std::filesystem::path home_;
    std::mt19937 random_;
};

}  // namespace dorvanel::test
