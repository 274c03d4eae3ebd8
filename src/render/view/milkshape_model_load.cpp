#include "render/view/milkshape_model.h"

#include "core/base/byte_reader.h"
#include "core/base/file_access.h"
#include "core/base/log.h"
#include "core/base/text_reader.h"
#include "core/services/module_manager.h"
#include "core/services/timer.h"
#include "render/device/texture_manager.h"
#include "render/math/quaternion.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::size_t vertexSize = 15;
constexpr std::size_t triangleSize = 70;
constexpr std::size_t smallestGroupSize = 36;
constexpr std::size_t materialSize = 361;
constexpr std::size_t smallestJointSize = 93;
constexpr std::size_t keyframeSize = 16;
/// Length of the extension that texture file names end in, ".tga".
constexpr std::size_t extensionLength = 4;
/// By how much the local box is wider than the bind pose on every side, so that it holds the animated model too.
constexpr float boundsMargin = 3.0f;
/// GL refuses more.
constexpr float largestShininess = 128.0f;
/// Below this determinant a rotation counts as not invertible.
constexpr float smallestDeterminant = 0.0005f;

Vector3 readVector3(ByteReader& in) {
    const float x = in.readFloat();
    const float y = in.readFloat();
    const float z = in.readFloat();
    return {x, y, z};
}

std::array<float, 4> readColour(ByteReader& in) {
    std::array<float, 4> colour;
    for (float& channel : colour)
        channel = in.readLooseFloat();
    return colour;
}

std::vector<ModelKeyframe> readKeys(ByteReader& in, std::int32_t count, std::int32_t jointIndex) {
    std::vector<ModelKeyframe> keys;
    if (!in.holds(static_cast<std::size_t>(count), keyframeSize))
        return keys;
    keys.resize(static_cast<std::size_t>(count));
    for (ModelKeyframe& key : keys) {
        key.jointIndex = jointIndex;
        key.time = in.readFloat();
        key.value = readVector3(in);
    }
    return keys;
}

/// The inverse of a matrix's upper-left 3 x 3 part, the identity when it has none.
Matrix inverseRotation(const Matrix& m) {
    const Vector3 column0(m[0], m[1], m[2]);
    const Vector3 column1(m[4], m[5], m[6]);
    const Vector3 column2(m[8], m[9], m[10]);
    const float determinant = column0.dot(column1.cross(column2));
    if (std::fabs(determinant) < smallestDeterminant)
        return Matrix();
    // The rows of the inverse are the cross products of the columns over the determinant.
    const Vector3 row0 = column1.cross(column2) / determinant;
    const Vector3 row1 = column2.cross(column0) / determinant;
    const Vector3 row2 = column0.cross(column1) / determinant;
    return Matrix({row0.x, row1.x, row2.x, 0, row0.y, row1.y, row2.y, 0, row0.z, row1.z, row2.z, 0, 0, 0, 0, 1});
}

std::string textureNameOf(const std::string& textureFile) {
    std::string name = textureFile.substr(0, textureFile.size() - std::min(textureFile.size(), extensionLength));
    const std::size_t separator = name.rfind('\\');
    return separator == std::string::npos ? name : name.substr(separator + 1);
}

} // namespace

bool MilkShapeModel::load(const std::string& modelName) {
    clear();
    if (!readFile("./mesh/" + modelName + ".ms3d")) {
        clear();
        return false;
    }
    setUpBindPose();
    resetPose();
    fetchTextures();
    readClips("./mesh/" + modelName + ".ani");
    computeLocalBounds();
    lastTick = theModuleManager->getTimer()->getLastTick();
    return true;
}

void MilkShapeModel::clear() {
    animations.clear();
    currentAnimation.clear();
    animTime = 0.0f;
    groups.clear();
    materials.clear();
    triangles.clear();
    vertices.clear();
    joints.clear();
}

bool MilkShapeModel::readFile(const std::string& path) {
    std::vector<std::uint8_t> bytes;
    if (!readWholeFile(path, bytes))
        return false;
    ByteReader in(bytes);
    if (!readHeader(in))
        return false;
    readVertices(in);
    readTriangles(in);
    readGroups(in);
    readMaterials(in);
    readAnimation(in);
    readJoints(in);
    if (!in.hasFailed() && hasValidIndices())
        return true;
    logLine(" MilkShapeModel: '%s' is not whole \n", path.c_str());
    return false;
}

