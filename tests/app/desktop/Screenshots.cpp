// SPDX-License-Identifier: MIT

// Pictures of the program in its states, for the documentation and for looking at:
//   QT_SCALE_FACTOR=2 desktop-screenshots FOLDER light|dark|contrast [WIDTH HEIGHT] [-reverse]
#include <QApplication>
#include <QDialog>
#include <QDragEnterEvent>
#include <QElapsedTimer>
#include <QIcon>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QPainter>
#include <QTabWidget>
#include <QTreeView>
#include <filesystem>
#include <iostream>

#include "DesktopFixture.h"
#include "app/desktop/Colors.h"
#include "app/desktop/Translations.h"
#include "app/desktop/Words.h"
#include "app/desktop/applications/ApplicationsOverview.h"
#include "app/desktop/background/BackgroundSwitches.h"
#include "support/SampleProfiles.h"

namespace dorvanel::test {
namespace {

/// White and yellow on black, as people have it who see little.
QPalette contrastPalette() {
    QPalette palette(Qt::black, Qt::black);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, Qt::white);
        palette.setColor(QPalette::Disabled, role, QColor(0x9f, 0x9f, 0x9f));
    }
    for (const auto role : {QPalette::Light, QPalette::Midlight, QPalette::Mid, QPalette::Dark}) {
        palette.setColor(role, Qt::white);
    }
    palette.setColor(QPalette::Highlight, Qt::yellow);
    palette.setColor(QPalette::HighlightedText, Qt::black);
    palette.setColor(QPalette::Link, Qt::yellow);
    return palette;
}

QPalette darkPalette() {
    QPalette palette(QColor(0x2d, 0x2d, 0x30), QColor(0x2b, 0x2b, 0x2e));
    palette.setColor(QPalette::Base, QColor(0x3c, 0x3c, 0x41));
    palette.setColor(QPalette::Highlight, QColor(0x3f, 0x6f, 0x8f));
    return palette;
}

/// The whole program with nothing real around it, driven through its states.
class Photographer : public DesktopFixture {
  public:
    Photographer(std::string folder, std::string suffix)
        : folder_(std::move(folder)), suffix_(std::move(suffix)) {}
    void TestBody() override {}

    void takeAll() {
        makeProfiles();
        countdown = std::chrono::seconds(10);
        defaults->setBool(true, "FirstRun");
        if (!launch()) return;
        take(window(), "first-steps");
        find<QPushButton>("welcomeDismissButton")->click();
        take(window(), "idle");
        listing.show(
            {"/Applications/Safari.app/Contents/MacOS/Safari", "/Applications/Mail.app/x"});
        static_cast<void>(preferences->enableChanged("Opera"));
        static_cast<void>(preferences->enableChanged("Eudora"));
        desktop->controller().browserWatch().HandleBrowserWatchTimer(nullptr);
        take(window(), "watching");
        takeMenu();
        takePanel();
        takeHelp();
        takeAlerts();
        takeDropped();
        takePreview();
        takeOddNumbers();
        takeLongNames();
        takeRun();
        takeApplications();
        takeWork();
        takeCountdown();
        takeResults();
        takeWindow();
    }

  private:
    void makeProfiles() {
        const auto library = home.path() / "Library";
        for (const char* name : {"Mozilla/Profiles/default", "Mozilla/Profiles/work",
                                 "Application Support/Firefox/Profiles/k2v9x1aa.default",
                                 "Application Support/Firefox/Profiles/p0q8w3bb.private"}) {
            std::filesystem::create_directories(library / name);
        }
    }

    void take(QWidget& widget, const std::string& name) {
        for (int i = 0; i < 10; ++i) QCoreApplication::processEvents();
        const std::string path = folder_ + "/" + name + suffix_ + ".png";
        if (!widget.grab().save(QString::fromStdString(path))) std::cerr << path << "\n";
    }

