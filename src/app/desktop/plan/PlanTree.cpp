// SPDX-License-Identifier: MIT
#include "app/desktop/plan/PlanTree.h"

#include <QString>
#include <algorithm>
#include <map>
#include <string_view>
#include <tuple>
#include <utility>

namespace dorvanel::desktop {
namespace {

using What = PlanTree::Group::What;

char lower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

/// Whether texts hold a filter, whatever the case of either.
class Filter {
  public:
    explicit Filter(const std::string& filter)
        : text_(filter),
          isPlain_(std::ranges::all_of(
              filter, [](char character) { return static_cast<signed char>(character) >= 0; })),
          wide_(isPlain_ ? QString() : QString::fromStdString(filter)) {
        if (isPlain_) std::ranges::transform(text_, text_.begin(), lower);
    }

    [[nodiscard]] bool accepts(const std::string& text) const {
        if (text_.empty()) return true;
        if (!isPlain_) return QString::fromStdString(text).contains(wide_, Qt::CaseInsensitive);
        const auto isAlike = [](char one, char wanted) { return lower(one) == wanted; };
        return std::search(text.begin(), text.end(), text_.begin(), text_.end(), isAlike) !=
               text.end();
    }

  private:
    std::string text_;
    bool isPlain_;  ///< a long list is gone through faster byte by byte
    QString wide_;
};

std::string_view folderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == 0 || slash == std::string::npos ? std::string_view("/")
                                                    : std::string_view(path).substr(0, slash);
}

/// Puts items into their places.
class Building {
  public:
    explicit Building(PlanTree& tree) : tree_(tree) {}

    std::uint32_t group(What what, const std::string& application) {
        const auto [known, isNew] = groups_.try_emplace({what, application}, tree_.groups.size());
        if (isNew) tree_.groups.push_back({.what = what, .application = application});
        return static_cast<std::uint32_t>(known->second);
    }

    void add(std::uint32_t number, const PlanItem& item) {
        const bool isMention = item.action == PlanItem::Action::mention;
        const bool isFolder = isMention || item.trace.empty();
        const std::string_view name = isFolder ? folderOf(item.path) : item.trace;
        const What what = isMention                  ? What::mentions
                          : item.application.empty() ? What::files
                                                     : What::application;
        // Items of one folder or kind mostly stand together.
        if (tree_.kinds.empty() || what != last_.what || name != tree_.kinds[lastKind_].name ||
            (!isMention && item.application != last_.application)) {
            last_ = {what, isMention ? std::string() : item.application};
            lastKind_ = kind(group(last_.what, last_.application), name, isFolder);
        }
        PlanTree::Kind& kind = tree_.kinds[lastKind_];
        PlanTree::Group& group = tree_.groups[tree_.groupOfKind[lastKind_]];
        tree_.places[number] = {lastKind_, static_cast<std::uint32_t>(kind.items.size())};
        kind.items.push_back(number);
        if (item.action == PlanItem::Action::clean || item.isOfList()) return;
        kind.files += item.files;
        kind.bytes += item.bytes;
        group.files += item.files;
        group.bytes += item.bytes;
    }

  private:
    struct Last {
        What what = What::files;
        std::string application;
    };

    std::uint32_t kind(std::uint32_t group, std::string_view name, bool isFolder) {
        const auto [known, isNew] =
            kinds_.try_emplace({group, isFolder, std::string(name)}, tree_.kinds.size());
        if (isNew) {
            std::vector<std::uint32_t>& row = tree_.groups[group].kinds;
            tree_.groupOfKind.push_back(group);
            tree_.rowOfKind.push_back(static_cast<std::uint32_t>(row.size()));
            row.push_back(static_cast<std::uint32_t>(tree_.kinds.size()));
            tree_.kinds.push_back({.name = std::string(name), .isFolder = isFolder});
        }
        return static_cast<std::uint32_t>(known->second);
    }

    PlanTree& tree_;
    std::map<std::pair<What, std::string>, std::size_t> groups_;
    std::map<std::tuple<std::uint32_t, bool, std::string>, std::size_t> kinds_;
    Last last_;
    std::uint32_t lastKind_ = 0;
};

}  // namespace

PlanTree::PlanTree(const ShownPlan& shown, const std::string& filter) {
    const Filter accepted(filter);
    const auto nameOf = [&shown](const std::string& application) -> const std::string& {
        const auto found = shown.names.find(application);
        return found == shown.names.end() ? application : found->second;
    };
    const Plan& plan = *shown.plan;
    places.resize(plan.items.size());
    Building building(*this);
    for (std::uint32_t i = 0; i < plan.items.size(); ++i) {
        const PlanItem& item = plan.items[i];
        const bool isShown = accepted.accepts(item.path) || accepted.accepts(item.trace) ||
                             accepted.accepts(nameOf(item.application));
        if (isShown) building.add(i, item);
    }
    for (std::uint32_t i = 0; i < plan.skipped.size(); ++i) {
        const PlanSkip& skip = plan.skipped[i];
        if (!accepted.accepts(skip.path) && !accepted.accepts(nameOf(skip.application))) continue;
        groups[building.group(What::skipped, {})].skipped.push_back(i);
    }
}

}  // namespace dorvanel::desktop
