#include "exact_math.h"

#include <cmath>

namespace {

/// Taylor series of the sine, for |x| <= pi/4.
double sineCore(double x) {
    const double q = x * x;
    double term = x;
    double sum = x;
    for (int n = 1; n <= 8; ++n) {
        term *= -q / ((2.0 * n) * (2.0 * n + 1));
        sum += term;
    }
    return sum;
}

/// Taylor series of the cosine, for |x| <= pi/4.
double cosineCore(double x) {
    const double q = x * x;
    double term = 1;
    double sum = 1;
    for (int n = 1; n <= 8; ++n) {
        term *= -q / ((2.0 * n - 1) * (2.0 * n));
        sum += term;
    }
    return sum;
}

/// Arc tangent of 0 <= x <= 1: the angle is halved three times, then the series converges quickly.
double arcTangentCore(double x) {
    for (int i = 0; i < 3; ++i)
        x = x / (1 + std::sqrt(1 + x * x));
    const double q = x * x;
    double power = x;
    double sum = x;
    for (int n = 1; n <= 9; ++n) {
        power *= -q;
        sum += power / (2 * n + 1);
    }
    return 8 * sum;
}

} // namespace

double sine(double radians) {
    const double quarter = std::floor(radians / (pi / 2) + 0.5);
    const double rest = radians - quarter * (pi / 2);
    const long quadrant = static_cast<long>(quarter) & 3;
    const double value = (quadrant & 1) ? cosineCore(rest) : sineCore(rest);
    return (quadrant & 2) ? -value : value;
}

double cosine(double radians) {
    return sine(radians + pi / 2);
}

double arcTangent(double y, double x) {
    if (x == 0 && y == 0)
        return 0;
    const double ax = std::fabs(x);
    const double ay = std::fabs(y);
    double angle = ay <= ax ? arcTangentCore(ay / ax) : pi / 2 - arcTangentCore(ax / ay);
    if (x < 0)
        angle = pi - angle;
    return y < 0 ? -angle : angle;
}

double exponential(double x) {
    if (x < -700)
        return 0;
    const double halvings = std::floor(x / 0.6931471805599453 + 0.5);
    const double rest = x - halvings * 0.6931471805599453;
    double term = 1;
    double sum = 1;
    for (int n = 1; n <= 14; ++n) {
        term *= rest / n;
        sum += term;
    }
    return std::ldexp(sum, static_cast<int>(halvings));
}