bool MilkShapeModel::readHeader(ByteReader& in) const {
    const std::string id = in.readText(10);
    const auto version = in.read<std::int32_t>();
    return id == "MS3D000000" && (version == 3 || version == 4);
}

void MilkShapeModel::readVertices(ByteReader& in) {
    const auto count = in.read<std::uint16_t>();
    if (!in.holds(count, vertexSize))
        return;
    vertices.resize(count);
    for (ModelVertex& vertex : vertices) {
        in.skip(1); // flags
        vertex.position = readVector3(in);
        vertex.boneId = in.read<std::int8_t>();
        in.skip(1); // reference count
    }
}

void MilkShapeModel::readTriangles(ByteReader& in) {
    const auto count = in.read<std::uint16_t>();
    if (!in.holds(count, triangleSize))
        return;
    triangles.resize(count);
    for (ModelTriangle& triangle : triangles) {
        in.skip(2); // flags
        for (std::uint32_t& index : triangle.vertexIndices)
            index = in.read<std::uint16_t>();
        for (Vector3& normal : triangle.normals) {
            normal.x = in.readLooseFloat();
            normal.y = in.readLooseFloat();
            normal.z = in.readLooseFloat();
        }
        for (float& s : triangle.s)
            s = in.readLooseFloat();
        for (float& t : triangle.t)
            t = 1.0f - in.readLooseFloat();
        in.skip(2); // smoothing group, group index
    }
}

void MilkShapeModel::readGroups(ByteReader& in) {
    const auto count = in.read<std::uint16_t>();
    if (!in.holds(count, smallestGroupSize))
        return;
    groups.resize(count);
    for (ModelGroup& group : groups) {
        in.skip(1 + 32); // flags, name
        const auto triangleCount = in.read<std::uint16_t>();
        if (!in.holds(triangleCount, sizeof(std::uint16_t)))
            return;
        group.triangleCount = triangleCount;
        group.triangleIndices.resize(triangleCount);
        for (std::uint32_t& index : group.triangleIndices)
            index = in.read<std::uint16_t>();
        // Below zero there is none, whichever number says so.
        group.materialIndex = std::max<std::int8_t>(in.read<std::int8_t>(), -1);
    }
}

void MilkShapeModel::readMaterials(ByteReader& in) {
    const auto count = in.read<std::uint16_t>();
    if (!in.holds(count, materialSize))
        return;
    materials.resize(count);
    for (ModelMaterial& material : materials) {
        in.skip(32); // name
        material.ambient = readColour(in);
        material.diffuse = readColour(in);
        material.specular = readColour(in);
        material.emissive = readColour(in);
        material.shininess = std::clamp(in.readFloat(), 0.0f, largestShininess);
        in.skip(4 + 1); // transparency, mode
        material.textureFile = in.readText(128);
        in.skip(128); // alpha map
    }
}

void MilkShapeModel::readAnimation(ByteReader& in) {
    animationFps = in.readFloat();
    currentTime = in.readFloat();
    totalFrames = in.read<std::int32_t>();
    totalTime = animationFps > 0.0f ? static_cast<float>(totalFrames) / animationFps : 0.0f;
}

void MilkShapeModel::readJoints(ByteReader& in) {
    const auto count = in.read<std::uint16_t>();
    if (!in.holds(count, smallestJointSize))
        return;
    joints.resize(count);
    std::int32_t index = 0;
    for (ModelJoint& joint : joints) {
        in.skip(1); // flags
        joint.name = in.readText(32);
        joint.parentName = in.readText(32);
        joint.rotation = readVector3(in);
        joint.position = readVector3(in);
        joint.rotationKeyCount = in.read<std::uint16_t>();
        joint.translationKeyCount = in.read<std::uint16_t>();
        joint.rotationKeys = readKeys(in, joint.rotationKeyCount, index);
        joint.translationKeys = readKeys(in, joint.translationKeyCount, index);
        ++index;
    }
    linkJoints();
}

