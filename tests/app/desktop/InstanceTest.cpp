// SPDX-License-Identifier: MIT
#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDBusReply>
#include <filesystem>
#include <sstream>
#include <thread>

#include "DesktopFixture.h"
#include "app/desktop/Bytes.h"
#include "app/desktop/CommandLine.h"
#include "app/desktop/SingleInstance.h"
#include "support/ChildProcess.h"

namespace dorvanel::test {
namespace {

using desktop::SingleInstance;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

/// A session bus of the test's own, and two connections to it: two programs.
class InstanceTest : public ::testing::Test {
  protected:
    InstanceTest() : daemon_({"dbus-daemon", "--session", "--nofork", "--print-address"}) {
        const QString address = QString::fromStdString(daemon_.readLine());
        first = QDBusConnection::connectToBus(address, "first");
        second = QDBusConnection::connectToBus(address, "second");
    }
    ~InstanceTest() override {
        QDBusConnection::disconnectFromBus("first");
        QDBusConnection::disconnectFromBus("second");
    }
    desktop::InstanceHandlers recording() {
        return {[this] { calls.add("activate"); },
                [this](const std::vector<std::string>& files) {
                    for (const std::string& file : files) calls.add("open " + file);
                },
                [this](const std::string& name) { calls.add("action " + name); },
                [this](const std::vector<std::string>& files) {
                    calls.add("ask about " + std::to_string(files.size()));
                    for (const std::string& file : files) calls.add("ask " + file);
                }};
    }
    /// Hands over on a thread of its own, as another process would, while this one's loop goes on.
    bool handOver(SingleInstance& instance, const std::vector<std::string>& files,
                  const std::string& action) {
        return elsewhere([&] { return instance.handOver(files, action); });
    }
    static bool elsewhere(const std::function<bool()>& call) {
        std::atomic<bool> done = false;
        bool taken = false;
        std::thread other([&] {
            taken = call();
            done = true;
        });
        waitUntil([&done] { return done.load(); });
        other.join();
        return taken;
    }

