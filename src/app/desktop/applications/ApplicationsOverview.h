// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>
#include <QWidget>
#include <chrono>
#include <functional>
#include <optional>

#include "app/desktop/applications/ApplicationsModel.h"
#include "app/desktop/applications/TraceSurvey.h"
#include "platform/Clock.h"

namespace dorvanel::desktop {

/// Keeps the list of the applications of this computer as they are: counts after the window's first
/// paint, after each run, and when the window comes back after a while, and looks at what runs as
/// long as the window is there. Main thread.
class ApplicationsOverview final : public QObject {
  public:
    struct Parts {
        SurveyServices survey;
        platform::Clock& clock;  ///< outlives the overview, as do the defaults
        platform::UserDefaults& defaults;
        std::function<bool()> isWatching;  ///< whether Browser Watch is on
        /// A choice could not be stored: a sentence, and why.
        std::function<void(const QString& message, const QString& details)> tellFailure;
    };
    /// `window`, whose coming and going it follows, outlives it.
    ApplicationsOverview(QWidget& window, Parts parts);

    ApplicationsModel& model() { return model_; }
    /// Counts everything again, unless something is at work: then it does when that has ended.
    void lookAgain();
    /// Something is at work that may change what is there, or has ended.
    void setBusy(bool isBusy);
    /// The program quits: nothing is looked at any more.
    void end();

    bool eventFilter(QObject* watched, QEvent* event) override;

    static constexpr std::chrono::seconds processesInterval{10};
    static constexpr std::chrono::minutes longAway{1};

  private:
    void windowCame();
    void windowWent();
    void lookAtProcesses();

    QWidget& window_;
    platform::Clock& clock_;
    std::function<bool()> isWatching_;
    ApplicationsModel model_;
    TraceSurvey survey_;
    QTimer processesTimer_;
    QTimer watchTimer_;
    std::optional<std::chrono::steady_clock::time_point> away_;  ///< since when
    bool isPainted_ = false;
    bool isBusy_ = false;
    bool isEnded_ = false;
};

}  // namespace dorvanel::desktop
