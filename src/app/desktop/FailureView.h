// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QObject>
#include <QPushButton>
#include <QWidget>
#include <deque>
#include <functional>
#include <memory>

namespace dorvanel::desktop {

/// What went wrong in one request.
struct Failure {
    QString message;  ///< a sentence or more
    QString details;  ///< lines; may be empty
    QString when;     ///< the time of day
    quint64 run = 0;  ///< its number in the history of runs; 0: of none
};

/// The place in the main window where failures stay until they are dismissed, one by one: the
/// newest is shown, the older ones come up as it goes and are all in the details. Main thread.
class FailureView final : public QObject {
  public:
    /// Null when a part is missing in `window`, which outlives the view.
    static std::unique_ptr<FailureView> create(QWidget& window);

    /// Shows a failure. One that says what an older one says takes that one's place.
    void add(Failure failure);
    void dismiss();
    /// Has `show` show the run of the newest failure, with what the older failures say, where
    /// somebody asks for the details of it, unless it answers that it cannot; and `dismissed` told
    /// of runs whose failures go.
    void leadTo(std::function<bool(quint64 run, const QString& older)> show,
                std::function<void(quint64 run)> dismissed);
    /// Takes the failure of a run away, wherever it stands.
    void dismissRun(quint64 run);

    [[nodiscard]] std::size_t count() const { return failures_.size(); }
    /// The newest failure's message; "" where there is none.
    [[nodiscard]] QString message() const;
    /// Every failure with its details, the newest first.
    [[nodiscard]] QString allDetails() const;

  private:
    FailureView() = default;
    void show();
    void showDetails();
    [[nodiscard]] QString detailsFrom(std::size_t first) const;

    QWidget* box_ = nullptr;
    QLabel* text_ = nullptr;
    QPushButton* dismissButton_ = nullptr;
    std::deque<Failure> failures_;  ///< the newest first
    std::function<bool(quint64, const QString&)> showRun_;
    std::function<void(quint64)> runDismissed_;
};

}  // namespace dorvanel::desktop
