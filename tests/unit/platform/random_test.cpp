#include "platform/crt_random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

TEST(Random, TheSeedDecidesAStreamThatReachesBothEndsOfItsRange) {
    const auto stream = [](unsigned seed) {
        crtSrand(seed);
        std::vector<int> numbers;
        for (int i = 0; i < 500000; ++i)
            numbers.push_back(crtRand());
        const auto [least, greatest] = std::minmax_element(numbers.begin(), numbers.end());
        EXPECT_EQ(*least, 0);
        EXPECT_EQ(*greatest, 32767);
        return numbers;
    };
    const auto first = stream(42);
    EXPECT_NE(stream(43), first);
    EXPECT_EQ(stream(42), first);
}
