// SPDX-License-Identifier: MIT
#include "targets/EnvelopeIndex.h"

#include "fuzz/FuzzInput.h"
#include "platform/FileManager.h"
#include "support/FakeClock.h"
#include "support/FakePreferences.h"
#include "support/FakeUserDefaults.h"
#include "support/TemporaryFolder.h"
#include "targets/Collectors.h"

// The message index is another program's database: a damaged one is told of in the log, and no
// mailbox URL in it is too strange.

using namespace dorvanel;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TemporaryHome home;
    const std::string index = home / "Library/Mail/Envelope Index";
    for (const char* companion : {"-journal", "-wal", "-shm"}) {
        std::filesystem::remove(index + companion);
    }
    test::writeFile(index, test::bytesOf(data, size));

    std::vector<std::string> shredList{home / "Library/Mail/Mailboxes/Junk.mbox"};
    test::FakePreferences preferences;
    test::FakeUserDefaults defaults;
    test::FakeClock clock;
    Collectors collectors(shredList, preferences, platform::defaultFileManager(), defaults, clock);
    collectors.AppleMail20();
    test::insist(shredList.size() == 1, "the index adds nothing to the shred list");
    for (const std::string& journal : collectors.takeUsedJournals())
        std::filesystem::remove(journal);
    return 0;
}
