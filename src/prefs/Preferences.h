// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Result.h"
#include "platform/UserDefaults.h"
#include "prefs/ApplicationNames.h"
#include "prefs/PreferenceReader.h"

namespace dorvanel {

/// Preference values by key.
using PreferenceValues = std::map<Key, Number>;

/// The factory defaults of all keys; built on the first call, never rebuilt.
const PreferenceValues& defaultValues();

/// The panel that shows the preferences, where there is one.
class PreferencesView {
  public:
    virtual ~PreferencesView() = default;
    /// Sets every control from `displayedValues` and from the enabled applications.
    virtual void reallyupdateUI() = 0;
    /// Sets the check boxes of Mozilla and Netscape, which always move together.
    virtual void showMozillaAndNetscape() = 0;
};

class Preferences;

/// What the one object is made of, and where it is found; kept by who puts a program together.
struct PreferencesOwner {
    platform::UserDefaults& defaults;  ///< must outlive the object
    ApplicationNames applications;     ///< likewise what it refers to
    std::weak_ptr<Preferences> object{};
};

/// The preferences: the committed values, the values as a panel edits them, and the enabled
/// applications. An owner has one at a time; it lives as long as somebody holds it. Main thread
/// only, but for what PreferenceReader promises to any thread and `preferences`.
class Preferences final : public PreferenceReader {
  public:
    /// The owner's one object, made from what its defaults hold when there is none yet.
    static std::shared_ptr<Preferences> sharedInstance(PreferencesOwner& owner);
    /// Another construction: gives the one object, as `sharedInstance` does.
    static std::shared_ptr<Preferences> init(PreferencesOwner& owner);

    /// The values as stored, the factory default for each that is not.
    static PreferenceValues preferencesFromDefaults(const platform::UserDefaults& defaults);
    /// Stores the values and synchronizes; a value equal to its factory default is
    /// removed rather than stored.
    static Result<Done> savePreferencesToDefaults(const PreferenceValues& values,
                                                  platform::UserDefaults& defaults);
    /// Saves the committed values.
    Result<Done> saveDefaults();

    /// The committed values; they never change, a commit replaces them as a whole. Any thread.
    [[nodiscard]] std::shared_ptr<const PreferenceValues> preferences() const;
    [[nodiscard]] Number objectForKey(Key key) const override;
    [[nodiscard]] std::uint64_t changeCount() const override;
    /// False where the stored preferences could not be read when the object was made. The values
    /// are then the factory's, no application is enabled, and every save fails.
    [[nodiscard]] bool areKnown() const override;
    /// Any thread.
    [[nodiscard]] bool prefsConfirmShredding() const { return boolForKey("ConfirmShredding"); }
    [[nodiscard]] bool prefsDoDSanitize() const { return boolForKey("DoDSanitize"); }
    [[nodiscard]] bool prefsNSA() const { return boolForKey("NSA"); }

    /// Reads the enabled applications on the first call and keeps them from then on.
    void loadBrowserInfo();
    [[nodiscard]] bool browserIsEnabled(std::string_view name) override;
    /// Takes the application out of the list or adds it at the end, Mozilla and Netscape together;
    /// stores the list and synchronizes.
    Result<Done> enableChanged(std::string_view name);

    /// For a person who wants to begin again: a stored list that cannot be read is set aside under
    /// a new name, which the defaults' owner is told, and a good one written in its place; the
    /// preferences are then known. Where they were known the values stay as they are; otherwise
    /// they become what is stored now, and the panel shows them. Going back to the factory values
    /// is `startAfresh`, then `revertToDefault` and `saveDefaults`. A failure changes nothing here.
    Result<Done> startAfresh();

    /// The values as the panel shows and edits them.
    PreferenceValues displayedValues;
    /// Makes `displayedValues` the committed values and saves them. A failed save leaves them
    /// committed in memory.
    Result<Done> commitDisplayedValues();
    /// Makes `displayedValues` the committed values again, and has the panel show them.
    void discardDisplayedValues();
    /// As discardDisplayedValues.
    void revert();
    /// Commits the factory defaults, without saving, and has the panel show them. The enabled
    /// applications stay as they are.
    void revertToDefault();

    /// The panel to tell of changes, or null; not owned.
    void setView(PreferencesView* view) { view_ = view; }

    /// The enabled applications; nothing before loadBrowserInfo.
    std::optional<std::vector<std::string>> mEnableBrowsers;
    /// Set when the object is made; nothing asks for it.
    std::int8_t mCanStrip = 0;

  private:
    explicit Preferences(const PreferencesOwner& owner);
    void replaceCurValues(PreferenceValues values);

    platform::UserDefaults& defaults_;
    ApplicationNames applications_;
    PreferencesView* view_ = nullptr;
    mutable std::mutex curValuesMutex_;
    std::shared_ptr<const PreferenceValues> curValues;  ///< the pointer is guarded, not the values
    std::atomic<std::uint64_t> changeCount_ = 0;
    std::atomic<bool> known_ = true;
};

}  // namespace dorvanel
