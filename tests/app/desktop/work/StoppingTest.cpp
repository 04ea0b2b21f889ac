// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <filesystem>
#include <utility>

#include "app/desktop/DesktopFixture.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr std::size_t block = 131072;

/// Stop, Go On and Cancel, on real files.
class StoppingTest : public DesktopFixture {
  protected:
    StoppingTest() {
        clock.step = std::chrono::milliseconds(20);  // so that the outlets are told every value
        preferences->displayedValues.insert_or_assign("NumberOfWrites", Number::fromInt(2));
        EXPECT_TRUE(preferences->commitDisplayedValues());
        set("ConfirmShredding", false);
        set("ActivityLog", true);
        fs::create_directory(place);
        fs::create_directory(witnesses);
    }
    QPushButton* button() { return find<QPushButton>("stopButton"); }
    QString offered() { return button()->isHidden() ? QString() : button()->text().remove(u'&'); }
    QString message() { return desktop->mainWindow().message(); }

    /// Makes a file of the place, and another name of it that the shredding does not know.
    std::string add(const std::string& name, std::size_t size) {
        const std::string path = place / name;
        std::string contents;
        while (contents.size() < size) contents += "secret contents ";
        contents.resize(size);
        writeFile(path, contents);
        const std::string witness = witnesses / std::to_string(files++);
        fs::create_hard_link(path, witness);
        return path;
    }
    /// Whether nothing is left of any file: no name, and nowhere what was in it.
    void expectAllGone() {
        EXPECT_TRUE(fs::is_empty(place));
        for (const auto& witness : fs::directory_iterator(witnesses)) {
            EXPECT_EQ(readFile(witness.path()).find("secret"), std::string::npos) << witness.path();
        }
    }
    void shred(const std::vector<std::string>& items) {
        ASSERT_TRUE(desktop->controller().shredFiles(holdAll(*system, items)));
    }
    /// Waits until the worker has an item in work.
    void waitForItem(int number) {
        const QString begin = QStringLiteral("Item %1 ").arg(number);
        waitUntil([&] { return find<QLabel>("itemName")->accessibleName().startsWith(begin); });
    }
    void stop(int item = 1) {
        waitForItem(item);
        ASSERT_EQ(offered(), "Stop");
        button()->click();
        draws.release();
        waitForEnd();
    }
    void goOn() {
        ASSERT_EQ(offered(), "Go On");
        waitUntil([this] { return button()->isEnabled(); });
        button()->click();
        waitForEnd();
    }

    fs::path place = home.path() / "place";
    fs::path witnesses = home.path() / "witnesses";
    int files = 0;
    QObject context;
};

TEST_F(StoppingTest, StopIsOfferedOnlyWhileSomethingIsShredded) {
    const std::string file = add("a", 6);
    ASSERT_TRUE(launch());
    EXPECT_EQ(offered(), "");
    EXPECT_FALSE(find<QAction>("stopAction")->isEnabled());
    draws.hold();
    shred({file});
    EXPECT_EQ(offered(), "Stop");
    EXPECT_TRUE(button()->isEnabled());
    EXPECT_TRUE(find<QAction>("stopAction")->isEnabled());
    draws.release();
    waitForEnd();
    EXPECT_EQ(offered(), "");
    EXPECT_FALSE(find<QAction>("stopAction")->isEnabled());
    EXPECT_TRUE(message().startsWith("Shredded: 1 file"));
}

TEST_F(StoppingTest, AStopTakesHoldAtOnceAndOnce) {
    const std::string file = add("a", 4 * block), other = add("b", 6);
    ASSERT_TRUE(launch());
    draws.hold(2);
    shred({file, other});
    waitForItem(1);
    find<QAction>("stopAction")->trigger();
    EXPECT_EQ(message(), "Stopping after the block at hand…");
    EXPECT_FALSE(button()->isEnabled());
    EXPECT_FALSE(find<QAction>("stopAction")->isEnabled());
    button()->click();
    find<QAction>("stopAction")->trigger();
    desktop->controller().run().stop();
    draws.release();
    waitForEnd();
    EXPECT_EQ(message(), "0 of 2 items were shredded. 2 items are left.");
    EXPECT_TRUE(fs::exists(other));
}

