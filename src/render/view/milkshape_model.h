#pragma once

// The scene node of every animated or rigid model: reads a MilkShape 3D file (versions 3 and 4, little-endian) and the
// list of clips beside it, plays the current clip by skeletal animation and draws the skinned triangles at once.
//
// A file that is not whole (cut short, indices out of range, numbers that are not finite or beyond largestCoordinate)
// is refused as a whole: `load` is false and the node draws nothing. A parent that no earlier joint has, the joint's
// own name among them, is none. A shininess outside 0 to 128 is taken as the nearest of them. A clip list is taken up
// to its first unreadable item. A joint without keys of one kind keeps its bind pose in that respect; one without any
// keys stands in its bind pose in model space, wherever its parent has moved. A clip whose `next` names no clip, and a
// ring of clips without duration, end the animation: the model returns to its bind pose. Clips have no duration where
// the frames per second are not positive or so few that times are not finite.

#include "core/scene/scene_node.h"
#include "render/view/model_records.h"

#include <map>
#include <memory>

class ByteReader;

class MilkShapeModel : public SceneNode {
public:
    explicit MilkShapeModel(const std::string& nodeName);
    ~MilkShapeModel() override;

    /// Reads "./mesh/" + modelName + ".ms3d" and, when it is there, ".ani"; starts the first clip. True on success.
    /// Positions, keys and joints must be whole; a normal, texture coordinate or colour that is not finite counts as 0.
    [[nodiscard]] bool load(const std::string& modelName);
    /// Starts a clip from its beginning; nothing happens when it plays already or is not known.
    void setAnimation(const std::string& clipName);

    void update() override;
    void draw() override;

    const std::string& getCurrentAnimation() const { return currentAnimation; }
    /// Seconds into the current clip.
    float getAnimationTime() const { return animTime; }
    const std::vector<ModelJoint>& getJoints() const { return joints; }
    const std::vector<ModelVertex>& getVertices() const { return vertices; }
    const std::vector<ModelTriangle>& getTriangles() const { return triangles; }
    const std::vector<ModelGroup>& getGroups() const { return groups; }
    const std::vector<ModelMaterial>& getMaterials() const { return materials; }

private:
    [[nodiscard]] bool readFile(const std::string& path);
    bool readHeader(ByteReader& in) const;
    void readVertices(ByteReader& in);
    void readTriangles(ByteReader& in);
    void readGroups(ByteReader& in);
    void readMaterials(ByteReader& in);
    void readAnimation(ByteReader& in);
    void readJoints(ByteReader& in);
    bool hasValidIndices() const;
    void clear();
    void linkJoints();
    void setUpBindPose();
    void moveVerticesIntoJointSpace();
    void fetchTextures();
    void readClips(const std::string& path);
    void computeLocalBounds();

    void resetPose();
    bool advanceClip();
    void poseJoint(ModelJoint& joint, float time);
    void drawGroup(const ModelGroup& group) const;
    void drawCorner(const ModelTriangle& triangle, std::size_t corner) const;

    std::map<std::string, std::unique_ptr<AnimationClip>> animations;
    std::string currentAnimation;
    float animTime = 0.0f;
    std::vector<ModelGroup> groups;
    std::vector<ModelMaterial> materials;
    std::vector<ModelTriangle> triangles;
    std::vector<ModelVertex> vertices;
    std::vector<ModelJoint> joints;
    float animationFps = 0.0f;
    float currentTime = 0.0f;
    std::int32_t totalFrames = 0;
    float totalTime = 0.0f;
    std::uint32_t lastTick = 0;
};

/// A new child of a node with the model of this name. One that cannot be loaded draws nothing, and the log says why.
MilkShapeModel* addModel(SceneNode& parent, const std::string& modelName);
