// SPDX-License-Identifier: MIT
#include "app/desktop/applications/ApplicationsModel.h"

#include <algorithm>
#include <ranges>
#include <utility>

#include "app/desktop/Bytes.h"
#include "app/desktop/Words.h"

namespace dorvanel::desktop {

using catalogue::Entry;
using Application = ShownApplication;

ApplicationsModel::ApplicationsModel(Parts parts)
    : tellFailure_(std::move(parts.tellFailure)), choice_(parts.defaults) {}

ApplicationsModel::~ApplicationsModel() = default;

void ApplicationsModel::setCounting(bool isCounting) {
    if (isCounting_ == isCounting) return;
    isCounting_ = isCounting;
    for (const auto& application : rows_) {
        if (!application->isCounted()) changed(*application);
    }
    emit summaryChanged();
}

void ApplicationsModel::take(const SurveyNews& news) {
    if (news.catalogue != nullptr) setRows(news.catalogue, news.found);
    for (const auto& [id, runs] : news.runs) {
        Application* application = find(id);
        if (application == nullptr || application->runs == runs) continue;
        application->runs = runs;
        changed(*application);
    }
    for (const auto& [id, sizes] : news.sizes) {
        Application* application = find(id);
        if (application == nullptr || !application->take(sizes)) continue;
        changed(*application);
    }
    if (news.isOver) isCounted_ = true;
    if (news.isOver) setCounting(false);
    emit summaryChanged();
}

void ApplicationsModel::setWatching(bool isWatching) {
    if (isWatching_ == isWatching) return;
    isWatching_ = isWatching;
    for (const auto& application : rows_) changed(*application);
}

bool ApplicationsModel::readChoice() {
    if (!choice_.read()) return false;
    for (const auto& application : rows_) changed(*application);
    const std::size_t before = rows_.size();
    for (const auto& [id, kinds] : choice_.chosen()) {
        const Entry* entry = catalogue_ == nullptr ? nullptr : catalogue_->find(id);
        if (entry != nullptr && find(id) == nullptr) addRow(*entry);
    }
    emit summaryChanged();
    return rows_.size() != before;
}

/// What stays stays in its place, with what is known of it, so that views keep their selection and
/// what is open in them.
void ApplicationsModel::setRows(const SurveyNews::Catalogue& catalogue,
                                const std::set<std::string>& found) {
    catalogue_ = catalogue;
    for (std::size_t row = rows_.size(); row-- > 0;) {
        const Application& application = *rows_[row];
        const Entry* entry = catalogue_->find(application.id);
        const bool stays = entry != nullptr && application.kinds == Application::kindsOf(*entry) &&
                           (found.contains(entry->id) || choice_.has(entry->id));
        if (stays) continue;
        beginRemoveRows({}, static_cast<int>(row), static_cast<int>(row));
        rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(row));
        endRemoveRows();
    }
    for (const Entry& entry : catalogue_->entries()) {
        const bool isFound = found.contains(entry.id);
        if (!isFound && !choice_.has(entry.id)) continue;
        if (find(entry.id) == nullptr) addRow(entry);
        Application& application = *find(entry.id);
        if (application.isFound == isFound && application.name == displayText(entry.name)) continue;
        application.describe(entry);
        application.isFound = isFound;
        changed(application);
    }
}

void ApplicationsModel::addRow(const Entry& entry) {
    const auto place = std::ranges::lower_bound(
        rows_, entry.id, {}, [](const auto& application) { return application->id; });
    const int row = static_cast<int>(place - rows_.begin());
    beginInsertRows({}, row, row);
    rows_.insert(place, std::make_unique<Application>(entry));
    endInsertRows();
}

ShownApplication* ApplicationsModel::find(const std::string& id) const {
    const auto found =
        std::ranges::find(rows_, id, [](const auto& application) { return application->id; });
    return found == rows_.end() ? nullptr : found->get();
}

void ApplicationsModel::changed(const Application& application) {
    const auto found = std::ranges::find(rows_, &application, &Rows::value_type::get);
    const int row = static_cast<int>(found - rows_.begin());
    const QModelIndex first = index(row, 0);
    emit dataChanged(first, index(row, columns - 1));
    if (application.kinds.empty()) return;
    const int last = static_cast<int>(application.kinds.size()) - 1;
    emit dataChanged(index(0, 0, first), index(last, columns - 1, first));
}