TEST_F(StoppingTest, GoingOnFinishesTheFolderInWorkAndWhatWasNotBegun) {
    const std::string first = add("first", 6);
    for (const char* name : {"folder/1", "folder/2", "folder/deep/3"}) add(name, 3 * block);
    const std::string folder = place / "folder";
    const std::string last = add("last", 2 * block);
    ASSERT_TRUE(launch());
    draws.hold(5);  // in the folder's first file
    shred({first, folder, last});
    stop(2);
    EXPECT_EQ(message(), "1 of 3 items were shredded. 2 items are left.");
    EXPECT_FALSE(fs::exists(first));
    EXPECT_FALSE(fs::exists(folder)) << "it lies in its holding folder";
    EXPECT_TRUE(fs::exists(last));
    EXPECT_FALSE(fs::is_empty(place));

    goOn();
    expectAllGone();
    EXPECT_TRUE(message().startsWith("Shredded: ")) << message().toStdString();
    EXPECT_EQ(offered(), "");
}

TEST_F(StoppingTest, StoppedAgainItGoesOnAgain) {
    std::vector<std::string> items;
    for (const char* name : {"a", "b", "c", "d"}) items.push_back(add(name, 3 * block));
    ASSERT_TRUE(launch());
    draws.hold(2);
    shred(items);
    stop();
    EXPECT_EQ(message(), "0 of 4 items were shredded. 4 items are left.");
    waitUntil([this] { return button()->isEnabled(); });
    // The worker stops before the second request's first block is written.
    button()->click();
    if (offered() == "Stop") button()->click();
    waitForEnd();
    if (offered() == "Go On") goOn();
    expectAllGone();
}

TEST_F(StoppingTest, AStopOfARunLeavesTheRestToGoOnWithAndTheLogSaysSo) {
    for (const char* name : {"one.cache", "two.cache"}) {
        writeFile(home / (std::string("Library/Caches/Safari/") + name),
                  std::string(2 * block, 's'));
    }
    ASSERT_TRUE(launch());
    draws.hold(1);
    trigger("shredAndShutdownAction");
    stop();
    EXPECT_EQ(LogCapture::linesNow().back(), "Dorvanel Stopped - some items were not shredded");
    EXPECT_THAT(calls.calls(), IsEmpty()) << "what was to follow is struck";
    EXPECT_TRUE(message().endsWith("The computer is not shut down.")) << message().toStdString();
    goOn();
    EXPECT_EQ(LogCapture::linesNow().back(), "Dorvanel Completed Successfully");
    EXPECT_FALSE(fs::exists(home.path() / "Library/Caches/Safari"));
    EXPECT_TRUE(fs::is_empty(home.path() / "Library/Caches"));
    EXPECT_THAT(calls.calls(), IsEmpty());
}

TEST_F(StoppingTest, AfterAStopTheNextRequestShredsAsEver) {
    const std::string file = add("a", 4 * block), other = add("b", 6), third = add("c", 6);
    ASSERT_TRUE(launch());
    draws.hold(2);
    shred({file, other});
    stop();
    shred({third});
    EXPECT_EQ(offered(), "Stop") << "there is nothing to go on with any more";
    waitForEnd();
    EXPECT_FALSE(fs::exists(third));
    EXPECT_TRUE(fs::exists(other));
    EXPECT_EQ(offered(), "");
    EXPECT_FALSE(desktop->controller().run().goOn());
}

TEST_F(StoppingTest, DismissingTheFailureLetsWhatIsLeftBe) {
    const std::string file = add("a", 4 * block);
    ASSERT_TRUE(launch());
    draws.hold(2);
    shred({file});
    stop();
    EXPECT_EQ(offered(), "Go On");
    find<QPushButton>("dismissButton")->click();
    EXPECT_EQ(offered(), "");
}

