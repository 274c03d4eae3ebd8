#include "instruments.h"

#include "../exact_math.h"

#include <cmath>
#include <map>

namespace {

constexpr int tableSize = 2048;

/// One period of a free reed: strong odd harmonics and a bulge near 1.4 kHz, nothing near half the sampling rate.
Samples reedTable(double hertz) {
    Samples table(tableSize);
    for (int n = 1; n * hertz < 9000 && n <= 40; ++n) {
        const double distance = (n * hertz - 1400) / 900;
        const double level =
            ((n & 1) ? 1 : 0.55) / (n * std::sqrt(n * 0.6)) * (1 + 1.5 * exponential(-distance * distance));
        for (int i = 0; i < tableSize; ++i) {
            const double turn = static_cast<double>(n * i % tableSize) / tableSize;
            table[static_cast<std::size_t>(i)] += level * sine(2 * pi * turn + 0.7 * n * n);
        }
    }
    setPeak(table, 0);
    return table;
}

const Samples& reedTableOf(int note) {
    static std::map<int, Samples> tables;
    const auto found = tables.find(note);
    return found != tables.end() ? found->second : tables.emplace(note, reedTable(noteHertz(note))).first->second;
}

/// Reads a period at any speed, interpolating between its points.
class TableWave {
public:
    TableWave(const Samples& period, double startCycles) : table(period), cycles(startCycles) {}
    double next(double hertz) {
        const double place = cycles * tableSize;
        const auto index = static_cast<std::size_t>(place);
        const double f = place - static_cast<double>(index);
        const double value = mix(table[index], table[(index + 1) % tableSize], f);
        cycles += hertz / sampleRate;
        cycles -= std::floor(cycles);
        return value;
    }

private:
    const Samples& table;
    double cycles;
};

double fall(double t, double seconds) {
    return exponential(-t / seconds);
}

} // namespace

double noteHertz(int note) {
    return 440 * exponential((note - 69) * 0.05776226504666211);
}

Samples whistleNote(int note, double seconds, double level, bool cut, std::uint64_t seed) {
    constexpr double release = 0.07;
    const double hertz = noteHertz(note);
    Random random(seed);
    SineWave fundamental(random.unit());
    SineWave second(random.unit());
    SineWave third(random.unit());
    SineWave waver(random.unit());
    Filter breath(hertz, 5);
    Filter edge(hertz * 2.2, 2);
    const double rate = random.range(4.9, 5.6);
    return renderOnce(samplesIn(seconds + release), [&](double t) {
        const double held = smoothStep(0.22, 0.5, t);
        const double bend = 1 - 0.022 * fall(t, 0.028) + 0.0065 * held * waver.next(rate);
        const double grace = cut && t < 0.042 ? 1.1225 : 1;
        const double pitch = hertz * bend * grace;
        const double noise = hiss(random);
        breath.feed(noise);
        edge.feed(noise);
        const double open = smoothStep(0, 0.04, t) * smoothStep(seconds + release, seconds - 0.02, t);
        const double tone = fundamental.next(pitch) + (0.16 + 0.16 * level) * second.next(2 * pitch) +
                            (0.03 + 0.09 * level) * third.next(3 * pitch);
        const double air = 0.5 * breath.band + 0.3 * edge.band * (0.25 + fall(t, 0.03));
        const double swell = 0.86 + 0.14 * smoothStep(0, 0.25, t);
        return level * open * (0.55 * tone * swell + 0.22 * air);
    });
}

Samples concertinaNote(int note, double seconds, double level, std::uint64_t seed) {
    constexpr double release = 0.09;
    const double hertz = noteHertz(note);
    Random random(seed);
    TableWave first(reedTableOf(note), random.unit());
    TableWave second(reedTableOf(note), random.unit());
    Filter box(glide(2200, 5200, level), 0.7);
    return renderOnce(samplesIn(seconds + release), [&](double t) {
        // The reed starts a shade flat while the bellows take hold.
        const double bend = 1 - 0.006 * fall(t, 0.03);
        const double reeds = first.next(hertz * bend * 0.9985) + 0.85 * second.next(hertz * bend * 1.0021);
        const double open = smoothStep(0, 0.035, t) * smoothStep(seconds + release, seconds - 0.02, t);
        const double bellows = 0.82 + 0.18 * sine(pi * clamp(t / seconds, 0, 1));
        box.feed(reeds * open * bellows);
        return 0.42 * level * box.low;
    });
}

