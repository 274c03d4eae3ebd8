#include "core/scene/scene_node.h"

#include "render/camera/camera.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <numbers>
#include <random>

namespace {

/// A node that does something in its update, and says when it was updated, drawn (as D) and ended.
class ActingNode : public SceneNode {
public:
    ActingNode(char letter, std::string& saysTo, std::string& endsIn)
        : SceneNode(std::string(1, letter)), trace(saysTo), ended(endsIn) {}
    ~ActingNode() override { ended += name; }

    void update() override {
        const NodeWatch self(*this);
        SceneNode::update();
        if (self.isGone())
            return;
        trace += name;
        if (action)
            action();
    }
    void draw() override { trace += 'D'; }

    std::function<void()> action;

private:
    std::string& trace;
    std::string& ended;
};

/// A root with children named by single letters, in order.
struct Family {
    explicit Family(const std::string& letters) {
        for (const char letter : letters)
            add(root, letter);
    }
    ActingNode* add(SceneNode& parent, char letter) {
        auto* const node = new ActingNode(letter, trace, ended);
        parent.addChild(node);
        return node;
    }
    ActingNode* child(char letter) const {
        for (SceneNode* const node : root.getChildren())
            if (node->getNodeName()[0] == letter)
                return static_cast<ActingNode*>(node);
        return nullptr;
    }

