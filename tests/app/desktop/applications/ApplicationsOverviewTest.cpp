// SPDX-License-Identifier: MIT
#include "app/desktop/applications/ApplicationsOverview.h"

#include <QGroupBox>
#include <filesystem>

#include "app/desktop/DesktopFixture.h"
#include "support/EnvironmentVariable.h"
#include "support/SampleProfiles.h"

namespace dorvanel::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Pair;

/// The whole window in a home with profiles of Firefox and Chromium.
class ApplicationsOverviewTest : public DesktopFixture {
  protected:
    ApplicationsOverviewTest() {
        SampleProfiles profiles(home.path(), 1);
        profiles.addFirefox();
        profiles.addChromium();
        static_cast<void>(preferences->enableChanged("Safari"));
    }
    void launchAndCount() {
        ASSERT_TRUE(launch());
        waitUntil([this] { return model().isCounted(); });
    }
    desktop::ApplicationsModel& model() { return desktop->applications().model(); }
    QModelIndex row(const QString& name) {
        const auto found =
            model().match(model().index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchFixedString);
        return found.isEmpty() ? QModelIndex() : found.first();
    }
    QString amount(const QString& name) {
        return row(name)
            .siblingAtColumn(desktop::ApplicationsModel::amountColumn)
            .data()
            .toString();
    }
    void send(QEvent::Type type) {
        QEvent event(type);
        QCoreApplication::sendEvent(&window(), &event);
    }

    EnvironmentVariable config{"XDG_CONFIG_HOME", ""};
    EnvironmentVariable cache{"XDG_CACHE_HOME", ""};
    EnvironmentVariable data{"XDG_DATA_HOME", ""};
};

TEST_F(ApplicationsOverviewTest, WhatIsInTheHomeIsShownAfterTheWindowAndOffered) {
    launchAndCount();
    EXPECT_TRUE(row("Firefox").isValid());
    EXPECT_TRUE(row("Chromium").isValid());
    EXPECT_FALSE(row("Thunderbird").isValid());
    EXPECT_TRUE(amount("Firefox").contains(" files, ")) << amount("Firefox").toStdString();
    auto* text = find<QLabel>("offerText");
    EXPECT_TRUE(text->isVisible());
    EXPECT_TRUE(text->text().startsWith("Chromium and Firefox have left "))
        << text->text().toStdString();
    find<QPushButton>("chooseRecommendedButton")->click();
    ASSERT_TRUE(defaults->synchronize());
    EXPECT_THAT(TraceChoice(*defaults).chosen(), Contains(Pair("firefox", Contains("cache"))));
}

TEST_F(ApplicationsOverviewTest, ARunTakesWhatWasChosenAndItIsCountedAgain) {
    set("ConfirmShredding", false);
    launchAndCount();
    const QModelIndex firefoxCache = model().index(0, 0, row("Firefox"));
    ASSERT_EQ(firefoxCache.data(), "Cache");
    ASSERT_TRUE(model().setData(firefoxCache, Qt::Checked, Qt::CheckStateRole));
    ASSERT_TRUE(std::filesystem::exists(home / ".cache/mozilla/firefox"));
    trigger("shredAndNothingAction");
    EXPECT_FALSE(model().isCounting()) << "nothing is read while something is shredded";
    waitForEnd();
    waitUntil([this] { return !model().isCounting() && !desktop->controller().isBusy(); });
    EXPECT_FALSE(
        std::filesystem::exists(home / ".cache/mozilla/firefox/k3v9q1xz.default-release/cache2"));
    waitUntil([&] { return model().index(0, 1, row("Firefox")).data().toString() == "nothing"; });
}

TEST_F(ApplicationsOverviewTest, ItIsCountedAgainWhenTheWindowComesBackAfterAMinute) {
    launchAndCount();
    send(QEvent::WindowDeactivate);
    clock.advance(std::chrono::seconds(59));
    send(QEvent::WindowActivate);
    EXPECT_FALSE(model().isCounting());
    send(QEvent::WindowDeactivate);
    clock.advance(std::chrono::seconds(60));
    send(QEvent::WindowActivate);
    EXPECT_TRUE(model().isCounting());
    waitUntil([this] { return !model().isCounting(); });
}

TEST_F(ApplicationsOverviewTest, AChoiceThatATerminalMadeShowsWhenTheWindowIsActivated) {
    launchAndCount();
    const auto terminals = openUserDefaults(userDefaultsPath(), [](const auto&) {});
    ASSERT_TRUE(TraceChoice(*terminals).select("thunderbird", {"cache"}));
    EXPECT_FALSE(row("Thunderbird").isValid());
    send(QEvent::WindowActivate);
    ASSERT_TRUE(row("Thunderbird").isValid());
    EXPECT_EQ(row("Thunderbird").siblingAtColumn(2).data(), "not found");
    waitUntil([this] { return !model().isCounting(); });
    EXPECT_EQ(amount("Thunderbird"), "nothing");
}

TEST_F(ApplicationsOverviewTest, AChoiceThatCannotBeStoredIsAFailureOfTheWindow) {
    launchAndCount();
    const std::string file = userDefaultsPath();
    std::filesystem::remove(file);
    std::filesystem::create_directories(file + "/x");
    EXPECT_FALSE(model().setData(row("Firefox"), Qt::Checked, Qt::CheckStateRole));
    EXPECT_EQ(row("Firefox").data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
    EXPECT_EQ(desktop->mainWindow().failures().message(),
              "The choice of traces could not be saved.");
}

TEST_F(ApplicationsOverviewTest, QuittingInTheMiddleOfACountIsNotHeldUp) {
    for (int i = 0; i < 3000; ++i) {
        writeFile(home /
                  (".cache/mozilla/firefox/k3v9q1xz.default-release/more/" + std::to_string(i)));
    }
    ASSERT_TRUE(launch());
    desktop->applications().lookAgain();
    EXPECT_TRUE(model().isCounting());
    desktop->applications().end();
    EXPECT_FALSE(model().isCounting());
    desktop->applications().lookAgain();
    EXPECT_FALSE(model().isCounting()) << "nothing begins any more";
    desktop.reset();
}

TEST_F(ApplicationsOverviewTest, TheTwelveStayBelowWithWordsBesideTheirNames) {
    launchAndCount();
    EXPECT_EQ(find<QGroupBox>("browserWatchGroup")->title(), "Applications of former years");
    for (const SupportedApplication& application : applications) {
        const QString name = QString::fromStdString(std::string(application.labelName));
        EXPECT_EQ(find<QLabel>((name + "Word").toLatin1())->text(), "off");
    }
}

}  // namespace
}  // namespace dorvanel::test