Samples pluckedNote(int note, double seconds, double level, double bright, std::uint64_t seed) {
    const double period = sampleRate / noteHertz(note);
    // The averaging in the feedback delays by half a sample; the rest of the period is a line read between its samples.
    const double delay = period - 0.5;
    const int whole = static_cast<int>(delay);
    const double part = delay - whole;
    Random random(seed);
    Samples line(static_cast<std::size_t>(whole) + 1);
    Filter finger(glide(700, 7000, bright * (0.6 + 0.4 * level)), 0.7);
    for (double& sample : line) {
        finger.feed(hiss(random));
        sample = finger.low;
    }
    cutOffset(line);
    setPeak(line, 0);
    // Plucking a fifth along the string silences every fifth harmonic.
    const auto size = line.size();
    const auto fifth = static_cast<std::size_t>(period * 0.2);
    Samples shaped = line;
    for (std::size_t i = 0; i < size; ++i)
        shaped[i] -= line[(i + size - fifth) % size];
    line = shaped;

    const double keep = exponential(-6.9 * period / (sampleRate * mix(2.2, 3.4, bright)));
    Filter belly(210, 1.5);
    Filter body(480, 1.2);
    std::size_t place = 0;
    double before = 0;
    Samples samples = renderOnce(samplesIn(seconds), [&](double) {
        const std::size_t oldest = (place + 1) % size;
        const double out = mix(line[oldest], line[place], part);
        const double next = keep * 0.5 * (out + before);
        before = out;
        line[place] = next;
        place = oldest;
        belly.feed(out);
        body.feed(out);
        return level * (0.30 * out + 0.34 * belly.band + 0.26 * body.band);
    });
    fadeEnds(samples, 0.0015, std::fmin(0.06, seconds * 0.3));
    return samples;
}

Samples drumStroke(bool low, double level, std::uint64_t seed) {
    Random random(seed);
    SineWave skin(0.1);
    SineWave ring(0.3);
    Filter slap(low ? 700 : 1700, 0.9);
    const double hertz = low ? 72 : 118;
    Samples samples = renderOnce(samplesIn(low ? 0.5 : 0.28), [&](double t) {
        slap.feed(hiss(random));
        const double tone = skin.next(hertz * (1 + 0.45 * fall(t, 0.03))) * fall(t, low ? 0.14 : 0.07) +
                            0.35 * ring.next(hertz * 1.59) * fall(t, 0.06);
        return level * (0.8 * tone + 0.6 * slap.band * fall(t, low ? 0.010 : 0.016));
    });
    fadeEnds(samples, 0.001, 0.08);
    return samples;
}

Samples shakerStroke(double level, std::uint64_t seed) {
    Random random(seed);
    Filter peas(5600, 1.1);
    return renderOnce(samplesIn(0.11), [&](double t) {
        peas.feed(hiss(random));
        return level * peas.band * smoothStep(0, 0.016, t) * fall(t, 0.028) * smoothStep(0.11, 0.07, t);
    });
}

Samples stompStroke(double level, std::uint64_t seed) {
    Random random(seed);
    SineWave deck(0.1);
    SineWave buckle;
    SineWave buckleAbove;
    Filter plank(260, 2);
    Samples samples = renderOnce(samplesIn(0.4), [&](double t) {
        plank.feed(hiss(random));
        const double clink = (buckle.next(3140) + 0.7 * buckleAbove.next(4530)) * fall(t, 0.045) * 0.05;
        return level *
               (0.7 * deck.next(58 + 45 * fall(t, 0.02)) * fall(t, 0.1) + 1.1 * plank.band * fall(t, 0.03) + clink);
    });
    fadeEnds(samples, 0.0015, 0.1);
    return samples;
}
