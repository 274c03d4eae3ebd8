// Figures of screenshots, for the scripts that judge them. Pictures are binary PPM files of 8 bits a channel.
//
//   measure_picture colour FILE X Y             the pixel there: "red green blue", 0 to 255 each
//   measure_picture share FILE COLOUR [REGION]  per mille of the pixels that are of the colour, in the picture or a
//                                               region WIDTHxHEIGHT+X+Y of it; pixels are means of four by four
//   measure_picture difference FILE FILE        mean difference of two pictures' brightness, per mille of full scale
//
// A colour is a list of conditions that all hold, each of a channel, < or >, and a number from 0 to 1 or a channel with
// a factor before it: "r>0.8 b<0.45" is a strong yellow to red, "g>1.2r" a green. Ends with 2 and a sentence when that
// or a file cannot be read.

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

/// Red, green and blue, from 0 to 1.
using Pixel = std::array<double, 3>;

struct Picture {
    int width = 0;
    int height = 0;
    std::vector<unsigned char> bytes;

    Pixel at(int x, int y) const {
        const std::size_t first =
            (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)) * 3;
        return {bytes[first] / 255.0, bytes[first + 1] / 255.0, bytes[first + 2] / 255.0};
    }
};

struct Region {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// One comparison of a channel with a limit plus a multiple of a channel.
struct Condition {
    std::size_t channel = 0;
    bool above = false;
    std::size_t otherChannel = 0;
    double factor = 0;
    double limit = 0;

    bool holds(const Pixel& pixel) const {
        const double other = limit + factor * pixel[otherChannel];
        return above ? pixel[channel] > other : pixel[channel] < other;
    }
};

/// Next number of a PPM header, behind blanks and comments.
int headerNumber(std::istream& file) {
    while (file >> std::ws && file.peek() == '#')
        file.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    int number = -1;
    file >> number;
    return number;
}

Picture readPicture(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string magic;
    file >> magic;
    Picture picture;
    picture.width = headerNumber(file);
    picture.height = headerNumber(file);
    const int scale = headerNumber(file);
    file.get();
    constexpr int largest = 1 << 14;
    if (!file || magic != "P6" || scale != 255 || picture.width < 1 || picture.height < 1 || picture.width > largest ||
        picture.height > largest)
        throw std::runtime_error(path + ": no PPM picture of 8 bits a channel");
    picture.bytes.resize(static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height) * 3);
    if (!file.read(reinterpret_cast<char*>(picture.bytes.data()), static_cast<std::streamsize>(picture.bytes.size())))
        throw std::runtime_error(path + ": the picture breaks off");
    return picture;
}

/// Channel that the letter names; throws when it names none.
std::size_t channelNamed(char letter, const std::string& text) {
    const std::size_t channel = std::string("rgb").find(letter);
    if (channel == std::string::npos)
        throw std::runtime_error("no condition on a colour: " + text);
    return channel;
}

Condition parseCondition(const std::string& text) {
    if (text.size() < 3 || (text[1] != '<' && text[1] != '>'))
        throw std::runtime_error("no condition on a colour: " + text);
    Condition condition;
    condition.channel = channelNamed(text[0], text);
    condition.above = text[1] == '>';
    std::string rest = text.substr(2);
    const bool relative = std::string("rgb").find(rest.back()) != std::string::npos;
    if (relative) {
        condition.otherChannel = channelNamed(rest.back(), text);
        rest.pop_back();
    }
    std::size_t used = 0;
    double number = 1;
    if (!relative || !rest.empty())
        number = std::stod(rest, &used);
    if (used != rest.size())
        throw std::runtime_error("no condition on a colour: " + text);
    (relative ? condition.factor : condition.limit) = number;
    return condition;
}

std::vector<Condition> parseColour(const std::string& text) {
    std::vector<Condition> conditions;
    std::istringstream words(text);
    for (std::string word; words >> word;)
        conditions.push_back(parseCondition(word));
    if (conditions.empty())
        throw std::runtime_error("a colour without a condition");
    return conditions;
}

