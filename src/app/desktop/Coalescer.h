#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <atomic>
#include <functional>

namespace dorvanel::desktop {

/// Has the main thread deliver what any thread has set: at most sixty times a second, and once
/// more after the last change. Made and destroyed on the main thread, when no other posts.
class Coalescer final : public QObject {
  public:
    /// `deliver` reads the latest value and shows it; main thread.
    explicit Coalescer(std::function<void()> deliver);

    /// Something has changed. Any thread; never waits.
    void post();
    /// Delivers at once. Main thread.
    void deliverNow();

  private:
    static constexpr int intervalMilliseconds = 16;

    void deliverWhenDue();

    std::function<void()> deliver_;
    std::atomic<bool> posted_ = false;
    QElapsedTimer sinceDelivery_;
    QTimer timer_;
};

/// Whether this is the thread of the user interface.
bool isMainThread();

}  // namespace dorvanel::desktop
