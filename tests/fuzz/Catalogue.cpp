// SPDX-License-Identifier: MIT
#include "apps/catalogue/EntryCheck.h"
#include "apps/catalogue/EntryReader.h"
#include "fuzz/FuzzInput.h"

// Descriptions of applications: any bytes are read or refused with a reason, and what is read stays
// below its roots.

using namespace dorvanel;
using dorvanel::test::insist;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const catalogue::ReadEntry read =
        catalogue::readEntry("fuzzed", dorvanel::test::bytesOf(data, size));
    insist(read.entry.has_value() == read.problems.empty(), "a file is read, or has faults");
    for (const catalogue::Problem& problem : read.problems) {
        insist(problem.line >= 0 && !problem.reason.empty(), "a fault has a reason");
    }
    if (!read.entry) return 0;
    for (const catalogue::Trace& trace : read.entry->traces) {
        for (const std::string& path : trace.shred) {
            insist(path.starts_with('{') && path.find("/../") == std::string::npos,
                   "no path leaves its root");
        }
    }
    catalogue::Entry doubled = *read.entry;
    catalogue::inherit(doubled, *read.entry);
    insist(doubled.traces.size() == read.entry->traces.size(), "nothing is inherited twice");
    catalogue::faultsOf(*read.entry);
    return 0;
}
