#pragma once

// The transcendental functions of the makers, built from the four operations and the square root only. The library's
// own versions may differ in the last bit between a call and a constant folded by the compiler, and so between build
// types and machines; these give the same bits everywhere, which keeps the generated files identical byte for byte.

inline constexpr double pi = 3.14159265358979323846;

/// Sine of an angle in radians; absolute error below 1e-13 for angles up to some thousands.
double sine(double radians);
/// Cosine of an angle in radians, as accurate as sine.
double cosine(double radians);
/// Angle of the direction (x, y) in radians, in (-pi, pi]; 0 for the origin.
double arcTangent(double y, double x);
/// e to the power x; 0 below -700.
double exponential(double x);

/// x limited to [low, high].
constexpr double clamp(double x, double low, double high) {
    return x < low ? low : (x > high ? high : x);
}
/// From a at f = 0 to b at f = 1, linearly.
constexpr double mix(double a, double b, double f) {
    return a + (b - a) * f;
}
/// 0 below low, 1 above high, a smooth cubic between; high may be less than low for a falling step.
constexpr double smoothStep(double low, double high, double x) {
    const double f = clamp((x - low) / (high - low), 0, 1);
    return f * f * (3 - 2 * f);
}
