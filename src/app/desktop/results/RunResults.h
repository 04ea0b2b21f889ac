// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QPointer>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/desktop/FailureView.h"
#include "app/desktop/background/RunNotifier.h"
#include "app/desktop/results/LogDialog.h"
#include "app/desktop/results/ResultsView.h"
#include "app/desktop/results/RunDetails.h"
#include "app/desktop/results/RunHistory.h"
#include "platform/Clock.h"

namespace dorvanel::desktop {

/// What stays of the session's runs, and all that shows it: the page of the main window, the
/// details, the notification, and the Activity Log. Main thread.
class RunResults final : public QObject {
  public:
    /// All outlive this, but for the bus, which is copied.
    struct Parts {
        QWidget& window;
        FailureView& failures;
        const platform::Clock& clock;
        QDBusConnection bus;
        std::function<void()> bringToFront;  ///< the window, wherever it is
        std::function<void()> changed;       ///< a failure has come or was dismissed
        RunDetails::TryAgain tryAgain;
        LogDialog::Parts log;
    };
    explicit RunResults(Parts parts);

    /// A request begins to shred these.
    void begin(const std::vector<std::string>& items);
    /// Takes in a request that has ended; its number.
    quint64 add(const RunReport& report);
    /// Tells the desktop of it.
    void notify(quint64 run, const RunReport& report);

    void showRun(quint64 run) { showDetails(run, {}); }
    void showList();
    void showLog();
    void dismiss(quint64 run);

    RunHistory& history() { return history_; }

  private:
    bool showDetails(quint64 run, const QString& older);

    Parts parts_;
    RunHistory history_;
    std::unique_ptr<ResultsView> view_;
    RunNotifier notifier_;
    std::int64_t began_ = 0;  ///< when the request at work did; 0: none is
    std::vector<std::string> given_;
    QPointer<RunDetails> details_;
    QPointer<LogDialog> log_;
};

}  // namespace dorvanel::desktop
