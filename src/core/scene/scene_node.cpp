#include "core/scene/scene_node.h"

#include "core/base/expect.h"
#include "core/base/log.h"
#include "render/camera/camera.h"

#include <algorithm>
#include <cmath>

namespace {

/// Hit points of every node; only worms lose any.
constexpr float fullHealth = 100.0f;

} // namespace

SceneNode::SceneNode(const std::string& nodeName) : Damageable(fullHealth), name(nodeName) {
    logLine("Scene Node Konstruktor: %s\n", name.c_str());
}

SceneNode::~SceneNode() {
    logLine("Scene Node Destruktor: %s\n", name.c_str());
    for (NodeWatch* watch = watches; watch != nullptr; watch = watch->next)
        watch->node = nullptr;
    // Not deleteChild: a destructor must not reach an override of a class that is gone already.
    while (!children.empty()) {
        SceneNode* const last = children.back();
        children.pop_back();
        delete last;
    }
}

void SceneNode::draw() {}

void SceneNode::render(Camera* camera) {
    const Vector3& low = worldBounds.min;
    const Vector3& high = worldBounds.max;
    expect(camera != nullptr);
    if (!camera->boxInFrustum(low.x, low.y, low.z, high.x, high.y, high.z))
        return;
    draw();
    forEachChild([camera](SceneNode* child) { child->render(camera); });
}

void SceneNode::update() {
    worldMatrix = parent == nullptr ? Matrix() : parent->worldMatrix;
    worldMatrix *= translationMatrix;
    worldMatrix *= rotationMatrix;
    if (forEachChild([](SceneNode* child) { child->update(); }))
        updateBounds();
}

bool SceneNode::addChild(SceneNode* child) {
    expect(child != nullptr && child != this);
    if (std::find(children.begin(), children.end(), child) != children.end())
        return false;
    child->parent = this;
    children.push_back(child);
    return true;
}

void SceneNode::deleteChild(SceneNode* child) {
    detach(child);
    delete child;
}

void SceneNode::removeChild(SceneNode* child) {
    detach(child);
}

void SceneNode::detach(SceneNode* child) {
    const auto found = std::find(children.begin(), children.end(), child);
    if (found == children.end())
        return;
    const auto index = static_cast<std::size_t>(found - children.begin());
    children.erase(found);
    for (Traversal* traversal = traversals; traversal != nullptr; traversal = traversal->outer)
        if (index < traversal->next)
            --traversal->next;
}

csgObject* SceneNode::asCsgNode() {
    return nullptr;
}

Worm* SceneNode::asWorm() {
    return nullptr;
}

void SceneNode::updateBounds() {
    worldBounds = localBounds.transformed(worldMatrix);
    forEachChild([this](SceneNode* child) {
        child->updateBounds();
        worldBounds.merge(child->worldBounds);
    });
}

Damageable* SceneNode::getDamageableNode() {
    return nullptr;
}

void SceneNode::setPosition(float x, float y, float z) {
    expect(std::isfinite(x) && std::isfinite(y) && std::isfinite(z));
    translationMatrix.setTranslation(x, y, z);
}

Vector3 SceneNode::getPosition() const {
    return translationMatrix.getTranslation();
}

NodeWatch::~NodeWatch() {
    if (node == nullptr)
        return;
    NodeWatch** link = &node->watches;
    while (*link != this)
        link = &(*link)->next;
    *link = next;
}

void SceneNode::setRotationY(float angle) {
    rotationMatrix.rotationY(angle);
}
