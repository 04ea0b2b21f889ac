// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QString>
#include <QStringList>
#include <string>
#include <vector>

#include "app/desktop/applications/TraceWords.h"
#include "apps/TraceChoice.h"
#include "apps/catalogue/Catalogue.h"

namespace dorvanel::desktop {

/// One application of today, as it is shown. Main thread.
struct ShownApplication {
    struct Kind {
        std::string kind;
        bool recommended = false;
        QString why;
        friend bool operator==(const Kind&, const Kind&) = default;
    };

    explicit ShownApplication(const catalogue::Entry& entry) : id(entry.id) { describe(entry); }

    /// Takes over what the catalogue says of it.
    void describe(const catalogue::Entry& entry);
    /// Takes over what a count has found. One of other kinds than it has changes nothing, and
    /// false is returned.
    bool take(const TraceSizes& sizes);

    static std::vector<Kind> kindsOf(const catalogue::Entry& entry);
    [[nodiscard]] TraceChoice::Kinds recommended() const;
    [[nodiscard]] bool isCounted() const { return !amounts.empty(); }
    /// Of all its kinds together; nothing before they are counted.
    [[nodiscard]] TraceAmount total() const;

    std::string id;
    QString name;
    QIcon icon;
    std::vector<Kind> kinds;
    bool isFound = false;
    Runs runs = Runs::no;
    std::vector<TraceAmount> amounts;  ///< of each kind; empty before they are counted
    QStringList unseen;                ///< what could not be looked into, each a line
};

}  // namespace dorvanel::desktop
