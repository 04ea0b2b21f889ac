// SPDX-License-Identifier: MIT
#include "targets/Golden.h"

#include <algorithm>
#include <memory>

#include "support/SampleIndex.h"
#include "targets/CollectorTest.h"

namespace dorvanel::test {
namespace {

struct Named {
    const char* name;
    void (Collectors::*collector)();
};

void PrintTo(const Named& named, std::ostream* stream) {
    *stream << named.name;
}

constexpr Named everyCollector[] = {
    {"IE51", &Collectors::IE51},
    {"iCab28", &Collectors::iCab28},
    {"OmniWeb41", &Collectors::OmniWeb41},
    {"OmniWeb51", &Collectors::OmniWeb51},
    {"Opera50", &Collectors::Opera50},
    {"Opera60", &Collectors::Opera60},
    {"Opera70", &Collectors::Opera70},
    {"AppleMail11", &Collectors::AppleMail11},
    {"AppleMail12", &Collectors::AppleMail12},
    {"AppleMail20", &Collectors::AppleMail20},
    {"MailCache", &Collectors::MailCache},
    {"Eudora51", &Collectors::Eudora51},
    {"Eudora62", &Collectors::Eudora62},
    {"Safari10", &Collectors::Safari10},
    {"Mozilla", &Collectors::Mozilla},
    {"Mailsmith21", &Collectors::Mailsmith21},
    {"Camino07", &Collectors::Camino07},
    {"Camino08", &Collectors::Camino08},
    {"Firefox08", &Collectors::Firefox08},
    {"Firefox10", &Collectors::Firefox10},
    {"Firefox15", &Collectors::Firefox15},
    {"QuicktimeCache", &Collectors::QuicktimeCache},
};

/// A home with one of each thing that collectors look for at run time.
class GoldenHome {
  public:
    GoldenHome() {
        for (const char* folder :
             {"Library/Application Support/Chimera/Profiles/default/a1b2c3.slt",
              "Library/Phoenix/Profiles/default/x9y8z7.slt",
              "Library/Application Support/Firefox/Profiles/k3.default",
              "Library/Caches/Firefox/Profiles/k3.default",
              "Library/Mozilla/Profiles/work/q7w8e9.slt/Mail/pop.example.org",
              "Library/Mail/POP-joe@mail.example.org"}) {
            std::filesystem::create_directories(home / folder);
        }
        SampleHome(home.path(), 1).addMailsmith(true);
        SampleHome(home.path(), 1)
            .addEnvelopeIndex({"local:///Inbox", "pop://joe@mail.example.org/", "local:///Trash"},
                              2);
        defaults.setArray({"work", "k3.default"}, "ProfilesMenu");
    }

    Golden::Outcome run(void (Collectors::*collector)()) {
        const LogCapture log;
        (collectors.*collector)();
        return {log.lines(), shredList};
    }

    TemporaryHome home;
    FakePreferences preferences;

  private:
    FakeUserDefaults defaults;
    FakeClock clock;
    std::vector<std::string> shredList;
    Collectors collectors{shredList, preferences, platform::defaultFileManager(), defaults, clock};
};

class GoldenTest : public ::testing::TestWithParam<Named> {
  protected:
    /// Every set of keys that can be on.
    static std::vector<std::set<std::string>> combinations(const std::vector<std::string>& keys) {
        std::vector<std::set<std::string>> all;
        for (std::size_t bits = 0; bits < (std::size_t{1} << keys.size()); ++bits) {
            std::set<std::string> on;
            for (std::size_t i = 0; i < keys.size(); ++i) {
                if ((bits >> i & 1) != 0) on.insert(keys[i]);
            }
            all.push_back(on);
        }
        return all;
    }
};

TEST_P(GoldenTest, WritesAndTakesWhatItsTableSaysInEveryStateOfItsKeys) {
    const std::vector<std::string> keys = Golden::read(GetParam().name, "").keys;
    ASSERT_EQ(Golden::read(GetParam().name, "").byKeysOn.size(), std::size_t{1} << keys.size());
    for (const std::set<std::string>& on : combinations(keys)) {
        GoldenHome golden;
        for (const std::string& key : on) golden.preferences.set(key, true);
        const Golden table = Golden::read(GetParam().name, golden.home.path());
        EXPECT_EQ(golden.run(GetParam().collector), table.byKeysOn.at(on));
    }
}

TEST_P(GoldenTest, WritesThreeLinesAndTakesNothingWhenDisabledWhateverItsKeysSay) {
    const Golden names = Golden::read(GetParam().name, "");
    for (const std::string& disabled : names.enableNames) {
        for (const std::set<std::string>& on : combinations(names.keys)) {
            GoldenHome golden;
            for (const std::string& key : on) golden.preferences.set(key, true);
            golden.preferences.disabled.insert(disabled);
            const Golden table = Golden::read(GetParam().name, golden.home.path());
            ASSERT_EQ(table.notEnabled.lines.size(), 3U);
            EXPECT_EQ(golden.run(GetParam().collector), table.notEnabled);
        }
    }
}

TEST_P(GoldenTest, AsksForNoApplicationButItsOwn) {
    const Golden names = Golden::read(GetParam().name, "");
    GoldenHome golden;
    for (const char* name :
         {"Safari", "Internet Explorer", "Mozilla", "Netscape", "iCab", "Omniweb", "Opera",
          "Camino", "Firefox", "Apple Mail", "Eudora", "Mailsmith"}) {
        golden.preferences.disabled.insert(name);
    }
    for (const std::string& name : names.enableNames) golden.preferences.disabled.erase(name);
    const Golden table = Golden::read(GetParam().name, golden.home.path());
    EXPECT_EQ(golden.run(GetParam().collector), table.byKeysOn.at({}));
}

TEST(GoldenTablesTest, ThereIsOneForEveryCollectorOfTheTable) {
    for (const SupportedApplication& application : applications) {
        for (const Collector& collector : application.collectors) {
            const std::string_view operation = operationOf(collector);
            if (operation.empty()) continue;  // none, or one with steps of its own
            EXPECT_TRUE(std::ranges::any_of(everyCollector, [&](const Named& named) {
                return named.name == operation;
            })) << operation;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Of, GoldenTest, ::testing::ValuesIn(everyCollector),
                         [](const auto& of) { return std::string(of.param.name); });

}  // namespace
}  // namespace dorvanel::test