    ChildProcess daemon_;
    QDBusConnection first{"none"};
    QDBusConnection second{"none"};
    CallLog calls;
};

TEST_F(InstanceTest, ASecondLaunchHandsOverToTheFirst) {
    ASSERT_TRUE(first.isConnected());
    SingleInstance running("/home/alice", first);
    ASSERT_EQ(running.claim(recording()), SingleInstance::Role::first);
    SingleInstance again("/home/alice", second);
    ASSERT_EQ(again.claim(recording()), SingleInstance::Role::second);

    EXPECT_TRUE(handOver(again, {}, ""));
    EXPECT_TRUE(handOver(again, {"/tmp/a b%20\xff\n#?", "/tmp/c"}, "shred-and-restart"));
    EXPECT_THAT(calls.calls(), ElementsAre("activate", "open /tmp/a b%20\xff\n#?", "open /tmp/c",
                                           "action shred-and-restart"));
}

TEST_F(InstanceTest, ASecondLaunchHandsOverWhatIsToBeAskedAbout) {
    SingleInstance running("/home/alice", first);
    ASSERT_EQ(running.claim(recording()), SingleInstance::Role::first);
    SingleInstance again("/home/alice", second);
    ASSERT_EQ(again.claim(recording()), SingleInstance::Role::second);
    EXPECT_TRUE(elsewhere([&] { return again.handOverToAsk({"/tmp/a b%20\xff\n#?", "/-c"}); }));
    EXPECT_THAT(calls.calls(), ElementsAre("ask about 2", "ask /tmp/a b%20\xff\n#?", "ask /-c"));
}

TEST_F(InstanceTest, TheProgramOfTheAccountsOwnHomeIsFoundByTheDesktopsName) {
    const auto isThere = [this] {
        return second.interface()
            ->isServiceRegistered(QLatin1String(SingleInstance::desktopName))
            .value();
    };
    {
        SingleInstance other("/tmp/another", first);
        ASSERT_EQ(other.claim(recording()), SingleInstance::Role::first);
        EXPECT_FALSE(isThere());
    }
    SingleInstance running("/home/alice", first);
    ASSERT_EQ(running.claim(recording(), SingleInstance::Home::accounts),
              SingleInstance::Role::first);
    EXPECT_TRUE(isThere());

    // As any desktop asks, of whom only the interface is known.
    const auto send = [this](const QString& uri) {
        return elsewhere([&] {
            QDBusMessage call = QDBusMessage::createMethodCall(
                SingleInstance::desktopName, SingleInstance::objectPath,
                SingleInstance::interfaceName, "ActivateAction");
            call.setArguments({"ask", QVariantList{QStringList{uri}}, QVariantMap()});
            return second.call(call).type() == QDBusMessage::ReplyMessage;
        });
    };
    EXPECT_TRUE(send("file:///tmp/%ff"));
    EXPECT_TRUE(send("https://example.org/page"));
    EXPECT_THAT(calls.calls(), ElementsAre("ask about 1", "ask /tmp/\xff", "ask about 0"));
}

TEST_F(InstanceTest, AnotherHomeIsAnotherProgram) {
    SingleInstance running("/home/alice", first);
    ASSERT_EQ(running.claim(recording()), SingleInstance::Role::first);
    SingleInstance other("/home/bob", second);
    EXPECT_EQ(other.claim(recording()), SingleInstance::Role::first);
}

TEST_F(InstanceTest, TheNextLaunchIsTheFirstOnceTheProgramHasEnded) {
    {
        SingleInstance running("/home/alice", first);
        ASSERT_EQ(running.claim(recording()), SingleInstance::Role::first);
    }
    SingleInstance next("/home/alice", second);
    EXPECT_EQ(next.claim(recording()), SingleInstance::Role::first);
}

TEST_F(InstanceTest, WithoutABusTheProgramStartsAllTheSame) {
    SingleInstance alone("/home/alice", QDBusConnection("no such connection"));
    EXPECT_EQ(alone.claim(recording()), SingleInstance::Role::alone);
}

TEST(BytesTest, EveryPathComesBackFromItsUrl) {
    for (const std::string path : {"/a", "/a b", "/100%", "/%41", "/\xc3\xa4", "/\xff\xfe",
                                   "/a#b?c", "/new\nline", "/;&=+$,"}) {
        EXPECT_EQ(desktop::pathOfUrl(QUrl(desktop::urlOfPath(path))), path);
    }
    EXPECT_EQ(desktop::pathOfUrl(QUrl("https://example.org/a")), "");
    EXPECT_EQ(desktop::pathOfUrl(QUrl("file://elsewhere/a")), "");
    EXPECT_EQ(desktop::pathOfUrl(QUrl("file:///a%00b")), "");
}

class CommandLineTest : public ::testing::Test {
  protected:
    std::optional<desktop::CommandLine> read(const std::vector<std::string>& arguments) {
        return desktop::readCommandLine(arguments, out, err, status);
    }
    std::ostringstream out, err;
    int status = -1;
};

TEST_F(CommandLineTest, FilesAreMadeAbsoluteAndStayBytes) {
    const auto line = read({"a b", "/tmp/\xff", "--", "--action"});
    ASSERT_TRUE(line);
    const std::string here = std::filesystem::current_path().native();
    EXPECT_THAT(line->files, ElementsAre(here + "/a b", "/tmp/\xff", here + "/--action"));
}

TEST_F(CommandLineTest, AWordInBracketsIsOneFileAndNotAListOfFiles) {
    const auto line = read({"[a,b]", "--", "[]", "[--action]"});
    ASSERT_TRUE(line);
    const std::string here = std::filesystem::current_path().native();
    EXPECT_THAT(line->files, ElementsAre(here + "/[a,b]", here + "/[]", here + "/[--action]"));
    EXPECT_EQ(line->action, "");
}

TEST_F(CommandLineTest, AFileWithoutANameIsRefused) {
    EXPECT_FALSE(read({"a", ""}));
    EXPECT_EQ(status, 2);
    EXPECT_THAT(err.str(), HasSubstr("\"\": Invalid argument"));
}

TEST_F(CommandLineTest, AFileNamedLikeAnOptionSteersNoTerminal) {
    EXPECT_FALSE(read({"--\x1b[31mred"}));
    EXPECT_EQ(status, 2);
    EXPECT_THAT(err.str(), HasSubstr("[31mred"));
    EXPECT_THAT(err.str(), Not(HasSubstr("\x1b")));
    EXPECT_EQ(out.str(), "");
}

TEST_F(CommandLineTest, AnActionIsOneOfTheLaunchers) {
    EXPECT_EQ(read({"--action", "shred-and-log-out"})->action, "shred-and-log-out");
    EXPECT_FALSE(read({"--action", "dance"}));
    EXPECT_EQ(status, 2);
    EXPECT_THAT(err.str(), HasSubstr("dance"));
}

TEST_F(CommandLineTest, AStartIsHiddenWhereThatIsAskedFor) {
    EXPECT_TRUE(read({"--hidden"})->isHidden);
    EXPECT_FALSE(read({})->isHidden);
}

TEST_F(CommandLineTest, AskingNeedsFilesAndStandsBesideNoAction) {
    const auto line = read({"--ask", "/tmp/a", "--", "-b"});
    ASSERT_TRUE(line);
    EXPECT_TRUE(line->asks);
    EXPECT_EQ(line->files.size(), 2U);
    EXPECT_FALSE(read({"/tmp/a"})->asks);
    for (const auto& wrong :
         {std::vector<std::string>{"--ask"}, {"--ask", "--action", "shred", "/tmp/a"}}) {
        status = -1;
        EXPECT_FALSE(read(wrong));
        EXPECT_EQ(status, 2);
    }
    EXPECT_THAT(err.str(), HasSubstr("--ask needs a file"));
}

TEST_F(CommandLineTest, WhatIsAskedAboutMayBeNamedByItsUri) {
    EXPECT_THAT(read({"--ask", "--", "file:///tmp/a%0A%FF%20b"})->files,
                ElementsAre("/tmp/a\n\xff b"));
    for (const char* wrong : {"file:///a%00b", "file:///%zz%00"}) {
        EXPECT_FALSE(read({"--ask", wrong})) << wrong;
        EXPECT_EQ(status, 2);
    }
    const std::string here = std::filesystem::current_path().native();
    EXPECT_THAT(read({"file:///tmp/a"})->files, ElementsAre(here + "/file:/tmp/a"));
}

TEST_F(CommandLineTest, ALauncherThatAsksStartsTheProgramWhereThereIsNoFile) {
    const auto line = read({"--ask", "--"});
    ASSERT_TRUE(line);
    EXPECT_FALSE(line->asks);
    EXPECT_TRUE(line->files.empty());
}

// Files that are opened with the launcher, or dropped on it, are asked about. It names no kinds of
// files: it would become what opens folders, and files of unknown kinds, where nothing else does.
// Nor does it let the bus start it, which would open files in place of asking.
TEST_F(CommandLineTest, TheLauncherAsksAboutFilesAndIsNobodysDefault) {
    const std::string launcher = readFile(DORVANEL_LAUNCHER);
    EXPECT_THAT(launcher, HasSubstr("\nExec=dorvanel-x --ask -- %F\n"));
    EXPECT_THAT(launcher, Not(HasSubstr("MimeType")));
    EXPECT_THAT(launcher, Not(HasSubstr("DBusActivatable")));
}

TEST_F(CommandLineTest, HelpAndVersionStartNothing) {
    EXPECT_FALSE(read({"--version"}));
    EXPECT_EQ(status, 0);
    EXPECT_EQ(out.str(), "dorvanel-x " DORVANEL_VERSION "\n");
}

TEST_F(CommandLineTest, EveryActionOfTheLauncherIsKnown) {
    const std::string launcher = readFile(DORVANEL_LAUNCHER);
    std::istringstream lines(launcher);
    int actions = 0;
    for (std::string text; std::getline(lines, text);) {
        const std::string exec = "Exec=dorvanel-x --action ";
        if (!text.starts_with(exec)) continue;
        ++actions;
        EXPECT_TRUE(read({"--action", text.substr(exec.size())})) << text;
    }
    EXPECT_EQ(actions, 4);
}

}  // namespace
}  // namespace dorvanel::test