TEST_F(StoppingTest, GoOnWaitsLikeEveryCommandThatShredsAndNeverHasTheKeyboard) {
    const std::string file = add("a", 4 * block);
    ASSERT_TRUE(launch());
    draws.hold(2);
    shred({file});
    button()->setFocus();
    stop();
    EXPECT_EQ(offered(), "Go On");
    EXPECT_NE(window().focusWidget(), button());
    EXPECT_FALSE(button()->isEnabled()) << "a second click on Stop must not be one on Go On";
}

TEST_F(StoppingTest, AStopWhenEverythingIsDoneLeavesNothing) {
    const std::string file = add("a", 6);
    ASSERT_TRUE(launch());
    draws.hold(2);  // the last fill: nothing but the removal comes after it
    shred({file});
    stop();
    EXPECT_TRUE(offered() == "Go On" || offered() == "");
    if (offered() == "Go On") goOn();
    expectAllGone();
}

TEST_F(StoppingTest, CancelEndsTheWaitForApplicationsAndTheProgramGoesOn) {
    const std::string page = addSafariCache();
    ASSERT_TRUE(launch());
    processes.add("Safari", "APPL", "sfri");
    QString seen;
    bool isAsked = false;
    processes.onWalk = [&] {
        if (processes.walks != 4 || std::exchange(isAsked, true)) return;
        QTimer::singleShot(0, &context, [&] {
            seen = offered();
            button()->click();
            EXPECT_FALSE(button()->isEnabled());
        });
    };
    trigger("shredAndRestartAction");
    EXPECT_EQ(seen, "Cancel");
    EXPECT_LT(processes.walks, 20) << "the wait has ended early";
    EXPECT_EQ(message(), "Cancelled. Nothing was shredded.");
    EXPECT_EQ(offered(), "");
    EXPECT_TRUE(fs::exists(page));
    EXPECT_THAT(calls.calls(), IsEmpty());
    EXPECT_THAT(LogCapture::linesNow(), Not(Contains("Start Shredding Now")));
    EXPECT_FALSE(desktop->controller().isQuitting());

    // The next wait is one again.
    processes.onWalk = [&] {
        if (processes.walks > 8) processes.processes.clear();
    };
    processes.walks = 0;
    trigger("shredAndNothingAction");
    waitForEnd();
    EXPECT_FALSE(fs::exists(page));
}

TEST_F(StoppingTest, CancelWhileCollectingTouchesNothing) {
    const std::string page = addSafariCache();
    ASSERT_TRUE(launch());
    QTimer look;
    bool isAsked = false;
    QObject::connect(&look, &QTimer::timeout, [&] {
        if (desktop->controller().activity() != Activity::collecting || isAsked) return;
        isAsked = true;
        EXPECT_EQ(offered(), "Cancel");
        button()->click();
    });
    look.start(0);
    trigger("shredAndNothingAction");
    EXPECT_TRUE(isAsked);
    EXPECT_EQ(message(), "Cancelled. Nothing was shredded.");
    EXPECT_TRUE(fs::exists(page));
    EXPECT_EQ(desktop->controller().activity(), Activity::idle);
    EXPECT_THAT(LogCapture::linesNow(), Not(Contains("Start Shredding Now")));
}

TEST_F(StoppingTest, AQuitRequestWhileAStoppedRequestEndsOffersNothing) {
    const std::string file = add("a", 4 * block);
    ASSERT_TRUE(launch());
    draws.hold(2);
    shred({file});
    button()->click();
    desktop->application().terminate();
    EXPECT_EQ(message(), "Dorvanel quits when shredding has ended.");
    draws.release();
    waitForEnd();
    EXPECT_EQ(offered(), "");
}

}  // namespace
}  // namespace dorvanel::test
