#include "effects.h"

#include "../exact_math.h"

#include <array>
#include <cmath>

namespace {

/// A level that falls to a third every seconds.
double decay(double t, double seconds) {
    return t < 0 ? 0 : exponential(-t / seconds);
}

/// A click of filtered noise: a stone, a spark, a latch.
Samples grain(double hertz, double sharpness, double length, std::uint64_t seed) {
    Random random(seed);
    Filter filter(hertz, sharpness);
    Samples samples = renderOnce(samplesIn(length * 6), [&](double t) {
        filter.feed(hiss(random));
        return filter.band * decay(t, length);
    });
    fadeEnds(samples, 0.0002, length);
    setPeak(samples, 0);
    return samples;
}

/// A drop of liquid: a tone that slides upwards and is gone.
Samples bubble(double fromHertz, double toHertz, double length) {
    SineWave wave;
    Samples samples = renderOnce(samplesIn(length), [&](double t) {
        const double f = t / length;
        return wave.next(mix(fromHertz, toHertz, f * f)) * decay(f, 0.4);
    });
    fadeEnds(samples, 0.003, length * 0.4);
    return samples;
}

/// One step: mud pressed aside by a resonance that opens and closes, torn by fast flutter.
Samples squelch(double pitch, std::uint64_t seed) {
    constexpr double whole = 0.3;
    Random random(seed);
    Filter mouth;
    Filter cheeks;
    SineWave flutter;
    Samples samples = renderOnce(samplesIn(whole), [&](double t) {
        const double f = t / whole;
        const double opening = sine(pi * f);
        const double noise = hiss(random);
        mouth.tune(pitch * (0.55 + 1.9 * opening * opening), 5);
        mouth.feed(noise);
        cheeks.tune(pitch * (3.6 - 1.8 * f), 3);
        cheeks.feed(noise);
        const double torn = 0.62 + 0.38 * flutter.next(mix(46, 24, f));
        const double press = smoothStep(0, 0.09, f) * (1 - 0.75 * smoothStep(0.12, 0.42, f)) +
                             0.7 * smoothStep(0.45, 0.62, f) * smoothStep(0.98, 0.7, f);
        return saturate((4.2 * mouth.band + 1.1 * cheeks.band) * torn * press);
    });
    for (int i = 0; i < 4; ++i) {
        const double from = random.range(280, 520);
        const double rise = random.range(1.7, 2.6);
        const double length = random.range(0.025, 0.05);
        const double when = random.range(0.03, 0.22);
        addAt(samples, bubble(from, from * rise, length), samplesIn(when), 0.35);
    }
    fadeEnds(samples, 0.004, 0.03);
    return samples;
}

/// A bell with the partials of a small bar, quivering.
Samples bell(double hertz, double length, double quiver) {
    std::array<SineWave, 4> waves;
    constexpr std::array<double, 4> ratio = {1, 2.01, 2.76, 5.4};
    constexpr std::array<double, 4> level = {1, 0.5, 0.3, 0.14};
    SineWave tremor(0.25);
    return renderOnce(samplesIn(length), [&](double t) {
        double sum = 0;
        for (std::size_t i = 0; i < waves.size(); ++i)
            sum += level[i] * waves[i].next(hertz * ratio[i]) *
                   decay(t, length * 0.3 / (1 + 0.5 * static_cast<double>(i)));
        const double fade = smoothStep(0, 0.006, t) * smoothStep(length, length * 0.7, t);
        return sum * fade * (0.68 + 0.32 * tremor.next(quiver));
    });
}

/// One engine of the bomber over a whole loop: firing pulses with a few strong harmonics. firings is a whole number, so
/// that the loop closes.
void addEngine(Samples& loop, int firings, double startCycles) {
    const int count = static_cast<int>(loop.size());
    for (int i = 0; i < count; ++i) {
        const double turn = static_cast<double>(i) / count;
        const double phase = firings * turn + startCycles;
        double sum = 0;
        double level = 0.7;
        for (int n = 1; n <= 14; ++n) {
            sum += level * sine(2 * pi * n * (phase - std::floor(phase)) + 1.7 * n * n);
            level *= n == 1 ? 1.25 : 0.80;
        }
        loop[static_cast<std::size_t>(i)] += sum;
    }
}

} // namespace

