#include "settings/attribute_text.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <limits>
#include <random>
#include <vector>

namespace {

/// The text that follows the head of the block, or "none".
std::string BehindHead(const char* name, const std::string& text) {
    TextStream stream{text};
    return FindAttributeBlock(name, stream) ? text.substr(stream.position) : "none";
}

std::vector<std::int32_t> Ints(const char* text, int count) {
    std::vector<std::int32_t> values;
    for (int i = 0; i < count; i++) {
        values.push_back(ScanInt(text));
    }
    return values;
}

std::vector<float> Floats(const char* text, int count) {
    std::vector<float> values;
    for (int i = 0; i < count; i++) {
        values.push_back(ScanFloat(text));
    }
    return values;
}

TEST(AttributeBlock, BeginsAtItsNameAndABrace) {
    EXPECT_EQ(BehindHead("Box", "Box{1"), "1");
    EXPECT_EQ(BehindHead("Box", "Box  \n\n {1"), "1");
    EXPECT_EQ(BehindHead("Box", "a Box in a list, a Box [1] and Box {2"), "2");
    EXPECT_EQ(BehindHead("Box", "RedBox {1} Box {2"), "1} Box {2");
    EXPECT_EQ(BehindHead("Box", "Box\t{1"), "none");
    EXPECT_EQ(BehindHead("Box", "box {1"), "none");
    EXPECT_EQ(BehindHead("Box", "Box1 {1"), "none");
    EXPECT_EQ(BehindHead("Box", "Box"), "none");
    EXPECT_EQ(BehindHead("Box", ""), "none");
}

TEST(AttributeBlock, IsMissedWhereTheSearchHasJustFailed) {
    // The character that breaks a match begins no other one.
    EXPECT_EQ(BehindHead("GLOBALS", "GGLOBALS {1"), "none");
    EXPECT_EQ(BehindHead("GLOBALS", "G GLOBALS {1"), "1");
    // And what stands where the brace should is lost to the next search.
    EXPECT_EQ(BehindHead("Box", "Box Box {1"), "none");
    EXPECT_EQ(BehindHead("Box", "Box, Box {1"), "1");
}

TEST(AttributeBlock, WithALetterBeyondAsciiIsNeverFound) {
    EXPECT_EQ(BehindHead("\xC8"
                         "lun",
                         "\xC8lun {1"),
              "none");
    EXPECT_EQ(BehindHead("lun", "\xC8lun {1"), "1");
}

TEST(AttributeBlock, WithoutANameIsTheFirstBrace) {
    EXPECT_EQ(BehindHead("", "Box {1} Ball {2"), "1} Ball {2");
    EXPECT_EQ(BehindHead("", "no brace at all"), "none");
    EXPECT_EQ(BehindHead("", ""), "none");
}

TEST(AttributeBlock, EndsAtTheBraceThatClosesIt) {
    TextStream stream{"Box {a {b} c} d"};
    bool closed = false;
    ASSERT_TRUE(FindAttributeBlock("Box", stream));
    EXPECT_EQ(ReadAttributeBlock(stream, &closed), "a {b} c}");
    EXPECT_TRUE(closed);
    EXPECT_EQ(stream.Read(), ' ');

    TextStream fromTheStart{"x {y} z } w"};
    EXPECT_EQ(ReadAttributeBlock(fromTheStart), "x {y} z }");
}

TEST(AttributeBlock, WithoutClosingBraceReachesToTheEnd) {
    TextStream stream{"a {b} c"};
    bool closed = true;
    EXPECT_EQ(ReadAttributeBlock(stream, &closed), "a {b} c");
    EXPECT_FALSE(closed);
}

TEST(Keys, ComeOnceEachInTheOrderOfTheText) {
    std::string text = "*A 1 *B 2 A 3 {*A 4} *AB 5 *A*A 6";
    std::vector<std::int32_t> values;
    ForEachKey(text, "*A", [&](const char* cursor) { values.push_back(ScanInt(cursor)); });
    EXPECT_EQ(values, (std::vector<std::int32_t>{1, 4, 5, 6, 6}));
    EXPECT_EQ(text, "+A 1 *B 2 A 3 {+A 4} +AB 5 +A+A 6");

    std::size_t from = 0;
    EXPECT_EQ(NextKey(text, "*A", from), nullptr);
    EXPECT_NE(NextKey(text, "*B", from), nullptr) << "an unsuccessful search moves nothing";
}

TEST(ScanInt, TakesTheNextNumberWhateverStandsBetween) {
    EXPECT_EQ(Ints("640x480,16", 3), (std::vector<std::int32_t>{640, 480, 16}));
    EXPECT_EQ(Ints("\n*PLAYERCOUNT 2", 1), (std::vector<std::int32_t>{2}));
    EXPECT_EQ(Ints("2.5", 2), (std::vector<std::int32_t>{2, 5}));
    EXPECT_EQ(Ints("3-4 7", 2), (std::vector<std::int32_t>{3, 7}));
    EXPECT_EQ(Ints("+5 -6", 2), (std::vector<std::int32_t>{5, -6}));
}

TEST(ScanInt, GivesZeroWhereThereIsNoNumber) {
    EXPECT_EQ(Ints("none", 2), (std::vector<std::int32_t>{0, 0}));
    EXPECT_EQ(Ints("- 5 --6 7", 4), (std::vector<std::int32_t>{0, 5, 0, 7}));
    const char* text = "none";
    ScanInt(text);
    EXPECT_EQ(*text, '\0');
}

TEST(ScanInt, GivesTheNearestValueBeyond32Bits) {
    EXPECT_EQ(Ints("2147483647 2147483648 -2147483648 -2147483649 99999999999999999999", 5),
              (std::vector<std::int32_t>{INT32_MAX, INT32_MAX, INT32_MIN, INT32_MIN, INT32_MAX}));
}

TEST(ScanFloat, BeginsWithADigitOrAHyphen) {
    EXPECT_EQ(Floats(".5 0.5 -.5", 3), (std::vector<float>{5.0f, 0.5f, -0.5f}));
    EXPECT_EQ(Floats("1e5 2", 3), (std::vector<float>{100000.0f, 5.0f, 2.0f}));
    EXPECT_EQ(Floats("1e-5", 2), (std::vector<float>{0.00001f, -5.0f}));
    EXPECT_EQ(Floats("1.5-2.5 3", 2), (std::vector<float>{1.5f, 3.0f}));
    EXPECT_EQ(Floats("- 5", 2), (std::vector<float>{0.0f, 5.0f}));
    EXPECT_EQ(Floats("--5 6", 2), (std::vector<float>{0.0f, 6.0f}));
    EXPECT_EQ(Floats("0x57", 2), (std::vector<float>{0.0f, 57.0f}));
    EXPECT_EQ(Floats("-inf -nan -0x8 4", 4), (std::vector<float>{0.0f, 0.0f, 0.0f, 8.0f}));
    EXPECT_EQ(Floats("none", 1), (std::vector<float>{0.0f}));
}

TEST(ScanFloat, GoesToInfinityAndToZeroBeyondItsRange) {
    const float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(Floats("1e39 ", 1), (std::vector<float>{infinity}));
    EXPECT_EQ(Floats("-1e99999999999999999999 ", 1), (std::vector<float>{-infinity}));
    EXPECT_EQ(Floats("1e-99999999999999999999 ", 1), (std::vector<float>{0.0f}));
    EXPECT_EQ(Floats("3.40282347e38", 1), (std::vector<float>{std::numeric_limits<float>::max()}));
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
        const char* cursor = text.c_str();
        EXPECT_EQ(ScanFloat(cursor), wantedFloat) << text;

        int wantedInt = 0;
        std::sscanf(text.substr(0, 9).c_str(), "%d", &wantedInt);
        const std::string shortText = text.substr(0, 9);  // of 32 bits
        cursor = shortText.c_str();
        EXPECT_EQ(ScanInt(cursor), wantedInt) << text;
    }
}

