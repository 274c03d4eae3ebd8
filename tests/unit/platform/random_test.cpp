#include "platform/crt_random.h"

#include <gtest/gtest.h>

#include <vector>

TEST(Random, StaysWithinItsRangeAndReachesBothEnds) {
    crtSrand(1);
    int least = crtRandMax;
    int greatest = 0;
    for (int i = 0; i < 500000; ++i) {
        const int number = crtRand();
        ASSERT_GE(number, 0);
        ASSERT_LE(number, 32767);
        least = std::min(least, number);
        greatest = std::max(greatest, number);
    }
    EXPECT_EQ(least, 0);
    EXPECT_EQ(greatest, 32767);
}

TEST(Random, TheSeedDecidesTheStream) {
    const auto stream = [](unsigned seed) {
        crtSrand(seed);
        std::vector<int> numbers;
        for (int i = 0; i < 16; ++i)
            numbers.push_back(crtRand());
        return numbers;
    };
    const auto first = stream(42);
    EXPECT_NE(stream(43), first);
    EXPECT_EQ(stream(42), first);
}
