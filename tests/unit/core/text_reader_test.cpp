#include "core/base/text_reader.h"

#include "core/base/data_limits.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

TEST(TextReader, ReadsItemsAcrossAnyWhiteSpaceAndNumbersUpToTheirEnd) {
    TextReader in(" 12\t-3.5e1\r\n\v name\f+7.25abc");
    int integer = 0;
    double real = 0;
    std::string text;
    EXPECT_TRUE(in.read(integer) && in.read(real) && in.read(text));
    EXPECT_EQ(integer, 12);
    EXPECT_EQ(real, -35.0);
    EXPECT_EQ(text, "name");
    EXPECT_TRUE(in.read(integer) && in.read(real) && in.read(text));
    EXPECT_EQ(integer, 7);
    EXPECT_EQ(real, 0.25);
    EXPECT_EQ(text, "abc");
    EXPECT_TRUE(in.isAtEnd());
    EXPECT_EQ(in.line(), 2);
}

TEST(TextReader, AFailedReadLeavesItsVariableAndFailsAllLaterOnes) {
    const auto expectFailure = [](const std::string& text, auto value) {
        TextReader in(text);
        const auto before = value;
        EXPECT_FALSE(in.read(value)) << text;
        EXPECT_FALSE(in.read(value)) << text;
        EXPECT_EQ(value, before) << text;
        EXPECT_TRUE(in.hasFailed());
    };
    for (const char* const bad : {"", "  ", "x 5", "- 5", "99999999999999999999 5", "+-1 5", "+ 5"})
        expectFailure(bad, 42);
    for (const char* const bad : {"nan 5", "inf 5", "-inf 5", "1e999 5", ". 5"})
        expectFailure(bad, 42.0f);
    std::string name;
    EXPECT_TRUE(TextReader(std::string(longestName, 'n')).read(name));
    expectFailure(std::string(longestName + 1, 'n'), name);
}

TEST(TextReader, WhatIsTooCloseToZeroIsZero) {
    const std::string zeros(400, '0');
    for (const std::string& tiny : std::vector<std::string>{"1e-400", "-0." + zeros + "7", "1e-99999999999999999999",
                                                            "0." + zeros + "1e+3", "12345.6E-0700"}) {
        double value = 1.0;
        EXPECT_TRUE(TextReader(tiny).read(value)) << tiny;
        EXPECT_EQ(value, 0.0) << tiny;
    }
    for (const std::string& huge : std::vector<std::string>{"1e400", "70" + zeros, "1e99999999999999999999",
                                                            "70" + zeros + "e-3", "0.001e+0700"}) {
        double value = 1.0;
        TextReader in(huge);
        EXPECT_FALSE(in.read(value)) << huge;
        EXPECT_TRUE(in.getFault().text.ends_with("is too large")) << in.getFault().text;
    }
}

} // namespace
