#include "model_builder.h"

#include "exact_math.h"

int ModelBuilder::addPoint(const Vec3& position) {
    model.points.push_back({position, bone});
    return static_cast<int>(model.points.size()) - 1;
}

void ModelBuilder::addFace(const ModelCorner& a, const ModelCorner& b, const ModelCorner& c) {
    const auto position = [&](const ModelCorner& corner) {
        return model.points[static_cast<std::size_t>(corner.point)].position;
    };
    if (length(cross(position(b) - position(a), position(c) - position(a))) < 1e-7)
        return; // half of each quad at a tip
    model.faces.push_back({{a, b, c}, group});
}

void ModelBuilder::addRings(const std::vector<std::vector<Vec3>>& rings, const TextureMap& map,
                            const std::vector<int>& bones) {
    const int start = static_cast<int>(model.points.size());
    const int sides = static_cast<int>(rings.front().size());
    const int count = static_cast<int>(rings.size());
    const int ringBone = bone;
    for (std::size_t r = 0; r < rings.size(); ++r) {
        if (!bones.empty())
            bone = bones[r];
        for (const Vec3& p : rings[r])
            addPoint(p);
    }
    bone = ringBone;
    const auto corner = [&](int r, int s) {
        const auto [u, v] = map(static_cast<double>(r) / (count - 1), static_cast<double>(s) / sides);
        return ModelCorner{start + r * sides + s % sides, {}, u, v};
    };
    for (int r = 0; r + 1 < count; ++r) {
        for (int s = 0; s < sides; ++s) {
            addFace(corner(r, s), corner(r, s + 1), corner(r + 1, s + 1));
            addFace(corner(r, s), corner(r + 1, s + 1), corner(r + 1, s));
        }
    }
}

void ModelBuilder::addLathe(const Frame& frame, const std::vector<std::pair<double, double>>& profile, int sides,
                            const TextureMap& map) {
    std::vector<std::vector<Vec3>> rings;
    for (const auto& [height, radius] : profile) {
        std::vector<Vec3> ring;
        for (int s = 0; s < sides; ++s) {
            const double angle = 2 * pi * s / sides;
            // Counter-clockwise seen from the tip of the up axis.
            ring.push_back(frame.toWorld({radius * sine(angle), height, radius * cosine(angle)}));
        }
        rings.push_back(ring);
    }
    addRings(rings, map);
}

void ModelBuilder::addBall(const Frame& frame, const Vec3& radii, int rings, int sides, const TextureMap& map) {
    Frame stretched = frame;
    stretched.right = frame.right * radii.x;
    stretched.up = frame.up * radii.y;
    stretched.forward = frame.forward * radii.z;
    std::vector<std::pair<double, double>> profile;
    for (int r = 0; r <= rings; ++r) {
        const double angle = pi * r / rings;
        profile.push_back({-cosine(angle), r == 0 || r == rings ? 0.0 : sine(angle)});
    }
    addLathe(stretched, profile, sides, map);
}

void ModelBuilder::addBox(const Frame& frame, const Vec3& half, const TextureMap& map) {
    constexpr int sidesOfBox[6][4] = {{1, 3, 7, 5}, {0, 4, 6, 2}, {2, 6, 7, 3},
                                      {0, 1, 5, 4}, {4, 5, 7, 6}, {0, 2, 3, 1}};
    const int start = static_cast<int>(model.points.size());
    for (int i = 0; i < 8; ++i) {
        addPoint(frame.toWorld({i & 1 ? half.x : -half.x, i & 2 ? half.y : -half.y, i & 4 ? half.z : -half.z}));
    }
    for (const auto& side : sidesOfBox) {
        const auto corner = [&](int k) {
            const auto [u, v] = map(k == 0 || k == 3 ? 0 : 1, k < 2 ? 0 : 1);
            return ModelCorner{start + side[k], {}, u, v};
        };
        addFace(corner(0), corner(1), corner(2));
        addFace(corner(0), corner(2), corner(3));
    }
}