    std::string trace;
    std::string ended;
    SceneNode root{"root"};
};

void expectNear(const Vector3& actual, const Vector3& expected) {
    EXPECT_LT((actual - expected).length(), 1e-5f) << actual.x << ' ' << actual.y << ' ' << actual.z;
}

TEST(SceneNode, AWorldIsParentThenTranslationThenRotationAndItsBoxHoldsTheSubtree) {
    Family family("ab");
    ActingNode* const a = family.child('a');
    SceneNode* const grandchild = family.add(*a, 'c');
    family.root.setPosition(10, 1, 2);
    family.root.setRotationY(std::numbers::pi_v<float> / 2); // which carries +Z to +X, +X to -Z
    a->setPosition(0, 3, 5);
    a->setRotationY(std::numbers::pi_v<float>);
    grandchild->setPosition(1, 0, 7);
    family.child('b')->setPosition(-4, 0, 0);
    family.root.update();
    expectNear(a->getWorldPosition(), Vector3(15, 4, 2));
    expectNear(grandchild->getWorldPosition(), Vector3(8, 4, 3));
    expectNear(a->getWorldBounds().min, Vector3(8, 4, 2));
    expectNear(family.root.getWorldBounds().min, Vector3(8, 1, 2));
    expectNear(family.root.getWorldBounds().max, Vector3(15, 4, 6));
}

TEST(SceneNode, ChildrenComeOnceGoToWhomeverTakesThemAndEndFromTheLast) {
    Family family("abc");
    ActingNode* const a = family.child('a');
    ActingNode* const b = family.child('b');
    EXPECT_FALSE(family.root.addChild(b));
    EXPECT_EQ(family.root.getChildren().size(), 3u);
    family.root.removeChild(b);
    family.root.removeChild(nullptr);
    family.root.deleteChild(nullptr);
    EXPECT_EQ(family.root.getChildren().size(), 2u);
    EXPECT_EQ(b->getParent(), &family.root);
    EXPECT_TRUE(a->addChild(b));
    family.add(*a, 'd');
    family.root.removeChild(a);
    family.root.deleteChild(a); // not a child any more: destroyed all the same
    EXPECT_EQ(family.ended, "adb");
}

TEST(SceneNodeTraversal, ATraversalInsideATraversalSurvivesDeletionsAndAChildMayEndItsParent) {
    Family family("abcde");
    ActingNode* const d = family.child('d');
    family.add(*d, 'x')->action = [&] { family.root.deleteChild(d); };
    family.add(*d, 'y');
    bool entered = false;
    family.child('b')->action = [&] {
        if (entered)
            family.root.deleteChild(family.child('a'));
    };
    family.child('c')->action = [&] {
        if (entered)
            return;
        entered = true;
        family.root.update();
        family.root.deleteChild(family.child('b'));
        family.add(family.root, 'n');
    };
    family.root.update();
    EXPECT_EQ(family.trace, "abcabcxeen");
    EXPECT_EQ(family.ended, "adyxb");
}

TEST(SceneNodeTraversal, EveryoneWhoStaysIsUpdatedOnceInOrderWhateverTheOthersDo) {
    std::mt19937 random(7);
    std::size_t ended = 0;
    for (int round = 0; round < 3000; ++round) {
        Family family("");
        char nextLetter = 'a';
        const std::function<void()> addOne = [&] {
            const char letter = nextLetter++;
            family.add(family.root, letter)->action = [&, letter] {
                if (random() % 4 == 0 && nextLetter <= 'z')
                    addOne();
                for (char other = 'a'; other < nextLetter; ++other)
                    if (random() % 5 == 0 && other != letter)
                        family.root.deleteChild(family.child(other));
                if (random() % 5 == 0)
                    family.root.deleteChild(family.child(letter));
            };
        };
        for (unsigned count = 1 + random() % 8; count > 0; --count)
            addOne();
        family.root.update();
        EXPECT_EQ(std::adjacent_find(family.trace.begin(), family.trace.end(), std::greater_equal()),
                  family.trace.end())
            << family.trace;
        for (const SceneNode* const left : family.root.getChildren())
            EXPECT_NE(family.trace.find(left->getNodeName()), std::string::npos) << "skipped";
        ended += family.ended.size();
    }
    EXPECT_GT(ended, 3000u);
}

TEST(NodeWatch, EndsInAnyOrder) {
    auto* const node = new SceneNode("node");
    auto first = std::make_unique<NodeWatch>(*node);
    auto second = std::make_unique<NodeWatch>(*node);
    auto third = std::make_unique<NodeWatch>(*node);
    second.reset();
    first.reset();
    EXPECT_FALSE(third->isGone());
    delete node;
    EXPECT_TRUE(third->isGone());
}

TEST(SceneNode, RenderSkipsTheSubtreeOutsideTheFrustum) {
    const TestServices services;
    Camera camera;
    camera.apply(); // looks along -Z from the origin
    Family family("ab");
    for (const bool culling : {true, false})
        for (const float z : {50.0f, -50.0f}) {
            family.root.setPosition(0, 0, z);
            family.root.update();
            family.trace.clear();
            frustumCulling = culling;
            family.root.render(&camera);
            EXPECT_EQ(family.trace, culling && z > 0 ? "" : "DD");
        }
    frustumCulling = true;
}

TEST(Damageable, HealthStaysAboveZeroAndHasNoCeiling) {
    SceneNode node("node");
    EXPECT_EQ(node.getDamageableNode(), nullptr);
    node.applyDamage(-50);
    EXPECT_FLOAT_EQ(node.getHealth(), 150);
    node.applyDamage(400);
    EXPECT_FLOAT_EQ(node.getHealth(), 0);
}

TEST(BoundingBox, MergeTakesTheFirstBoxAndIgnoresEmptyOnes) {
    BoundingBox box;
    box.merge(BoundingBox({5, 6, 7}, {8, 9, 10}));
    EXPECT_EQ(box.min, Vector3(5, 6, 7));
    box.merge(BoundingBox());
    EXPECT_EQ(box.min, Vector3(5, 6, 7));
    EXPECT_EQ(box.max, Vector3(8, 9, 10));
    box.merge(BoundingBox({-1, 7, 8}, {6, 20, 9}));
    EXPECT_EQ(box.min, Vector3(-1, 6, 7));
    EXPECT_EQ(box.max, Vector3(8, 20, 10));
}

TEST(BoundingBox, BoxesThatTouchIntersect) {
    const BoundingBox box({0, 1, 2}, {1, 3, 5});
    EXPECT_TRUE(box.intersects(BoundingBox({-9, -9, -9}, {9, 9, 9})));
    for (const float gap : {0.0f, 0.001f}) {
        const bool touching = gap == 0.0f;
        EXPECT_EQ(box.intersects(BoundingBox({1 + gap, 0, 3}, {2, 4, 4})), touching);
        EXPECT_EQ(box.intersects(BoundingBox({-2, 0, 3}, {-gap, 4, 4})), touching);
        EXPECT_EQ(box.intersects(BoundingBox({0, 3 + gap, 3}, {1, 4, 4})), touching);
        EXPECT_EQ(box.intersects(BoundingBox({0, 0, 3}, {1, 1 - gap, 4})), touching);
        EXPECT_EQ(box.intersects(BoundingBox({0, 0, 5 + gap}, {1, 4, 6})), touching);
        EXPECT_EQ(box.intersects(BoundingBox({0, 0, 0}, {1, 4, 2 - gap})), touching);
    }
}

TEST(BoundingBox, TransformedHoldsTheTurnedCornersOfAnInvertedBoxToo) {
    Matrix turn;
    turn.rotationZ(std::numbers::pi_v<float> / 2);
    turn.setTranslation(10, 20, 30);
    const Vector3 low(1, 2, 3);
    const Vector3 high(5, 4, 9);
    for (const BoundingBox& box : {BoundingBox(low, high), BoundingBox(high, low)}) {
        const BoundingBox turned = box.transformed(turn);
        EXPECT_LT((turned.min - Vector3(6, 21, 33)).length(), 1e-5f);
        EXPECT_LT((turned.max - Vector3(8, 25, 39)).length(), 1e-5f);
    }
    const Matrix slope({1, 0, 0, 0, 1, 1, 0, 0, 1, 0, 1, 0, 0, 0, 0, 1}); // adds y and z to x
    EXPECT_EQ(BoundingBox(low, high).transformed(slope).max, Vector3(18, 4, 9));
}

} // namespace
