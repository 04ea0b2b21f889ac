// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include "prefs/Keys.h"

namespace dorvanel::desktop {

/// A control of the preferences panel and the preference that it shows.
template <typename Key>
struct PanelControl {
    const char* outlet;  ///< the control's object name in the interface file
    Key key;
};

/// Check boxes and two-state buttons.
inline constexpr std::array<PanelControl<BoolKey>, 16> panelButtons = {{
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
    {"shredMentionsCheckbox", "ShredMentions"},
}};

/// Pop-up menus of numbers.
inline constexpr std::array<PanelControl<IndexKey>, 2> panelPopUps = {{
    {"numberOfWritesPopUp", "NumberOfWrites"},
    {"overwritePatternPopUp", "OverwritePattern"},
}};

}  // namespace dorvanel::desktop
