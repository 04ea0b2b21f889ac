// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <charconv>
#include <memory>
#include <ostream>

#include "app/Texts.h"
#include "app/terminal/Commands.h"
#include "app/terminal/OpenedPreferences.h"
#include "prefs/Keys.h"

namespace dorvanel::terminal {
namespace {

struct Words {
    std::string key;
    std::string value;
};

std::string shown(Number value) {
    if (value.isBool()) return value.boolValue() ? "YES" : "NO";
    return std::to_string(value.intValue());
}

std::optional<Key> findKey(Terminal& terminal, const std::string& name) {
    const std::optional<Key> found = Key::find(name);
    if (!found) {
        terminal.complain(tr("there is no preference \"{}\"; \"dorvanel prefs\" lists them", name));
    }
    return found;
}

std::string refusalOf(const PreferenceKey& key, const std::string& value) {
    if (key.isBool()) return tr("{} takes YES or NO, not \"{}\"", key.name, value);
    return tr("{} takes 0 or {} to {}, not \"{}\"", key.name, separatorIndex + 1, key.lastIndex,
              value);
}

/// The value that the words stand for, if the panel could store it.
std::optional<Number> parsed(const PreferenceKey& key, const std::string& text) {
    if (key.isBool()) {
        if (text == "YES") return Number::fromBool(true);
        if (text == "NO") return Number::fromBool(false);
        return std::nullopt;
    }
    int index = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), index);
    const bool isWhole = result.ec == std::errc() && result.ptr == text.data() + text.size();
    if (!isWhole || !canBeChosen(key, index)) return std::nullopt;
    return Number::fromInt(index);
}

ExitStatus list(Terminal& terminal) {
    OpenedPreferences opened(terminal);
    if (!opened.areKnown()) return ExitStatus::incomplete;
    for (const PreferenceKey& key : preferenceKeys) {
        const Number value = opened.preferences().objectForKey(Key::of(key));
        if (key.isListedWhenChosen && value == key.factoryDefault) continue;
        terminal.out << key.name << ' ' << shown(value) << '\n';
    }
    return ExitStatus::done;
}

ExitStatus get(Terminal& terminal, const Words& words) {
    const std::optional<Key> key = findKey(terminal, words.key);
    if (!key) return ExitStatus::usage;
    OpenedPreferences opened(terminal);
    if (!opened.areKnown()) return ExitStatus::incomplete;
    terminal.out << shown(opened.preferences().objectForKey(*key)) << '\n';
    return ExitStatus::done;
}

ExitStatus set(Terminal& terminal, const Words& words) {
    const std::optional<Key> key = findKey(terminal, words.key);
    if (!key) return ExitStatus::usage;
    const std::optional<Number> value = parsed(key->row(), words.value);
    if (!value) {
        terminal.complain(refusalOf(key->row(), words.value));
        return ExitStatus::usage;
    }
    OpenedPreferences opened(terminal);
    if (!opened.areKnown()) return ExitStatus::incomplete;
    dorvanel::Preferences& preferences = opened.preferences();
    preferences.displayedValues.insert_or_assign(*key, *value);
    return opened.statusOf(preferences.commitDisplayedValues());
}

ExitStatus revert(Terminal& terminal) {
    OpenedPreferences opened(terminal, OpenedPreferences::Unreadable::isMended);
    const Result<Done> started = opened.preferences().startAfresh();
    if (!started) return opened.statusOf(started);
    opened.preferences().revertToDefault();
    return opened.statusOf(opened.preferences().saveDefaults());
}

}  // namespace

void addPrefsCommand(CLI::App& program, Action& chosen) {
    auto words = std::make_shared<Words>();
    CLI::App* prefs = program.add_subcommand("prefs", tr("List, read and change the preferences"));
    prefs->require_subcommand(0, 1)->fallthrough();
    prefs->callback([&chosen] {
        if (!chosen) chosen = list;
    });
    prefs->add_subcommand("list", tr("Print every preference and its value (also without a word)"))
        ->fallthrough()
        ->callback([&chosen] { chosen = list; });

    CLI::App* getter = prefs->add_subcommand("get", tr("Print the value of one preference"));
    getter->fallthrough()->add_option("KEY", words->key, tr("The preference's name"))->required();
    getter->callback([&chosen, words] {
        chosen = [words](Terminal& terminal) { return get(terminal, *words); };
    });

    CLI::App* setter = prefs->add_subcommand("set", tr("Change one preference"));
    setter->fallthrough()->add_option("KEY", words->key, tr("The preference's name"))->required();
    setter->add_option("VALUE", words->value, tr("YES, NO, or an index of a menu"))->required();
    setter->callback([&chosen, words] {
        chosen = [words](Terminal& terminal) { return set(terminal, *words); };
    });

    prefs->add_subcommand("revert", tr("Go back to the factory values"))
        ->fallthrough()
        ->callback([&chosen] { chosen = revert; });
}

}  // namespace dorvanel::terminal
