// SPDX-License-Identifier: MIT

// Pictures of the program in its states, for the documentation and for looking at:
//   QT_SCALE_FACTOR=2 desktop-screenshots FOLDER light|dark [WIDTH HEIGHT]
#include <QApplication>
#include <QIcon>
#include <QMenuBar>
#include <QPainter>
#include <filesystem>
#include <iostream>

#include "DesktopFixture.h"

namespace dorvanel::test {
namespace {

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
        defaults->setBool(true, "FirstRun");
        if (!launch()) return;
        take(window(), "idle");
        listing.show(
            {"/Applications/Safari.app/Contents/MacOS/Safari", "/Applications/Mail.app/x"});
        static_cast<void>(preferences->enableChanged("Opera"));
        static_cast<void>(preferences->enableChanged("Eudora"));
        desktop->controller().browserWatch().HandleBrowserWatchTimer(nullptr);
        take(window(), "watching");
        takeMenu();
        takePanel();
        takeAlerts();
        takeDropped();
        takeOddNumbers();
        takeLongNames();
        takeRun();
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
        take(*desktop->panel().window(), "panel");
        std::filesystem::create_directories(home.path() /
                                            "Mail/Mailsmith User Data/Mail/(dorvanelx)");
        desktop->panel().showPanel();
        take(*desktop->panel().window(), "panel-template");
        desktop->panel().window()->close();
    }

    void takeAlerts() {
        onAlert([this](QMessageBox& box) {
            take(box, "confirmation");
            click(box, "No");
        });
        trigger("shredAndNothingAction");
        bool done = false;
        onAlert([this, &done](QMessageBox& box) {
            take(box, "quit");
            click(box, "Cancel");
            done = true;
        });
        trigger("reallyQuitAction");
        waitUntil([&done] { return done; });
    }

    void takeDropped() {
        const std::string one = home / "Tax return 2003.pdf", two = home / "Letters";
        writeFile(one, "x");
        writeFile(two + "/a", "x");
        onAlert([this](QMessageBox& box) {
            take(box, "dropped");
            click(box, "Cancel");
        });
        desktop->filesDropped({one, two});
        desktop->instanceHandlers().open({one, two});
        take(*desktop->documents().back()->window(), "document");
        desktop->documents().back()->window()->close();
    }

    void takeOddNumbers() {
        preferences->displayedValues.insert_or_assign("NumberOfWrites", Number::fromInt(1));
        preferences->displayedValues.insert_or_assign("OverwritePattern", Number::fromInt(9));
        static_cast<void>(preferences->commitDisplayedValues());
        desktop->panel().showPanel();
        take(*desktop->panel().window(), "panel-odd-numbers");
        preferences->revertToDefault();
        desktop->panel().window()->close();
    }

    void takeLongNames() {
        const std::string name = "A name " + std::string(120, 'n') + std::string(90, 'm') + ".pdf";
        writeFile(home / name, "x");
        writeFile(home / "Letters.txt", "x");
        onAlert([this](QMessageBox& box) {
            take(box, "dropped-long-name");
            click(box, "Cancel");
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

    std::string folder_;
    std::string suffix_;
};

}  // namespace
}  // namespace dorvanel::test

int main(int argc, char** argv) {
    if (argc != 3 && argc != 5) {
        std::cerr << "usage: desktop-screenshots FOLDER light|dark [WIDTH HEIGHT]\n";
        return 2;
    }
    // If no other is asked for, a screen that has room for every window at twice its size.
    const std::string width = argc == 5 ? argv[3] : "2400", height = argc == 5 ? argv[4] : "1800";
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
    const std::string theme = argv[2];
    if (theme == "dark") QApplication::setPalette(dorvanel::test::darkPalette());
    const std::string scale = application.devicePixelRatio() > 1 ? "@2x" : "";
    dorvanel::test::Photographer(argv[1], "-" + theme + scale).takeAll();
    return 0;
}
