// SPDX-License-Identifier: MIT
#include "app/desktop/QtWindow.h"

#include <QEvent>
#include <QScreen>
#include <QShortcut>
#include <QStyle>
#include <algorithm>
#include <utility>

#include "app/desktop/QtAlertPanel.h"

namespace dorvanel::desktop {

using ui::SheetCode;

namespace {

/// A frame is saved once it has stood still for so long, and when the window goes.
constexpr std::chrono::milliseconds frameSaveDelay{500};

SheetCode sheetCode(ui::AlertButton button) {
    switch (button) {
        case ui::AlertButton::defaultButton:
            return SheetCode::defaultButton;
        case ui::AlertButton::alternateButton:
            return SheetCode::alternateButton;
        case ui::AlertButton::otherButton:
            break;
    }
    return SheetCode::otherButton;
}

/// How much wider and higher a window is with its frame; as the style has frames, where the window
/// has none yet.
QSize frameSize(const QWidget& window) {
    const QSize known = window.frameSize() - window.size();
    if (!known.isNull()) return known;
    const int border = 2 * window.style()->pixelMetric(QStyle::PM_DefaultFrameWidth);
    return {border, border + window.style()->pixelMetric(QStyle::PM_TitleBarHeight)};
}

}  // namespace

void centerOnScreen(QWidget& window) {
    const QScreen* screen = window.screen();
    if (screen == nullptr) return;
    const QRect available = screen->availableGeometry();
    const QSize around = frameSize(window);
    window.resize(window.size().boundedTo(available.size() - around));
    QRect frame = window.frameGeometry();
    frame.moveCenter(available.center());
    // With the frame that it is to get it stays on the screen as well.
    const QRect room = available.adjusted(0, 0, -window.width() - around.width() + 1,
                                          -window.height() - around.height() + 1);
    window.move(std::clamp(frame.left(), room.left(), std::max(room.left(), room.right())),
                std::clamp(frame.top(), room.top(), std::max(room.top(), room.bottom())));
}

void bringToFront(QWidget& window) {
    if (window.isMinimized()) window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

void closeByKey(QWidget& window) {
    const auto* key = new QShortcut(QKeySequence::Close, &window);
    QObject::connect(key, &QShortcut::activated, &window, &QWidget::close);
}

QtWindow::QtWindow(QWidget& window, platform::UserDefaults& defaults)
    : window_(window), defaults_(defaults) {
    saveTimer_.setSingleShot(true);
    saveTimer_.setInterval(frameSaveDelay);
    connect(&saveTimer_, &QTimer::timeout, this, &QtWindow::saveFrame);
    window_.installEventFilter(this);
}

QtWindow::~QtWindow() {
    saveFrame();
}

void QtWindow::setFrameAutosaveName(const std::string& name) {
    frameName_ = name;
    const auto saved = defaults_.arrayForKey(key());
    if (!saved || saved->size() != 4) return;
    int numbers[4];
    for (std::size_t i = 0; i < 4; ++i) {
        bool isNumber = false;
        numbers[i] = QString::fromStdString((*saved)[i]).toInt(&isNumber);
        if (!isNumber) return;
    }
    const QSize size(numbers[2], numbers[3]);
    if (!size.isValid() || size.isEmpty()) return;
    window_.resize(size.boundedTo(window_.screen()->availableSize()));
    window_.move(numbers[0], numbers[1]);
}

void QtWindow::center() {
    centerOnScreen(window_);
}

void QtWindow::makeKeyAndOrderFront() {
    bringToFront(window_);
}

void QtWindow::beginSheet(const std::string& title, const std::string& message,
                          const std::string& defaultButton, const std::string& alternateButton,
                          const std::string& otherButton,
                          std::function<void(SheetCode)> didDismiss) {
    bringToFront(window_);
    if (sheet_ != nullptr) return bringToFront(*sheet_);
    QMessageBox* box =
        makeAlert(&window_, {title, message, defaultButton, alternateButton, otherButton});
    sheet_ = box;
    box->setWindowModality(Qt::WindowModal);
    connect(box, &QDialog::finished, this, [this, box, didDismiss = std::move(didDismiss)] {
        const SheetCode code = sheetCode(clickedButton(*box));
        sheet_ = nullptr;
        box->deleteLater();
        // Called from the main loop, when the sheet is off the screen.
        QMetaObject::invokeMethod(
            this, [didDismiss, code] { didDismiss(code); }, Qt::QueuedConnection);
    });
    box->show();
}

bool QtWindow::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Move:
        case QEvent::Resize:
            if (window_.isVisible() && !frameName_.empty()) saveTimer_.start();
            break;
        case QEvent::Hide:
            saveFrame();
            break;
        default:
            break;
    }
    return QObject::eventFilter(watched, event);
}

void QtWindow::saveFrame() {
    if (!saveTimer_.isActive()) return;
    saveTimer_.stop();
    if (window_.isMinimized() || window_.isMaximized()) return;
    const QPoint place = window_.pos();
    const QSize size = window_.size();
    defaults_.setArray({std::to_string(place.x()), std::to_string(place.y()),
                        std::to_string(size.width()), std::to_string(size.height())},
                       key());
    // What cannot be written now is written with the next change of anything.
    static_cast<void>(defaults_.synchronize());
}

}  // namespace dorvanel::desktop
