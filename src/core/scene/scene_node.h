#pragma once

// The node that every object of a level derives from: a tree with transforms, world boxes and the operations for
// drawing, collision and damage.
//
// A node owns its children; whoever holds a root owns the tree. `addChild` takes ownership, `removeChild` hands it back
// to the caller, `deleteChild` ends it. The operations of a node may add, remove and delete nodes anywhere in the tree,
// themselves included, while a traversal runs: `forEachChild` is the only loop over children that makes calls, every
// child that stays gets exactly one visit, in order, and a child appended meanwhile is visited as well (so a rocket has
// its world matrix in the frame that launches it). Code that may have destroyed its own node asks a `NodeWatch`. A
// node's `parent` is only meaningful while the node is a child: `removeChild` leaves it as it was.

#include "core/scene/bounding_box.h"
#include "core/scene/collision_object.h"
#include "core/scene/damageable.h"
#include "render/math/matrix.h"

#include <string>
#include <vector>

class Camera;
class NodeWatch;
class Worm;
class csgObject;

class SceneNode : public CollisionObject, public Damageable {
public:
    explicit SceneNode(const std::string& nodeName);
    ~SceneNode() override;

    /// Draws this node alone, in its own coordinates; leaves the matrix stack as it was.
    virtual void draw();
    /// Draws the subtree unless its world box lies outside the camera's frustum.
    virtual void render(Camera* camera);
    /// Advances the subtree by one frame: world matrices from parent to child, then world boxes from child to parent.
    virtual void update();
    /// Appends a child and takes ownership of it; false, and nothing happens, when it is a child already.
    virtual bool addChild(SceneNode* child);
    /// Destroys a node with its subtree, taking it off the list when it is a child.
    virtual void deleteChild(SceneNode* child);
    /// Takes a child off the list; it belongs to the caller afterwards.
    virtual void removeChild(SceneNode* child);
    virtual csgObject* asCsgNode();
    virtual Worm* asWorm();
    /// Recomputes the world boxes of the subtree from the local boxes and world matrices.
    virtual void updateBounds();

    Damageable* getDamageableNode() override;

    /// Position relative to the parent.
    void setPosition(float x, float y, float z);
    void setPosition(const Vector3& position) { setPosition(position.x, position.y, position.z); }
    Vector3 getPosition() const;
    /// Rotation about the Y axis, radians.
    void setRotationY(float angle);

    const std::string& getNodeName() const { return name; }
    SceneNode* getParent() const { return parent; }
    const std::vector<SceneNode*>& getChildren() const { return children; }
    const Matrix& getWorldMatrix() const { return worldMatrix; }
    Vector3 getWorldPosition() const { return worldMatrix.getTranslation(); }
    void setRotationMatrix(const Matrix& rotation) { rotationMatrix = rotation; }
    const Matrix& getRotationMatrix() const { return rotationMatrix; }
    const BoundingBox& getLocalBounds() const { return localBounds; }
    const BoundingBox& getWorldBounds() const { return worldBounds; }

    /// Calls visit(child) for each child in order, whatever the calls add, remove or delete. False when a call
    /// destroyed this node itself: the traversal ended there and nothing of the node may be touched.
    template <class Visit>
    bool forEachChild(Visit visit);

protected:
    SceneNode* parent = nullptr;
    std::vector<SceneNode*> children;
    std::string name;
    Matrix worldMatrix;
    Matrix rotationMatrix;
    Matrix translationMatrix;
    BoundingBox localBounds;
    BoundingBox worldBounds;

private:
    friend class NodeWatch;

    /// One running traversal of this node's children; kept on the stack of the call that runs it.
    struct Traversal {
        std::size_t next = 0;
        Traversal* outer = nullptr;
    };

    void detach(SceneNode* child);

    Traversal* traversals = nullptr;
    NodeWatch* watches = nullptr;
};

/// Tells whether a node has been destroyed since: on the stack for code that may end its own node, as a member for
/// whoever keeps a pointer to a node that ends by itself.
class NodeWatch {
public:
    explicit NodeWatch(SceneNode& watched) : node(&watched), next(watched.watches) { watched.watches = this; }
    ~NodeWatch();
    NodeWatch(const NodeWatch&) = delete;
    NodeWatch& operator=(const NodeWatch&) = delete;

    bool isGone() const { return node == nullptr; }

private:
    friend class SceneNode;

    SceneNode* node;
    NodeWatch* next;
};

template <class Visit>
bool SceneNode::forEachChild(Visit visit) {
    NodeWatch self(*this);
    Traversal traversal{0, traversals};
    traversals = &traversal;
    while (traversal.next < children.size()) {
        SceneNode* const child = children[traversal.next];
        ++traversal.next;
        visit(child);
        if (self.isGone())
            return false;
    }
    traversals = traversal.outer;
    return true;
}
