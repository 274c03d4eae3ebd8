#include "textures.h"

#include "../exact_math.h"
#include "../noise.h"

#include <cmath>

namespace {

/// What the screen is cleared to, so that the horizon melts into it.
constexpr Color horizon = rgb(0.62, 0.72, 0.91);

/// Cover of fair-weather clouds in a direction, 0 to 1, and how much light they catch.
struct Cloud {
    double cover;
    double light;
};

Cloud cloudAt(const Vec3& direction) {
    // Clouds lie on a shallow bowl, so that they crowd towards the horizon without vanishing into it.
    const double reach = 1 / (direction.y + 0.22);
    const Vec3 p{direction.x * reach * 1.5, 0.7, direction.z * reach * 1.5};
    const double shape = solidFractal(p, 6, 71) + 0.35 * solidNoise(p * 0.45, 81);
    const double cover = smoothStep(0.02, 0.36, shape) * smoothStep(0.015, 0.13, direction.y);
    const double above = solidFractal(p + Vec3{0.05, 0.1, 0.07}, 4, 71);
    return {cover, clamp(0.9 + 0.5 * (shape - above) - 0.16 * shape, 0.6, 1)};
}

} // namespace

Image skyTexture() {
    Image image(1024);
    image.fill([](double u, double v) {
        const double x = 2 * u - 1;
        const double z = 2 * v - 1;
        const double radius = std::sqrt(x * x + z * z);
        const double fromZenith = clamp(radius, 0, 1) * pi / 2;
        const double wide = radius > 0 ? sine(fromZenith) / radius : 0;
        const Vec3 direction{x * wide, cosine(fromZenith), z * wide};
        const double height = clamp(direction.y, 0, 1);
        const Color low = mix(horizon, rgb(0.45, 0.63, 0.93), smoothStep(0, 0.35, height));
        const Color clear = mix(low, rgb(0.22, 0.43, 0.83), smoothStep(0.1, 1, height));
        const Cloud cloud = cloudAt(direction);
        const Color white = mix(rgb(0.70, 0.76, 0.88), rgb(1, 1, 1), (cloud.light - 0.6) / 0.4);
        return mix(clear, white, 0.92 * cloud.cover);
    });
    return image;
}

Image deepTexture() {
    Image image(64);
    image.fill([](double, double v) {
        const Color far = mix(horizon, rgb(0.22, 0.47, 0.68), smoothStep(0.02, 0.3, v));
        return mix(far, rgb(0.08, 0.27, 0.44), smoothStep(0.2, 0.9, v));
    });
    return image;
}
