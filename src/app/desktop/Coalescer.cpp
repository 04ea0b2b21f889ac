#include "app/desktop/Coalescer.h"

#include <QCoreApplication>
#include <QThread>
#include <utility>

namespace dorvanel::desktop {

Coalescer::Coalescer(std::function<void()> deliver) : deliver_(std::move(deliver)) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &Coalescer::deliverNow);
}

void Coalescer::post() {
    if (posted_.exchange(true)) return;
    QMetaObject::invokeMethod(this, &Coalescer::deliverWhenDue, Qt::QueuedConnection);
}

void Coalescer::deliverWhenDue() {
    const qint64 passed =
        sinceDelivery_.isValid() ? sinceDelivery_.elapsed() : intervalMilliseconds;
    if (passed >= intervalMilliseconds) return deliverNow();
    timer_.start(intervalMilliseconds - static_cast<int>(passed));
}

void Coalescer::deliverNow() {
    // Cleared before the value is read: what is set from now on posts anew.
    posted_ = false;
    timer_.stop();
    sinceDelivery_.start();
    deliver_();
}

bool isMainThread() {
    return QThread::currentThread() == QCoreApplication::instance()->thread();
}

}  // namespace dorvanel::desktop
