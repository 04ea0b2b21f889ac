#include "app/desktop/Coalescer.h"

#include <utility>

namespace dorvanel::desktop {

Coalescer::Coalescer(std::function<void()> deliver)
    : deliver_(std::move(deliver)), wake_([this] { deliverWhenDue(); }) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &Coalescer::deliverNow);
}

void Coalescer::post() {
    if (posted_.exchange(true)) return;
    wake_.post();
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

}  // namespace dorvanel::desktop
