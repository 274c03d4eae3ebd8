#pragma once

#include "../noise.h"

#include <filesystem>
#include <vector>

// The workbench of the sound makers: samples, oscillators, filters, loops and the WAV writer. Everything is computed
// from the four operations, the square root and exact_math.h, in a fixed order, so a sound has the same bytes in every
// build.
//
// A loop is rendered by running its recipe twice around and keeping the second turn: filters, echoes and delays are
// then in the state that the end of the loop leaves them in, and the seam is as smooth as any other place.

inline constexpr int sampleRate = 44100;

/// One channel of sound; full scale is -1 to 1.
using Samples = std::vector<double>;

/// Number of samples nearest to a duration in seconds.
constexpr int samplesIn(double seconds) {
    return static_cast<int>(seconds * sampleRate + 0.5);
}

/// The factor that a level in dB stands for.
double decibels(double level);
/// From a at f = 0 to b at f = 1 with equal ratios for equal steps; for frequencies. a and b are positive.
double glide(double a, double b, double f);
/// A value within -1 to 1 that follows x closely below a half and bends softly above.
double saturate(double x);
/// White noise, -1 to 1.
double hiss(Random& random);

/// A sine wave whose frequency may change from sample to sample without a click.
class SineWave {
public:
    explicit SineWave(double startCycles = 0) : cycles(startCycles) {}
    /// The next sample at this frequency in Hz.
    double next(double hertz);

private:
    double cycles;
};

/// A two-pole filter that stays stable while its frequency is swept. After feed, low, band and high hold the three
/// outputs; band has gain 1 at the filter's frequency.
class Filter {
public:
    Filter() = default;
    Filter(double hertz, double sharpness) { tune(hertz, sharpness); }
    /// Frequency in Hz, kept between 10 and 20000, and Q (0.7: no resonance).
    void tune(double hertz, double sharpness);
    void feed(double x);

    double low = 0;
    double band = 0;
    double high = 0;

private:
    double slope = 0.1;
    double damping = 1.4;
    double firstState = 0;
    double secondState = 0;
};

/// count samples of recipe(seconds since the start).
template <class Recipe>
Samples renderOnce(int count, Recipe recipe) {
    Samples samples(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        samples[static_cast<std::size_t>(i)] = recipe(static_cast<double>(i) / sampleRate);
    return samples;
}

/// count samples of recipe(sample number) taken from its second turn around the loop.
template <class Recipe>
Samples renderLoop(int count, Recipe recipe) {
    Samples samples(static_cast<std::size_t>(count));
    for (int turn = 0; turn < 2; ++turn) {
        for (int i = 0; i < count; ++i)
            samples[static_cast<std::size_t>(i)] = recipe(i);
    }
    return samples;
}

/// White noise that repeats with the loop it is read in.
Samples loopNoise(int count, std::uint64_t seed);
/// Adds what to into, starting at sample at; what runs over the end is cut off.
void addAt(Samples& into, const Samples& what, int at, double gain);
/// As addAt, but what runs over the end goes on at the beginning.
void addAround(Samples& into, const Samples& what, int at, double gain);
/// Softens the first and the last moments (seconds), so that a sound starts and ends in silence.
void fadeEnds(Samples& samples, double in, double out);
/// Takes out what is below hearing, and any offset with it.
void cutRumble(Samples& samples);
/// Takes the mean out of a loop.
void cutOffset(Samples& samples);
/// Scales the samples so that the largest lies at level dB of full scale.
void setPeak(Samples& samples, double level);

/// Writes 16 bit PCM at 44.1 kHz with one channel for each entry, all of the same length. False with a line on stderr
/// when a sample is beyond full scale or the file cannot be written.
bool writeWav(const std::filesystem::path& file, const std::vector<Samples>& channels);
