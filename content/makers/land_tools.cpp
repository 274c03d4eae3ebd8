#include "land_tools.h"

#include "exact_math.h"
#include "noise.h"

#include <algorithm>
#include <cmath>

double seaNotch(double y) {
    return 4.5 * smoothStep(9, 2, y);
}

double wallBumps(const Vec3& p, double size, unsigned seed) {
    return solidFractal(Vec3{p.x, std::max(p.y, 10.0) * 0.7, p.z} * (1 / size), 3, seed);
}

double hill(double x, double z, double middleX, double middleZ, double radius, double height) {
    const double dx = (x - middleX) / radius;
    const double dz = (z - middleZ) / radius;
    return height * exponential(-(dx * dx + dz * dz));
}

double terraced(double height, double step) {
    const double level = std::floor(height / step);
    const double rest = height / step - level;
    return (level + smoothStep(0.3, 0.95, rest)) * step;
}

double roundedSquare(double x, double z, double half) {
    return std::sqrt(std::sqrt(x * x * x * x + z * z * z * z)) - half;
}
