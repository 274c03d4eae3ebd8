#include "core/text_reader.h"

#include <gtest/gtest.h>

namespace {

TEST(TextReader, ReadsItemsAcrossAnyWhiteSpace) {
    TextReader in(" 12\t-3.5e1\r\n\v name\f+7");
    int integer = 0;
    double real = 0;
    std::string text;
    EXPECT_TRUE(in.read(integer) && in.read(real) && in.read(text));
    EXPECT_EQ(integer, 12);
    EXPECT_EQ(real, -35.0);
    EXPECT_EQ(text, "name");
    EXPECT_TRUE(in.read(integer));
    EXPECT_EQ(integer, 7);
    EXPECT_TRUE(in.isAtEnd());
    EXPECT_EQ(in.line(), 2);
}

TEST(TextReader, AFailedReadLeavesItsVariableAndFailsAllLaterOnes) {
    for (const char* const bad : {"", "  ", "x", "-", "99999999999999999999", "+-1"}) {
        TextReader in(std::string(bad) + " 5");
        if (std::string(bad).find_first_not_of(' ') == std::string::npos)
            in = TextReader(bad);
        int value = 42;
        EXPECT_FALSE(in.read(value)) << bad;
        EXPECT_EQ(value, 42) << bad;
        EXPECT_FALSE(in.read(value)) << bad;
        EXPECT_TRUE(in.hasFailed());
    }
    for (const char* const bad : {"nan", "inf", "-inf", "1e999", "."}) {
        TextReader in(bad);
        float value = 42;
        EXPECT_FALSE(in.read(value)) << bad;
        EXPECT_EQ(value, 42) << bad;
    }
}

TEST(TextReader, ANumberEndsWhereItsDigitsEnd) {
    TextReader in("3.5abc");
    int integer = 0;
    double fraction = 0;
    std::string rest;
    EXPECT_TRUE(in.read(integer) && in.read(fraction) && in.read(rest));
    EXPECT_EQ(integer, 3);
    EXPECT_EQ(fraction, 0.5);
    EXPECT_EQ(rest, "abc");
}

} // namespace
