// SPDX-License-Identifier: MIT
#pragma once

#include <QDropEvent>
#include <QMimeData>
#include <QObject>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "app/desktop/files/DropOverlay.h"

namespace dorvanel::desktop {

/// The paths of what is dragged, in bytes; none unless all of it is files of this machine.
std::vector<std::string> draggedPaths(const QMimeData& data);

/// Lets files be dropped anywhere on a window, and shows in the window, while they are dragged over
/// it, what that would do. Main thread.
class DropTarget final : public QObject {
  public:
    struct Parts {
        /// Why nothing can be dropped now; "" when it can.
        std::function<QString()> refusal;
        /// Files were dropped: absolute paths in bytes, one at least. Called when the drop is over.
        std::function<void(const std::vector<std::string>&)> dropped;
    };
    /// A child of `window`, as the overlay is.
    DropTarget(QWidget& window, Parts parts);

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void dragOver(QDropEvent& event);
    void drop(QDropEvent& event);
    /// What is dragged from the window itself is not for the window.
    [[nodiscard]] bool isOwn(const QDropEvent& event) const;

    QWidget& window_;
    Parts parts_;
    DropOverlay* overlay_;
    std::size_t count_ = 0;  ///< of what is dragged over the window
};

}  // namespace dorvanel::desktop
