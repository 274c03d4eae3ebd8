// Prints what a recording of raw 16-bit stereo at 44.1 kHz holds: its length in ms, then the level of every tenth of a
// second in thousandths of full scale. Usage: sound_levels FILE

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <vector>

namespace {

constexpr std::size_t samplesPerSecond = 44100 * 2;
constexpr std::size_t samplesPerStretch = samplesPerSecond / 10;

int levelOf(const std::vector<std::int16_t>& samples, std::size_t begin) {
    double sum = 0.0;
    for (std::size_t i = begin; i < begin + samplesPerStretch; ++i)
        sum += static_cast<double>(samples[i]) * static_cast<double>(samples[i]);
    return static_cast<int>(std::sqrt(sum / static_cast<double>(samplesPerStretch)) / 32768.0 * 1000.0);
}

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        std::cerr << "sound_levels: one file is wanted\n";
        return 2;
    }
    std::ifstream file(arguments[1], std::ios::binary);
    std::vector<std::int16_t> samples;
    for (std::int16_t sample = 0; file.read(reinterpret_cast<char*>(&sample), sizeof sample);)
        samples.push_back(sample);
    std::cout << samples.size() * 1000 / samplesPerSecond << '\n';
    for (std::size_t begin = 0; begin + samplesPerStretch <= samples.size(); begin += samplesPerStretch)
        std::cout << levelOf(samples, begin) << '\n';
}
