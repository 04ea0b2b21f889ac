// SPDX-License-Identifier: MIT
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <charconv>
#include <memory>
#include <ostream>

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
        terminal.complain("there is no preference \"" + name + "\"; \"dorvanel prefs\" lists them");
    }
    return found;
}

std::string allowedValues(const PreferenceKey& key) {
    if (key.isBool()) return fmt::format("{} takes YES or NO", key.name);
    return fmt::format("{} takes 0 or {} to {}", key.name, separatorIndex + 1, key.lastIndex);
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
        terminal.complain(allowedValues(key->row()) + ", not \"" + words.value + "\"");
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
    CLI::App* prefs = program.add_subcommand("prefs", "List, read and change the preferences");
    prefs->require_subcommand(0, 1)->fallthrough();
    prefs->callback([&chosen] {
        if (!chosen) chosen = list;
    });
    prefs->add_subcommand("list", "Print every preference and its value (also without a word)")
        ->fallthrough()
        ->callback([&chosen] { chosen = list; });

    CLI::App* getter = prefs->add_subcommand("get", "Print the value of one preference");
    getter->fallthrough()->add_option("KEY", words->key, "The preference's name")->required();
    getter->callback([&chosen, words] {
        chosen = [words](Terminal& terminal) { return get(terminal, *words); };
    });

    CLI::App* setter = prefs->add_subcommand("set", "Change one preference");
    setter->fallthrough()->add_option("KEY", words->key, "The preference's name")->required();
    setter->add_option("VALUE", words->value, "YES, NO, or an index of a menu")->required();
    setter->callback([&chosen, words] {
        chosen = [words](Terminal& terminal) { return set(terminal, *words); };
    });

    prefs->add_subcommand("revert", "Go back to the factory values")
        ->fallthrough()
        ->callback([&chosen] { chosen = revert; });
}

}  // namespace dorvanel::terminal
