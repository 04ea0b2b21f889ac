// SPDX-License-Identifier: MIT
#include "support/Python.h"

#include <gtest/gtest.h>
#include <stdio.h>

#include "support/TemporaryFolder.h"

namespace dorvanel::test {

std::string python(const std::string& folder, const std::string& program) {
    const TemporaryFolder place;
    writeFile(place / "program.py", program);
    // The system's own, which sees the system's packages, rather than another that hides it.
    const std::string command = "cd '" + folder + "' && PATH=\"/usr/bin:$PATH\" python3 '" +
                                (place / "program.py") + "' 2>&1";
    FILE* output = popen(command.c_str(), "r");
    if (output == nullptr) {
        ADD_FAILURE() << "python3 cannot be started";
        return {};
    }
    std::string text;
    for (int c = fgetc(output); c != EOF; c = fgetc(output)) text += static_cast<char>(c);
    EXPECT_EQ(pclose(output), 0) << text;
    if (text.ends_with('\n')) text.pop_back();
    return text;
}

}  // namespace dorvanel::test
