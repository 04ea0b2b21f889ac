// SPDX-License-Identifier: MIT
#include "app/desktop/MainThreadWake.h"

#include <QCoreApplication>
#include <QThread>
#include <utility>

namespace dorvanel::desktop {

MainThreadWake::MainThreadWake(std::function<void()> call)
    : call_(std::move(call)), dispatcher_(*QAbstractEventDispatcher::instance()) {
    // Before the loop sleeps too: a turn that did not wait may have used the wake-up up.
    connect(&dispatcher_, &QAbstractEventDispatcher::aboutToBlock, this, &MainThreadWake::check);
    connect(&dispatcher_, &QAbstractEventDispatcher::awake, this, &MainThreadWake::check);
}

void MainThreadWake::post() {
    pending_ = true;
    dispatcher_.wakeUp();
}

void MainThreadWake::check() {
    if (!pending_.exchange(false)) return;
    // Not from within the dispatcher: what is called may run a loop of its own.
    QMetaObject::invokeMethod(
        this, [this] { call_(); }, Qt::QueuedConnection);
}

bool isMainThread() {
    return QThread::currentThread() == QCoreApplication::instance()->thread();
}

}  // namespace dorvanel::desktop
