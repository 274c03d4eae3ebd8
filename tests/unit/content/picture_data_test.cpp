// What the shipped models and the font look like, as far as play depends on it.

#include "support/test_data.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace {

TEST(FontData, GlyphsStandInTheHalfOfTheirCellsThatTextShows) {
    const ShippedData data;
    std::ifstream file("textures/font.tga", std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    constexpr int side = 1024;
    constexpr int cell = side / 16;
    ASSERT_EQ(bytes.size(), 18u + 4u * side * side);
    int covered = 0;
    double inkSum = 0;
    double momentSum = 0;
    for (int code = '!'; code <= '~'; ++code) {
        for (int y = 0; y < cell; ++y) {
            for (int x = 0; x < cell; ++x) {
                const auto pixel =
                    static_cast<std::size_t>((side - 1 - (code / 16 * cell + y)) * side + code % 16 * cell + x);
                const double ink = static_cast<unsigned char>(bytes[18 + 4 * pixel]) / 255.0;
                covered += x >= cell / 2 + 2 && ink >= 0.5 ? 1 : 0;
                inkSum += ink;
                momentSum += ink * (x + 0.5);
            }
        }
    }
    EXPECT_EQ(covered, 0) << "pixels lie more than a rim deep under the next quad";
    EXPECT_NEAR(momentSum / inkSum, cell / 4.0, 4.0) << "text lies aside of where its length puts it";
}

} // namespace