Region parseRegion(const std::string& text, const Picture& picture) {
    Region region;
    char end = 0;
    if (std::sscanf(text.c_str(), "%dx%d+%d+%d%c", &region.width, &region.height, &region.x, &region.y, &end) != 4 ||
        region.width < 4 || region.height < 4 || region.x < 0 || region.y < 0 ||
        region.width > picture.width - region.x || region.height > picture.height - region.y)
        throw std::runtime_error("no region of that picture: " + text);
    return region;
}

/// Mean of the four by four pixels from (x, y) on.
Pixel blockMean(const Picture& picture, int x, int y) {
    Pixel sum{};
    for (int i = 0; i < 16; ++i) {
        const Pixel pixel = picture.at(x + i % 4, y + i / 4);
        for (std::size_t c = 0; c < 3; ++c)
            sum[c] += pixel[c] / 16;
    }
    return sum;
}

bool isOf(const std::vector<Condition>& colour, const Pixel& pixel) {
    for (const Condition& condition : colour) {
        if (!condition.holds(pixel))
            return false;
    }
    return true;
}

long perMille(double share) {
    return std::lround(1000 * share);
}

long share(const Picture& picture, const std::vector<Condition>& colour, const Region& region) {
    long found = 0;
    long blocks = 0;
    for (int y = region.y; y + 4 <= region.y + region.height; y += 4) {
        for (int x = region.x; x + 4 <= region.x + region.width; x += 4) {
            found += isOf(colour, blockMean(picture, x, y)) ? 1 : 0;
            ++blocks;
        }
    }
    return perMille(static_cast<double>(found) / static_cast<double>(blocks));
}

long difference(const Picture& a, const Picture& b) {
    if (a.width != b.width || a.height != b.height)
        throw std::runtime_error("the pictures differ in size");
    // How much red, green and blue add to brightness (ITU-R BT.709).
    constexpr Pixel weight{0.2126, 0.7152, 0.0722};
    double sum = 0;
    for (std::size_t i = 0; i < a.bytes.size(); ++i)
        sum += weight[i % 3] * std::abs(a.bytes[i] - b.bytes[i]) / 255.0;
    return perMille(3 * sum / static_cast<double>(a.bytes.size()));
}

/// What is asked for in the arguments; throws when they make no sense.
void answer(const std::vector<std::string>& arguments) {
    const std::string what = arguments.empty() ? "" : arguments[0];
    const std::size_t count = arguments.size();
    if (what == "colour" && count == 4) {
        const Picture picture = readPicture(arguments[1]);
        const int x = std::stoi(arguments[2]);
        const int y = std::stoi(arguments[3]);
        if (x < 0 || y < 0 || x >= picture.width || y >= picture.height)
            throw std::runtime_error("no pixel of that picture");
        const Pixel pixel = picture.at(x, y);
        std::printf("%.0f %.0f %.0f\n", pixel[0] * 255, pixel[1] * 255, pixel[2] * 255);
    } else if (what == "share" && (count == 3 || count == 4)) {
        const Picture picture = readPicture(arguments[1]);
        const Region whole{0, 0, picture.width, picture.height};
        std::printf("%ld\n",
                    share(picture, parseColour(arguments[2]), count == 4 ? parseRegion(arguments[3], picture) : whole));
    } else if (what == "difference" && count == 3) {
        std::printf("%ld\n", difference(readPicture(arguments[1]), readPicture(arguments[2])));
    } else {
        throw std::runtime_error(
            "usage: measure_picture colour FILE X Y | share FILE COLOUR [REGION] | difference FILE FILE");
    }
}

} // namespace

int main(int argc, char** argv) {
    try {
        answer({argv + 1, argv + argc});
    } catch (const std::exception& fault) {
        std::cerr << "measure_picture: " << fault.what() << '\n';
        return 2;
    }
}
