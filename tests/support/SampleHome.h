// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace dorvanel::test {

/// Makes a Mac home folder of the years of Jaguar, Panther and Tiger: the traces that the
/// supported browsers and mail programs leave, and the user's own files beside them, which nothing
/// may touch. The same seed makes the same names and contents, byte for byte.
class SampleHome {
  public:
    /// Makes the folder where missing; nothing in it yet.
    SampleHome(std::filesystem::path home, std::uint32_t seed);

    /// All of what follows, with profiles and accounts of every kind.
    void addEverything();

    /// Documents, pictures, bookmarks, addresses: what no run takes.
    void addBystanders();
    /// Caches, histories, download lists and icons in their fixed places, of every version.
    void addBrowsers();
    /// The mail programs' mailboxes and caches in their fixed places, ".DS_Store" files between.
    void addMailboxes();

    /// A profile of Mozilla with so many salt folders, each with cache, histories, download list
    /// and a "Mail" folder of so many accounts and one plain file.
    void addMozillaProfile(const std::string& name, int salts, int accounts);
    /// A profile of Firefox 1.0 and of 1.5.
    void addFirefoxProfile(const std::string& name);
    /// The one profile of Camino 0.7 and of Firefox 0.8, with so many salt folders, and Camino
    /// 0.8's folder.
    void addOldProfiles(int camino07Salts, int firefox08Salts);

    /// A folder of an account in Apple Mail, by its full name: "POP-joe@mail.example.org".
    void addMailAccount(const std::string& folder);
    /// Apple Mail 2's message index with these mailboxes, so many messages in each.
    void addEnvelopeIndex(const std::vector<std::string>& urls, int messagesEach);
    /// Mailsmith's mailboxes, with the empty template or without it.
    void addMailsmith(bool withTemplate);

  private:
    /// A file of 100 to about 9,000 bytes that a program might have written.
    void addFile(const std::string& path);
    /// A folder of `files` files with names as caches make them.
    void addCache(const std::string& path, int files);
    void addProfileFiles(const std::string& profile);
    std::uint32_t below(std::uint32_t bound);
    std::string randomName(int length);

    std::filesystem::path home_;
    std::mt19937 random_;
};

}  // namespace dorvanel::test
