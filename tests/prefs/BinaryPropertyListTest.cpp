// SPDX-License-Identifier: MIT
#include "prefs/BinaryPropertyList.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "prefs/PropertyList.h"

namespace dorvanel::test {
namespace {

/// A binary list of these objects, the first one at its root.
std::string listOf(const std::vector<std::string>& objects) {
    std::string bytes = "bplist00";
    std::string offsets;
    for (const std::string& object : objects) {
        offsets += static_cast<char>(bytes.size() >> 8);
        offsets += static_cast<char>(bytes.size());
        bytes += object;
    }
    const std::size_t table = bytes.size();
    const auto number = [](std::size_t value) {
        std::string eight(8, '\0');
        for (std::size_t i = 8; i-- > 0; value >>= 8) eight[i] = static_cast<char>(value);
        return eight;
    };
    return bytes + offsets + std::string(6, '\0') + "\x02\x01" + number(objects.size()) +
           number(0) + number(table);
}

/// { "k": a list of two lists, each of them the next one twice, so many times }
std::string doubling(int times) {
    std::vector<std::string> objects{"\xD1\x01\x02", "\x51k"};
    for (int i = 0; i < times; ++i) {
        const char next = static_cast<char>(i + 3);
        objects.push_back(std::string("\xA2") + next + next);
    }
    objects.emplace_back("\x09");
    return listOf(objects);
}

TEST(BinaryPropertyListTest, SharedObjectsCountAsOftenAsTheyAreReferredTo) {
    EXPECT_TRUE(binaryPropertyListIsWithin(doubling(3), 1000, 10));
    EXPECT_FALSE(binaryPropertyListIsWithin(doubling(7), 1000, 10));
    EXPECT_FALSE(binaryPropertyListIsWithin(doubling(200), std::size_t{1} << 40, 300));
}

TEST(BinaryPropertyListTest, DeeperListsThanAllowedAreRefused) {
    EXPECT_TRUE(binaryPropertyListIsWithin(doubling(3), 1000, 5));
    EXPECT_FALSE(binaryPropertyListIsWithin(doubling(3), 1000, 4));
}

TEST(BinaryPropertyListTest, AListThatHoldsItselfIsRefused) {
    EXPECT_FALSE(
        binaryPropertyListIsWithin(listOf({"\xD1\x01\x02", "\x51k", "\xA1\x02"}), 1 << 20, 1000));
}

TEST(BinaryPropertyListTest, AListThatPointsOutsideItselfIsRefused) {
    EXPECT_FALSE(binaryPropertyListIsWithin(listOf({"\xD1\x01\x09", "\x51k"}), 1000, 10));
    EXPECT_FALSE(binaryPropertyListIsWithin("bplist00", 1000, 10));
}

TEST(BinaryPropertyListTest, NoByteThatIsWrongLeadsOutsideTheList) {
    const std::string whole = doubling(3);
    std::size_t refused = 0;
    for (std::size_t i = 0; i < whole.size(); ++i) {
        for (int bit = 0; bit < 8; ++bit) {
            std::string other = whole;
            other[i] = static_cast<char>(other[i] ^ (1 << bit));
            if (!binaryPropertyListIsWithin(other, 1 << 20, 100)) ++refused;
        }
        // What is cut off at its start has its offsets wrong, if it is long enough to have any.
        if (!binaryPropertyListIsWithin(whole.substr(i + 1), 1 << 20, 100)) ++refused;
    }
    EXPECT_GT(refused, whole.size());
}

/// Why a list is refused; "" where it is not.
std::string reasonOf(const std::string& bytes) {
    const auto list = PropertyList::parse(bytes);
    return list ? "" : list.error().detail;
}

TEST(BinaryPropertyListTest, AListThatStandsForTooMuchIsNoPropertyList) {
    EXPECT_TRUE(PropertyList::parse(doubling(3)));
    EXPECT_EQ(reasonOf(doubling(40)), "not a whole property list");
}

TEST(BinaryPropertyListTest, TextsWithANulAreRefused) {
    const std::string wide("\x62\x00\x00\x00\x6E", 5);
    const std::string narrow("\x52n\x00", 3);
    for (const std::string& text : {wide, narrow}) {
        EXPECT_EQ(reasonOf(listOf({"\xD1\x01\x02", "\x51k", text})), "not a whole property list");
        EXPECT_EQ(reasonOf(listOf({"\xD1\x02\x01", "\x51k", text})), "not a whole property list");
    }
    EXPECT_TRUE(PropertyList::parse(listOf({"\xD1\x01\x02", "\x51k", "\x52no"})));
}

TEST(BinaryPropertyListTest, AListThatCouldNotBeReadBackIsRefused) {
    // A control character, so that it is no XML; text of one byte that is no UTF-8, so that it is
    // no binary list either.
    EXPECT_EQ(reasonOf(listOf({"\xD2\x01\x02\x03\x04", "\x51k", "\x51l", "\x51\x01", "\x51\xB8"})),
              "holds what cannot be written again");
}

TEST(BinaryPropertyListTest, OfAKeyThatStandsTwiceOneIsRead) {
    const auto list =
        PropertyList::parse(listOf({"\xD2\x01\x01\x02\x03", "\x51k", "\x09", "\x08"}));
    ASSERT_TRUE(list);
    EXPECT_EQ(list.value().asBool("k"),
              PropertyList::parse(list.value().serialized()).value().asBool("k"));
}

}  // namespace
}  // namespace dorvanel::test
