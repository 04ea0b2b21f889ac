// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "fuzz/FuzzInput.h"
#include "support/TemporaryFolder.h"

// Replays the kept inputs of one fuzzer, the files of a folder, where no fuzzer is built.

int main(int argc, char* argv[]) {
    namespace fs = std::filesystem;
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
        return 2;
    }
    std::vector<fs::path> inputs;
    for (const fs::directory_entry& entry : fs::directory_iterator(argv[1])) {
        inputs.push_back(entry.path());
    }
    std::ranges::sort(inputs);
    for (const fs::path& input : inputs) {
        std::printf("%s\n", input.filename().c_str());
        std::fflush(stdout);  // the last one is to be seen if it ends the program
        const std::string bytes = dorvanel::test::readFile(input);
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    std::printf("%zu inputs\n", inputs.size());
    return inputs.empty() ? 1 : 0;
}
