// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

#include "app/LookServices.h"
#include "app/RunChoice.h"
#include "app/desktop/plan/Looker.h"

namespace dorvanel::desktop {

/// Finds out, while nothing else goes on, what a run would take now, and has the window say so:
/// after the launch, after each run and when what is chosen has changed. Main thread.
class IdleLine final : public QObject {
  public:
    struct Parts {
        std::function<RunChoice()> choice;
        /// Whether nothing goes on, and a look is nobody's hindrance.
        std::function<bool()> isIdle;
        std::function<void(const QString&)> show;
        /// The person has chosen otherwise: what the window says is old.
        std::function<void()> choiceChanged;
    };
    /// Both must outlive the line.
    IdleLine(Looker& looker, LookServices& services, Parts parts);

    /// Begins to look now and then whether there is reason to look.
    void start() { timer_.start(); }
    /// What was found out is no longer true: a run has been at work.
    void forget();
    /// One beat of the timer. A look begins once the choice has stood still from one beat to the
    /// next, and waits until nothing else goes on.
    void beat();
    /// The look at hand, if it is at one, makes room for a request; there will be another.
    void makeRoom();

  private:
    void look();

    Looker& looker_;
    LookServices& services_;
    Parts parts_;
    QTimer timer_;
    std::optional<RunChoice> seen_;  ///< as of the last beat
    bool isDue_ = true;
    bool isLooking_ = false;
};

}  // namespace dorvanel::desktop
