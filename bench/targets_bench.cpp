// SPDX-License-Identifier: MIT

// All target collectors over a home of 1,000 profiles and an index of 5,000 mailboxes, and over one
// of twice that: how the time grows with the work. Prints the times and their ratio; about 2 is
// linear, 4 would be quadratic.
//
//     targets_scaling [ROUNDS]
//
// A disk that flushes after each removal from the index scatters the times; TMPDIR on a file system
// in memory shows the growth alone.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "apps/Applications.h"
#include "log/ActivityLog.h"
#include "support/FakeUserDefaults.h"
#include "support/SampleIndex.h"
#include "support/TemporaryFolder.h"
#include "targets/Collectors.h"

namespace {

using namespace dorvanel;

/// Every key of the collectors, on.
class EverythingOn final : public PreferenceReader {
  public:
    Number objectForKey(Key) const override { return Number::fromBool(true); }
    std::uint64_t changeCount() const override { return 0; }
    bool browserIsEnabled(std::string_view) override { return true; }
};

/// Half of the profiles are Mozilla's, half Firefox's, all ticked; every fifth mailbox of the index
/// lies in a POP account on the disk, every tenth is a trash, the rest stays.
class LargeHome {
  public:
    explicit LargeHome(int size) {
        std::vector<std::string> ticked;
        for (int i = 0; i < 500 * size; ++i) {
            const std::string number = std::to_string(i);
            std::filesystem::create_directories(home / "Library/Mozilla/Profiles/m" + number +
                                                "/a.slt/Mail/pop.example.org");
            std::filesystem::create_directories(
                home / "Library/Application Support/Firefox/Profiles/f." + number);
            std::filesystem::create_directories(home / "Library/Caches/Firefox/Profiles/f." +
                                                number);
            ticked.insert(ticked.end(), {"m" + number, "f." + number});
        }
        defaults.setArray(ticked, "ProfilesMenu");

        test::SampleIndex index(home / "Library/Mail/Envelope Index");
        index.run("begin");
        index.createTables();
        for (int i = 0; i < 5000 * size; ++i) {
            const std::string account = "joe" + std::to_string(i) + "@mail.example.org";
            if (i % 5 == 0)
                std::filesystem::create_directories(home / "Library/Mail/POP-" + account);
            index.addMailbox("pop://" + account +
                                 (i % 10 == 5  ? "/Trash"
                                  : i % 5 == 0 ? "/Junk"
                                               : "/INBOX"),
                             2);
        }
        index.run("commit");
    }

    /// Milliseconds of one call of every collector, in the order of a run.
    double run(std::size_t& paths) {
        std::vector<std::string> shredList;
        Collectors collectors(shredList, preferences, platform::defaultFileManager(), defaults,
                              platform::systemClock());
        kalvet_logger_open();
        const auto start = std::chrono::steady_clock::now();
        for (const SupportedApplication* application : runOrder) {
            for (const Collector& collector : application->collectors) {
                collectors.collect({*application, collector});
            }
        }
        const std::chrono::duration<double, std::milli> time =
            std::chrono::steady_clock::now() - start;
        kalvet_logger_close();
        paths = shredList.size();
        return time.count();
    }

  private:
    test::TemporaryHome home;
    EverythingOn preferences;
    test::FakeUserDefaults defaults;
};

/// The median of `rounds` homes, each fresh, as the first call empties the index.
double median(int size, int rounds) {
    std::vector<double> times;
    std::size_t paths = 0;
    for (int round = 0; round < rounds; ++round) {
        LargeHome home(size);
        times.push_back(home.run(paths));
    }
    std::sort(times.begin(), times.end());
    const double middle = times[times.size() / 2];
    std::printf("%5d profiles %6d mailboxes %6zu paths: %9.2f ms [%.2f-%.2f]\n", 1000 * size,
                5000 * size, paths, middle, times.front(), times.back());
    return middle;
}

}  // namespace

int main(int count, char** arguments) {
    const int rounds = count > 1 ? std::max(1, std::atoi(arguments[1])) : 5;
    const double once = median(1, rounds);
    const double twice = median(2, rounds);
    std::printf("doubling the work takes %.2f times as long\n", twice / once);
    return 0;
}
