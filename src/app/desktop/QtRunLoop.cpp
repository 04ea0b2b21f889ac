// SPDX-License-Identifier: MIT
#include "app/desktop/QtRunLoop.h"

#include <QCoreApplication>
#include <QTimer>
#include <utility>

namespace dorvanel::desktop {

class QtTimer final : public ui::Timer, public std::enable_shared_from_this<QtTimer> {
  public:
    QtTimer(QtRunLoop& loop, std::chrono::milliseconds interval, QtRunLoop::Fire fire)
        : loop_(loop), fire_(std::move(fire)) {
        timer_.setInterval(interval);
        QObject::connect(&timer_, &QTimer::timeout, [this] { beat(); });
        timer_.start();
    }

    void invalidate() override {
        valid_ = false;
        timer_.stop();
    }
    [[nodiscard]] bool isValid() const { return valid_; }

    void beat() {
        if (!valid_) return;
        const auto kept = shared_from_this();  // what it fires may let go of it
        missed_ = loop_.isHeld();
        if (!missed_) fire_(*this);
    }
    void makeUp() {
        if (missed_) beat();
    }

  private:
    QtRunLoop& loop_;
    QtRunLoop::Fire fire_;
    QTimer timer_;
    bool valid_ = true;
    bool missed_ = false;
};

QtRunLoop::~QtRunLoop() {
    for (const auto& timer : timers_) timer->invalidate();
}

std::shared_ptr<ui::Timer> QtRunLoop::scheduleRepeatingTimer(std::chrono::milliseconds interval,
                                                             Fire fire) {
    std::erase_if(timers_,
                  [](const auto& timer) { return !timer->isValid() && timer.use_count() == 1; });
    timers_.push_back(std::make_shared<QtTimer>(*this, interval, std::move(fire)));
    return timers_.back();
}

void QtRunLoop::run() {
    // A stop that came before the toolkit's loop has begun would be lost there.
    if (!stopping_) QCoreApplication::exec();
    stopping_ = false;
}

void QtRunLoop::stop() {
    stopping_ = true;
    // Not quit(), which asks every window first. It ends the loops of alerts too, from within.
    performOnMainThread([this] {
        if (stopping_) QCoreApplication::exit();
    });
}

void QtRunLoop::performOnMainThread(std::function<void()> work) {
    {
        const std::lock_guard lock(mutex_);
        posted_.push_back(std::move(work));
    }
    wake_.post();
}

void QtRunLoop::runPosted() {
    // One at a time and in order, also when one of them runs a loop in which more is posted.
    for (;;) {
        std::function<void()> work;
        {
            const std::lock_guard lock(mutex_);
            if (posted_.empty()) return;
            work = std::move(posted_.front());
            posted_.pop_front();
        }
        work();
    }
}

QtRunLoop::Hold::~Hold() {
    if (--loop_.holds_ > 0) return;
    for (const auto& timer : loop_.timers_) {
        loop_.performOnMainThread([weak = std::weak_ptr(timer)] {
            if (const auto due = weak.lock()) due->makeUp();
        });
    }
}

}  // namespace dorvanel::desktop
