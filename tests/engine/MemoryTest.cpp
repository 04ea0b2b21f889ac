// SPDX-License-Identifier: MIT

// Memory that runs out, and exceptions of the system's: nothing ends the program, and what is left
// is told.
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <new>
#include <system_error>

#include "support/Disk.h"
#include "support/EngineFixture.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::IsEmpty;

class MemoryTest : public ::testing::Test {
  protected:
    /// Shreds two items while `fail` happens at the system call of this number; false if there are
    /// fewer calls.
    template <typename Fail>
    bool failAt(int call, Fail fail) {
        const TemporaryFolder folder(quickPlace());
        for (const char* name : {"one/a", "one/sub/b", "one/sub/c", "two/d", "three"}) {
            writeFile(folder / name, recognisable(1000));
        }
        const std::size_t open = openDescriptors();
        bool failed = false;
        bool listing = false;
        {
            TestEngine engine;
            engine.faulty.inMemory = 0;
            int calls = 0;
            engine.faulty.before = [&](const std::string& operation, const std::string&) {
                // Closing needs no memory.
                if (++calls < call || failed || operation == "close") return;
                failed = true;
                listing = operation == "readFolder";
                fail();
            };
            const Outcome& outcome =
                engine.shred({folder / "one", folder / "two", folder / "three"});
            if (failed) expectTold(outcome, folder);
        }
        // Where memory is really asked for.
        EXPECT_TRUE(!listing || openDescriptors() == open) << "at call " << call;
        return failed;
    }

  private:
    /// Everything that is still there is named, or lies in what is named.
    static void expectTold(const Outcome& outcome, const TemporaryFolder& folder) {
        EXPECT_GT(outcome.notRemoved, 0U);
        EXPECT_FALSE(outcome.troubles.empty());
        for (const std::string& name : namesIn(folder.path())) {
            const std::string path = folder / name;
            const bool isLeft = std::ranges::find(outcome.left, path) != outcome.left.end();
            EXPECT_TRUE(isLeft) << path;
        }
    }
};

TEST_F(MemoryTest, ThatRunsOutAtAnyCallIsToldWithWhatIsLeftAndWhere) {
    int call = 1;
    while (failAt(call, [] { throw std::bad_alloc(); })) {
        if (HasFailure()) FAIL() << "at call " << call;
        ++call;
    }
    EXPECT_GT(call, 60);
}

TEST_F(MemoryTest, AnErrorOfTheSystemsIsToldByItsOwnCode) {
    const TemporaryFolder folder(quickPlace());
    writeFile(folder / "item", "kept");
    TestEngine engine;
    engine.faulty.before = [](const std::string& operation, const std::string&) {
        if (operation != "makeFolder") return;
        throw std::system_error(EAGAIN, std::generic_category());
    };
    const Outcome& outcome = engine.shred({folder / "item"});
    EXPECT_EQ(outcome.troubles.at(0).code, EAGAIN);
    EXPECT_EQ(readFile(folder / "item"), "kept");
}

TEST_F(MemoryTest, ALaterRequestOfTheSameEngineIsAsGoodAsAny) {
    const TemporaryFolder folder(quickPlace());
    writeFile(folder / "one/file", "x");
    writeFile(folder / "two/file", "x");
    TestEngine engine;
    engine.faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation == "readFolder") throw std::bad_alloc();
    };
    EXPECT_EQ(engine.shred({folder / "one"}).filesRemoved, 0U);
    engine.faulty.before = {};
    const Outcome& outcome = engine.shred({folder / "one", folder / "two"});
    EXPECT_EQ(outcome.filesRemoved, 2U);
    EXPECT_THAT(outcome.troubles, IsEmpty());
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
}

}  // namespace
}  // namespace dorvanel::test
