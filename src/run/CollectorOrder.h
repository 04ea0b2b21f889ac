#pragma once

#include <array>
#include <string_view>

#include "targets/Collectors.h"
#include "watch/bw_typedef.h"

namespace dorvanel {

/// The collectors of one application, called when that application does not run.
struct CollectorGroup {
    using Collector = void (Collectors::*)();

    std::string_view name;  ///< for people
    bool (*isRunning)(const bw_typedef&);
    std::array<Collector, 4> collectors;  ///< in order; null behind the last
};

/// All groups in the order of a run: it is the order of the Activity Log, and Apple Mail's index is
/// looked at after Apple Mail's folders.
inline constexpr CollectorGroup collectorGroups[] = {
    {"Internet Explorer", [](const bw_typedef& is) { return is.ie != 0; }, {&Collectors::IE51}},
    {"iCab", [](const bw_typedef& is) { return is.icab != 0; }, {&Collectors::iCab28}},
    {"OmniWeb",
     [](const bw_typedef& is) { return is.omniweb != 0; },
     {&Collectors::OmniWeb41, &Collectors::OmniWeb51}},
    {"Opera",
     [](const bw_typedef& is) { return is.opera != 0; },
     {&Collectors::Opera50, &Collectors::Opera60, &Collectors::Opera70}},
    {"Apple Mail",
     [](const bw_typedef& is) { return is.mail != 0; },
     {&Collectors::AppleMail11, &Collectors::AppleMail12, &Collectors::AppleMail20,
      &Collectors::MailCache}},
    {"Eudora",
     [](const bw_typedef& is) { return is.eudora != 0; },
     {&Collectors::Eudora51, &Collectors::Eudora62}},
    {"Safari", [](const bw_typedef& is) { return is.safari != 0; }, {&Collectors::Safari10}},
    {"Mozilla and Netscape",
     [](const bw_typedef& is) { return is.netscape != 0 || is.mozilla != 0; },
     {&Collectors::Mozilla}},
    {"Mailsmith",
     [](const bw_typedef& is) { return is.mailsmith != 0; },
     {&Collectors::Mailsmith21}},
    {"Camino",
     [](const bw_typedef& is) { return is.camino != 0; },
     {&Collectors::Camino07, &Collectors::Camino08}},
    {"Firefox",
     [](const bw_typedef& is) { return is.firefox != 0; },
     {&Collectors::Firefox08, &Collectors::Firefox10, &Collectors::Firefox15}},
};

}  // namespace dorvanel
