// SPDX-License-Identifier: MIT
#include "app/desktop/plan/Looker.h"

#include <utility>

namespace dorvanel::desktop {

Looker::Looker(QtRunLoop& loop, std::unique_ptr<platform::Worker> worker)
    : loop_(loop), worker_(std::move(worker)) {}

Looker::~Looker() {
    stop();
    self_.reset();
    worker_->wait();
}

void Looker::start(Work work, Then then) {
    stop();
    const auto look = std::make_shared<Look>();
    look->work = std::move(work);
    look->then = std::move(then);
    if (now_ == nullptr) return begin(look);
    next_ = look;
}

void Looker::stop() {
    if (now_ != nullptr) now_->stop = true;
    // It has not begun and never will.
    if (const LookPointer skipped = std::exchange(next_, nullptr)) {
        skipped->stop = true;
        skipped->then(false);
    }
}

void Looker::begin(const LookPointer& look) {
    now_ = look;
    // What is posted may outlive what the work uses, and holds nothing of it.
    const auto tell = [&loop = loop_, weak = std::weak_ptr(self_)] {
        loop.performOnMainThread([weak] {
            if (const auto self = weak.lock()) (*self)->ended();
        });
    };
    const auto started = worker_->start([look, tell] {
        look->work([&look] { return look->stop.load(); });
        look->work = {};
        tell();
    });
    if (started) return;
    look->stop = true;
    tell();
}

void Looker::ended() {
    const LookPointer look = std::exchange(now_, nullptr);
    if (const LookPointer next = std::exchange(next_, nullptr)) begin(next);
    look->then(!look->stop);
}

}  // namespace dorvanel::desktop
