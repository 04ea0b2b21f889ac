// SPDX-License-Identifier: MIT
#include "app/desktop/QtQuitWait.h"

#include <QTimer>

namespace dorvanel::desktop {

bool QtQuitWait::wait(std::chrono::microseconds time) {
    if (cancelled_) return false;
    const QtRunLoop::Hold hold(loop_);
    QEventLoop events;
    events_ = &events;
    bool isOver = false;
    QTimer::singleShot(std::chrono::ceil<std::chrono::milliseconds>(time), Qt::PreciseTimer,
                       &events, [&events, &isOver] {
                           isOver = true;
                           events.quit();
                       });
    events.exec();
    events_ = nullptr;
    // The program's end ends every loop; there is nothing more to wait for then either.
    return isOver && !cancelled_;
}

void QtQuitWait::cancel() {
    cancelled_ = true;
    wake_.post();
}

}  // namespace dorvanel::desktop
