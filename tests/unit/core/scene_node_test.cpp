#include "core/scene_node.h"

#include "core/log.h"
#include "render/camera.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <numbers>
#include <random>

namespace {

/// A node that does something in its update and counts how often that was.
class ActingNode : public SceneNode {
public:
    explicit ActingNode(const std::string& nodeName, std::string* nodeTrace = nullptr)
        : SceneNode(nodeName), trace(nodeTrace) {}

    void update() override {
        const NodeWatch self(*this);
        SceneNode::update();
        if (self.isGone())
            return;
        if (trace != nullptr)
            *trace += name;
        if (action)
            action();
    }
    void draw() override { ++draws; }

    std::function<void()> action;
    int draws = 0;

private:
    std::string* trace;
};

/// A root with children named by single letters, in order.
struct Family {
    explicit Family(const std::string& letters) : root("root") {
        for (const char letter : letters)
            root.addChild(new ActingNode(std::string(1, letter), &trace));
    }
    ActingNode* child(char letter) {
        for (SceneNode* const node : root.getChildren())
            if (node->getNodeName()[0] == letter)
                return static_cast<ActingNode*>(node);
        return nullptr;
    }

    std::string trace;
    SceneNode root;
};

TEST(SceneNode, WorldMatrixIsParentThenTranslationThenRotation) {
    SceneNode root("root");
    auto* const child = new SceneNode("child");
    root.addChild(child);
    root.setPosition(10, 0, 0);
    root.setRotationY(std::numbers::pi_v<float> / 2);
    child->setPosition(0, 0, 5);
    root.update();
    // The root's quarter turn about Y carries +Z to +X.
    const Vector3 position = child->getWorldPosition();
    EXPECT_NEAR(position.x, 15, 1e-5);
    EXPECT_NEAR(position.z, 0, 1e-5);
}

TEST(SceneNode, WorldBoundsEncloseTheSubtree) {
    SceneNode root("root");
    auto* const child = new SceneNode("child");
    root.addChild(child);
    root.setPosition(1, 1, 1);
    child->setPosition(5, 0, 0);
    root.update();
    EXPECT_EQ(root.getWorldBounds().min, Vector3(1, 1, 1));
    EXPECT_EQ(root.getWorldBounds().max, Vector3(6, 1, 1));
}

TEST(SceneNode, AddChildRefusesAChildAndRemoveChildHandsItBack) {
    SceneNode root("root");
    auto* const child = new SceneNode("child");
    EXPECT_TRUE(root.addChild(child));
    EXPECT_FALSE(root.addChild(child));
    EXPECT_EQ(root.getChildren().size(), 1u);
    root.removeChild(child);
    EXPECT_TRUE(root.getChildren().empty());
    EXPECT_EQ(child->getParent(), &root);
    root.deleteChild(child); // not a child any more: destroyed all the same
    root.deleteChild(nullptr);
    root.removeChild(nullptr);
}

TEST(SceneNode, ChildrenEndFromTheLastToTheFirst) {
    static std::string lines;
    lines.clear();
    setLogSink([](const char* text) {
        const std::string line = text;
        const std::string prefix = "Scene Node Destruktor: ";
        if (line.starts_with(prefix))
            lines += line.substr(prefix.size(), line.size() - prefix.size() - 1);
    });
    {
        SceneNode root("r");
        auto* const a = new SceneNode("a");
        a->addChild(new SceneNode("x"));
        root.addChild(a);
        root.addChild(new SceneNode("b"));
    }
    setLogSink(nullptr);
    EXPECT_EQ(lines, "rbax");
}

TEST(SceneNodeTraversal, AChildThatDeletesItselfSkipsNobody) {
    Family family("abcd");
    ActingNode* const b = family.child('b');
    b->action = [&] { family.root.deleteChild(b); };
    family.root.update();
    EXPECT_EQ(family.trace, "abcd");
    EXPECT_EQ(family.root.getChildren().size(), 3u);
}

TEST(SceneNodeTraversal, DeletingSiblingsBeforeAndAfterKeepsOneVisitEach) {
    Family family("abcdef");
    family.child('c')->action = [&] {
        family.root.deleteChild(family.child('a'));
        family.root.deleteChild(family.child('b'));
        family.root.deleteChild(family.child('e'));
    };
    family.root.update();
    EXPECT_EQ(family.trace, "abcdf");
    family.trace.clear();
    family.child('c')->action = nullptr;
    family.root.update();
    EXPECT_EQ(family.trace, "cdf");
}

TEST(SceneNodeTraversal, ANodeAppendedMeanwhileIsVisitedInTheSameFrame) {
    Family family("ab");
    family.child('a')->action = [&] {
        if (family.child('n') == nullptr)
            family.root.addChild(new ActingNode("n", &family.trace));
    };
    family.root.update();
    EXPECT_EQ(family.trace, "abn");
}

TEST(SceneNodeTraversal, ATraversalInsideATraversalSurvivesDeletions) {
    Family family("abc");
    bool entered = false;
    family.child('b')->action = [&] {
        if (entered)
            return;
        entered = true;
        family.root.deleteChild(family.child('a'));
        family.root.update();
    };
    family.root.update();
    EXPECT_EQ(family.trace, "abbcc");
}

TEST(SceneNodeTraversal, AChildMayEndItsParent) {
    SceneNode root("root");
    auto* const parent = new ActingNode("parent");
    auto* const child = new ActingNode("child");
    auto* const sibling = new ActingNode("sibling");
    root.addChild(parent);
    parent->addChild(child);
    parent->addChild(new ActingNode("never"));
    root.addChild(sibling);
    bool siblingVisited = false;
    child->action = [&] { root.deleteChild(parent); };
    sibling->action = [&] { siblingVisited = true; };
    root.update();
    EXPECT_TRUE(siblingVisited);
    EXPECT_EQ(root.getChildren().size(), 1u);
}

TEST(SceneNodeTraversal, TheWholeRestMayGoAndTheTraversalGoesOn) {
    Family family("abcd");
    ActingNode* const b = family.child('b');
    b->action = [&] {
        family.root.addChild(new ActingNode("n", &family.trace));
        for (const char other : {'a', 'c', 'd'})
            family.root.deleteChild(family.child(other));
        family.root.deleteChild(b);
    };
    family.root.update();
    EXPECT_EQ(family.trace, "abn");
    EXPECT_EQ(family.root.getChildren().size(), 1u);
}

TEST(SceneNodeTraversal, EveryoneWhoStaysIsUpdatedOnceInOrderWhateverTheOthersDo) {
    std::mt19937 random(7);
    int endedSelf = 0;
    int endedBefore = 0;
    int endedAfter = 0;
    for (int round = 0; round < 3000; ++round) {
        Family family("");
        char nextLetter = 'a';
        const std::function<void()> addOne = [&] {
            const char letter = nextLetter++;
            auto* const node = new ActingNode(std::string(1, letter), &family.trace);
            node->action = [&, letter] {
                if (random() % 4 == 0 && nextLetter <= 'z')
                    addOne();
                const std::vector<SceneNode*> siblings = family.root.getChildren();
                for (SceneNode* const sibling : siblings) {
                    const char other = sibling->getNodeName()[0];
                    if (random() % 5 != 0 || other == letter)
                        continue;
                    ++(other < letter ? endedBefore : endedAfter);
                    family.root.deleteChild(sibling);
                }
                if (random() % 5 != 0)
                    return;
                ++endedSelf;
                family.root.deleteChild(family.child(letter));
            };
            family.root.addChild(node);
        };
        for (unsigned count = 1 + random() % 8; count > 0; --count)
            addOne();
        family.root.update();
        EXPECT_TRUE(std::is_sorted(family.trace.begin(), family.trace.end())) << family.trace;
        EXPECT_EQ(std::adjacent_find(family.trace.begin(), family.trace.end()), family.trace.end()) << family.trace;
        for (const SceneNode* const left : family.root.getChildren())
            EXPECT_NE(family.trace.find(left->getNodeName()), std::string::npos) << "skipped";
    }
    EXPECT_GT(std::min({endedSelf, endedBefore, endedAfter}), 1000);
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
    ActingNode behind("behind");
    auto* const child = new ActingNode("child");
    behind.addChild(child);
    behind.setPosition(0, 0, 50);
    behind.update();
    behind.render(&camera);
    EXPECT_EQ(behind.draws + child->draws, 0);
    behind.setPosition(0, 0, -50);
    behind.update();
    behind.render(&camera);
    EXPECT_EQ(behind.draws + child->draws, 2);

    behind.setPosition(0, 0, 50);
    behind.update();
    frustumCulling = false;
    behind.render(&camera);
    frustumCulling = true;
    EXPECT_EQ(behind.draws + child->draws, 4);
}

TEST(Damageable, HealthStaysAboveZeroAndHasNoCeiling) {
    SceneNode node("node");
    EXPECT_EQ(node.getDamageableNode(), nullptr);
    node.applyDamage(-50);
    EXPECT_FLOAT_EQ(node.getHealth(), 150);
    node.applyDamage(400);
    EXPECT_FLOAT_EQ(node.getHealth(), 0);
}

} // namespace
