// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <vector>

namespace dorvanel::test {

/// A place full of files, folders, links of all kinds and items to shred among them, one and the
/// same for one and the same seed.
class RandomTree {
  public:
    RandomTree(std::string place, unsigned seed);

    std::vector<std::string> items;  ///< some nested, doubled, absent, or named by a detour

  private:
    std::size_t draw(std::size_t below);
    const std::string& anyOf(const std::vector<std::string>& list);
    std::string newName(const std::string& folder);
    void addItem(const std::string& folder);
    void addEntry();
    void addFile(const std::string& path);
    void addLink(const std::string& path);
    std::string anyTarget();

    std::string place_;
    std::mt19937 random_;
    int number_ = 0;
    std::vector<std::string> folders_;
    std::vector<std::string> files_;
    std::vector<std::string> links_;
};

}  // namespace dorvanel::test
