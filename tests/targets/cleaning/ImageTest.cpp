// SPDX-License-Identifier: MIT
#include "targets/cleaning/Image.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>

#include "support/FaultyCleaningCalls.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

using cleaning::DirectImage;
using cleaning::Image;
using cleaning::ImageMemory;
using cleaning::MemoryImage;
using Outcome = Image::Outcome;

class ImageTest : public testing::Test {
  protected:
    ~ImageTest() override {
        if (file >= 0) calls.close(file);
    }
    /// A file of these bytes, open.
    void open(const std::string& bytes) {
        writeFile(folder / "file", bytes);
        const int place = calls.openFolder(folder.path().c_str());
        file = calls.openForChanging(place, "file");
        calls.close(place);
        ASSERT_GE(file, 0);
    }
    static std::string all(Image& image) {
        std::string bytes(static_cast<std::size_t>(image.size()), '?');
        EXPECT_EQ(image.read(bytes.data(), bytes.size(), 0), Outcome::done);
        return bytes;
    }

    const TemporaryFolder folder;
    FaultyCleaningCalls calls;
    ImageMemory memory;
    int file = -1;
};

TEST_F(ImageTest, AnImageInMemoryIsWhatAFileWouldBe) {
    std::mt19937 random(7);
    const auto atMost = [&](std::size_t most) { return random() % (most + 1); };
    std::string model(20'000, 'b');
    open(model);
    MemoryImage image(memory, calls, file, model.size());
    for (int i = 0; i < 3000; ++i) {
        if (random() % 20 == 0) {
            const std::size_t size = atMost(30'000);
            EXPECT_EQ(image.truncate(size), Outcome::done);
            model.resize(size, '\0');
        } else {
            const std::string bytes(atMost(9000), static_cast<char>('c' + i % 20));
            const std::size_t at = atMost(25'000);
            EXPECT_EQ(image.write(bytes.data(), bytes.size(), at), Outcome::done);
            if (!bytes.empty() && model.size() < at + bytes.size()) {
                model.resize(at + bytes.size(), '\0');
            }
            if (!bytes.empty()) model.replace(at, bytes.size(), bytes);
        }
        ASSERT_EQ(image.size(), model.size());
        ASSERT_EQ(all(image), model) << i;
    }
    EXPECT_EQ(readFile(folder / "file"), std::string(20'000, 'b'));
}

TEST_F(ImageTest, WhatLiesBehindTheEndIsZerosAndAShortRead) {
    MemoryImage image(memory);
    ASSERT_EQ(image.write("abc", 3, 0), Outcome::done);
    std::string bytes = "xxxxxx";
    EXPECT_EQ(image.read(bytes.data(), bytes.size(), 1), Outcome::shortRead);
    EXPECT_EQ(bytes, std::string("bc\0\0\0\0", 6));
    EXPECT_EQ(image.read(bytes.data(), bytes.size(), 100), Outcome::shortRead);
}

TEST_F(ImageTest, MemoryIsBoundedAndGivenBack) {
    memory.left = 8192;
    {
        MemoryImage image(memory);
        EXPECT_EQ(image.write("a", 1, 0), Outcome::done);
        EXPECT_EQ(image.write("a", 1, 100'000), Outcome::done);
        EXPECT_EQ(memory.left, 0U);
        EXPECT_EQ(image.write("a", 1, 200'000), Outcome::failed);
        EXPECT_TRUE(memory.fault.tooLarge);
        EXPECT_EQ(image.truncate(10), Outcome::done);
        EXPECT_EQ(memory.left, 4096U);
    }
    EXPECT_EQ(memory.left, 8192U);
}

TEST_F(ImageTest, AFileThatGotShorterBelowIsAFault) {
    open(std::string(10'000, 'b'));
    MemoryImage image(memory, calls, file, 10'000);
    std::filesystem::resize_file(folder / "file", 5000);
    std::string bytes(8000, '?');
    EXPECT_EQ(image.read(bytes.data(), bytes.size(), 0), Outcome::failed);
    EXPECT_EQ(memory.fault.operation, "read");
}

TEST_F(ImageTest, AFileIsOverwrittenAndFlushedBeforeItGetsShorter) {
    open(std::string(10'000, 'b'));
    DirectImage image(memory, calls, file, 10'000);
    std::string last;
    calls.before = [&](const std::string& operation) {
        if (operation == "truncate") {
            EXPECT_EQ(last, "flush");
            EXPECT_EQ(readFile(folder / "file"), std::string(5000, 'b') + std::string(5000, '\0'));
        }
        last = operation;
    };
    EXPECT_EQ(image.truncate(5000), Outcome::done);
    EXPECT_EQ(last, "truncate");
    EXPECT_EQ(image.size(), 5000U);
    EXPECT_EQ(readFile(folder / "file"), std::string(5000, 'b'));
}

}  // namespace
}  // namespace dorvanel::test
