// SPDX-License-Identifier: MIT

// Whether the window stays alive while very many files are dropped on it: how long it takes until
// the question is there, until all is checked, and until all sizes are known, and the longest time
// in which the main thread did not come round. Nothing is shredded. Prints seconds.
//   drop_cost FOLDER [FILES]     FOLDER is where the files are made, and removed again
#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QPushButton>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "app/BundleInformation.h"
#include "app/desktop/Bytes.h"
#include "app/desktop/Desktop.h"
#include "platform/Resources.h"
#include "prefs/PropertyListDefaults.h"
#include "support/SharedPreferences.h"
#include "support/TemporaryFolder.h"

namespace {

using namespace dorvanel;
using Clock = std::chrono::steady_clock;

double seconds(Clock::duration time) {
    return std::chrono::duration<double>(time).count();
}

/// Beats as often as the main loop comes round, and keeps the longest time between two beats.
class Heartbeat {
  public:
    Heartbeat() {
        QObject::connect(&timer_, &QTimer::timeout, [this] { beat(); });
        timer_.start(1);
    }
    void beat() {
        const Clock::time_point now = Clock::now();
        longest_ = std::max(longest_, now - last_);
        last_ = now;
    }
    void restart() {
        last_ = Clock::now();
        longest_ = {};
    }
    [[nodiscard]] double longest() const { return seconds(longest_); }

  private:
    QTimer timer_;
    Clock::time_point last_ = Clock::now();
    Clock::duration longest_{};
};

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fputs("usage: drop_cost FOLDER [FILES]\n", stderr);
        return 2;
    }
    const std::string folder = std::string(argv[1]) + "/dropped";
    const int files = argc > 2 ? std::stoi(argv[2]) : 100'000;
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");

    const test::TemporaryHome home;
    QApplication application(argc, argv);
    const auto defaults = openUserDefaults(userDefaultsPath(), [](auto&) {});
    defaults->setBool(false, "BrowserWatch");
    const auto preferences = test::sharedPreferences(*defaults);
    const auto system = platform::makeSystemCalls();
    const auto draws = makeDrawSequence();
    const auto listing = platform::makeProcessListing();
    const auto processes = platform::makeProcessManager();
    const auto events = platform::makeSystemEvents();
    BundleInformationFile bundle("");
    const auto medium = platform::makeMediumInspector();
    desktop::Desktop program({*system, platform::systemClock(), *draws,
                              platform::defaultFileManager(), *defaults, *preferences, *listing,
                              *processes, *events, platform::systemLog(), bundle, *medium,
                              platform::resourcesFolder()});
    if (!program.launch({})) return 1;

    std::vector<std::string> paths;
    std::filesystem::create_directories(folder);
    for (int i = 0; i < files; ++i) {
        paths.push_back(folder + "/" + std::to_string(i));
        test::writeFile(paths.back(), "x");
    }

    Clock::time_point dropped;
    double question = -1, checked = -1, complete = -1;
    Heartbeat heart;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr) return;
        const double now = seconds(Clock::now() - dropped);
        if (question < 0) question = now;
        const auto* shred = dialog->findChild<QPushButton*>("shredPlannedButton");
        if (checked < 0 && shred->isEnabled()) checked = now;
        if (dialog->findChild<QWidget*>("busyBar")->isVisible()) return;
        complete = now;
        heart.beat();
        dialog->reject();
    });
    QTimer::singleShot(std::chrono::milliseconds(300), [&] {
        look.start(1);
        heart.restart();
        dropped = Clock::now();
        program.filesDropped(paths);
        heart.beat();
        QCoreApplication::exit();
    });
    program.run();
    std::filesystem::remove_all(folder);
    std::printf(
        "%d files dropped: the question after %.3f s, checked after %.3f s, all sizes after %.3f "
        "s; "
        "longest gap between two beats %.3f s\n",
        files, question, checked, complete, heart.longest());
    return complete < 0 ? 1 : 0;
}
