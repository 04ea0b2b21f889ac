// SPDX-License-Identifier: MIT

// What the open window costs a run: the same tree is shredded by the engine alone, by the terminal
// program and by the desktop program's worker, in turn, with the main loop alive and the progress
// shown. Prints seconds, and in lines of their own what report.py judges: "figure NAME NUMBER".
//   window_cost FOLDER [ROUNDS [FILES]]     FOLDER lies where the shredding is to be measured
#include <QApplication>
#include <QProcess>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "app/BundleInformation.h"
#include "app/desktop/Desktop.h"
#include "engine/FileAccess.h"
#include "platform/Resources.h"
#include "prefs/PropertyListDefaults.h"
#include "run/ShreddingRun.h"
#include "support/SharedPreferences.h"
#include "support/TemporaryFolder.h"

namespace {

using namespace dorvanel;
using Seconds = std::chrono::duration<double>;

/// Files of 4 KiB in 100 folders: with so little to write in each, what is shown costs most.
std::string makeTree(const std::string& folder, int files) {
    std::string tree = folder + "/tree";
    const std::string contents(4096, 'x');
    for (int i = 0; i < files; ++i) {
        test::writeFile(tree + "/album-" + std::to_string(i % 100) + "/" + std::to_string(i),
                        contents);
    }
    return tree;
}

/// Shows nothing.
class NoProgress final : public ui::ProgressIndicator {
    void setDoubleValue(double) override {}
    void display() override {}
};
class NoText final : public ui::TextField {
    void setStringValue(std::string_view) override {}
    void setTextColor(ui::Color) override {}
    void display() override {}
};

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fputs("usage: window_cost FOLDER [ROUNDS [FILES]]\n", stderr);
        return 2;
    }
    const std::string folder = argv[1];
    const int rounds = argc > 2 ? std::stoi(argv[2]) : 5;
    const int files = argc > 3 ? std::stoi(argv[3]) : 100'000;

    const test::TemporaryHome home;
    QApplication application(argc, argv);
    const auto defaults = openUserDefaults(userDefaultsPath(), [](auto&) {});
    defaults->setInteger(2, "NumberOfWrites");  // one pass
    defaults->setBool(false, "BrowserWatch");
    if (!defaults->synchronize()) return 1;  // the terminal program reads the same
    const QString terminal = QApplication::applicationDirPath() + "/dorvanel";
    const auto preferences = test::sharedPreferences(*defaults);
    const auto system = platform::makeSystemCalls();
    const auto draws = makeDrawSequence();
    const auto listing = platform::makeProcessListing();
    const auto processes = platform::makeProcessManager();
    const auto events = platform::makeSystemEvents();
    BundleInformationFile bundle("");
    const auto medium = platform::makeMediumInspector();
    const std::string resources = platform::resourcesFolder();

    std::vector<double> alone, terminals, windowed;
    for (int round = 0; round < rounds; ++round) {
        {
            std::vector<std::string> items = {makeTree(folder, files)};
            NoProgress progress;
            NoText name;
            FileAccess engine({*system, platform::systemClock(), *draws}, *preferences, progress,
                              name);
            const auto start = std::chrono::steady_clock::now();
            engine.shredDroppedFile(items);
            alone.push_back(Seconds(std::chrono::steady_clock::now() - start).count());
        }
        {
            QProcess shredding;
            shredding.setStandardOutputFile(QProcess::nullDevice());
            const QString tree = QString::fromStdString(makeTree(folder, files));
            const auto start = std::chrono::steady_clock::now();
            shredding.start(terminal, {"shred", tree});
            if (!shredding.waitForFinished(-1) || shredding.exitCode() != 0) return 1;
            terminals.push_back(Seconds(std::chrono::steady_clock::now() - start).count());
        }
        desktop::Desktop program({*system, platform::systemClock(), *draws,
                                  platform::defaultFileManager(), *defaults, *preferences, *listing,
                                  *processes, *events, platform::systemLog(), bundle, *medium,
                                  resources});
        if (!program.launch({})) return 1;
        std::vector<std::string> items = {makeTree(folder, files)};
        std::chrono::steady_clock::time_point start, end;
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, [&] {
            if (program.controller().run().threadCount() != 0) return;
            end = std::chrono::steady_clock::now();
            QCoreApplication::exit();
        });
        // Once the window has been painted and is at rest.
        QTimer::singleShot(std::chrono::milliseconds(300), [&] {
            start = std::chrono::steady_clock::now();
            program.controller().run().shredLaunchItems(holdAll(*system, items));
            watch.start(10);  // more often would itself take the processor from the run
        });
        program.run();
        if (std::filesystem::exists(folder + "/tree")) return 1;  // then its time says nothing
        windowed.push_back(Seconds(end - start).count());
        std::printf("%d: engine %.3f s, terminal program %.3f s, with the window %.3f s\n",
                    round + 1, alone.back(), terminals.back(), windowed.back());
    }
    const double engine = median(alone), terminalOnly = median(terminals),
                 window = median(windowed);
    std::printf("median: engine %.3f s, terminal program %.3f s, with the window %.3f s\n", engine,
                terminalOnly, window);
    std::printf("the window adds %+.1f %% to the engine, %+.1f %% to the terminal program\n",
                100 * (window / engine - 1), 100 * (window / terminalOnly - 1));
    std::printf("figure window_files %d\n", files);
    std::printf("figure window_percent_over_terminal %.2f\n", 100 * (window / terminalOnly - 1));
    return 0;
}
