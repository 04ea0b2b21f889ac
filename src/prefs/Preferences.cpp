// SPDX-License-Identifier: MIT
#include "prefs/Preferences.h"

#include <algorithm>
#include <utility>

#include "prefs/KeyTable.h"

namespace dorvanel {
const PreferenceValues& defaultValues() {
    static const PreferenceValues dict = [] {
        PreferenceValues values;
        for (const PreferenceKey& key : preferenceKeys) {
            values.emplace(Key::of(key), key.factoryDefault);
        }
        return values;
    }();
    return dict;
}

std::shared_ptr<Preferences> Preferences::sharedInstance(PreferencesOwner& owner) {
    return init(owner);
}

std::shared_ptr<Preferences> Preferences::init(PreferencesOwner& owner) {
    if (std::shared_ptr<Preferences> shared = owner.object.lock()) return shared;
    std::shared_ptr<Preferences> object(new Preferences(owner));
    owner.object = object;
    return object;
}

Preferences::Preferences(const PreferencesOwner& owner)
    : defaults_(owner.defaults), applications_(owner.applications) {
    known_ = defaults_.isKnown();
    replaceCurValues(preferencesFromDefaults(defaults_));
    discardDisplayedValues();
    mCanStrip = 1;
}

PreferenceValues Preferences::preferencesFromDefaults(const platform::UserDefaults& defaults) {
    PreferenceValues values;
    for (const PreferenceKey& key : preferenceKeys) {
        const std::string name(key.name);
        Number value = key.factoryDefault;
        if (defaults.hasObjectForKey(name)) {
            value = key.isBool() ? Number::fromBool(defaults.boolForKey(name))
                                 : Number::fromInt(defaults.integerForKey(name));
        }
        values.emplace(Key::of(key), value);
    }
    return values;
}

Result<Done> Preferences::savePreferencesToDefaults(const PreferenceValues& values,
                                                    platform::UserDefaults& defaults) {
    for (const PreferenceKey& key : preferenceKeys) {
        const std::string name(key.name);
        const auto found = values.find(Key::of(key));
        if (found != values.end() && found->second == key.factoryDefault) {
            defaults.removeObjectForKey(name);
        } else if (key.isBool()) {
            defaults.setBool(found != values.end() && found->second.boolValue(), name);
        } else {
            defaults.setInteger(found != values.end() ? found->second.intValue() : 0, name);
        }
    }
    return defaults.synchronize();
}

Result<Done> Preferences::saveDefaults() {
    return savePreferencesToDefaults(*preferences(), defaults_);
}

std::shared_ptr<const PreferenceValues> Preferences::preferences() const {
    const std::lock_guard lock(curValuesMutex_);
    return curValues;
}

Number Preferences::objectForKey(Key key) const {
    const std::shared_ptr<const PreferenceValues> values = preferences();
    const auto found = values->find(key);
    return found == values->end() ? Number::fromInt(0) : found->second;
}

bool Preferences::areKnown() const {
    return known_.load(std::memory_order_acquire);
}

Result<Done> Preferences::startAfresh() {
    Result<Done> started = defaults_.startAfresh();
    if (!started || areKnown()) return started;
    mEnableBrowsers.reset();
    replaceCurValues(preferencesFromDefaults(defaults_));
    known_.store(true, std::memory_order_release);
    discardDisplayedValues();
    return started;
}

std::uint64_t Preferences::changeCount() const {
    return changeCount_.load(std::memory_order_acquire);
}

void Preferences::replaceCurValues(PreferenceValues values) {
    auto replacement = std::make_shared<const PreferenceValues>(std::move(values));
    {
        const std::lock_guard lock(curValuesMutex_);
        curValues.swap(replacement);
    }
    // Counted after the values are in place: who sees the new count reads the new values.
    changeCount_.fetch_add(1, std::memory_order_release);
}

void Preferences::loadBrowserInfo() {
    if (mEnableBrowsers) return;
    const std::string key(enabledBrowsersKey);
    mEnableBrowsers = defaults_.arrayForKey(key);
    if (mEnableBrowsers) return;
    // Only where nothing is stored are all of them enabled: what is stored in another form, or
    // cannot be read, may have meant fewer.
    mEnableBrowsers.emplace();
    if (areKnown() && !defaults_.hasObjectForKey(key)) {
        mEnableBrowsers->assign(applications_.names.begin(), applications_.names.end());
    }
}

bool Preferences::browserIsEnabled(std::string_view name) {
    loadBrowserInfo();
    return std::find(mEnableBrowsers->begin(), mEnableBrowsers->end(), name) !=
           mEnableBrowsers->end();
}

Result<Done> Preferences::enableChanged(std::string_view name) {
    const std::string_view companion = applications_.companionOf(name);
    if (browserIsEnabled(name)) {
        std::erase(*mEnableBrowsers, name);
        if (!companion.empty()) std::erase(*mEnableBrowsers, companion);
    } else {
        mEnableBrowsers->emplace_back(name);
        if (!companion.empty()) mEnableBrowsers->emplace_back(companion);
    }
    if (view_ != nullptr) view_->showMozillaAndNetscape();
    defaults_.setArray(*mEnableBrowsers, std::string(enabledBrowsersKey));
    return defaults_.synchronize();
}

Result<Done> Preferences::commitDisplayedValues() {
    replaceCurValues(displayedValues);
    return saveDefaults();
}

void Preferences::discardDisplayedValues() {
    displayedValues = *preferences();
    if (view_ != nullptr) view_->reallyupdateUI();
}

void Preferences::revert() {
    discardDisplayedValues();
}

void Preferences::revertToDefault() {
    replaceCurValues(defaultValues());
    discardDisplayedValues();
}

}  // namespace dorvanel
