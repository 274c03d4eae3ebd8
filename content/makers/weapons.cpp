// Makes the weapons and projectiles. A held weapon's node sits at the worm's middle and points along +z; the model
// stands off to the worm's right (-x) and a little below, where it shows at the lower right of the aim view, whose eye
// is that middle. Projectiles are centred on their own middle; the rocket flies along +y, and the matrix that turns it
// into its flight mirrors as well: its faces are wound the other way.

#include "exact_math.h"
#include "model_builder.h"
#include "ms3d_writer.h"
#include "swatches.h"

#include <utility>

namespace {

using Profile = std::vector<std::pair<double, double>>;

/// Lays a patch over one swatch of the texture, clear of its borders.
TextureMap over(Swatch swatch) {
    const int index = static_cast<int>(swatch);
    const int left = index % swatchesAcross;
    const int top = index / swatchesAcross;
    return [=](double f, double g) {
        return std::pair((left + 0.1 + 0.8 * g) / swatchesAcross, (top + 0.1 + 0.8 * f) / swatchesAcross);
    };
}

/// Axis along +z, for barrels.
Frame pointingForward(const Vec3& origin) {
    return {origin, {1, 0, 0}, {0, 0, 1}, {0, -1, 0}};
}

/// Axis leaning by the angle (radians) from +y towards +z.
Frame leaning(const Vec3& origin, double angle) {
    return {origin, {1, 0, 0}, {0, cosine(angle), sine(angle)}, {0, -sine(angle), cosine(angle)}};
}

Model emptyModel() {
    Model model;
    ModelMaterial material;
    material.name = "weapons";
    material.textureFile = "weapons.tga";
    material.diffuse = {0.7, 0.7, 0.7};
    material.specular = {0.35, 0.35, 0.35};
    material.emissive = {0.1, 0.1, 0.1};
    material.shininess = 30;
    model.materials = {material};
    return model;
}

/// A closed cylinder along the frame's axis from low to high.
void rod(ModelBuilder& builder, const Frame& frame, double low, double high, double radius, Swatch swatch,
         int sides = 10) {
    builder.addLathe(frame, {{low, 0}, {low, radius}, {high, radius}, {high, 0}}, sides, over(swatch));
}

Model bazooka() {
    Model model = emptyModel();
    ModelBuilder builder(model);
    const Frame tube = pointingForward({-1.7, -0.95, 0.5});
    // Open at both ends: the profile turns inside at the mouth.
    builder.addLathe(
        tube,
        {{-2.6, 0.34}, {-2.6, 0.72}, {-2.0, 0.5}, {-1.6, 0.44}, {3.6, 0.44}, {3.7, 0.54}, {4.1, 0.54}, {4.1, 0.38}}, 14,
        over(Swatch::olive));
    builder.addLathe(tube, {{4.1, 0.38}, {2.4, 0.36}, {2.4, 0}}, 14, over(Swatch::black));
    builder.addLathe(tube, {{-1.0, 0}, {-1.0, 0.34}, {-2.6, 0.34}}, 14, over(Swatch::black));
    builder.addLathe(tube, {{2.5, 0.44}, {2.5, 0.49}, {2.95, 0.49}, {2.95, 0.44}}, 14, over(Swatch::yellow));
    rod(builder, leaning({-1.7, -1.3, 2.5}, -0.25), -0.9, 0.1, 0.16, Swatch::wood);
    rod(builder, leaning({-1.7, -1.3, 1.1}, -0.25), -0.8, 0.1, 0.16, Swatch::wood);
    builder.addBox({{-1.7, -0.38, 2.7}}, {0.05, 0.18, 0.16}, over(Swatch::darkMetal));
    return model;
}

/// A finned body along +y with its middle at the origin.
Model rocket() {
    Model model = emptyModel();
    ModelBuilder builder(model);
    const Frame axis;
    builder.addLathe(axis, {{-0.85, 0}, {-0.85, 0.24}, {-0.6, 0.32}, {0.35, 0.34}}, 12, over(Swatch::olive));
    builder.addLathe(axis, {{0.1, 0.345}, {0.1, 0.365}, {0.25, 0.365}, {0.25, 0.345}}, 12, over(Swatch::yellow));
    builder.addLathe(axis, {{0.35, 0.36}, {0.6, 0.31}, {0.85, 0.19}, {1.02, 0}}, 12, over(Swatch::red));
    rod(builder, axis, -1.02, -0.84, 0.17, Swatch::black);
    for (int i = 0; i < 4; ++i) {
        const double angle = pi / 4 + i * pi / 2;
        const Vec3 out{sine(angle), 0, cosine(angle)};
        const Frame fin{out * 0.42 + Vec3{0, -0.68, 0}, out, {0, 1, 0}, cross(out, {0, 1, 0})};
        builder.addBox(fin, {0.2, 0.26, 0.03}, over(Swatch::darkMetal));
    }
    return model;
}

Model shotgun() {
    Model model = emptyModel();
    ModelBuilder builder(model);
    for (const double x : {-1.53, -1.87}) {
        const Frame barrel = pointingForward({x, -0.7, 0.5});
        builder.addLathe(barrel, {{-0.2, 0}, {-0.2, 0.17}, {4.3, 0.17}, {4.3, 0.11}}, 10, over(Swatch::darkMetal));
        builder.addLathe(barrel, {{4.3, 0.11}, {3.2, 0.1}, {3.2, 0}}, 10, over(Swatch::black));
    }
    builder.addBox({{-1.7, -0.86, 2.0}}, {0.3, 0.16, 0.8}, over(Swatch::wood));
    builder.addBox({{-1.7, -0.75, 0.15}}, {0.3, 0.24, 0.45}, over(Swatch::brightMetal));
    const Frame stock = pointingForward({-1.7, -1.0, -0.5});
    builder.addLathe(stock, {{-1.6, 0}, {-1.6, 0.42}, {-0.6, 0.34}, {0.4, 0.22}, {0.5, 0}}, 8, over(Swatch::wood));
    builder.addBox({{-1.7, -0.5, 4.6}}, {0.04, 0.07, 0.06}, over(Swatch::yellow));
    return model;
}

/// Three sticks bound together with a burning fuse, 2 units high, standing on y = -1.
void sticks(ModelBuilder& builder, const Vec3& middle) {
    for (int i = 0; i < 3; ++i) {
        const double angle = 2 * pi * i / 3;
        const Frame stick{middle + Vec3{0.29 * sine(angle), 0, 0.29 * cosine(angle)}};
        rod(builder, stick, -1, 0.75, 0.28, Swatch::red, 9);
    }
    builder.addLathe({middle}, {{-0.3, 0.5}, {-0.3, 0.58}, {0.1, 0.58}, {0.1, 0.5}}, 12, over(Swatch::paper));
    rod(builder, leaning(middle + Vec3{0, 0.75, 0}, 0.2), -0.1, 0.35, 0.05, Swatch::cord, 5);
    rod(builder, leaning(middle + Vec3{0, 1.08, 0.07}, 0.9), 0, 0.3, 0.05, Swatch::cord, 5);
    builder.addBall({middle + Vec3{0, 1.28, 0.3}}, {0.13, 0.13, 0.13}, 4, 6, over(Swatch::glow));
}

Model dynamite() {
    Model model = emptyModel();
    ModelBuilder builder(model);
    sticks(builder, {-1.35, -0.75, 2.7});
    return model;
}

Model dynamiteProjectile() {
    Model model = emptyModel();
    ModelBuilder builder(model);
    sticks(builder, {});
    return model;
}

/// A ray pistol with glowing rings.
Model beamer() {
    Model model = emptyModel();
    ModelBuilder builder(model);
    const Frame barrel = pointingForward({-1.5, -0.75, 2.2});
    builder.addLathe(barrel, {{-0.6, 0}, {-0.6, 0.3}, {-0.2, 0.45}, {0.5, 0.4}, {0.9, 0.18}, {2.0, 0.14}, {2.0, 0}}, 12,
                     over(Swatch::brightMetal));
    for (const double z : {1.0, 1.35, 1.7}) {
        builder.addLathe(barrel, {{z - 0.06, 0.12}, {z - 0.06, 0.34}, {z + 0.06, 0.34}, {z + 0.06, 0.12}}, 12,
                         over(Swatch::cyan));
    }
    Frame tip = barrel;
    tip.origin = barrel.toWorld({0, 2.1, 0});
    builder.addBall(tip, {0.22, 0.22, 0.22}, 6, 10, over(Swatch::cyan));
    rod(builder, leaning({-1.5, -1.0, 2.0}, -0.3), -0.9, 0.0, 0.2, Swatch::black);
    builder.addBox({{-1.5, -0.27, 2.25}}, {0.06, 0.1, 0.4}, over(Swatch::hazard));
    return model;
}

/// A field radio with an aerial and a handset.
Model airstrike() {
    Model model = emptyModel();
    ModelBuilder builder(model);
    const Vec3 middle{-1.45, -0.95, 2.9};
    builder.addBox({middle}, {0.5, 0.7, 0.3}, over(Swatch::olive));
    builder.addBox({middle + Vec3{0, 0.3, -0.31}}, {0.36, 0.22, 0.03}, over(Swatch::cyan));
    builder.addBox({middle + Vec3{0, -0.28, -0.31}}, {0.36, 0.26, 0.03}, over(Swatch::black));
    for (const double x : {-0.2, 0.2})
        rod(builder, {middle + Vec3{x, 0.7, 0}}, 0, 0.14, 0.09, Swatch::brightMetal, 8);
    rod(builder, {middle + Vec3{-0.38, 0.7, 0.1}}, 0, 1.7, 0.035, Swatch::brightMetal, 6);
    builder.addBall({middle + Vec3{-0.38, 2.45, 0.1}}, {0.09, 0.09, 0.09}, 4, 6, over(Swatch::red));
    builder.addBox({middle + Vec3{0, -0.55, 0.0}}, {0.52, 0.06, 0.32}, over(Swatch::hazard));
    return model;
}

/// Turns every face over, but not its normals.
void rewind(Model& model) {
    for (ModelFace& face : model.faces)
        std::swap(face.corners[1], face.corners[2]);
}

bool write(const std::filesystem::path& directory, const char* name, Model model, bool drawnMirrored = false) {
    smoothNormals(model, 50);
    if (drawnMirrored)
        rewind(model);
    return writeMs3d(directory / (std::string(name) + ".ms3d"), model);
}

} // namespace

/// Argument: the directory to write into.
int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    const std::filesystem::path directory = argv[1];
    const bool done = write(directory, "bazooka", bazooka()) && write(directory, "rocket", rocket(), true) &&
                      write(directory, "shotgun", shotgun()) && write(directory, "dynamite", dynamite()) &&
                      write(directory, "dynamiteprojectile", dynamiteProjectile()) &&
                      write(directory, "beamer", beamer()) && write(directory, "airstrike", airstrike());
    return done ? 0 : 1;
}
