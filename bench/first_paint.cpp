// SPDX-License-Identifier: MIT

// Ends the program that it is linked into when the first window has been painted and handed to the
// screen: what runs the program measures its start, the loading of libraries included. Status 0;
// a program that ends otherwise has painted nothing.
#include <unistd.h>

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

namespace {

class FirstPaint final : public QObject {
  public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && watched->isWidgetType()) {
            const auto* widget = static_cast<const QWidget*>(watched);
            isPainting_ = isPainting_ || widget->isWindow();
        }
        // What makes a window paint itself: carried out here, it is over when the call returns.
        const bool paints =
            event->type() == QEvent::Expose || event->type() == QEvent::UpdateRequest;
        if (!paints || isInside_) return false;
        isInside_ = true;
        watched->event(event);
        isInside_ = false;
        if (isPainting_) ::_exit(0);
        return true;
    }

  private:
    bool isInside_ = false;
    bool isPainting_ = false;
};

void waitForFirstPaint() {
    auto* application = QCoreApplication::instance();
    application->installEventFilter(new FirstPaint(application));
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(waitForFirstPaint)
