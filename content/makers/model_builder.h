#pragma once

#include "model.h"

#include <functional>
#include <utility>

/// Where a point of a patch lies in the texture; f runs along, g around or across, both 0 to 1.
using TextureMap = std::function<std::pair<double, double>(double f, double g)>;

/// A place in space with the direction of its local axes.
struct Frame {
    Vec3 origin;
    Vec3 right{1, 0, 0};
    Vec3 up{0, 1, 0};
    Vec3 forward{0, 0, 1};
    Vec3 toWorld(const Vec3& p) const { return origin + right * p.x + up * p.y + forward * p.z; }
};

/// Adds closed patches to a model. Faces look away from the patch's axis or middle.
class ModelBuilder {
public:
    explicit ModelBuilder(Model& target) : model(target) {}
    /// Everything added from here on belongs to this group and joint.
    void use(int groupIndex, int boneIndex) {
        group = groupIndex;
        bone = boneIndex;
    }
    int addPoint(const Vec3& position);
    void addFace(const ModelCorner& a, const ModelCorner& b, const ModelCorner& c);

    /// A stack of rings of equal point count, turning counter-clockwise seen from the last ring; the joint of each ring
    /// may differ. Rings of one repeated point make tips.
    void addRings(const std::vector<std::vector<Vec3>>& rings, const TextureMap& map,
                  const std::vector<int>& bones = {});
    /// A body of revolution about the frame's up axis: profile of (height, radius).
    void addLathe(const Frame& frame, const std::vector<std::pair<double, double>>& profile, int sides,
                  const TextureMap& map);
    /// An ellipsoid.
    void addBall(const Frame& frame, const Vec3& radii, int rings, int sides, const TextureMap& map);
    /// A box given by its half sizes.
    void addBox(const Frame& frame, const Vec3& half, const TextureMap& map);

private:
    Model& model;
    int group = 0;
    int bone = -1;
};
