// Every node leaves GL as it found it: lighting, depth writes, texturing, culling, matrix stacks.

#include "core/team.h"
#include "csg/csg_object.h"
#include "game/explosion.h"
#include "game/particle_system.h"
#include "game/test_node.h"
#include "game/worm.h"
#include "platform/headless/headless.h"
#include "render/camera.h"
#include "render/label_node.h"
#include "render/milkshape_model.h"
#include "render/renderer.h"
#include "render/static_mesh.h"
#include "render/water_node.h"
#include "support/model_file.h"
#include "support/solids.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>

namespace {

struct Snapshot {
    std::vector<bool> enables;
    bool depthMask;
    std::size_t unit;
    std::size_t modelviewDepth;
    std::size_t projectionDepth;
    headless::GlMatrix modelview;
    bool vertexArray;

    static Snapshot take() {
        const headless::GlState& state = headless::glState();
        Snapshot snapshot{{},
                          state.settings.depthMask,
                          state.settings.activeUnit,
                          state.modelview.size(),
                          state.projection.size(),
                          state.modelview.back(),
                          state.vertexArray.enabled};
        for (const GLenum capability :
             std::initializer_list<GLenum>{GL_LIGHTING, GL_DEPTH_TEST, GL_TEXTURE_2D, GL_CULL_FACE, GL_BLEND})
            snapshot.enables.push_back(headless::glEnabled(capability));
        return snapshot;
    }
    bool operator==(const Snapshot&) const = default;
};

class DrawingState : public testing::Test {
protected:
    DrawingState() {
        ModelFile model;
        model.vertices = {{{0, 0, 0}}, {{1, 0, 0}}, {{0, 1, 0}}};
        model.indices = {0, 1, 2};
        for (const char* const name : {"wurm", "plain"})
            data.write(std::string("mesh/") + name + ".ms3d", model.bytes());
        data.write("mesh/hut.msh", "1 3 0 0 0 0 0 1 0 0 1 0 0 1 0 0 1 1 0 1 2 wood");
        data.writeSolid("slab", boxData({-1, -1, -1}, {1, 1, 1}));
        auto* const camera = new Camera;
        theModuleManager->getSceneRoot()->addChild(camera);
        camera->apply();
        theModuleManager->setCamera(camera);
    }

    void expectNoTrace(SceneNode& node, const char* kind) {
        node.setPosition(0, 0, -20);
        node.SceneNode::update();
        const Snapshot before = Snapshot::take();
        node.render(theModuleManager->getCamera());
        EXPECT_TRUE(before == Snapshot::take()) << kind;
        for (const std::string& problem : headless::problems())
            ADD_FAILURE() << kind << ": " << problem;
    }

    TestData data;
    TestServices services;
};

TEST_F(DrawingState, NoNodeLeavesATrace) {
    MilkShapeModel model("model");
    ASSERT_TRUE(model.load("plain"));
    expectNoTrace(model, "model");
    LabelNode label;
    label.setText("label");
    expectNoTrace(label, "label");
    WaterNode water;
    expectNoTrace(water, "water");
    StaticMesh mesh("hut");
    expectNoTrace(mesh, "static mesh");
    Testnode cube("Rocket", 0.2f);
    expectNoTrace(cube, "cube");
    Explosion explosion("explosion", Vector3(0, 0, -20), 10);
    expectNoTrace(explosion, "explosion");
    ParticleSystem smoke("smoke");
    expectNoTrace(smoke, "smoke");
    const BoundingBox nowhere;
    Team team("team", &nowhere, 1, 1, 1, {}, 0);
    Worm worm("worm", &team);
    expectNoTrace(worm, "worm");
}

TEST_F(DrawingState, TheLandLeavesNoTraceInAnyMode) {
    csgObject land;
    ASSERT_TRUE(land.load("./csg/slab"));
    land.rebuildArrays();
    for (const int mode : {renderImmediate, renderVertexArray, renderVertexBuffer}) {
        theModuleManager->getRenderer()->renderMode = mode;
        const std::uint64_t verticesBefore = headless::glCalls("glDrawArrays") + headless::glCalls("glBegin");
        land.update();
        const Snapshot before = Snapshot::take();
        land.draw();
        EXPECT_TRUE(before == Snapshot::take()) << mode;
        EXPECT_GT(headless::glCalls("glDrawArrays") + headless::glCalls("glBegin"), verticesBefore) << mode;
    }
    EXPECT_TRUE(headless::problems().empty());
}

TEST_F(DrawingState, AModelKeepsTexturingOffWhereItWasOff) {
    MilkShapeModel model("model");
    ASSERT_TRUE(model.load("plain"));
    glDisable(GL_TEXTURE_2D);
    expectNoTrace(model, "model");
}

TEST_F(DrawingState, InItsAimViewAWormDrawsOnlyItsWeapon) {
    const BoundingBox nowhere;
    Team team("team", &nowhere, 1, 1, 1, {}, 0);
    data.write("mesh/bazooka.ms3d", ModelFile{}.bytes());
    Worm worm("worm", &team);
    frustumCulling = false;
    const auto primitivesIn = [&worm](Camera* camera) {
        headless::captureGeometry(true);
        worm.render(camera);
        const std::size_t count = headless::glPrimitives().size();
        headless::captureGeometry(false);
        return count;
    };
    EXPECT_EQ(primitivesIn(worm.getAimCamera()), 0u);
    EXPECT_GT(primitivesIn(worm.getFollowCamera()), 0u);
    frustumCulling = true;
}

} // namespace
