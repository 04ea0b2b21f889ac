// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QProgressBar>
#include <atomic>
#include <mutex>
#include <optional>
#include <string>

#include "app/desktop/MainThreadWake.h"
#include "ui/Outlets.h"

namespace dorvanel::desktop {

/// A label of the interface.
class QtTextField : public ui::TextField {
  public:
    enum class Elide { no, middle };

    /// `label` outlives the outlet. An elided text is cut to the label's width and whole in its
    /// tool tip and for assistive technology.
    explicit QtTextField(QLabel& label, Elide elide = Elide::no);

    void setStringValue(std::string_view text) override;
    void setTextColor(ui::Color color) override;
    void display() override;

    /// Shows text and colour again: the palette or the width has changed. Main thread.
    void restyle();

  protected:
    /// Shows a colour. Main thread.
    virtual void showColor(ui::Color color);
    QLabel& label() { return label_; }

  private:
    void change();
    void show();
    void showText();

    QLabel& label_;
    Elide elide_;
    std::mutex mutex_;  ///< guards the two pending values
    std::optional<std::string> pendingText_;
    std::optional<ui::Color> pendingColor_;
    QString text_;                    ///< as shown; main thread
    std::optional<ui::Color> color_;  ///< as shown; main thread
    MainThreadWake wake_;
};

/// The label of a supported application: its colour also shows in the mark before it and in the
/// word behind it.
class ApplicationLabel final : public QtTextField {
  public:
    /// All three outlive the outlet.
    ApplicationLabel(QLabel& label, QLabel& mark, QLabel& word);

  protected:
    void showColor(ui::Color color) override;

  private:
    QLabel& mark_;
    QLabel& word_;
};

/// The progress bar.
class QtProgressIndicator final : public ui::ProgressIndicator {
  public:
    /// `bar` outlives the outlet; its range is 0 to 100.
    explicit QtProgressIndicator(QProgressBar& bar);

    void setDoubleValue(double percent) override;
    void display() override;

  private:
    void show();

    QProgressBar& bar_;
    std::atomic<double> percent_ = 0;
    MainThreadWake wake_;
};

}  // namespace dorvanel::desktop
