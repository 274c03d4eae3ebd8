#include "render/view/milkshape_model.h"

#include "core/services/module_manager.h"
#include "core/services/timer.h"
#include "platform/gl.h"
#include "render/device/texture.h"
#include "render/math/quaternion.h"

namespace {

/// Where a time falls among keys: the first key not before it, and how far it lies between the key before and that one.
struct KeyPosition {
    std::size_t index;
    float fraction;
};

KeyPosition findKey(const std::vector<ModelKeyframe>& keys, std::int32_t& current, float time) {
    while (static_cast<std::size_t>(current) < keys.size() && keys[static_cast<std::size_t>(current)].time < time)
        ++current;
    const auto index = static_cast<std::size_t>(current);
    if (index == 0 || index >= keys.size())
        return {index, 0.0f};
    const float before = keys[index - 1].time;
    return {index, (time - before) / (keys[index].time - before)};
}

Vector3 positionAt(ModelJoint& joint, float time) {
    const std::vector<ModelKeyframe>& keys = joint.translationKeys;
    if (keys.empty())
        return {0.0f, 0.0f, 0.0f};
    const auto [index, fraction] = findKey(keys, joint.currentTranslationKey, time);
    if (index == 0)
        return keys.front().value;
    if (index >= keys.size())
        return keys.back().value;
    const Vector3& before = keys[index - 1].value;
    return before + (keys[index].value - before) * fraction;
}

Matrix rotationAt(ModelJoint& joint, float time) {
    const std::vector<ModelKeyframe>& keys = joint.rotationKeys;
    if (keys.empty())
        return Matrix();
    const auto [index, fraction] = findKey(keys, joint.currentRotationKey, time);
    if (index == 0)
        return matrixFromEuler(keys.front().value);
    if (index >= keys.size())
        return matrixFromEuler(keys.back().value);
    return slerp(Quaternion::fromEuler(keys[index - 1].value), Quaternion::fromEuler(keys[index].value), fraction)
        .toMatrix();
}

void applyMaterial(const ModelMaterial& material) {
    glMaterialfv(GL_FRONT, GL_AMBIENT, material.ambient.data());
    glMaterialfv(GL_FRONT, GL_DIFFUSE, material.diffuse.data());
    glMaterialfv(GL_FRONT, GL_SPECULAR, material.specular.data());
    glMaterialfv(GL_FRONT, GL_EMISSION, material.emissive.data());
    glMaterialf(GL_FRONT, GL_SHININESS, material.shininess);
    if (material.texture != nullptr) {
        material.texture->bind();
        glEnable(GL_TEXTURE_2D);
    } else {
        glDisable(GL_TEXTURE_2D);
    }
}

} // namespace

MilkShapeModel::MilkShapeModel(const std::string& nodeName) : SceneNode(nodeName) {}

MilkShapeModel::~MilkShapeModel() = default;

void MilkShapeModel::setAnimation(const std::string& clipName) {
    if (clipName == currentAnimation || animations.find(clipName) == animations.end())
        return;
    animTime = 0.0f;
    currentAnimation = clipName;
}

void MilkShapeModel::update() {
    if (!currentAnimation.empty()) {
        const std::uint32_t now = theModuleManager->getTimer()->getLastTick();
        animTime += static_cast<float>(ticksBetween(lastTick, now) / 1000.0);
        lastTick = now;
        const bool playing = advanceClip();
        resetPose();
        if (playing) {
            const float time = animations.find(currentAnimation)->second->startTime + animTime;
            for (ModelJoint& joint : joints)
                poseJoint(joint, time);
        }
    }
    SceneNode::update();
}

bool MilkShapeModel::advanceClip() {
    // Every clip of the map can follow at most once without time passing; more than that is a ring of no duration.
    for (std::size_t switches = 0; switches <= animations.size(); ++switches) {
        const auto clip = animations.find(currentAnimation);
        if (clip == animations.end())
            break;
        if (clip->second->duration > animTime)
            return true;
        animTime = 0.0f;
        currentAnimation = clip->second->next;
    }
    currentAnimation.clear();
    return false;
}

void MilkShapeModel::resetPose() {
    for (ModelJoint& joint : joints) {
        joint.currentTranslationKey = 0;
        joint.currentRotationKey = 0;
        joint.final = joint.absolute;
    }
}

void MilkShapeModel::poseJoint(ModelJoint& joint, float time) {
    if (joint.translationKeys.empty() && joint.rotationKeys.empty()) {
        joint.final = joint.absolute;
        return;
    }
    const Vector3 position = positionAt(joint, time);
    Matrix key = rotationAt(joint, time);
    key.setTranslation(position.x, position.y, position.z);
    const Matrix pose = joint.relative * key;
    joint.final = joint.parent < 0 ? pose : joints[static_cast<std::size_t>(joint.parent)].final * pose;
}

void MilkShapeModel::draw() {
    glPushMatrix();
    glMultMatrixf(worldMatrix.data());
    const GLboolean textured = glIsEnabled(GL_TEXTURE_2D);
    for (const ModelGroup& group : groups)
        drawGroup(group);
    if (textured != GL_FALSE)
        glEnable(GL_TEXTURE_2D);
    else
        glDisable(GL_TEXTURE_2D);
    glPopMatrix();
}

void MilkShapeModel::drawGroup(const ModelGroup& group) const {
    if (group.materialIndex >= 0)
        applyMaterial(materials[static_cast<std::size_t>(group.materialIndex)]);
    else
        glDisable(GL_TEXTURE_2D);
    glBegin(GL_TRIANGLES);
    for (const std::uint32_t index : group.triangleIndices)
        for (std::size_t corner = 0; corner < 3; ++corner)
            drawCorner(triangles[index], corner);
    glEnd();
}

void MilkShapeModel::drawCorner(const ModelTriangle& triangle, std::size_t corner) const {
    const ModelVertex& vertex = vertices[triangle.vertexIndices[corner]];
    Vector3 normal = triangle.normals[corner];
    Vector3 position = vertex.position;
    float t = triangle.t[corner];
    if (vertex.boneId < 0) {
        t = 1.0f - t;
    } else {
        const Matrix& pose = joints[static_cast<std::size_t>(vertex.boneId)].final;
        Matrix rotation = pose;
        rotation.setTranslation(0.0f, 0.0f, 0.0f);
        normal = normalized(rotation.transform(normal));
        position = pose.transform(position);
    }
    glTexCoord2f(triangle.s[corner], t);
    glNormal3f(normal.x, normal.y, normal.z);
    glVertex3f(position.x, position.y, position.z);
}

MilkShapeModel* addModel(SceneNode& parent, const std::string& modelName) {
    auto* const model = new MilkShapeModel("<MilkShape Model>");
    static_cast<void>(model->load(modelName));
    parent.addChild(model);
    return model;
}