// The choice

Qt::CheckState ApplicationsModel::stateOf(const Application& application) const {
    if (!choice_.has(application.id)) return Qt::Unchecked;
    const auto isChosen = [&](const Application::Kind& kind) {
        return choice_.has(application.id, kind.kind);
    };
    return std::ranges::all_of(application.kinds, isChosen) ? Qt::Checked : Qt::PartiallyChecked;
}

bool ApplicationsModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || !(flags(index) & Qt::ItemIsUserCheckable)) return false;
    const Application& application = *applicationOf(index);
    if (index.internalPointer() != nullptr) {
        const auto& kind = application.kinds[static_cast<std::size_t>(index.row())].kind;
        const bool chooses = value.toInt() != Qt::Unchecked;
        return store([&](TraceChoice& choice) {
            return chooses ? choice.select(application.id, {kind})
                           : choice.deselect(application.id, {kind});
        });
    }
    const bool drops = choice_.has(application.id);
    return store([&](TraceChoice& choice) {
        return drops ? choice.deselect(application.id, {})
                     : choice.select(application.id, application.recommended());
    });
}

bool ApplicationsModel::store(const std::function<Result<Done>(TraceChoice&)>& change) {
    const Result<Done> stored = choice_.store(change);
    // On failure too: a view may have drawn the box as it was to be.
    for (const auto& application : rows_) changed(*application);
    emit summaryChanged();
    if (!stored && tellFailure_) {
        tellFailure_(Words::tr("The choice of traces could not be saved."),
                     displayText(stored.error().message()));
    }
    return stored.ok();
}

void ApplicationsModel::chooseRecommended() {
    std::map<std::string, TraceChoice::Kinds> chosen;
    for (const auto& application : rows_) {
        auto kinds = application->recommended();
        if (!application->total().isNothing() && !kinds.empty()) {
            chosen[application->id] = std::move(kinds);
        }
    }
    if (!chosen.empty()) store([&](TraceChoice& choice) { return choice.select(chosen); });
}

// What is shown

QString ApplicationsModel::offer() const {
    if (!isCounted_ || !isNothingChosen() || !choice_.isKnown()) return {};
    QStringList names;
    TraceAmount total;
    for (const auto& application : rows_) {
        const TraceAmount amount = application->total();
        if (amount.isNothing() || application->recommended().empty()) continue;
        names << application->name;
        total.add(amount);
    }
    if (names.isEmpty()) return {};
    const int count = static_cast<int>(names.size());
    const QString who = listOfNames(names);
    if (total.bytes == 0)
        return Words::tr("%1 (has|have) left traces here.", nullptr, count).arg(who);
    return Words::tr("%1 (has|have) left %2 here.", nullptr, count)
        .arg(who, sizeWords(total.bytes, 1));
}

QStringList ApplicationsModel::unseen() const {
    QStringList lines;
    for (const auto& application : rows_) {
        if (application->runs == Runs::no) lines << application->unseen;
    }
    return lines;
}

QStringList ApplicationsModel::faults() const {
    QStringList lines;
    if (catalogue_ == nullptr) return lines;
    for (const catalogue::Catalogue::Fault& fault : catalogue_->faults()) {
        lines << displayText(catalogue::textOf(fault.file, fault.problem));
    }
    for (const auto& [id, kinds] : choice_.chosen()) {
        if (catalogue_->find(id) != nullptr) continue;
        lines << Words::tr("%1: is chosen, but nothing describes it").arg(displayText(id));
    }
    return lines;
}

QVariant ApplicationsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    if (section == nameColumn) return Words::tr("Application");
    if (section == amountColumn) return Words::tr("Traces");
    return Words::tr("State");
}

QString ApplicationsModel::amountTextOf(const Application& application,
                                        const TraceAmount& amount) const {
    if (application.isCounted()) return textOfAmount(amount);
    return isCounting_ ? Words::tr("counting…") : Words::tr("not counted");
}

