// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractTableModel>
#include <deque>

#include "app/desktop/results/RunEntry.h"

namespace dorvanel::desktop {

/// The requests of this session of the program, the newest first. In memory only: which files were
/// shredded is nothing to write down. Main thread.
class RunHistory final : public QAbstractTableModel {
  public:
    enum Column { time, starter, subject, result, duration, columns };
    /// Requests that are kept.
    static constexpr std::size_t mostEntries = 100;
    /// Items of all requests together that are kept one by one; of older requests those that went
    /// as they should are only counted then.
    static constexpr std::size_t mostItems = 20'000;

    using QAbstractTableModel::QAbstractTableModel;

    /// Takes a request in, whose report came through `withOutcomesInPlan`; its number. The texts
    /// and the mark are made here.
    quint64 add(RunEntry entry);
    /// Takes the mark of a failure away.
    void dismiss(quint64 number);

    [[nodiscard]] int markedCount() const;
    /// Null where it has gone. Good until the history changes.
    [[nodiscard]] const RunEntry* find(quint64 number) const;
    [[nodiscard]] const RunEntry* at(const QModelIndex& index) const;
    [[nodiscard]] QModelIndex indexOf(quint64 number) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

  private:
    void onlyCountTheOldest();

    std::deque<RunEntry> entries_;  ///< the newest first
    quint64 last_ = 0;
};

}  // namespace dorvanel::desktop
