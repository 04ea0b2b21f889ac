#pragma once

#include <array>

namespace dorvanel::desktop {

/// A control of the preferences panel and the preference that it shows.
struct PanelControl {
    const char* outlet;  ///< the control's object name in the interface file
    const char* key;
};

/// Check boxes and two-state buttons.
inline constexpr std::array<PanelControl, 15> panelButtons = {{
    {"shredCacheCheckbox", "ShredCache"},
    {"shredIEDownloadCacheCheckbox", "ShredIEDownloadCache"},
    {"shredMailTrashCheckbox", "ShredMailTrash"},
    {"shredHistoryCheckbox", "ShredHistory"},
    {"hideCheckbox", "HideAfterShredding"},
    {"browserWatchCheckbox", "BrowserWatch"},
    {"activityLogCheckbox", "ActivityLog"},
    {"confirmShreddingCheckbox", "ConfirmShredding"},
    {"DoDSanitizeButton", "DoDSanitize"},
    {"shredAppleMailJunkCheckbox", "ShredAppleMailJunk"},
    {"NSAButton", "NSA"},
    {"shredQuicktimeCheckbox", "ShredQuicktimeCache"},
    {"shredMailCacheCheckbox", "ShredMailCache"},
    {"shredMailsmithSpamCheckbox", "ShredMailsmithSpam"},
    {"shredSafariFaviconCheckbox", "shredSafariFavicon"},
}};

/// Pop-up menus of numbers.
inline constexpr std::array<PanelControl, 2> panelPopUps = {{
    {"numberOfWritesPopUp", "NumberOfWrites"},
    {"overwritePatternPopUp", "OverwritePattern"},
}};

/// Where both pop-ups have a separator: the engine has no use for this index.
inline constexpr int popUpSeparator = 1;

/// The enable check boxes. A box's title is the application's name in the list, letter by letter.
inline constexpr std::array<const char*, 12> enableBoxes = {
    "enableSafariCheckbox",   "enableExplorerCheckbox", "enableMozillaCheckbox",
    "enableNetscapeCheckbox", "enableiCabCheckbox",     "enableOmniwebCheckbox",
    "enableOperaCheckbox",    "enableCaminoCheckbox",   "enableFirefoxCheckbox",
    "enableMailCheckbox",     "enableEudoraCheckbox",   "enableMailsmithCheckbox"};

}  // namespace dorvanel::desktop