Samples explosionSound() {
    Random random(9001);
    Filter body;
    Filter crack(1800, 0.7);
    Filter rumble(95, 0.9);
    SineWave thump(0.2);
    Samples samples = renderOnce(samplesIn(2.1), [&](double t) {
        const double noise = hiss(random);
        crack.feed(noise);
        body.tune(120 + 5200 * decay(t, 0.16), 0.8);
        body.feed(noise);
        rumble.feed(noise);
        const double blow = thump.next(30 + 105 * decay(t, 0.07)) * decay(t, 0.38);
        const double billow = 1 + 0.35 * solidNoise({t * 9, 0, 0}, 9011);
        const double sum = 1.2 * crack.high * decay(t, 0.018) + 2.6 * body.low * decay(t, 0.34) * billow +
                           3.4 * rumble.low * smoothStep(0.02, 0.2, t) * decay(t, 0.62) * billow + 1.35 * blow;
        return saturate(1.25 * sum);
    });
    for (int i = 0; i < 46; ++i) { // rubble comes down, ever smaller
        const double chance = random.unit();
        const double when = 0.32 + 1.35 * chance * random.unit();
        const double size = random.unit();
        addAt(samples, grain(mix(2600, 520, size), 2.5, mix(0.004, 0.016, size), random.bits()), samplesIn(when),
              mix(0.03, 0.13, size) * (1.9 - when));
    }
    cutRumble(samples);
    fadeEnds(samples, 0.0008, 0.5);
    setPeak(samples, -1);
    return samples;
}

Samples walkSound() {
    const int count = samplesIn(0.92);
    Samples loop(static_cast<std::size_t>(count));
    addAround(loop, squelch(430, 9101), samplesIn(0.01), 1);
    addAround(loop, squelch(350, 9102), samplesIn(0.47), 0.86);
    cutOffset(loop);
    setPeak(loop, -5);
    return loop;
}

Samples springSound() {
    Random random(9201);
    SineWave wobble(0.25);
    std::array<SineWave, 3> coil;
    constexpr std::array<double, 3> ratio = {1, 2.32, 4.25};
    constexpr std::array<double, 3> level = {1, 0.55, 0.3};
    Filter scrape(2400, 2);
    Samples samples = renderOnce(samplesIn(0.75), [&](double t) {
        const double sway = wobble.next(26 - 14 * t);
        const double hertz = (150 + 330 * (1 - decay(t, 0.16))) * (1 + 0.26 * sway * decay(t, 0.3));
        double sum = 0;
        for (std::size_t i = 0; i < coil.size(); ++i)
            sum += level[i] * coil[i].next(hertz * ratio[i]) * decay(t, 0.24 / (1 + 0.7 * static_cast<double>(i)));
        scrape.feed(hiss(random));
        return saturate(0.9 * sum * (0.75 + 0.25 * sway) + 1.6 * scrape.band * decay(t, 0.02));
    });
    cutRumble(samples);
    fadeEnds(samples, 0.002, 0.12);
    setPeak(samples, -3);
    return samples;
}

