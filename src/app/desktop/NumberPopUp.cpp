// SPDX-License-Identifier: MIT
#include "app/desktop/NumberPopUp.h"

#include <QStandardItemModel>

#include "app/PassMeaning.h"
#include "app/desktop/Words.h"

namespace dorvanel::desktop {
namespace {

/// What the engine does with a number that no item stands for.
QString meaningOf(IndexKey key, int stored) {
    if (key == IndexKey("NumberOfWrites")) {
        OverwriteSettings settings;
        settings.numberOfWrites = stored;
        return Words::tr("%n (pass|passes) (stored: %1)", nullptr, meaningOf(settings).fewest)
            .arg(stored);
    }
    // The buffer keeps what it held: zeros, until something else was asked for.
    return Words::tr("As used last, or zeros (stored: %1)").arg(stored);
}

}  // namespace

NumberPopUp::NumberPopUp(QComboBox& box, IndexKey key) : box_(&box), key_(key) {
    box_->insertSeparator(separatorIndex);
    items_ = box_->count();
}

void NumberPopUp::show(int stored) {
    stored_ = stored;
    const bool isAnItem = stored >= 0 && stored < items_ && stored != separatorIndex;
    if (isAnItem) box_->setCurrentIndex(stored);
    if (box_->count() > items_) box_->removeItem(items_);
    if (isAnItem) return;
    box_->addItem(meaningOf(key_, stored));
    if (auto* model = qobject_cast<QStandardItemModel*>(box_->model())) {
        model->item(items_)->setEnabled(false);
    }
    box_->setCurrentIndex(items_);
}

int NumberPopUp::value() const {
    const int index = box_->currentIndex();
    return index >= 0 && index < items_ ? index : stored_;
}

}  // namespace dorvanel::desktop
