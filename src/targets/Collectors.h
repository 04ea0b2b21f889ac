// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "apps/Applications.h"
#include "platform/CleaningCalls.h"
#include "platform/Clock.h"
#include "platform/FileManager.h"
#include "platform/UserDefaults.h"
#include "prefs/PreferenceReader.h"
#include "targets/EnvelopeIndex.h"

namespace dorvanel {

/// A collector, and the application that it belongs to.
struct CollectorRow {
    const SupportedApplication& application;
    const Collector& collector;
};

/// The operation of `Collectors` that a row stands for; "" for a collector with steps of its own.
constexpr std::string_view operationOf(const Collector& collector) {
    if (std::holds_alternative<FixedPathTargets>(collector)) {
        return std::get<FixedPathTargets>(collector).operation;
    }
    return std::holds_alternative<ProfileTargets>(collector)
               ? std::get<ProfileTargets>(collector).operation
               : std::string_view();
}

/// The row of an operation that the table describes; without one it does not compile.
consteval CollectorRow collectorRow(std::string_view operation) {
    for (const SupportedApplication& application : applications) {
        for (const Collector& collector : application.collectors) {
            if (operationOf(collector) == operation) return {application, collector};
        }
    }
    throw "no such row";
}

/// The target collectors, one for each supported application and version. A collector appends to
/// the shred list what the preferences select, writes each decision to the Activity Log under its
/// label, and ends with one separator line. None fails: what goes wrong is a line of the log.
/// Collectors only append and never look for duplicates. They run one after another on the main
/// thread, before the worker of a run starts.
class Collectors {
  public:
    /// `pathArray` is the run's shred list: UTF-8 or other bytes, absolute. All five must outlive
    /// the collectors; the clock is what a locked message index is waited for with.
    Collectors(std::vector<std::string>& pathArray, PreferenceReader& preferences,
               platform::FileManager& files, platform::UserDefaults& defaults,
               platform::Clock& clock);

    /// From now on nothing is changed: the message index is looked at only. `files` must be such
    /// that moves and copies nothing either.
    void onlyLook() { onlyLooks_ = true; }

    /// From now on only what `mayTake` says yes to is taken, moved or cleaned, by the path where it
    /// lies; empty: everything.
    void limitTo(std::function<bool(const std::string& path)> mayTake) {
        mayTake_ = std::move(mayTake);
    }

    /// Does what the row says: one of the operations below.
    void collect(const CollectorRow& row);

    // Traces in fixed places.
    void QuicktimeCache();
    void MailCache();
    void IE51();
    void iCab28();
    void OmniWeb41();
    void OmniWeb51();
    void Opera50();
    void Opera60();
    void Opera70();
    void AppleMail11();
    void Eudora51();
    void Eudora62();
    void Safari10();

    // Profiles of the Mozilla family.
    void Camino07();
    void Camino08();
    void Firefox08();
    void Firefox10();
    void Firefox15();
    void Mozilla();
    /// The trash of every account below a profile's "Mail" folder (absolute path); no label and no
    /// separator of its own.
    void MozillaMail(const std::string& mailFolder);

    // Mail stores.
    /// The mailboxes of every POP account folder.
    void AppleMail12();
    /// Removes from Apple Mail 2's message index the messages of the mailboxes that the shred list
    /// holds, and of every trash mailbox; appends nothing. Call it after the other two of Apple
    /// Mail. Waits two seconds in all for an index that another program has locked.
    void AppleMail20();
    /// Swaps the spam mailbox for a copy of the empty template, and takes the old one.
    void Mailsmith21();

    /// The mailboxes that AppleMail20 read last; kept until it reads them again.
    [[nodiscard]] const MailboxRows& mailboxRows() const { return mMailboxRows; }
    /// The used-up journals and logs of the message index that AppleMail20 left, absolute: they
    /// hold the messages that it removed, and are the caller's to have shredded.
    [[nodiscard]] std::vector<std::string> takeUsedJournals() {
        return std::exchange(usedJournals_, {});
    }

    /// The message index that AppleMail20 has taken messages from, or would take them from.
    struct CleanedIndex {
        std::string path;
        std::uint64_t rows = 0;
    };
    /// Nothing where none was.
    [[nodiscard]] std::optional<CleanedIndex> takeCleanedIndex() {
        return std::exchange(cleanedIndex_, std::nullopt);
    }
    /// Where an entry of the shred list lay before it was moved for it, or lies still.
    [[nodiscard]] const std::map<std::string, std::string>& movedFrom() const { return movedFrom_; }

  private:
    [[nodiscard]] bool isEnabled(std::string_view application);
    [[nodiscard]] bool isOn(BoolKey key) const;
    /// Whether the limit, where there is one, leaves the path to be taken; if not, a line says so.
    [[nodiscard]] bool mayTake(const std::string& path) const;

    /// With no name to ask for, the targets belong to no application.
    void collectFixedPaths(const FixedPathTargets& targets, std::string_view enableName);
    void collectGroup(const FixedPathGroup& group);
    /// Takes one path, or skips it, with the usual line; one place for the catalogue and mail
    /// stores.
    void collectPath(bool on, const FixedPath& target);

    void collectProfiles(const ProfileTargets& targets, const SupportedApplication& application);
    void collectProfile(const ProfileTargets& targets, const std::string& profile);
    void collectProfileGroups(const ProfileTargets& targets, const std::string& folder);
    /// One "Shred:" or "Skip:" line, then a line for each path.
    void collectPaths(BoolKey key, const std::vector<std::string>& paths);

    void collectAccount(const std::string& account);
    void updateIndex(const std::string& indexPath);
    void removeMessages(EnvelopeIndex& index);

    void swapSpam(const std::string& templateFolder);

    std::vector<std::string>& mPathArray;
    PreferenceReader& preferencesInstance;
    platform::FileManager& files_;
    platform::UserDefaults& defaults_;
    platform::Clock& clock_;
    MailboxRows mMailboxRows;
    std::vector<std::string> usedJournals_;
    std::optional<CleanedIndex> cleanedIndex_;
    std::map<std::string, std::string> movedFrom_;
    bool onlyLooks_ = false;
    std::function<bool(const std::string& path)> mayTake_;
};

}  // namespace dorvanel
