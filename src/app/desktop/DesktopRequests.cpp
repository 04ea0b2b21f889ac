#include <QApplication>
#include <QFontMetrics>
#include <filesystem>

#include "app/ShredArguments.h"
#include "app/desktop/Bytes.h"
#include "app/desktop/Desktop.h"
#include "app/desktop/OutcomeText.h"
#include "engine/MediumNotice.h"
#include "platform/MountPoints.h"

// What people ask of the window besides a run: files picked in the Open panel or dropped on it.

namespace dorvanel::desktop {

using platform::AlertButton;

namespace {

/// Beyond so many, names of dropped files are only counted.
constexpr std::size_t namesInQuestion = 8;

/// How much room a path has in a line of the window, in pixels.
constexpr int pathWidth = 280;

QString cut(const QString& text, int width) {
    return QFontMetrics(QApplication::font()).elidedText(text, Qt::ElideMiddle, width);
}

std::string nameOf(const std::string& path) {
    std::string trimmed = path;
    while (trimmed.size() > 1 && trimmed.ends_with('/')) trimmed.pop_back();
    return std::filesystem::path(trimmed).filename().native();
}

/// The question about dropped files, with names of at most `width` pixels.
std::string questionAbout(const std::vector<std::string>& files, int width) {
    QStringList lines = {QStringLiteral("Shred %1? There is no way back.")
                             .arg(counted(files.size(), QStringLiteral("item"))),
                         QString()};
    for (std::size_t i = 0; i < files.size() && i < namesInQuestion; ++i) {
        lines << cut(displayText(nameOf(files[i])), width);
    }
    if (files.size() > namesInQuestion) {
        lines << QStringLiteral("and %1 more").arg(files.size() - namesInQuestion);
    }
    return lines.join(u'\n').toStdString();
}

/// A path as a person knows it: in the home folder without the way there.
QString shortPath(const std::string& path) {
    const std::string home = platform::homeDirectory() + "/";
    return displayText(path.starts_with(home) ? "~/" + path.substr(home.size()) : path);
}

}  // namespace

/// The engine at work on the main thread: no timer fires, no action comes in between, and the
/// window is painted but takes no input.
class Desktop::MainThreadWork {
  public:
    explicit MainThreadWork(Desktop& desktop) : desktop_(desktop), hold_(desktop.loop_) {
        desktop_.workOnMainThread_ = true;
    }
    ~MainThreadWork() { desktop_.workOnMainThread_ = false; }
    MainThreadWork(const MainThreadWork&) = delete;
    MainThreadWork& operator=(const MainThreadWork&) = delete;

  private:
    Desktop& desktop_;
    QtRunLoop::Hold hold_;
};

bool Desktop::engineIsBusy() {
    const bool busy = workOnMainThread_ || controller_->isBusy();
    if (busy) {
        window_->showMessage(QStringLiteral("Not started: a run is still in progress."));
        workspace_.beep();
    }
    return busy;
}

void Desktop::openDoc() {
    if (engineIsBusy()) return;
    bool picked = false;
    QtOpenPanel panel(window_->window(), [this, &picked](const std::vector<std::string>& items) {
        picked = true;
        tellMedium(items);
    });
    {
        const MainThreadWork work(*this);
        FileAccess::openDoc(panel, [this](std::vector<std::string> items) {
            controller_->fileAccessInstance().shredDroppedFile(items);
        });
    }
    if (picked) tellOutcome();
}

std::vector<std::string> Desktop::checkedItems(const std::vector<std::string>& items) {
    if (items.empty()) return {};
    const auto mounted = platform::mountPoints();
    QStringList reasons;
    QString first;
    if (!mounted) {
        first = displayText(mounted.error().message());
    } else {
        const ShredArguments checked = checkShredArguments(items, platform::homeDirectory(),
                                                           mounted.value(), services_.system);
        if (checked.complaints.empty()) return checked.paths;
        const QString sentence = QStringLiteral("“%1” %2");
        for (const ShredArguments::Complaint& complaint : checked.complaints) {
            const QString path = displayText(complaint.argument);
            const QString reason = displayText(complaint.reason);
            if (first.isEmpty()) first = sentence.arg(cut(path, pathWidth), reason);
            reasons << sentence.arg(path, reason);
        }
    }
    window_->showMessage(QStringLiteral("Nothing was shredded."));
    tellFailure(QStringLiteral("Nothing was shredded: %1").arg(first), reasons.join(u'\n'));
    workspace_.beep();
    return {};
}

void Desktop::filesDropped(std::vector<std::string> files) {
    if (engineIsBusy()) return;
    files = checkedItems(files);
    if (files.empty()) return;
    const AlertButton answer =
        alerts_->ask({"Shred Dropped Items", questionAbout(files, alertMessageWidth), "Cancel",
                      "Shred", "", questionAbout(files, QWIDGETSIZE_MAX)});
    if (answer != AlertButton::alternateButton || engineIsBusy()) return;
    tellMedium(files);
    {
        const MainThreadWork work(*this);
        controller_->fileAccessInstance().shredDroppedFile(files);
    }
    tellOutcome();
}

void Desktop::tellOutcome() {
    const Outcome& outcome = controller_->fileAccessInstance().outcome();
    window_->showMessage(messageOf(outcome));
    if (!failureOf(outcome).isEmpty()) tellFailure(failureOf(outcome), detailsOf(outcome));
}

void Desktop::tellMedium(const std::vector<std::string>& items) {
    QStringList whole;
    const std::string notice = mediumNotice(items, services_.medium, [&](const std::string& path) {
        const QString text = shortPath(path);
        whole << text;
        return "“" + cut(text, pathWidth).toStdString() + "”";
    });
    if (notice.empty()) return window_->showMediumNotice({}, {});
    QString sentence = QString::fromStdString(notice) + u'.';
    sentence[0] = sentence[0].toUpper();
    window_->showMediumNotice(sentence, whole.join(u'\n'));
}

}  // namespace dorvanel::desktop
