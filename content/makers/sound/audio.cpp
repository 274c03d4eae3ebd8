#include "audio.h"

#include "../exact_math.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>

namespace {

void appendLittleEndian(std::string& bytes, std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i)
        bytes.push_back(static_cast<char>((value >> (8 * i)) & 0xff));
}

std::string wavHeader(std::uint32_t channels, std::uint32_t dataSize) {
    std::string bytes = "RIFF";
    appendLittleEndian(bytes, 36 + dataSize, 4);
    bytes += "WAVEfmt ";
    appendLittleEndian(bytes, 16, 4);
    appendLittleEndian(bytes, 1, 2); // PCM
    appendLittleEndian(bytes, channels, 2);
    appendLittleEndian(bytes, sampleRate, 4);
    appendLittleEndian(bytes, sampleRate * channels * 2, 4);
    appendLittleEndian(bytes, channels * 2, 2);
    appendLittleEndian(bytes, 16, 2);
    bytes += "data";
    appendLittleEndian(bytes, dataSize, 4);
    return bytes;
}

} // namespace

double decibels(double level) {
    return exponential(level * 0.11512925464970229);
}

double glide(double a, double b, double f) {
    // The logarithm of the ratio, found by Newton's method on the exponential.
    const double ratio = b / a;
    double logarithm = 0;
    for (int step = 0; step < 40; ++step) {
        const double power = exponential(logarithm);
        logarithm += 2 * (ratio - power) / (ratio + power);
    }
    return a * exponential(logarithm * f);
}

double saturate(double x) {
    const double size = std::fabs(x);
    if (size <= 0.5)
        return x;
    const double bent = 1 - 0.25 / size;
    return x < 0 ? -bent : bent;
}

double hiss(Random& random) {
    return random.range(-1, 1);
}

double SineWave::next(double hertz) {
    const double value = sine(2 * pi * cycles);
    cycles += hertz / sampleRate;
    cycles -= std::floor(cycles);
    return value;
}

void Filter::tune(double hertz, double sharpness) {
    const double angle = pi * clamp(hertz, 10, 20000) / sampleRate;
    slope = sine(angle) / cosine(angle);
    damping = 1 / sharpness;
}

void Filter::feed(double x) {
    const double share = 1 / (1 + slope * (slope + damping));
    high = (x - (damping + slope) * firstState - secondState) * share;
    const double plainBand = slope * high + firstState;
    firstState = slope * high + plainBand;
    low = slope * plainBand + secondState;
    secondState = slope * plainBand + low;
    band = plainBand * damping;
}

Samples loopNoise(int count, std::uint64_t seed) {
    Random random(seed);
    Samples noise(static_cast<std::size_t>(count));
    for (double& sample : noise)
        sample = hiss(random);
    return noise;
}

void addAt(Samples& into, const Samples& what, int at, double gain) {
    const std::size_t start = static_cast<std::size_t>(at);
    for (std::size_t i = 0; i < what.size() && start + i < into.size(); ++i)
        into[start + i] += gain * what[i];
}

void addAround(Samples& into, const Samples& what, int at, double gain) {
    const int length = static_cast<int>(into.size());
    std::size_t place = static_cast<std::size_t>((at % length + length) % length);
    for (const double sample : what) {
        into[place] += gain * sample;
        if (++place == into.size())
            place = 0;
    }
}

void fadeEnds(Samples& samples, double in, double out) {
    const double last = static_cast<double>(samples.size()) - 1;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double fromStart = static_cast<double>(i) / sampleRate;
        const double toEnd = (last - static_cast<double>(i)) / sampleRate;
        samples[i] *= smoothStep(0, in, fromStart) * smoothStep(0, out, toEnd);
    }
}

void cutRumble(Samples& samples) {
    Filter filter(22, 0.7);
    for (double& sample : samples) {
        filter.feed(sample);
        sample = filter.high;
    }
}

void cutOffset(Samples& samples) {
    double sum = 0;
    for (const double sample : samples)
        sum += sample;
    const double mean = sum / static_cast<double>(samples.size());
    for (double& sample : samples)
        sample -= mean;
}

void setPeak(Samples& samples, double level) {
    double peak = 0;
    for (const double sample : samples)
        peak = std::max(peak, std::fabs(sample));
    if (peak == 0)
        return;
    const double gain = decibels(level) / peak;
    for (double& sample : samples)
        sample *= gain;
}

bool writeWav(const std::filesystem::path& file, const std::vector<Samples>& channels) {
    const std::size_t frames = channels.front().size();
    const auto channelCount = static_cast<std::uint32_t>(channels.size());
    std::string bytes = wavHeader(channelCount, static_cast<std::uint32_t>(frames) * channelCount * 2);
    for (std::size_t i = 0; i < frames; ++i) {
        for (const Samples& channel : channels) {
            if (!(std::fabs(channel[i]) <= 1)) {
                std::fprintf(stderr, "%s: sample %zu is beyond full scale\n", file.string().c_str(), i);
                return false;
            }
            const int value = static_cast<int>(std::floor(channel[i] * 32767 + 0.5));
            appendLittleEndian(bytes, static_cast<std::uint32_t>(value), 2);
        }
    }
    std::ofstream out(file, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out)
        std::fprintf(stderr, "%s: cannot be written\n", file.string().c_str());
    return static_cast<bool>(out);
}