    /// The commands come back a moment after a run.
    void waitForCommands() {
        waitUntil([this] { return find<QAction>("previewAction")->isEnabled(); });
    }

    void lookForIdleLine() {
        for (int i = 0; i < 3; ++i) desktop->plans().idleLine.beat();
        waitUntil([this] { return !desktop->plans().looker.isAtWork(); });
    }

    void countAgain() {
        desktop->applications().lookAgain();
        waitUntil([this] { return !desktop->applications().model().isCounting(); });
    }

    void takeApplications() {
        take(window(), "applications-none");
        SampleProfiles profiles(home.path(), 1);
        profiles.addFirefox();
        profiles.addChromium();
        profiles.addThunderbird();
        countAgain();
        take(window(), "applications-offered");
        static_cast<void>(TraceChoice(*defaults).select("firefox", {"cache", "cookies"}));
        static_cast<void>(TraceChoice(*defaults).select("falkon", {"cache"}));
        writeFile(home.path() / ".config/dorvanel/applications/owl.toml", "wings = 2\n");
        countAgain();
        auto* tree = find<QTreeView>("todayTree");
        tree->expand(tree->model()->index(2, 0));
        window().resize(window().width(), 700);
        take(window(), "applications-chosen");
        window().resize(683, 384);
        take(window(), "applications-small");
    }

    void takeMenu() {
        QMenu& menu = desktop->mainWindow().profilesMenu();
        menu.actions().at(1)->trigger();
        menu.actions().at(5)->trigger();
        const QRect title = window().menuBar()->actionGeometry(menu.menuAction());
        menu.popup(window().menuBar()->mapToGlobal(title.bottomLeft()));
        for (int i = 0; i < 10; ++i) QCoreApplication::processEvents();
        QPixmap picture = window().grab();
        QPainter painter(&picture);
        painter.drawPixmap(title.bottomLeft(), menu.grab());
        painter.end();
        picture.save(QString::fromStdString(folder_ + "/profiles" + suffix_ + ".png"));
        menu.hide();
    }

    void takePanel() {
        desktop->panel().showPanel();
        QDialog& panel = *desktop->panel().window();
        take(panel, "panel");
        QTabWidget& pages = *desktop->panel().pages();
        for (const char* name : {"howPage", "watchingPage", "enablePage", "whatPage"}) {
            pages.setCurrentWidget(pages.findChild<QWidget*>(name));
            take(panel, std::string("panel-") + name);
        }
        panel.findChild<QAbstractButton*>("DoDSanitizeButton")->click();
        panel.findChild<QAbstractButton*>("NSAButton")->click();
        pages.setCurrentIndex(1);
        take(panel, "panel-both-sequences");
        panel.findChild<QAbstractButton*>("revertToDefaultButton")->click();
        take(panel, "panel-undo");
        panel.findChild<QLineEdit*>("preferencesSearch")->setText("cache");
        take(panel, "panel-search");
        panel.findChild<QLineEdit*>("preferencesSearch")->clear();
        pages.setCurrentIndex(0);
        std::filesystem::create_directories(home.path() /
                                            "Mail/Mailsmith User Data/Mail/(dorvanelx)");
        desktop->panel().showPanel();
        take(*desktop->panel().window(), "panel-template");
        desktop->panel().window()->close();
    }

    void takeHelp() {
        for (const char* page : {"index", "limits", "preferences"}) {
            desktop->help().showPage(QString::fromLatin1(page) + ".html");
            take(desktop->help(), std::string("help-") + page);
        }
        desktop->help().close();
        trigger("aboutAction");
        auto* about = window().findChild<QDialog*>("aboutDialog");
        take(*about, "about");
        about->close();
    }

    void takeAlerts() {
        onAlert([this](QMessageBox& box) {
            take(box, "confirmation");
            click(box, desktop::Words::tr("No"));
        });
        trigger("shredAndNothingAction");
        bool done = false;
        onAlert([this, &done](QMessageBox& box) {
            take(box, "quit");
            click(box, desktop::Words::tr("Cancel"));
            done = true;
        });
        trigger("reallyQuitAction");
        waitUntil([&done] { return done; });
    }

