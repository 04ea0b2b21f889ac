// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractItemModel>
#include <QStringList>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "app/desktop/applications/KnownChoice.h"
#include "app/desktop/applications/ShownApplication.h"
#include "app/desktop/applications/TraceWords.h"
#include "apps/TraceChoice.h"
#include "platform/UserDefaults.h"

namespace dorvanel::desktop {

/// The applications of today that are here, or chosen, each over the kinds of its traces, with
/// boxes that choose them. A kind's box chooses or drops it. An application's box chooses the
/// recommended kinds where nothing of it is chosen, and drops all otherwise. A choice is stored at
/// once; one that cannot be stored is told, and the box stays as it was. Main thread.
class ApplicationsModel final : public QAbstractItemModel {
    Q_OBJECT

  public:
    enum Column { nameColumn, amountColumn, stateColumn, columns };

    struct Parts {
        platform::UserDefaults& defaults;  ///< outlives the model
        /// A choice could not be stored: a sentence, and why.
        std::function<void(const QString& message, const QString& details)> tellFailure;
    };
    explicit ApplicationsModel(Parts parts);
    ~ApplicationsModel() override;

    // What the owner brings.

    void setCounting(bool isCounting);
    void take(const SurveyNews& news);
    /// Whether Browser Watch is on.
    void setWatching(bool isWatching);
    /// Reads the choice again: a terminal may have changed it. Whether applications have come in by
    /// that of which nothing is known yet.
    bool readChoice();

    // What there is beside the rows.

    /// Whether a count is under way.
    [[nodiscard]] bool isCounting() const { return isCounting_; }
    /// Whether a count has come to its end since the program began.
    [[nodiscard]] bool isCounted() const { return isCounted_; }
    /// Whether nothing at all is chosen.
    [[nodiscard]] bool isNothingChosen() const { return choice_.chosen().empty(); }
    /// The offer to choose what is recommended; "" where there is nothing to offer.
    [[nodiscard]] QString offer() const;
    /// Takes it.
    void chooseRecommended();
    /// What of applications that do not run could not be looked into, each a line.
    [[nodiscard]] QStringList unseen() const;
    /// What is wrong with descriptions, and with a choice that nothing describes, each a line.
    [[nodiscard]] QStringList faults() const;

    // QAbstractItemModel

    [[nodiscard]] QModelIndex index(int row, int column,
                                    const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
    using QObject::parent;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    /// Only the boxes can be changed. The value asked for counts for kinds; see above for the box
    /// of an application.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

  signals:
    /// What there is beside the rows is not as it was.
    void summaryChanged();

  private:
    using Rows = std::vector<std::unique_ptr<ShownApplication>>;

    [[nodiscard]] const ShownApplication* applicationOf(const QModelIndex& index) const;
    [[nodiscard]] Qt::CheckState stateOf(const ShownApplication& application) const;
    [[nodiscard]] QVariant applicationData(const ShownApplication& application, int column,
                                           int role) const;
    [[nodiscard]] QVariant kindData(const ShownApplication& application, std::size_t kind,
                                    int column, int role) const;
    [[nodiscard]] QString amountTextOf(const ShownApplication& application,
                                       const TraceAmount& amount) const;

    void setRows(const SurveyNews::Catalogue& catalogue, const std::set<std::string>& found);
    void addRow(const catalogue::Entry& entry);
    ShownApplication* find(const std::string& id) const;
    void changed(const ShownApplication& application);
    /// Stores what `change` makes of the choice.
    bool store(const std::function<Result<Done>(TraceChoice&)>& change);

    std::function<void(const QString& message, const QString& details)> tellFailure_;
    KnownChoice choice_;
    SurveyNews::Catalogue catalogue_;  ///< null before the first count
    Rows rows_;                        ///< in the catalogue's order
    bool isWatching_ = false;
    bool isCounting_ = false;
    bool isCounted_ = false;
};

}  // namespace dorvanel::desktop
