#include "text/attribute_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <vector>

namespace {

template <typename Value>
using Scanned = std::vector<std::pair<std::string, std::vector<Value>>>;

/// Scans each text for as many values as are wanted of it.
template <typename Value>
void ExpectScanned(Value (*scan)(TextCursor&), const Scanned<Value>& cases) {
    for (const auto& [text, wanted] : cases) {
        std::vector<Value> values;
        AttributeText scanned(text);
        TextCursor cursor{scanned, 0, text.size()};
        while (values.size() < wanted.size()) {
            values.push_back(scan(cursor));
        }
        EXPECT_EQ(values, wanted) << text.substr(0, 100);
    }
}

TEST(AttributeBlock, BeginsAtItsNameAndABrace) {
    const char* const none = "none";
    const struct {
        const char *name, *text, *afterHead;
    } cases[] = {
        {"Box", "Box  \n\n {1", "1"},
        {"Box", "a Box in a list, a Box [1] and Box {2", "2"},
        {"Box", "RedBox{1} Box {2", "1} Box {2"},
        {"Box", "Box\t{1", none},
        {"Box", "box {1", none},
        {"Box", "Box", none},
        // The character that breaks a match begins no other one.
        {"GLOBALS", "GGLOBALS {1", none},
        {"GLOBALS", "G GLOBALS {1", "1"},
        // And what stands where the brace should is lost to the next search.
        {"Box", "Box Box {1", none},
        {"Box", "Box, Box {1", "1"},
        {"\xC8x", "\xC8x {1", none},  // beyond ASCII
        {"x", "\xC8x {1", "1"},
        {"", "Box {1} Ball {2", "1} Ball {2"},
        {"", "no brace at all", none},
    };
    for (const auto& [name, text, afterHead] : cases) {
        TextStream stream{text};
        const bool found = FindAttributeBlock(name, stream);
        EXPECT_EQ(found ? stream.text.substr(stream.position) : none, afterHead) << text;
    }
    // It ends at the brace that closes it, or with the file.
    TextStream stream{"a {b} c} d {e"};
    bool closed = false;
    EXPECT_EQ(ReadAttributeBlock(stream, &closed), "a {b} c}");
    EXPECT_TRUE(closed);
    EXPECT_EQ(ReadAttributeBlock(stream, &closed), " d {e");
    EXPECT_FALSE(closed);
}

TEST(Keys, ComeOnceEachInTheOrderOfTheText) {
    using namespace std::string_literals;
    AttributeText text("*A 1 *B 2 A 3 {*A 4} *AB 5 *A*A 6 *A\0 7 *A 8"s);
    std::vector<std::int32_t> values;
    ForEachKey(text, "*A", [&](TextCursor cursor) { values.push_back(ScanInt(cursor)); });
    EXPECT_EQ(values, (std::vector<std::int32_t>{1, 4, 5, 6, 6, 0})) << "a zero character ends the text";
}

TEST(Scanners, TakeTheNextNumberOrNameWhateverStandsBetween) {
    ExpectScanned<std::int32_t>(ScanInt,
                                {{"640x480,+16", {640, 480, 16}},
                                 {"2.5 3-4 7", {2, 5, 3, 7}},
                                 {"none", {0, 0}},
                                 {"- 5 --6 7", {0, 5, 0, 7}},
                                 {"2147483647 2147483648 -2147483648 -2147483649 99999999999999999999",
                                  {INT32_MAX, INT32_MAX, INT32_MIN, INT32_MIN, INT32_MAX}}});
    ExpectScanned<float>(ScanFloat, {{".5 0.5 -.5", {5.0f, 0.5f, -0.5f}},
                                     {"1e5 2", {100000.0f, 5.0f, 2.0f}},
                                     {"1e-5", {0.00001f, -5.0f}},
                                     {"1.5-2.5 3", {1.5f, 3.0f}},
                                     {"- 5 --5 6", {0.0f, 5.0f, 0.0f, 6.0f}},
                                     {"0x57", {0.0f, 57.0f}},
                                     {"-inf -nan -0x8 4", {0.0f, 0.0f, 0.0f, 8.0f}},
                                     {"none", {0.0f}},
                                     {"1e39 -1e99999999999999999999 2", {INFINITY, 39.0f, -INFINITY}},
                                     {"1e-99999999999999999999", {0.0f}},
                                     {"3.40282347e38", {std::numeric_limits<float>::max()}}});
    AttributeText block("1 none 2");
    TextCursor cursor{block, 1, 6};
    EXPECT_EQ(ScanInt(cursor), 0);
    EXPECT_EQ(cursor.position, 6u) << "it stops where the block ends";
    const std::pair<std::string, std::string> names[] = {{"\n\"data\\2nd.bin\" *SAFE", "data\\2nd.bin"},
                                                         {"my_scene.bin", "my"},
                                                         {"..\\up.bin", "up.bin"},
                                                         {"a\xC8z", "a"},
                                                         {"\xC8z", "z"},
                                                         {" ._\\*", ""},
                                                         {std::string(500, 'a'), std::string(199, 'a')}};
    for (const auto& [text, name] : names) {
        AttributeText scanned(text);
        EXPECT_EQ(ScanName({scanned, 0, text.size()}), name);
    }
}

TEST(Scanners, AgreeWithTheConversionsOfTheCLibrary) {
    std::mt19937 random(1);
    const std::string alphabet = "00112345789-.e ";
    for (int round = 0; round < 20000; round++) {
        std::string text = round % 2 == 0 ? "-" : "7";
        for (unsigned length = random() % 12; length > 0; length--) {
            text += alphabet[random() % alphabet.size()];
        }
        float wantedFloat = 0.0f;
        std::sscanf(text.c_str(), "%f", &wantedFloat);
        ExpectScanned<float>(ScanFloat, {{text, {wantedFloat}}});
        int wantedInt = 0;
        std::sscanf(text.substr(0, 9).c_str(), "%d", &wantedInt);  // of 32 bits
        ExpectScanned<std::int32_t>(ScanInt, {{text.substr(0, 9), {wantedInt}}});
    }
    // Very long ones are read in one go.
    const std::string zeros(1000000, '0');
    const std::string hyphens = std::string(zeros.size(), '-') + "5 6";
    ExpectScanned<std::int32_t>(ScanInt, {{"1" + zeros, {INT32_MAX, 0}}, {hyphens, {0, 6}}});
    ExpectScanned<float>(ScanFloat, {{"1" + zeros, {INFINITY}},
                                     {"1" + zeros + "e-1000000", {1.0f}},
                                     {"0." + zeros + "25e1000001", {2.5f}},
                                     {hyphens, {0.0f, 6.0f}}});
}

}  // namespace