    void takeDropped() {
        const std::string one = home / "Tax return 2003.pdf", two = home / "Letters";
        writeFile(one, "x");
        writeFile(two + "/a", "x");
        std::filesystem::create_hard_link(one, home.path() / "Copies");
        std::filesystem::create_symlink(one, home.path() / "Link to the tax return");
        onQuestion([this](QDialog& question) {
            take(question, "dropped");
            decline(question);
        });
        desktop->filesDropped({one, two, home / "Link to the tax return"});
        desktop->instanceHandlers().open({one, two, home / "Letters (old).odt"});
        QElapsedTimer counting;
        for (counting.start(); counting.elapsed() < 300;) QCoreApplication::processEvents();
        take(*desktop->documents().back()->window(), "document");
        desktop->documents().back()->window()->close();
        QList<QUrl> urls(13, QUrl::fromLocalFile(QString::fromStdString(one)));
        takeDrag(urls, "drag");
        takeDrag(urls << QUrl("https://example.org"), "drag-refused");
    }

    void takeDrag(const QList<QUrl>& urls, const std::string& name) {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window(), &enter);
        take(window(), name);
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(&window(), &leave);
    }

    /// What would be shredded, with something of everything.
    void takePreview() {
        addSafariCache();
        writeFile(home / "Library/Caches/Mail/11/22.cache", std::string(123456, 'x'));
        writeFile(home / "Library/Preferences/Explorer/History.html", std::string(4567, 'x'));
        std::filesystem::create_symlink(home / "Letters/a",
                                        home.path() / "Library/Caches/Safari/odd link");
        onQuestion([this](QDialog& question) {
            take(question, "preview");
            question.findChild<QLineEdit*>("planFilter")->setText("cache");
            take(question, "preview-filtered");
            question.resize(683, 336);
            take(question, "preview-small");
            decline(question);
        });
        trigger("previewAction");
        qputenv("XDG_DATA_HOME", QByteArray::fromStdString(home / "data"));
        onQuestion([this](QDialog& question) {
            take(question, "trash-empty");
            decline(question);
        });
        trigger("shredTrashAction");
        for (const char* name : {"Old letter.odt", "Holiday/1.jpg", "Holiday/2.jpg"}) {
            writeFile(home / (std::string("data/Trash/files/") + name), std::string(34567, 'x'));
        }
        onQuestion([this](QDialog& question) {
            take(question, "trash");
            decline(question);
        });
        trigger("shredTrashAction");
        lookForIdleLine();
        waitForCommands();
        take(window(), "idle-known");
    }

    void takeOddNumbers() {
        preferences->displayedValues.insert_or_assign("NumberOfWrites", Number::fromInt(1));
        preferences->displayedValues.insert_or_assign("OverwritePattern", Number::fromInt(9));
        static_cast<void>(preferences->commitDisplayedValues());
        desktop->panel().showPanel();
        desktop->panel().pages()->setCurrentIndex(1);
        take(*desktop->panel().window(), "panel-odd-numbers");
        preferences->revertToDefault();
        desktop->panel().window()->close();
    }

    void takeLongNames() {
        const std::string name = "A name " + std::string(120, 'n') + std::string(90, 'm') + ".pdf";
        writeFile(home / name, "x");
        writeFile(home / "Letters.txt", "x");
        onQuestion([this](QDialog& question) {
            take(question, "dropped-long-name");
            decline(question);
        });
        desktop->filesDropped({home / name, home / "Letters.txt"});
        desktop->filesDropped({home / ("Missing " + name)});
        take(window(), "long-name");
        onAlert([this](QMessageBox& box) {
            take(box, "failures");
            box.close();
        });
        bool closed = false;
        find<QPushButton>("detailsButton")->click();
        QTimer look;
        QObject::connect(&look, &QTimer::timeout,
                         [&closed] { closed = QApplication::activeModalWidget() == nullptr; });
        look.start(50);
        waitUntil([&closed] { return closed; });
        desktop->mainWindow().failures().dismiss();
    }

    void takeRun() {
        addSafariCache();
        listing.show({});
        set("ConfirmShredding", false);
        draws.hold();
        trigger("shredAndNothingAction");
        desktop->mainWindow().shreddingProgress().setDoubleValue(41.5);
        desktop->mainWindow().fileName().setStringValue(
            "/Users/alice/Library/Caches/Safari/03/12/Dorvanel X Items "
            "(1717761600)/kR3vTqA9wUz/Zp0bWm4XeLr7Tq/1234567890-0987654321.cache");
        take(window(), "run");
        draws.release();
        waitForEnd();
        waitUntil([this] { return find<QAction>("shredAndNothingAction")->isEnabled(); });
        desktop->mainWindow().showMessage(
            "Shredded: 812 files, 14.2 MiB overwritten. Left alone, as running: Safari.");
        desktop->mainWindow().failures().add({"2 items are still there.", "details", "10:42"});
        desktop->mainWindow().shreddingProgress().setDoubleValue(0);
        desktop->mainWindow().fileName().setStringValue("");
        desktop->mainWindow().showMediumNotice(
            "Overwriting in place may not reach the old contents of "
            "“~/Library/Caches/Safari” and 3 more (solid-state drive).",
            "~/Library/Caches/Safari");
        take(window(), "done");
    }

    /// A shredding on its way, stopped, and with what it has left.
    void takeWork() {
        desktop->mainWindow().showMediumNotice({}, {});
        while (desktop->mainWindow().failures().count() > 0) {
            desktop->mainWindow().failures().dismiss();
        }
        const std::string name = "A rather long name of a folder with holiday pictures from " +
                                 std::string(60, 'a') + " 2003.tar";
        const std::vector<std::string> items = {home / "one", home / name, home / "three"};
        for (const std::string& item : items) writeFile(item, std::string(4 << 20, 'x'));
        clock.step = std::chrono::milliseconds(20);  // every value is shown
        draws.hold(50);
        static_cast<void>(desktop->controller().shredFiles(holdAll(*system, items)));
        auto* text = find<QLabel>("workText");
        waitUntil([text] { return text->isVisible() && text->text().contains(u'%'); });
        take(window(), "work");
        find<QPushButton>("stopButton")->click();
        take(window(), "stopping");
        draws.release();
        waitForEnd();
        waitUntil([this] { return find<QAction>("shredAndNothingAction")->isEnabled(); });
        take(window(), "stopped");
        find<QPushButton>("stopButton")->click();
        waitForEnd();
        waitUntil([this] { return find<QAction>("shredAndNothingAction")->isEnabled(); });
        take(window(), "gone-on");
    }

    /// What is said before the session ends.
    void takeCountdown() {
        addSafariCache();
        trigger("shredAndLogoutAction");
        const auto message = [this] { return find<QDialog>("endingCountdown"); };
        waitUntil([&message] { return message() != nullptr && message()->isVisible(); });
        take(*message(), "countdown");
        take(window(), "countdown-window");
        message()->reject();
        waitForEnd();
        take(window(), "struck");
    }

    /// As it is most of the time: applications chosen, a run behind it, nothing wrong.
    void takeWindow() {
        find<QPushButton>("dismissButton")->click();
        std::filesystem::remove(home.path() / ".config/dorvanel/applications/owl.toml");
        std::filesystem::remove_all(home.path() / "Library");
        static_cast<void>(TraceChoice(*defaults).select("falkon", {}));
        static_cast<void>(TraceChoice(*defaults).select("chromium", {"cache", "history"}));
        countAgain();
        find<QTabWidget>("pages")->setCurrentIndex(0);
        auto* tree = find<QTreeView>("todayTree");
        tree->collapseAll();
        tree->expand(tree->model()->index(0, 0));
        window().resize(window().width(), 640);
        lookForIdleLine();
        take(window(), "window");
    }

    void takeResults() {
        desktop->mainWindow().failures().dismiss();
        addSafariCache();
        writeFile(home / ("Library/Caches/Dorvanel X Items (" + std::to_string(clock.time()) + ")"),
                  "in the way");
        desktop->controller().shredAndNothing();
        waitForEnd();
        clock.advance(std::chrono::minutes(20));
        find<QTabWidget>("pages")->setCurrentIndex(1);
        waitForCommands();
        take(window(), "last-runs");
        find<QPushButton>("detailsButton")->click();
        take(*window().findChild<QDialog*>("runDetails"), "run-details");
        window().findChild<QDialog*>("runDetails")->close();
        trigger("showLogAction");
        auto* viewer = window().findChild<QDialog*>("logDialog");
        waitUntil([viewer] { return !viewer->findChild<QLabel*>("logNote")->text().isEmpty(); });
        take(*viewer, "activity-log");
        viewer->close();
        desktop::BackgroundSwitches switches(nullptr, home / "autostart");
        switches.resize(420, switches.heightForWidth(420));
        switches.show();
        take(switches, "background");
        using State = desktop::Tray::State;
        QPixmap icons(96, 40);
        icons.fill(QApplication::palette().color(QPalette::Window));
        QPainter painter(&icons);
        for (const auto& [state, x] :
             {std::pair(State::idle, 4), {State::working, 36}, {State::failure, 68}}) {
            painter.drawPixmap(x, 8, desktop::Tray::iconFor(state).pixmap(24));
        }
        painter.end();
        icons.save(QString::fromStdString(folder_ + "/tray" + suffix_ + ".png"));
    }

    std::string folder_;
    std::string suffix_;
};

}  // namespace
}  // namespace dorvanel::test