void MilkShapeModel::linkJoints() {
    // Looked up only among the joints before: a joint cannot be its own parent, nor can there be a ring.
    std::map<std::string, std::int32_t> firstOfName;
    for (std::size_t i = 0; i < joints.size(); ++i) {
        const auto found = firstOfName.find(joints[i].parentName);
        if (!joints[i].parentName.empty() && found != firstOfName.end())
            joints[i].parent = found->second;
        firstOfName.try_emplace(joints[i].name, static_cast<std::int32_t>(i));
    }
}

bool MilkShapeModel::hasValidIndices() const {
    const auto jointCount = static_cast<std::int32_t>(joints.size());
    const auto materialCount = static_cast<std::int32_t>(materials.size());
    return std::all_of(vertices.begin(), vertices.end(),
                       [&](const ModelVertex& v) { return v.boneId >= -1 && v.boneId < jointCount; }) &&
           std::all_of(triangles.begin(), triangles.end(),
                       [&](const ModelTriangle& triangle) {
                           return std::all_of(triangle.vertexIndices.begin(), triangle.vertexIndices.end(),
                                              [&](std::uint32_t index) { return index < vertices.size(); });
                       }) &&
           std::all_of(groups.begin(), groups.end(), [&](const ModelGroup& group) {
               return group.materialIndex >= -1 && group.materialIndex < materialCount &&
                      std::all_of(group.triangleIndices.begin(), group.triangleIndices.end(),
                                  [&](std::uint32_t index) { return index < triangles.size(); });
           });
}

void MilkShapeModel::setUpBindPose() {
    for (ModelJoint& joint : joints) {
        joint.relative = matrixFromEuler(joint.rotation);
        joint.relative.setTranslation(joint.position.x, joint.position.y, joint.position.z);
        joint.absolute = joint.parent < 0 ? joint.relative
                                          : joints[static_cast<std::size_t>(joint.parent)].absolute * joint.relative;
    }
    moveVerticesIntoJointSpace();
}

void MilkShapeModel::moveVerticesIntoJointSpace() {
    std::vector<Matrix> inverses;
    inverses.reserve(joints.size());
    for (const ModelJoint& joint : joints)
        inverses.push_back(inverseRotation(joint.absolute));
    for (ModelVertex& vertex : vertices) {
        if (vertex.boneId < 0)
            continue;
        const auto bone = static_cast<std::size_t>(vertex.boneId);
        vertex.position = inverses[bone].transform(vertex.position - joints[bone].absolute.getTranslation());
    }
}

void MilkShapeModel::fetchTextures() {
    for (ModelMaterial& material : materials) {
        const std::string textureName = textureNameOf(material.textureFile);
        material.texture =
            textureName.empty() ? nullptr : theModuleManager->getTextureManager()->getTexture(textureName);
    }
}

void MilkShapeModel::readClips(const std::string& path) {
    std::string text;
    if (!readWholeFile(path, text))
        return;
    TextReader in(std::move(text));
    const auto seconds = [this](std::int32_t frame) {
        const float time = animationFps > 0.0f ? static_cast<float>(frame) / animationFps : 0.0f;
        return std::isfinite(time) ? time : 0.0f;
    };
    int count = 0;
    if (!in.read(count))
        return;
    for (int i = 0; i < count; ++i) {
        auto clip = std::make_unique<AnimationClip>();
        if (!in.read(clip->name) || !in.read(clip->firstFrame) || !in.read(clip->lastFrame) || !in.read(clip->next))
            return;
        clip->startTime = seconds(clip->firstFrame);
        clip->endTime = seconds(clip->lastFrame);
        clip->duration = clip->endTime - clip->startTime;
        const std::string clipName = clip->name;
        animations[clipName] = std::move(clip);
        if (i == 0)
            setAnimation(clipName);
    }
}

void MilkShapeModel::computeLocalBounds() {
    for (const ModelVertex& vertex : vertices)
        localBounds.extend(vertex.position);
    localBounds.extend(localBounds.min - boundsMargin);
    localBounds.extend(localBounds.max + boundsMargin);
}
