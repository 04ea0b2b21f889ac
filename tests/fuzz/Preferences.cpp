// SPDX-License-Identifier: MIT
#include "prefs/Preferences.h"
#include "support/SharedPreferences.h"

#include "fuzz/FuzzInput.h"
#include "prefs/PropertyList.h"
#include "prefs/PropertyListDefaults.h"
#include "support/TemporaryFolder.h"

// The preferences file: anybody may have written it. What is read of it is kept when it is written.

using namespace dorvanel;
using dorvanel::test::insist;

namespace {

void checkRoundTrip(const std::string& bytes) {
    const auto read = PropertyList::parse(bytes);
    if (!read) {
        insist(!read.error().detail.empty(), "a list that is refused is refused with a reason");
        return;
    }
    const PropertyList& list = read.value();
    const std::string written = list.serialized();
    const auto reread = PropertyList::parse(written);
    // The text of a binary list may be longer than what is read back.
    if (!reread && written.size() > PropertyList::maximumBytes) return;
    insist(reread.ok(), "what is written can be read");
    const PropertyList& again = reread.value();
    for (const PreferenceKey& row : preferenceKeys) {
        const std::string key(row.name);
        insist(list.has(key) == again.has(key), "a key is kept");
        insist(list.value(key) == again.value(key), "a value is kept");
        insist(list.asBool(key) == again.asBool(key), "a boolean is kept");
        insist(list.asInteger(key) == again.asInteger(key), "a number is kept");
        insist(list.asStrings(key) == again.asStrings(key), "strings are kept");
        insist(list.asString(key) == again.asString(key), "a text is kept");
    }
}

void loadAndSave(const std::string& bytes) {
    static const test::TemporaryFolder folder;
    static const std::string path = folder / "preferences.plist";
    std::filesystem::remove(path + " (damaged 1)");
    test::writeFile(path, bytes);

    const auto defaults = openUserDefaults(path, [](const Error&) {});
    const auto preferences = test::sharedPreferences(*defaults);
    if (!preferences->areKnown()) {
        insist(!preferences->commitDisplayedValues().ok(), "what is not known is not saved");
        insist(test::readFile(path) == bytes, "a file that cannot be read stays as it is");
        insist(preferences->startAfresh().ok(), "a fresh start is always possible");
        insist(test::readFile(path + " (damaged 1)") == bytes, "it is kept under another name");
    }
    preferences->loadBrowserInfo();
    const auto before = *preferences->preferences();
    preferences->displayedValues = before;
    insist(preferences->commitDisplayedValues().ok(), "preferences can be saved");

    const auto reread =
        openUserDefaults(path, [](const Error&) { insist(false, "what was saved can be read"); });
    for (const auto& [key, value] : Preferences::preferencesFromDefaults(*reread)) {
        insist(value.boolValue() == before.at(key).boolValue(), "a saved boolean is the same");
        insist(value.intValue() == before.at(key).intValue(), "a saved number is the same");
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes = dorvanel::test::bytesOf(data, size);
    checkRoundTrip(bytes);
    loadAndSave(bytes);
    return 0;
}