Samples powerUpSound() {
    constexpr double length = 1.2;
    Random random(9301);
    std::array<SineWave, 7> first;
    std::array<SineWave, 7> second;
    SineWave pulse;
    Filter air;
    Samples samples = renderOnce(samplesIn(length), [&](double t) {
        const double f = clamp(t / 1.05, 0, 1);
        const double hertz = 105 * exponential(2.0 * f);
        double tone = 0;
        for (std::size_t n = 0; n < first.size(); ++n) {
            const double harmonic = static_cast<double>(n) + 1;
            // The higher harmonics join as the charge grows.
            const double share = exponential(-harmonic * mix(0.95, 0.28, f));
            tone += share * (first[n].next(hertz * harmonic) + second[n].next(hertz * harmonic * 1.011));
        }
        air.tune(700 + 5200 * f * f, 3);
        air.feed(hiss(random));
        const double throb = 1 - 0.42 * (0.5 + 0.5 * pulse.next(mix(7, 27, f)));
        return saturate(0.75 * tone * throb + 0.75 * air.band * f) * mix(0.42, 1, f);
    });
    cutRumble(samples);
    fadeEnds(samples, 0.02, 0.05);
    setPeak(samples, -4);
    return samples;
}

Samples releaseSound() {
    Random random(9401);
    SineWave thud(0.15);
    Filter whoosh;
    Filter snap(3200, 1.2);
    Samples samples = renderOnce(samplesIn(0.6), [&](double t) {
        const double noise = hiss(random);
        snap.feed(noise);
        whoosh.tune(420 + 3600 * decay(t, 0.11), 1.4);
        whoosh.feed(noise);
        return saturate(3.2 * snap.band * decay(t, 0.006) +
                        1.3 * thud.next(70 + 620 * decay(t, 0.022)) * decay(t, 0.07) +
                        1.9 * whoosh.band * smoothStep(0, 0.03, t) * decay(t, 0.13));
    });
    cutRumble(samples);
    fadeEnds(samples, 0.0004, 0.15);
    setPeak(samples, -2);
    return samples;
}

Samples missileSound() {
    const int count = samplesIn(2.4);
    const Samples noise = loopNoise(count, 9501);
    Filter jet(3600, 1.1);
    Filter roar(330, 1.4);
    Filter whistle(1850, 14);
    Samples loop = renderLoop(count, [&](int i) {
        const double turn = static_cast<double>(i) / count;
        const double flutter = 0.80 + 0.13 * sine(2 * pi * 41 * turn) + 0.07 * sine(2 * pi * 67 * turn + 1);
        const double drift = sine(2 * pi * 2 * turn) + 0.5 * sine(2 * pi * 5 * turn + 2);
        jet.tune(3900 + 520 * drift, 1.1);
        whistle.tune(1850 + 60 * drift, 14);
        const double x = noise[static_cast<std::size_t>(i)];
        jet.feed(x);
        roar.feed(x);
        whistle.feed(x);
        return saturate(0.85 * jet.band * flutter + 1.15 * roar.band * (1.6 - flutter) + 0.9 * whistle.band);
    });
    cutOffset(loop);
    setPeak(loop, -5);
    return loop;
}

Samples fuseSound() {
    const int count = samplesIn(2.6);
    const Samples noise = loopNoise(count, 9601);
    Filter spray(6200, 0.8);
    Samples loop = renderLoop(count, [&](int i) {
        const double turn = static_cast<double>(i) / count;
        spray.feed(noise[static_cast<std::size_t>(i)]);
        const double sputter = 0.55 + 0.2 * sine(2 * pi * 17 * turn) + 0.16 * sine(2 * pi * 31 * turn + 1.3) +
                               0.14 * sine(2 * pi * 7 * turn + 0.4);
        return 0.16 * spray.high * sputter;
    });
    Random random(9611);
    for (int i = 0; i < 150; ++i) {
        const double strength = random.unit();
        const double pitch = random.range(1700, 7800);
        const double length = random.range(0.0006, 0.0034);
        const int place = static_cast<int>(random.range(0, count));
        addAround(loop, grain(pitch, 1.6, length, random.bits()), place, 0.05 + 0.38 * strength * strength);
    }
    for (double& sample : loop)
        sample = saturate(sample);
    cutOffset(loop);
    setPeak(loop, -5);
    return loop;
}