QVariant ApplicationsModel::data(const QModelIndex& index, int role) const {
    const Application* application = applicationOf(index);
    if (application == nullptr) return {};
    if (index.internalPointer() == nullptr) {
        return applicationData(*application, index.column(), role);
    }
    return kindData(*application, static_cast<std::size_t>(index.row()), index.column(), role);
}

QVariant ApplicationsModel::applicationData(const Application& application, int column,
                                            int role) const {
    switch (role) {
        case Qt::DisplayRole:
            if (column == nameColumn) return application.name;
            if (column == amountColumn) return amountTextOf(application, application.total());
            return textOfState(application.isFound, application.runs, choice_.has(application.id),
                               isWatching_);
        case Qt::DecorationRole:
            return column == nameColumn ? QVariant(application.icon) : QVariant();
        case Qt::CheckStateRole:
            return column == nameColumn ? QVariant(stateOf(application)) : QVariant();
        case Qt::ToolTipRole:
        case Qt::AccessibleDescriptionRole: {
            QStringList lines;
            if (application.runs != Runs::no) {
                lines << Words::tr("What it has open is left alone until it quits.");
            }
            if (!application.unseen.isEmpty()) {
                lines << Words::tr("Could not be looked into:") << application.unseen;
            }
            return lines.join(u'\n');
        }
        default:
            return {};
    }
}

QVariant ApplicationsModel::kindData(const Application& application, std::size_t kind, int column,
                                     int role) const {
    const Application::Kind& shown = application.kinds[kind];
    switch (role) {
        case Qt::DisplayRole:
            if (column == nameColumn) return nameOfKind(shown.kind);
            if (column == stateColumn) {
                return shown.recommended ? QVariant(Words::tr("recommended")) : QVariant();
            }
            return amountTextOf(
                application, application.isCounted() ? application.amounts[kind] : TraceAmount());
        case Qt::CheckStateRole:
            if (column != nameColumn) return {};
            return choice_.has(application.id, shown.kind) ? Qt::Checked : Qt::Unchecked;
        case Qt::ToolTipRole:
        case Qt::AccessibleDescriptionRole:
            return shown.why;
        default:
            return {};
    }
}

Qt::ItemFlags ApplicationsModel::flags(const QModelIndex& index) const {
    const Application* application = applicationOf(index);
    if (application == nullptr) return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (index.internalPointer() != nullptr) flags |= Qt::ItemNeverHasChildren;
    if (index.column() != nameColumn) return flags;
    // A box that would choose nothing is none.
    const bool canChange = index.internalPointer() != nullptr || choice_.has(application->id) ||
                           !application->recommended().empty();
    return canChange ? flags | Qt::ItemIsUserCheckable : flags;
}

// The tree: an index of a kind points to its application.

const ShownApplication* ApplicationsModel::applicationOf(const QModelIndex& index) const {
    if (!index.isValid()) return nullptr;
    if (index.internalPointer() != nullptr) {
        return static_cast<const Application*>(index.internalPointer());
    }
    return rows_[static_cast<std::size_t>(index.row())].get();
}

QModelIndex ApplicationsModel::index(int row, int column, const QModelIndex& parent) const {
    if (row < 0 || column < 0 || column >= columns || row >= rowCount(parent)) return {};
    if (!parent.isValid()) return createIndex(row, column);
    return createIndex(row, column, rows_[static_cast<std::size_t>(parent.row())].get());
}

QModelIndex ApplicationsModel::parent(const QModelIndex& index) const {
    if (!index.isValid() || index.internalPointer() == nullptr) return {};
    const auto found = std::ranges::find_if(
        rows_, [&](const auto& row) { return row.get() == index.internalPointer(); });
    return createIndex(static_cast<int>(found - rows_.begin()), 0);
}

int ApplicationsModel::rowCount(const QModelIndex& parent) const {
    if (!parent.isValid()) return static_cast<int>(rows_.size());
    if (parent.internalPointer() != nullptr || parent.column() != 0) return 0;
    return static_cast<int>(rows_[static_cast<std::size_t>(parent.row())]->kinds.size());
}

int ApplicationsModel::columnCount(const QModelIndex&) const {
    return columns;
}

}  // namespace dorvanel::desktop
