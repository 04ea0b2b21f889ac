// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <variant>

#include "apps/BrowserWatchOutlets.h"
#include "apps/FixedPaths.h"
#include "apps/ProfileFiles.h"
#include "apps/bw_typedef.h"
#include "prefs/ApplicationNames.h"

namespace dorvanel {

/// Collectors that read folders, change a database or move things: each an operation of
/// `Collectors` of its own.
enum class OwnSteps { appleMail12, appleMail20, mailsmith21 };

/// What one collector does; nothing behind the last one of an application.
using Collector = std::variant<std::monostate, FixedPathTargets, ProfileTargets, OwnSteps>;

/// One supported application.
struct SupportedApplication {
    std::uint32_t bw_typedef::*flag;
    ui::TextField* BrowserWatchOutlets::*label;
    std::string_view labelName;  ///< of the label's control in the interface file
    std::string_view name;       ///< in the list of enabled applications, letter for letter
    std::string_view checkBox;   ///< of the control in the interface file that enables it
    /// What a line of the process listing is searched for. A line speaks for the first row whose
    /// text it holds, so that no text may be part of a later one.
    std::string_view processText;
    /// The creator code of its processes, by which it is asked to quit; empty: it is not.
    std::string_view creator{};
    /// The application that is enabled and disabled with it, and whose running keeps its traces
    /// from being taken too; empty for most.
    std::string_view companion{};
    /// The application before which the window and the lists show it; empty: in the rows' order.
    std::string_view shownBefore{};
    /// What people read where a run passes it over; empty: its name.
    std::string_view groupName{};
    /// Each version's collector, in order.
    Collector collectors[4]{};
    /// Its place in a run, which is the order of the Activity Log; rows without one come last.
    int turn = 1000;
    /// In the list of enabled applications mail programs stand behind browsers.
    bool isMail = false;

    [[nodiscard]] constexpr bool hasCollectors() const {
        return !std::holds_alternative<std::monostate>(collectors[0]);
    }
    [[nodiscard]] constexpr std::string_view shownName() const {
        return groupName.empty() ? name : groupName;
    }
};

/// All of them, in the order of their rows.
inline constexpr SupportedApplication applications[] = {
#define APPLICATION(flag_, label_, ...)                         \
    SupportedApplication{.flag = &bw_typedef::flag_,            \
                         .label = &BrowserWatchOutlets::label_, \
                         .labelName = #label_,                  \
                         __VA_ARGS__},
#include "apps/Applications.def"
};

inline constexpr std::size_t applicationCount = std::size(applications);

/// The cache of QuickTime, which belongs to no application.
inline constexpr FixedPathTargets quicktimeCache = {
    "QuicktimeCache", "Quicktime Cache", {{"ShredQuicktimeCache", {"~/Library/Caches/Quicktime"}}}};

/// The applications in an order of their own, each once.
using ApplicationOrder = std::array<const SupportedApplication*, applicationCount>;

constexpr ApplicationOrder inOrderOfRows() {
    ApplicationOrder order{};
    for (std::size_t i = 0; i < applicationCount; ++i) order[i] = &applications[i];
    return order;
}

/// As the window and the check boxes have them.
inline constexpr ApplicationOrder displayOrder = [] {
    ApplicationOrder order = inOrderOfRows();
    for (const SupportedApplication& moved : applications) {
        if (moved.shownBefore.empty()) continue;
        auto* from = std::find(order.begin(), order.end(), &moved);
        auto* to = std::find_if(order.begin(), order.end(), [&](const SupportedApplication* other) {
            return other->name == moved.shownBefore;
        });
        std::rotate(to, from, from + 1);
    }
    return order;
}();

/// As the list of enabled applications has them before anybody has changed it.
inline constexpr ApplicationOrder listOrder = [] {
    ApplicationOrder order{};
    auto* next = order.begin();
    for (const bool isMail : {false, true}) {
        next = std::copy_if(
            displayOrder.begin(), displayOrder.end(), next,
            [=](const SupportedApplication* other) { return other->isMail == isMail; });
    }
    return order;
}();

/// As a run calls their collectors.
inline constexpr ApplicationOrder runOrder = [] {
    ApplicationOrder order = inOrderOfRows();
    std::sort(order.begin(), order.end(),
              [](const SupportedApplication* a, const SupportedApplication* b) {
                  return a->turn != b->turn ? a->turn < b->turn : a < b;
              });
    return order;
}();

/// The names of the default list.
inline constexpr std::array<std::string_view, applicationCount> applicationNames = [] {
    std::array<std::string_view, applicationCount> names{};
    std::transform(listOrder.begin(), listOrder.end(), names.begin(),
                   [](const SupportedApplication* application) { return application->name; });
    return names;
}();

/// The number of the row of this name; `applicationCount` where there is none.
constexpr std::size_t rowNamed(std::string_view name) {
    std::size_t row = 0;
    while (row < applicationCount && applications[row].name != name) ++row;
    return row;
}

/// The application of this name; null where there is none.
constexpr const SupportedApplication* applicationNamed(std::string_view name) {
    const std::size_t row = rowNamed(name);
    return row == applicationCount ? nullptr : &applications[row];
}

/// For the preferences.
inline constexpr ApplicationNames supportedApplications = {
    applicationNames, [](std::string_view name) {
        const SupportedApplication* application = applicationNamed(name);
        return application == nullptr ? std::string_view() : application->companion;
    }};

/// Whether the application or its companion runs.
constexpr bool isRunning(const SupportedApplication& application, const bw_typedef& running) {
    if (running.*application.flag != 0) return true;
    const SupportedApplication* companion = applicationNamed(application.companion);
    return companion != nullptr && running.*companion->flag != 0;
}

// What the rows must keep to, whoever adds one.
namespace detail {

/// Whether the row is complete, and the others that it names are there.
constexpr bool isSound(const SupportedApplication& row) {
    if (row.name.empty() || row.checkBox.empty() || row.processText.empty()) return false;
    if (!row.creator.empty() && row.creator.size() != 4) return false;
    if (!row.companion.empty()) {
        const std::size_t companion = rowNamed(row.companion);
        if (companion == applicationCount) return false;
        if (applications[companion].companion != row.name) return false;
    }
    return row.shownBefore.empty() || rowNamed(row.shownBefore) != applicationCount;
}

/// Whether no row takes another's names, or the lines of the process listing that speak for a later
/// one.
constexpr bool areSound() {
    for (std::size_t i = 0; i < applicationCount; ++i) {
        const SupportedApplication& row = applications[i];
        if (!isSound(row)) return false;
        for (std::size_t j = i + 1; j < applicationCount; ++j) {
            const SupportedApplication& later = applications[j];
            if (later.name == row.name || later.checkBox == row.checkBox) return false;
            if (later.processText.find(row.processText) != std::string_view::npos) return false;
        }
    }
    return true;
}

}  // namespace detail

static_assert(detail::areSound(),
              "a row lacks something, names another that is not there, or hides a later one");
static_assert(sizeof(bw_typedef) == applicationCount * sizeof(std::uint32_t));

}  // namespace dorvanel
