// SPDX-License-Identifier: MIT
#include <QDBusInterface>
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
                [this](const std::string& name) { calls.add("action " + name); }};
    }
    /// Hands over on a thread of its own, as another process would, while this one's loop goes on.
    bool handOver(SingleInstance& instance, const std::vector<std::string>& files,
                  const std::string& action) {
        std::atomic<bool> done = false;
        bool taken = false;
        std::thread other([&] {
            taken = instance.handOver(files, action);
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
