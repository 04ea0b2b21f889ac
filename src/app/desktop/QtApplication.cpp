// SPDX-License-Identifier: MIT
#include "app/desktop/QtApplication.h"

#include "app/desktop/MainThreadWake.h"

namespace dorvanel::desktop {

using ui::TerminateReply;

void QtApplication::onMainThread(void (QtApplication::*call)()) {
    if (isMainThread()) return (this->*call)();
    loop_.performOnMainThread([this, call] { (this->*call)(); });
}

void QtApplication::hide() {
    onMainThread(&QtApplication::hideNow);
}

void QtApplication::terminate() {
    onMainThread(&QtApplication::terminateNow);
}

void QtApplication::replyToApplicationShouldTerminate(bool shouldTerminate) {
    if (shouldTerminate) {
        onMainThread(&QtApplication::end);
    } else {
        loop_.performOnMainThread([this] { deferred_ = false; });
    }
}

void QtApplication::hideNow() {
    delegate_.hideWindows();
}

void QtApplication::terminateNow() {
    // Asked again while the answer is still out: the same answer comes.
    if (ended_ || deferred_) return;
    if (delegate_.shouldTerminate() == TerminateReply::now) return end();
    deferred_ = true;
    delegate_.terminationDeferred();
}

void QtApplication::end() {
    if (ended_) return;
    ended_ = true;
    delegate_.willTerminate();
    loop_.stop();
}

}  // namespace dorvanel::desktop
