// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

namespace dorvanel::cleaning {

struct KeptNames;

/// The disk as the database library sees it, but for one thing: a journal or log that it would
/// remove gets another name beside the old one, as it is, so that it can be found
/// (Cleaner::leftovers) and shredded. What is removed must be in the database already, as it is
/// whenever the library removes one. Must outlive the connections that use it; one thread at a
/// time.
class KeptJournals {
  public:
    KeptJournals();
    ~KeptJournals();
    KeptJournals(const KeptJournals&) = delete;
    KeptJournals& operator=(const KeptJournals&) = delete;

    /// The name under which the library knows this, for opening a connection.
    [[nodiscard]] const char* registeredName() const;

  private:
    std::unique_ptr<KeptNames> kept_;
};

}  // namespace dorvanel::cleaning