TEST(Scanners, ReadVeryLongRunsInOneGo) {
    const std::size_t million = 1000000;
    const std::string digits = "1" + std::string(million, '0');
    const std::string hyphens = std::string(million, '-') + "5 6";
    EXPECT_EQ(Ints(digits.c_str(), 2), (std::vector<std::int32_t>{INT32_MAX, 0}));
    EXPECT_EQ(Floats(digits.c_str(), 1), (std::vector<float>{std::numeric_limits<float>::infinity()}));
    EXPECT_EQ(Floats((digits + "e-1000000").c_str(), 1), (std::vector<float>{1.0f}));
    EXPECT_EQ(Floats(("0." + std::string(million, '0') + "25e1000001").c_str(), 1),
              (std::vector<float>{2.5f}));
    EXPECT_EQ(Ints(hyphens.c_str(), 2), (std::vector<std::int32_t>{0, 6}));
    EXPECT_EQ(Floats(hyphens.c_str(), 2), (std::vector<float>{0.0f, 6.0f}));
}

TEST(ScanName, TakesLettersDigitsPointsAndBackslashes) {
    EXPECT_EQ(ScanName(" data\\scene1.bin *SAFE"), "data\\scene1.bin");
    EXPECT_EQ(ScanName("\n\"2nd.tga\""), "2nd.tga");
    EXPECT_EQ(ScanName("Courier New"), "Courier");
    EXPECT_EQ(ScanName("my_scene.bin"), "my");
    EXPECT_EQ(ScanName("..\\up.bin"), "up.bin");
    EXPECT_EQ(ScanName("a\xC8z"), "a");
    EXPECT_EQ(ScanName("\xC8z"), "z");
    EXPECT_EQ(ScanName(" ._\\*"), "");
    EXPECT_EQ(ScanName(std::string(500, 'a').c_str()), std::string(199, 'a'));
}

}  // namespace
