// Makes the sky: a half dome seen from inside and a bowl under the sea, both lit by themselves.

#include "exact_math.h"
#include "model_builder.h"
#include "ms3d_writer.h"

namespace {

/// World units. The dome must stay within the far plane from wherever a camera can be, and meet the edge of the sea.
constexpr double domeRadius = 3000;
constexpr int sides = 48;

ModelMaterial lightOfItsOwn(const std::string& name) {
    ModelMaterial material;
    material.name = name;
    material.textureFile = name + ".tga";
    material.ambient = {0, 0, 0};
    material.diffuse = {0, 0, 0};
    material.emissive = {1, 1, 1};
    return material;
}

/// Rings from one height angle (radians above the horizon) to another, facing inwards when the angles fall.
std::vector<std::vector<Vec3>> domeRings(double from, double to, int steps) {
    std::vector<std::vector<Vec3>> rings;
    for (int r = 0; r <= steps; ++r) {
        const double height = mix(from, to, static_cast<double>(r) / steps);
        const bool tip = height > pi / 2 - 1e-9 || height < -pi / 2 + 1e-9;
        std::vector<Vec3> ring;
        for (int s = 0; s < sides; ++s) {
            const double angle = 2 * pi * s / sides;
            const double wide = tip ? 0 : cosine(height);
            ring.push_back(Vec3{wide * sine(angle), sine(height), wide * cosine(angle)} * domeRadius);
        }
        rings.push_back(ring);
    }
    return rings;
}

} // namespace

/// Argument: the directory to write into.
int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    Model model;
    model.materials = {lightOfItsOwn("sky"), lightOfItsOwn("deep")};
    ModelBuilder builder(model);
    builder.use(0, -1);
    // The texture holds the sky as seen straight up, so it has no pole to smear. A hair's breadth is kept from its
    // border.
    builder.addRings(domeRings(pi / 2, 0, 16), [](double f, double g) {
        const double radius = 0.4985 * f;
        return std::pair(0.5 + radius * sine(2 * pi * g), 0.5 + radius * cosine(2 * pi * g));
    });
    builder.use(1, -1);
    builder.addRings(domeRings(0, -pi / 2, 12), [](double f, double) { return std::pair(0.5, 0.02 + 0.96 * f); });
    smoothNormals(model, 60);
    return writeMs3d(std::filesystem::path(argv[1]) / "sky.ms3d", model) ? 0 : 1;
}