int main(int argc, char** argv) {
    // Those of the toolkit stand behind: -reverse is from right to left.
    const bool hasScreen = argc >= 5 && argv[3][0] != '-';
    if (argc < 3) {
        std::cerr << "usage: desktop-screenshots FOLDER light|dark|contrast [WIDTH HEIGHT] "
                     "[-reverse]\n";
        return 2;
    }
    // If no other is asked for, a screen that has room for every window at twice its size.
    const std::string width = hasScreen ? argv[3] : "2400", height = hasScreen ? argv[4] : "1800";
    const dorvanel::test::TemporaryFolder folder;
    const std::string screen = folder / "screen.json";
    dorvanel::test::writeFile(screen,
                              R"({"screens": [{"name": "one", "x": 0, "y": 0, "width": )" + width +
                                  R"(, "height": )" + height +
                                  R"(, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
    qputenv("QT_QPA_PLATFORM", QByteArray::fromStdString("offscreen:configfile=" + screen));
    QApplication application(argc, argv);
    const std::string icons = dorvanel::platform::resourcesFolder() + "/icons/dorvanel-x-";
    for (const char* size : {"48", "128"}) {
        QIcon icon = QApplication::windowIcon();
        icon.addFile(QString::fromStdString(icons + size + ".png"));
        QApplication::setWindowIcon(icon);
    }
    dorvanel::desktop::installTranslations(dorvanel::platform::resourcesFolder());
    const std::string theme = argv[2];
    if (theme == "dark") QApplication::setPalette(dorvanel::test::darkPalette());
    if (theme == "contrast") QApplication::setPalette(dorvanel::test::contrastPalette());
    dorvanel::desktop::keepOutlinesVisible();
    const std::string scale = application.devicePixelRatio() > 1 ? "@2x" : "";
    dorvanel::test::Photographer(argv[1], "-" + theme + scale).takeAll();
    return 0;
}
