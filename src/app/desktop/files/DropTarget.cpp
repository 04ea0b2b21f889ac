// SPDX-License-Identifier: MIT
#include "app/desktop/files/DropTarget.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QUrl>
#include <cctype>

#include "app/desktop/Bytes.h"
#include "app/desktop/Words.h"

namespace dorvanel::desktop {

namespace {

/// Whether a URL is a plain one of a file here, without anything to puzzle over.
bool isPlainFile(const QByteArray& line) {
    if (!line.startsWith("file:///")) return false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const char byte = line[i];
        if (byte <= ' ' || byte > '~' || byte == '?' || byte == '#') return false;
        if (byte != '%') continue;
        if (i + 2 >= line.size() || std::isxdigit(line[i + 1]) == 0 ||
            std::isxdigit(line[i + 2]) == 0) {
            return false;
        }
    }
    return true;
}

/// The path that a line of "text/uri-list" names. Most are plain and decoded without a QUrl, which
/// would take a hundred thousand of them half a second.
std::string pathOfLine(const QByteArray& line) {
    if (!isPlainFile(line)) return pathOfUrl(QUrl::fromEncoded(line));
    constexpr qsizetype scheme = 7;  // "file://"
    std::string path = QByteArray::fromPercentEncoding(line.mid(scheme)).toStdString();
    return path.find('\0') == std::string::npos ? path : std::string();
}

}  // namespace

std::vector<std::string> draggedPaths(const QMimeData& data) {
    std::vector<std::string> paths;
    for (const QByteArray& raw : data.data(QStringLiteral("text/uri-list")).split('\n')) {
        const QByteArray line = raw.trimmed();
        if (line.isEmpty() || line.startsWith('#')) continue;
        paths.push_back(pathOfLine(line));
        if (paths.back().empty()) return {};
    }
    return paths;
}

DropTarget::DropTarget(QWidget& window, Parts parts)
    : QObject(&window),
      window_(window),
      parts_(std::move(parts)),
      overlay_(new DropOverlay(window)) {
    window_.setAcceptDrops(true);
    window_.installEventFilter(this);
}

bool DropTarget::eventFilter(QObject* watched, QEvent* event) {
    if (watched != &window_) return QObject::eventFilter(watched, event);
    switch (event->type()) {
        case QEvent::DragEnter:
            // What is dragged stays what it is until it leaves.
            count_ = draggedPaths(*static_cast<QDropEvent*>(event)->mimeData()).size();
            dragOver(static_cast<QDropEvent&>(*event));
            // Who does not take a drag in is not told when it leaves; whether what is dragged can
            // be dropped is answered at each of its moves.
            event->accept();
            return true;
        case QEvent::DragMove:
            dragOver(static_cast<QDropEvent&>(*event));
            return true;
        case QEvent::DragLeave:  // Escape too
            overlay_->hide();
            return true;
        case QEvent::Drop:
            overlay_->hide();
            drop(static_cast<QDropEvent&>(*event));
            return true;
        default:
            return QObject::eventFilter(watched, event);
    }
}

bool DropTarget::isOwn(const QDropEvent& event) const {
    const auto* source = qobject_cast<const QWidget*>(event.source());
    return source != nullptr && source->window() == &window_;
}

void DropTarget::dragOver(QDropEvent& event) {
    QString refusal = parts_.refusal();
    if (count_ == 0) refusal = Words::tr("Only files and folders of this computer can be shredded");
    const bool takes = refusal.isEmpty() && !isOwn(event);
    // A copy: the source must keep its hands off what is dropped.
    event.setDropAction(takes ? Qt::CopyAction : Qt::IgnoreAction);
    event.setAccepted(takes);
    if (isOwn(event)) return;
    overlay_->say(
        takes ? Words::tr("Drop to shred %n item(s)", nullptr, static_cast<int>(count_)) : refusal,
        takes);
}

void DropTarget::drop(QDropEvent& event) {
    std::vector<std::string> paths = draggedPaths(*event.mimeData());
    const bool takes = !paths.empty() && parts_.refusal().isEmpty() && !isOwn(event);
    event.setDropAction(takes ? Qt::CopyAction : Qt::IgnoreAction);
    event.setAccepted(takes);
    if (!takes) return;
    // The source waits for the end of the drop; the question comes after.
    QMetaObject::invokeMethod(
        this, [this, paths = std::move(paths)] { parts_.dropped(paths); }, Qt::QueuedConnection);
}

}  // namespace dorvanel::desktop