Samples shotgunSound() {
    Random random(9701);
    SineWave punch(0.2);
    Filter muzzle;
    Filter air(900, 0.8);
    Samples samples = renderOnce(samplesIn(1.15), [&](double t) {
        const double noise = hiss(random);
        muzzle.tune(900 + 11000 * decay(t, 0.03), 0.7);
        muzzle.feed(noise);
        air.feed(noise);
        double echoes = 0;
        for (const double delay : {0.085, 0.15, 0.235, 0.34})
            echoes += decay(t - delay, 0.05) * (0.32 - 0.62 * delay) * smoothStep(delay, delay + 0.012, t);
        return saturate(2.2 * muzzle.low * decay(t, 0.042) +
                        1.2 * punch.next(52 + 210 * decay(t, 0.03)) * decay(t, 0.08) +
                        1.5 * air.low * (0.22 * decay(t, 0.22) + echoes));
    });
    const auto latch = [&](double when, double hertz, double gain) {
        addAt(samples, grain(hertz, 6, 0.012, random.bits()), samplesIn(when), gain);
        addAt(samples, grain(hertz * 2.3, 4, 0.005, random.bits()), samplesIn(when + 0.004), gain * 0.8);
    };
    latch(0.62, 1500, 0.16); // back
    latch(0.80, 1900, 0.2);  // and forth
    cutRumble(samples);
    fadeEnds(samples, 0.0003, 0.2);
    setPeak(samples, -1);
    return samples;
}

Samples bomberSound() {
    constexpr double length = 6;
    const int count = samplesIn(length);
    Samples engines(static_cast<std::size_t>(count));
    // Firings per loop, near 48 per second, a little apart so that the four beat against each other.
    addEngine(engines, 287, 0.1);
    addEngine(engines, 289, 0.37);
    addEngine(engines, 292, 0.62);
    addEngine(engines, 281, 0.81);
    const Samples noise = loopNoise(count, 9801);
    Filter muffler(1150, 0.8);
    Filter wind(260, 0.8);
    Samples loop = renderLoop(count, [&](int i) {
        const double turn = static_cast<double>(i) / count;
        const double swell = 1 + 0.16 * sine(2 * pi * turn) + 0.1 * sine(2 * pi * 3 * turn + 1);
        muffler.tune(1150 + 260 * sine(2 * pi * 2 * turn), 0.8);
        muffler.feed(engines[static_cast<std::size_t>(i)]);
        wind.feed(noise[static_cast<std::size_t>(i)]);
        return saturate(0.16 * muffler.low * swell + 0.32 * wind.low);
    });
    cutOffset(loop);
    setPeak(loop, -7);
    return loop;
}

Samples teleportSound() {
    constexpr double length = 1.7;
    Random random(9901);
    Samples samples(static_cast<std::size_t>(samplesIn(length)));
    // A ladder of fifths and fourths, climbed ever faster.
    constexpr std::array<double, 5> steps = {1, 9.0 / 8, 4.0 / 3, 3.0 / 2, 16.0 / 9};
    for (int i = 0; i < 20; ++i) {
        const double octave = i / 5 == 0 ? 1 : (i / 5 == 1 ? 2 : (i / 5 == 2 ? 4 : 8));
        const double hertz = 330 * octave * steps[static_cast<std::size_t>(i % 5)];
        const double when = 0.9 * std::sqrt(i / 20.0);
        addAt(samples, bell(hertz, 0.75, random.range(11, 19)), samplesIn(when), 0.5 - 0.013 * i);
    }
    Filter veil;
    SineWave tremor;
    addAt(samples,
          renderOnce(samplesIn(length),
                     [&](double t) {
                         const double f = t / length;
                         veil.tune(900 + 6500 * sine(pi * clamp(f * 1.15, 0, 1)), 7);
                         veil.feed(hiss(random));
                         return veil.band * sine(pi * f) * (0.6 + 0.4 * tremor.next(15));
                     }),
          0, 1.4);
    for (double& sample : samples)
        sample = saturate(0.55 * sample);
    cutRumble(samples);
    fadeEnds(samples, 0.01, 0.3);
    setPeak(samples, -3);
    return samples;
}
