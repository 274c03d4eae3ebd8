#pragma once

// The one random stream of the game: integers from 0 to 32767, the same sequence for a seed on every platform.

/// Largest value that crtRand returns.
inline constexpr int crtRandMax = 32767;

/// Next number of the stream, 0 to crtRandMax.
int crtRand();

/// The next number as a fraction: 0 to 1, both included.
inline double crtRandFraction() {
    return crtRand() / static_cast<double>(crtRandMax);
}

/// Starts the stream anew.
void crtSrand(unsigned int seed);
